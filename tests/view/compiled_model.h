/// The fixture of cases that compile the model as it stands and hold the view of its image against the loaded image.
/// Relies on view_comparison.h and viewed_image.h.
#pragma once

#include <gtest/gtest.h>

#include "view/view_comparison.h"
#include "view/viewed_image.h"

namespace zek::test {

/// A section of every kind.
inline constexpr char kSound[] =
    "[QUORZEK]\nVERSION=1\n[DEFINE]\nT1=1\n[PROPERTY]\nMaker=us\n"
    "[GROUP]\nPARENT=0\nNAME=A\nCHILDGROUP=0\n[GROUP]\nPARENT=A\nNAME=B\nCHILDGROUP=0\n"
    "[GLOBAL]\nG_X=T1,1\n[ACTION]\nNAME=Do\nARGNUMBER=1\nVALUE=T1,1\n[REPEATER]\nRep=2,Do,5\n"
    "[SENSOR]\nPARENT=B\nNAME=S\nID=7\nTYPE=1\nINITFLAG=0\nCONTROLMASK=0\nVALUE=T1,2\nVALUE_own=T1,3\n"
    "[DEVICE]\nNAME=D\nID=3\nINITFLAG=0\nCONTROLMASK=0\n[TABLE]\nNAME=T\nTYPE=1\n1=1\n"
    "[TAVRGROUP]\nNAME=t\nID=1\nPID=0\nSENSORS=7\n";

class CompiledModel : public ProcessTest {
protected:
    /// The image of the model as it now is.
    std::string Compiled() {
        EXPECT_EQ(gccCheck(), 1U) << Messages();
        EXPECT_EQ(gccOutput("model.zki"), 1U);
        gccCompEnd();
        return Read("model.zki");
    }

    /// The notes without offsets and sentences, once the view has answered everything as the loaded image does.
    static std::string NotesOfView(const std::string& image) {
        const auto view = ImageView::Open(BytesOf(image));
        if (!view) return Refusal(image);
        tagMETAFILEINFO info = {};
        EXPECT_EQ(gcInit("model.zki", &info), 1U);
        EXPECT_EQ(DifferenceFromLoaded(*view, info), "");
        std::string notes;
        view->ForEachNote([&](const ImageFinding& note) { notes += NameOf(note.code) + (": " + note.Place()) + '\n'; });
        return notes;
    }
};

}  // namespace zek::test
