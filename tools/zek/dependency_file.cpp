#include "dependency_file.h"

#include <algorithm>
#include <string_view>

#include "failure.h"

namespace zek::tool {
namespace {

// What follows is what GNU Make and Ninja read alike, found by trying each character.
constexpr std::string_view kImpossible = "\"'*;<=>?[^`&|";
constexpr std::string_view kEscaped = " #:";
// Make takes what ends with a parenthesis for a member of an archive.
constexpr std::string_view kImpossibleAtTheEnd = " :\\)";

bool IsControl(char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7f'; }

/// Make halves backslashes before what is escaped, Ninja does so only before a blank.
bool EscapesWhatFollows(const std::string& name, std::size_t at) {
    const std::size_t next = name.find_first_not_of('\\', at);
    return name[at] == '\\' && next != name.npos && kEscaped.find(name[next]) != kEscaped.npos;
}

/// Make takes a tilde at the beginning for somebody's home, and looks for it behind "./" too.
bool BeginsAsHome(std::string_view name) {
    while (name.starts_with("./")) name.remove_prefix(std::min(name.find_first_not_of('/', 1), name.size()));
    return name.starts_with('~');
}

bool CanStand(const std::string& name) {
    if (name.empty() || kImpossibleAtTheEnd.find(name.back()) != kImpossibleAtTheEnd.npos) return false;
    if (BeginsAsHome(name)) return false;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (IsControl(name[i]) || kImpossible.find(name[i]) != kImpossible.npos) return false;
        if (EscapesWhatFollows(name, i)) return false;
    }
    return true;
}

std::string Escaped(const std::string& name) {
    if (!CanStand(name)) {
        throw Failure(kUsageOrFiles, "there is no way to write a name for both Make and Ninja: " + name);
    }
    std::string text;
    for (const char c : name) {
        if (kEscaped.find(c) != kEscaped.npos) text += '\\';
        text += c;
        if (c == '$') text += '$';
    }
    return text;
}

/// In a target, Make takes a percent sign for a pattern.
bool IsPattern(const std::string& name) { return name.find('%') != name.npos; }

}  // namespace

std::string DependencyRules(const std::vector<std::string>& outputs, const std::vector<std::string>& inputs) {
    std::string rules;
    for (const std::string& output : outputs) {
        if (IsPattern(output)) {
            throw Failure(kUsageOrFiles, "Make takes the name of an output for a pattern: " + output);
        }
        rules += (rules.empty() ? "" : " ") + Escaped(output);
    }
    rules += ':';
    for (const std::string& input : inputs) rules += " \\\n  " + Escaped(input);
    rules += '\n';
    for (std::size_t i = 1; i < inputs.size(); ++i) {
        if (!IsPattern(inputs[i])) rules += '\n' + Escaped(inputs[i]) + ":\n";
    }
    return rules;
}

}  // namespace zek::tool
