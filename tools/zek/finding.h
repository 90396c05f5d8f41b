/// What there is to tell about a source: the errors and warnings of the library and what the command's own rules find,
/// one structure for every format in which it is shown. Relies on note_texts.h.
///
/// A rule reports by giving its code a row in the table of codes (code_table.h) and adding
///
///     Finding finding;
///     finding.code = "L101";
///     finding.place = text.SubString(path, line, 2);   // source_text.h: the columns
///     finding.message = "[SENSOR]:TYPE, ...";          // any bytes; what shows it makes them safe
///     finding.notes.push_back({Filled(NoteText::kDefined), text.Head(path, otherLine)});
///     finding.fix = Fix{finding.place, "0x10"};        // only where it is likely
///     review.Add(std::move(finding));                  // finding_review.h
///
/// and leaves the rest alone: the severity comes from the table and the command line, comments of the source allow it,
/// and the way to an included file is filled in.
#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "note_texts.h"

namespace zek::tool {

enum class Severity { kNote, kWarning, kError };

/// Where something stands. What is not known is empty or 0; what follows it is 0 too.
struct Place {
    std::string path;     ///< as it was opened
    unsigned line = 0;    ///< from 1
    unsigned column = 0;  ///< in bytes, from 1
    unsigned length = 0;  ///< in bytes, within the line

    bool operator==(const Place&) const = default;
};

/// What belongs to a finding, such as where the other definition is.
struct Note {
    std::string text;
    Place place = {};
};

/// What probably was meant: the text to put in the place of what stands there.
struct Fix {
    Place place;
    std::string text;
};

struct Finding {
    std::string code;                        ///< a row of the table of codes
    Severity severity = Severity::kWarning;  ///< filled in later
    Place place = {};
    unsigned header = 0;             ///< the line of the section's header where a comment there allows it, too
    std::vector<Place> others = {};  ///< where else a comment allows it
    std::string message = {};        ///< one line; the library's own text stands in it word for word
    std::vector<Note> notes = {};
    std::optional<Fix> fix = {};
    std::vector<Place> way = {};  ///< the include items that led to the file, the main source's first; filled in later
};

/// So many notes of one kind a finding has at most, before one that counts the others.
inline constexpr std::size_t kMostNotes = 20;

/// Adds notes to a finding: the one at each position below `count` is made by `note`; `more` tells how many are too
/// many.
template <typename NoteAt>
void AddNotes(Finding& finding, std::size_t count, NoteAt note, NoteText more) {
    for (std::size_t i = 0; i < std::min(count, kMostNotes); ++i) finding.notes.push_back(note(i));
    if (count > kMostNotes) finding.notes.push_back({Filled(more, {std::to_string(count - kMostNotes)})});
}

}  // namespace zek::tool
