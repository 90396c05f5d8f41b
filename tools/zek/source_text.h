/// The lines of source files as they are written: where keys, sub-strings and comments stand in them. Relies on the
/// syntax of section files, not on the parser library, which keeps neither columns nor comments; and for pipes and
/// devices on the copies of source_copies.h.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "finding.h"
#include "lint_text.h"
#include "source_copies.h"

namespace zek::tool {

/// A comment of a source.
struct Comment {
    unsigned line = 0;
    unsigned column = 0;    ///< in bytes, from 1: of its ; or #
    std::string_view text;  ///< from there to the end of the line; lives as long as the SourceText
    bool alone = false;     ///< nothing else stands on the line
};

class SourceText {
public:
    /// The copies must outlive this; without them pipes and devices have no lines.
    explicit SourceText(const SourceCopies* copies = nullptr) : copies_(copies) {}

    /// How many lines a file has; 0 when it cannot be read.
    unsigned CountLines(const std::string& path);
    /// A line without its end, from 1; empty past the last.
    std::string_view Line(const std::string& path, unsigned line);
    void ForEachComment(const std::string& path, const std::function<void(const Comment&)>& show);

    /// The name of the section that begins on a line, with its brackets; or the key of the item that begins there.
    Place Head(const std::string& path, unsigned line);
    /// The value of the item that begins on a line, as far as it stands on the first line that has some of it.
    Place Value(const std::string& path, unsigned line);
    /// The sub-string of that value at a position (from 0), without its quotes. Joined lines: the place is on the line
    /// where the sub-string begins. An item longer than 4096 bytes, or without so many sub-strings: its key.
    Place SubString(const std::string& path, unsigned line, std::size_t position);
    /// What stands before or behind the quotes of the sub-string at a position, blanks at its ends aside; the same
    /// where that cannot be told.
    Place OutsideQuotes(const std::string& path, unsigned line, std::size_t position, bool behind);
    /// The first sub-string of that value that is a text, blanks aside; its key where none is.
    Place SubString(const std::string& path, unsigned line, const std::string& text);

    /// The first line of the joined lines that a line belongs to; the line itself where it is not joined.
    unsigned FirstOfJoined(const std::string& path, unsigned line);

private:
    struct WrittenLine {
        std::uint32_t begin = 0;    // no source is longer
        std::uint32_t end = 0;      ///< without the line end
        std::uint32_t comment = 0;  ///< where its comment begins; `end` when it has none
        bool joined = false;        ///< with the next one
        std::uint32_t first = 0;    ///< the line, from 1, that the joining began with
    };
    struct WrittenFile {
        std::string bytes;
        std::vector<WrittenLine> lines;
    };
    /// The text of an item with its line, and where each of its bytes stands.
    struct Item {
        std::string text;
        std::vector<std::pair<unsigned, unsigned>> places;  ///< line and column
        std::size_t key = 0;                                ///< where the key ends, or a header
        std::size_t value = 0;                              ///< where it begins; the end of the text when it has none
    };

    const WrittenFile& File(const std::string& path);
    static void Split(WrittenFile& file);
    /// Null where no line is or it is too long.
    const Item* ItemAt(const std::string& path, unsigned line);
    /// Of the sub-string at a position, what `part` gives of it.
    Place PlaceOfPart(const std::string& path, unsigned line, std::size_t position,
                      const std::function<std::string_view(const CutText&)>& part);
    static Place PlaceOf(const std::string& path, const Item& item, std::size_t begin, std::size_t end);

    const SourceCopies* copies_;
    std::map<std::string, std::unique_ptr<WrittenFile>> files_;
    std::string itemPath_;  // of the item that was asked for last
    unsigned itemLine_ = 0;
    std::optional<Item> item_;
};

}  // namespace zek::tool
