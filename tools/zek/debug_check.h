/// The verification of a debug image, for which the library has none. Relies on debug_layout.h.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace zek::tool {

/// What the verification finds. Failures, up to 99, refuse the image: the compiler writes no such thing. Notes, from
/// 100 on, do not.
enum class DebugCode : unsigned {
    kNone = 0,
    kTooShort = 1,         ///< the bytes end within the header
    kBadMagic = 2,         ///< another kind of file
    kBadVersion = 3,       ///< a format version that is not known
    kReservedByte = 4,     ///< a byte that is always 0 is not
    kCutShort = 5,         ///< the bytes end within a field
    kOverrun = 6,          ///< a field runs over the end of its block
    kCount = 7,            ///< more elements than there are bytes for
    kSurplusBytes = 8,     ///< bytes behind the last field of a block
    kUnsortedName = 9,     ///< a predefined name that does not rise above the one before
    kGroupCount = 10,      ///< more groups than there are kinds of sections
    kUnknownSection = 20,  ///< a type id of no kind of section
    kMixedGroup = 21,      ///< sections of two kinds in a group
    kRepeatedGroup = 22,   ///< two groups of a kind
    kWrongName = 23,       ///< a section whose name is not that of its kind
    kEntryCount = 24,      ///< fewer entries than such a section declares
    kMissingKey = 25,      ///< a declared entry is not in its place
    kUnknownEntry = 26,    ///< a type id that no entry of such a section has
    kWrongData = 27,       ///< typed data of another type than its entry
    kFileIndex = 28,       ///< a source file that is not in the list
    kNotation = 29,        ///< a notation that is not that of such a section or entry
    kEntryName = 30,       ///< a name that makes another entry than this one
    kNoData = 31,          ///< an entry without data that is not declared
    kAbsentKey = 32,       ///< a declared key without data that has a name, a line or a file
    kNul = 33,             ///< a NUL in a text of a source
    kTrailingBytes = 100,  ///< bytes follow behind the last section
    kNoFileList = 101,     ///< the list of source files is not there: its process had written another image before
    kRestoredKey = 102     ///< a declared key has the notation of one that is given again
};

/// The code as a short text for logs and scripts, such as "bad-magic". Static.
const char* NameOf(DebugCode code);

/// One thing that the verification found, and where.
struct DebugFinding {
    static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

    DebugCode code = DebugCode::kNone;
    std::size_t name = kNowhere;     ///< of the predefined names, from 0
    std::size_t group = kNowhere;    ///< from 0
    std::size_t section = kNowhere;  ///< its place among all sections, from 0
    unsigned kind = 0;               ///< the type id of that section; 0 where it is not known
    std::size_t entry = kNowhere;    ///< its place in the section, from 0
    const char* field = "";          ///< what of it; static
    std::size_t index = kNowhere;    ///< of several such fields, from 0
    std::size_t offset = 0;          ///< of the field, in bytes from the beginning of the image
    std::size_t found = 0;           ///< the number, length or type id that was found
    std::size_t limit = 0;           ///< what it should have been, or been at most

    /// Where it is, such as "section 12 [SENSOR], entry 3, operand 1".
    std::string Place() const;
    /// What is wrong there, in a sentence without its place and without a full stop.
    std::string Sentence() const;
};

/// What the verification has seen; all of the image where there is no failure.
struct DebugCheck {
    std::optional<DebugFinding> failure;
    std::size_t sections = 0;
    std::size_t entries = 0;
    std::size_t notes = 0;
    bool lacksFileList = false;  ///< there are sections, but no list of source files
};

/// Verifies an image once from its beginning to its end, with memory that does not depend on it. Each note is shown as
/// it is found.
DebugCheck CheckDebugImage(std::string_view image, const std::function<void(const DebugFinding&)>& showNote = nullptr);

}  // namespace zek::tool
