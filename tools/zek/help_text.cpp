#include "help_text.h"

#include <sstream>

#include "columns.h"

namespace zek::tool {
namespace {

constexpr std::size_t kWidth = 80;
constexpr char kExampleMark[] = "  ";
constexpr char kExampleTitle[] = "Example:";

}  // namespace

HelpText PartsOf(const std::string& text) {
    HelpText parts;
    bool goesOn = false;  // the last paragraph does
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const bool isExample = line.starts_with(kExampleMark);
        if (isExample) parts.examples.push_back(line.substr(std::string_view(kExampleMark).size()));
        if (isExample || line.empty() || line == kExampleTitle) {
            goesOn = false;
            continue;
        }
        if (goesOn) parts.paragraphs.back() += ' ' + line;
        if (!goesOn) parts.paragraphs.push_back(line);
        goesOn = true;
    }
    return parts;
}

std::string Wrapped(const std::string& text, std::size_t width, const std::string& indent) {
    std::string wrapped;
    std::size_t column = 0;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        const std::size_t columns = ColumnsOf(word);
        const bool fits = column + 1 + columns <= width;
        if (column > 0) wrapped += fits ? " " : '\n' + indent;
        column = (column > 0 && fits ? column + 1 : wrapped.empty() ? 0 : ColumnsOf(indent)) + columns;
        wrapped += word;
    }
    return wrapped;
}

std::string HelpBelowOptions(const std::string& text, const ExitCodes& exits) {
    const HelpText parts = PartsOf(text);
    std::string help = kExampleTitle + std::string("\n");
    for (const std::string& example : parts.examples) help += kExampleMark + example + '\n';
    for (const std::string& paragraph : parts.paragraphs) help += '\n' + Wrapped(paragraph, kWidth) + '\n';
    help += "\nExit codes:";
    for (std::size_t code = 0; code < exits.size(); ++code) {
        if (exits[code]) help += "\n  " + Wrapped(std::to_string(code) + ' ' + exits[code], kWidth - 2, "    ");
    }
    return help;
}

}  // namespace zek::tool
