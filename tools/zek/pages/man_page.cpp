#include "man_page.h"

#include <algorithm>
#include <sstream>

#include "noted_words.h"

namespace zek::tool {
namespace {

/// A text as it stands in a line: nothing of it is taken for a request or an escape.
std::string Plain(const std::string& text) {
    std::string plain = text.starts_with('.') || text.starts_with('\'') ? "\\&" : "";
    for (const char c : text) {
        if (c == '\\') {
            plain += "\\e";
        } else if (c == '-') {
            plain += "\\-";
        } else if (c == '\'') {
            plain += "\\(aq";
        } else {
            plain += c;
        }
    }
    return plain;
}

std::string Bold(const std::string& text) { return "\\fB" + Plain(text) + "\\fR"; }
std::string Italic(const std::string& text) { return "\\fI" + Plain(text) + "\\fR"; }

std::string Header(const std::string& name, const std::string& about) {
    std::string upper = name;
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return ".TH " + upper + " 1 \"\" \"zek " ZEK_TOOL_VERSION "\" \"ZEK toolchain\"\n.SH NAME\n" + Plain(name) +
           " \\- " + Plain(about) + "\n";
}

/// The lines of a help text as they are.
std::string AsItIs(const std::string& text) {
    std::string lines = ".nf\n";
    std::istringstream rest(text);
    for (std::string line; std::getline(rest, line);) lines += Plain(line) + '\n';
    return lines + ".fi\n";
}

std::string Row(const NotedWord& word) {
    std::string tag;
    for (const std::string& name : word.names) tag += (tag.empty() ? "" : ", ") + Bold(name);
    if (!word.type.empty()) tag += (tag.empty() ? "" : " ") + Italic(word.type);
    return ".TP\n" + tag + '\n' + Plain(word.help) + '\n';
}

/// What stands behind the options in a synopsis.
std::string Operands(const CommandSpec& command) {
    std::string text;
    for (const NotedWord& word : WordsOf(command)) {
        if (!word.names.empty()) continue;
        const std::string name = Italic(word.type) + (word.repeats ? "..." : "");
        text += word.required ? ' ' + name : " [" + name + ']';
    }
    return text;
}

}  // namespace

std::string ManPage() {
    std::string page = Header("zek", kAboutZek) + ".SH SYNOPSIS\n" + Bold("zek") + " [" + Bold("--help") + '|' +
                       Bold("--version") + "] " + Italic("COMMAND") + "\n.SH COMMANDS\n";
    for (const CommandSpec& command : Commands()) {
        page += ".TP\n\\fBzek\\-" + Plain(command.name) + "\\fR(1)\n" + Plain(command.about) + '\n';
    }
    return page + ".SH DESCRIPTION\n" + AsItIs(kExampleZek);
}

std::string ManPage(const CommandSpec& command) {
    const std::string name = command.name;
    std::string page = Header("zek-" + name, command.about) + ".SH SYNOPSIS\n" + Bold("zek " + name) + " [" +
                       Italic("OPTIONS") + ']' + Operands(command) + "\n.SH OPTIONS\n";
    for (const NotedWord& word : WordsOf(command)) page += Row(word);
    return page + ".SH DESCRIPTION\n" + AsItIs(command.example) + ".SH SEE ALSO\n.BR zek (1)\n";
}

}  // namespace zek::tool
