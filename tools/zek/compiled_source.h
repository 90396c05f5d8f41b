/// The sections of a compiled image as lines of a source. Relies on image_view.h.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "compared_numbers.h"
#include "compiled_words.h"
#include "jump_words.h"
#include "made_words.h"
#include "zekcomp/image_view.h"

namespace zek::tool {

/// Writes the sections of an image in their order.
class CompiledSource {
public:
    explicit CompiledSource(const ImageView& view);

    /// Header and items of the next section. Throws Failure where the language cannot express it.
    std::vector<std::string> Lines(const ImageView::Section& section);
    /// The words that were used so far.
    const MadeWords& Words() const { return made_; }

private:
    using Texts = std::vector<std::string>;

    /// What of a section decides how its keys are written.
    struct Section {
        ImageView::Section section;
        std::set<std::uint32_t> values = {};  // the identifiers of its VALUE_ entries
        bool hasAdded = false;                // keys that the kind does not declare have begun
        bool isUnderlined = false;            // its only VALUE_ without a suffix is not VALUE
        bool plainGiven = false;              // VALUE or VALUE_
    };

    std::string Key(Section& in, const ImageView::Entry& entry);
    std::string ValueKey(Section& in, const ImageView::Entry& entry);
    Texts TextsOf(const Section& in, const ImageView::Entry& entry);
    std::string KeywordText(const Section& in, const ImageView::Entry& entry);
    std::string NumberText(std::uint32_t section, std::uint32_t key, std::uint32_t number);
    std::string WordFor(std::uint32_t number, std::uint32_t compared);
    Texts Sensors(const ImageView::Entry& entry);
    Texts Value(const Section& in, const ImageView::Entry& entry);
    void AddRows(std::vector<std::string>& lines);

    const ImageView& view_;
    MadeWords made_;
    ComparedNumbers compared_;
    JumpWords jumps_;
    CompiledWords words_;
    bool zeroWritten_ = false;
    unsigned tables_ = 0;  // so far
};

}  // namespace zek::tool
