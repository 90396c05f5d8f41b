#include "man_page.h"

#include <algorithm>
#include <sstream>

#include "../help_text.h"
#include "../joined_text.h"
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

/// A paragraph, in lines that the formatter fills anew.
std::string Filled(const std::string& text) {
    constexpr std::size_t kWidth = 66;  // escapes make it longer
    std::string filled;
    std::istringstream rest(Wrapped(text, kWidth));
    for (std::string line; std::getline(rest, line);) filled += Plain(line) + '\n';
    return filled;
}

/// A term, written in the formatter's language, and what is said of it.
std::string Term(const std::string& term, const std::string& about) { return ".TP\n" + term + '\n' + Filled(about); }

std::string Row(const NotedWord& word) {
    std::string tag = Joined(word.names, ", ", Bold);
    if (!word.type.empty()) tag += (tag.empty() ? "" : " ") + Italic(word.type);
    return Term(tag, word.help);
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

std::string Description(const std::vector<std::string>& paragraphs) {
    std::string text = ".SH DESCRIPTION\n";
    for (const std::string& paragraph : paragraphs) {
        text += (&paragraph == &paragraphs.front() ? "" : ".PP\n") + Filled(paragraph);
    }
    return text;
}

std::string ExitStatus(const ExitCodes& exits) {
    std::string text = ".SH EXIT STATUS\n";
    for (std::size_t code = 0; code < exits.size(); ++code) {
        if (exits[code]) text += Term(Bold(std::to_string(code)), exits[code]);
    }
    return text;
}

std::string Environment(const std::vector<Variable>& variables) {
    std::string text = variables.empty() ? "" : ".SH ENVIRONMENT\n";
    for (const Variable& variable : variables) text += Term(Bold(variable.name), variable.about);
    return text;
}

std::string Examples(const std::vector<std::string>& examples) {
    std::string text = ".SH EXAMPLES\n.nf\n";
    for (const std::string& example : examples) text += Plain(example) + '\n';
    return text + ".fi\n";
}

/// The variables of all commands, each once.
std::vector<Variable> AllVariables() {
    std::vector<Variable> all;
    for (const CommandSpec& command : Commands()) {
        for (const Variable& variable : command.environment) {
            const auto isSame = [&](const Variable& other) { return other.name == variable.name; };
            if (std::none_of(all.begin(), all.end(), isSame)) all.push_back(variable);
        }
    }
    return all;
}

}  // namespace

std::string ManPage() {
    const HelpText parts = PartsOf(kExampleZek);
    std::string page = Header("zek", kAboutZek) + ".SH SYNOPSIS\n" + Bold("zek") + " [" + Bold("--help") + '|' +
                       Bold("--version") + "] " + Italic("COMMAND") + '\n' + Description(parts.paragraphs) +
                       ".SH COMMANDS\n";
    for (const CommandSpec& command : Commands()) {
        page += Term("\\fBzek\\-" + Plain(command.name) + "\\fR(1)", command.about);
    }
    return page + ExitStatus(kExitCodesZek) + Environment(AllVariables()) + Examples(parts.examples);
}

std::string ManPage(const CommandSpec& command) {
    const std::string name = command.name;
    const HelpText parts = PartsOf(command.example);
    std::string page = Header("zek-" + name, command.about) + ".SH SYNOPSIS\n" + Bold("zek " + name) + " [" +
                       Italic("OPTIONS") + ']' + Operands(command) + '\n' + Description(parts.paragraphs) +
                       ".SH OPTIONS\n";
    for (const NotedWord& word : WordsOf(command)) page += Row(word);
    return page + ExitStatus(command.exits) + Environment(command.environment) + Examples(parts.examples) +
           ".SH SEE ALSO\n.BR zek (1)\n";
}

}  // namespace zek::tool
