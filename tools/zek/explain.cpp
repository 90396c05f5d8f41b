#include <memory>
#include <regex>

#include "code_table.h"
#include "command.h"
#include "finding_review.h"
#include "help_text.h"
#include "joined_text.h"
#include "streams.h"

namespace zek::tool {
namespace {

constexpr char kExplainExample[] =
    "Example:\n"
    "  zek explain E305 W101\n"
    "\n"
    "Tells of each CODE, with or without the brackets in which it stands behind a message, what the cause is,\n"
    "shows a source that leads to it and tells the cure. Without a CODE all codes are listed.";

struct ExplainOptions {
    std::vector<std::string> codes;
    bool markdown = false;  ///< all of it, as docs/messages.md holds it
};

constexpr char kPageBegin[] =
    "# Messages\n"
    "\n"
    "Every code that `zek check` and `zek compile` show in brackets behind a message: `E` for errors, `W` for the "
    "other\n"
    "messages of the library, `L` for what `zek` finds itself. The texts of the library are exact, `%s` and `%u` stand "
    "for\n"
    "what is filled in, the first `%s:%u` is file and line. How findings are shown, raised and allowed is told in\n"
    "[findings.md](findings.md); `zek explain CODE` tells what stands here, and `zek explain --markdown` writes this "
    "page.\n";

constexpr std::size_t kWidth = 80;

/// With two blanks before each line.
std::string Indented(const std::string& text) {
    std::string indented = "  ";
    for (std::size_t i = 0; i < text.size(); ++i) {
        indented += text[i];
        if (text[i] == '\n' && i + 1 < text.size()) indented += "  ";
    }
    return indented;
}

/// A text of the page without its marks: [TITLE](PAGE#SECTION) becomes "TITLE" of PAGE, and backticks go.
std::string WithoutMarks(const std::string& markdown) {
    static const std::regex link("\\[([^\\]]*)\\]\\(([^)#]*)(#[^)]*)?\\)");
    std::string text = std::regex_replace(markdown, link, "\"$1\" of $2");
    std::erase(text, '`');
    return text;
}

std::string Explained(const CodeRow& row) {
    std::string text = Wrapped(std::string(row.code) + ": " + row.format, kWidth, "  ") + "\n\n" +
                       Wrapped("Cause: " + WithoutMarks(row.cause), kWidth) + '\n';
    if (*row.example) text += "\nExample:\n" + Indented(row.example);
    return text + "\n" + Wrapped("Cure: " + WithoutMarks(row.cure), kWidth) + '\n';
}

std::string OnPage(const CodeRow& row) {
    std::string text = std::string("\n### ") + row.code + "\n\n`" + row.format + "`\n\n" + row.cause + "\n\n";
    if (*row.example) text += std::string("```zek ") + row.code + "\n" + row.example + "```\n\n";
    return text + row.cure + '\n';
}

std::string Page() {
    std::string page = kPageBegin;
    for (const CodeGroup& group : CodeGroups()) {
        page += std::string("\n## ") + group.title + '\n';
        if (*group.about) page += std::string("\n") + group.about + '\n';
        for (const CodeRow& row : group.rows) page += OnPage(row);
    }
    return page;
}

std::string List() {
    std::string list;
    for (const CodeGroup& group : CodeGroups()) {
        for (const CodeRow& row : group.rows) list += std::string(row.code) + "  " + row.format + '\n';
    }
    return list;
}

/// A code as it stands behind a message: "[W101]", too.
std::string WithoutBrackets(const std::string& code) {
    const bool inBrackets = code.size() > 2 && code.starts_with('[') && code.ends_with(']');
    return inBrackets ? code.substr(1, code.size() - 2) : code;
}

int RunExplain(const ExplainOptions& options) {
    const auto explained = [](const std::string& code) {
        return Explained(*RowOfCode(RequireCode(WithoutBrackets(code))));
    };
    const std::string text = options.markdown        ? Page()
                             : options.codes.empty() ? List()
                                                     : Joined(options.codes, "\n", explained);
    StandardOutput out;
    out.Write(text);
    out.Finish();
    return 0;
}

Run PrepareExplain(Words& words) {
    const auto options = std::make_shared<ExplainOptions>();
    words.AnyCodes("CODE", options->codes, "The codes");
    words.Flag("--markdown", options->markdown, "Write the page of all codes");
    return [options] { return RunExplain(*options); };
}

}  // namespace

const CommandSpec kExplainCommand = {"explain",
                                     "Tell what a code of a message means, and what to do",
                                     kExplainExample,
                                     PrepareExplain,
                                     {kDone, nullptr, kWrongLineOrFile, nullptr}};

}  // namespace zek::tool
