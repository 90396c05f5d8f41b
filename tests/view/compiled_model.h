/// The fixture of cases that compile the model as it stands and hold the view of its image against the loaded image.
/// Relies on the model, view_comparison.h and viewed_image.h.
#pragma once

#include <gtest/gtest.h>

#include "model/section.h"
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

/// More may stand behind the keyword of an entry with this notation.
inline constexpr unsigned kHostNotation = kFamily | 2;

/// An entry that a host has made; a section in which it is put owns it.
template <class Kind>
CZEKEntry* Made(unsigned type, unsigned notation, const std::string& key, const std::string& value) {
    auto* const entry = new Kind(type, tagNOTATION{notation});
    entry->Init("host", key, value, 100);
    return entry;
}

class CompiledModel : public ProcessTest {
protected:
    /// The image of the model as it now is.
    static std::string Compiled() {
        EXPECT_EQ(gccCheck(), 1U) << Messages();
        return Written();
    }

    /// The image of the model, which was checked.
    static std::string Written() {
        EXPECT_EQ(gccOutput("model.zki"), 1U);
        gccCompEnd();
        return Read("model.zki");
    }

    /// What the view answers otherwise than the written image does when it is loaded; empty where nothing is.
    static std::string Difference(const ImageView& view) {
        tagMETAFILEINFO info = {};
        EXPECT_EQ(gcInit("model.zki", &info), 1U);
        return DifferenceFromLoaded(view, info);
    }

    /// The notes without offsets and sentences, once the view has answered everything as the loaded image does.
    static std::string NotesOfView(const std::string& image) {
        const auto view = ImageView::Open(BytesOf(image));
        if (!view) return Refusal(image);
        EXPECT_EQ(Difference(*view), "");
        std::string notes;
        view->ForEachNote([&](const ImageFinding& note) { notes += NameOf(note.code) + (": " + note.Place()) + '\n'; });
        return notes;
    }
};

}  // namespace zek::test
