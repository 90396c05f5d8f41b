/// The codes of all findings, in one table: what each stands for, and what `zek explain` and docs/messages.md say of
/// it. Relies on finding.h.
#pragma once

#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "finding.h"

namespace zek::tool {

/// What looks for the findings of a code.
enum class Origin {
    kLibrary,  ///< the library, while it reads and checks
    kCommand,  ///< the command, whenever it shows findings
    kLint      ///< the rules of `zek check`
};

/// How much is made of a code where the command line says nothing.
enum class Level {
    kHidden,   ///< shown with --verbose or -W
    kWarning,  ///< shown
    kError     ///< shown, and fails; never less
};

struct CodeRow {
    const char* code;     ///< E: an error; W: a warning of the library; L: a finding of the command's own
    Level level;          ///< kError for every E code and no other
    const char* format;   ///< the library's format without its line feed, or the text of ours with %s
    const char* cause;    ///< sentences, as in a page
    const char* example;  ///< a whole source of which this code is found; empty where no source leads to it
    const char* cure;     ///< sentences
};

/// A section of the page of messages.
struct CodeGroup {
    const char* title;
    const char* about;  ///< stands below the title; may be empty
    Origin origin;
    std::span<const CodeRow> rows;  ///< by rising code
};

/// The groups in the order of the page.
std::span<const CodeGroup> CodeGroups();

/// One of them for each file that holds rows.
std::span<const CodeGroup> ReadingCodes();
std::span<const CodeGroup> CheckingCodes();
std::span<const CodeGroup> CommandCodes();
std::span<const CodeGroup> LintCodes();

std::set<std::string> AllCodes();

/// Null for an unknown code.
const CodeRow* RowOfCode(std::string_view code);
const CodeGroup* GroupOfCode(std::string_view code);

/// The text of a code of ours, with these in the places of its %s, as far as they go.
std::string Filled(std::string_view code, const std::vector<std::string>& texts);

/// The code of a message of the library by its format, line feed included; null where it has none. Where several codes
/// have it, the last.
const CodeRow* RowOfFormat(std::string_view format);

/// What is the same in every format of the library that has a place: the text behind "Error[%s:%u]" or
/// "Warning[%s:%u]" and the punctuation that follows it there. A format without a place stays as it is.
std::string_view WithoutPlace(std::string_view format);

}  // namespace zek::tool
