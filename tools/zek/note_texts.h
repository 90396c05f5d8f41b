/// What the notes below findings say, in one table; docs/language.md tells what each means. Relies on filled_text.h.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "filled_text.h"

namespace zek::tool {

enum class NoteText {
    kNotFound,
    kAbsent,
    kUnreadable,
    kCircle,
    kPastMost,
    kMorePastMost,
    kTooDeep,
    kIsImage,
    kIsUtf16,
    kOrHere,
    kOrInMore,
    kDefinedBefore,
    kDefinedAgain,
    kParent,
    kAction,
    kArgumentCount,
    kMeant,
    kLost,
    kDefined,
    kDefinedToo,
    kMoreBehind,
    kGlobalHasNone,
    kHighestArgument,
    kFirstArgument,
    kPasses,
    kOtherThreshold,
    kTableBefore,
    kWas,
    kIncludedFrom,
    kCount
};

struct NoteRow {
    NoteText text;
    const char* format;  ///< %s: a text, %u: a number
};

inline constexpr std::array<NoteRow, static_cast<std::size_t>(NoteText::kCount)> kNoteRows = {{
    {NoteText::kNotFound, "%s was not found; looked in: %s"},
    {NoteText::kAbsent, "%s does not exist"},
    {NoteText::kUnreadable, "%s cannot be read: %s: %s"},
    {NoteText::kCircle, "%s includes itself: %s"},
    {NoteText::kPastMost, "%s is not read: %u files were read, as many as --max-files allows"},
    {NoteText::kMorePastMost, "includes not read for the same reason: %u more"},
    {NoteText::kTooDeep, "%s is included too deep: %u files are open inside one another"},
    {NoteText::kIsImage, "this is a %s image and no source"},
    {NoteText::kIsUtf16, "this file is in UTF-16, where UTF-8 is wanted"},
    {NoteText::kOrHere, "or here, one of %u files included as %s"},
    {NoteText::kOrInMore, "or in %u more of them"},
    {NoteText::kDefinedBefore, "it was defined here"},
    {NoteText::kDefinedAgain, "it is defined again here"},
    {NoteText::kParent, "the parent is defined here"},
    {NoteText::kAction, "the action is defined here"},
    {NoteText::kArgumentCount, "its number of arguments"},
    {NoteText::kMeant, "did you mean %s?"},
    {NoteText::kLost, "%s stands behind it and is lost, too"},
    {NoteText::kDefined, "it is defined here"},
    {NoteText::kDefinedToo, "it is defined here, too"},
    {NoteText::kMoreBehind, "and %u more behind these"},
    {NoteText::kGlobalHasNone, "a global is used without arguments"},
    {NoteText::kHighestArgument, "arguments are numbered up to %u"},
    {NoteText::kFirstArgument, "the first argument is ARG1"},
    {NoteText::kPasses, "this passes %u, the first of them ARG1"},
    {NoteText::kOtherThreshold, "the other one"},
    {NoteText::kTableBefore, "the table before"},
    {NoteText::kWas, "it was %u here"},
    {NoteText::kIncludedFrom, "included from here"},
}};

constexpr bool NoteRowsStandInOrder() {
    for (std::size_t i = 0; i < kNoteRows.size(); ++i) {
        if (kNoteRows[i].text != static_cast<NoteText>(i)) return false;
    }
    return true;
}
static_assert(NoteRowsStandInOrder());

/// The text of a note with these in the places of its format, in order.
inline std::string Filled(NoteText text, const std::vector<std::string>& texts = {}) {
    return FilledFormat(kNoteRows[static_cast<std::size_t>(text)].format, texts);
}

}  // namespace zek::tool
