#include "columns.h"

#include <locale.h>
#include <sys/ioctl.h>
#include <unistd.h>
#include <wchar.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>

#include "printable.h"

namespace zek::tool {
namespace {

constexpr std::size_t kTabStop = 8;
constexpr std::size_t kUsualColumns = 80;

/// As long as it lives, characters are those of UTF-8, whatever the environment says.
class InUtf8 {
public:
    InUtf8() : before_(uselocale(Utf8())) {}
    ~InUtf8() { uselocale(before_); }
    InUtf8(const InUtf8&) = delete;
    InUtf8& operator=(const InUtf8&) = delete;

private:
    /// Null where the system lacks it; then nothing changes.
    static locale_t Utf8() {
        static const locale_t utf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
        return utf8;
    }

    locale_t before_;
};

/// What the table does not know takes one column, as terminals show it.
std::size_t WidthOf(const Character& character) {
    const int width = character.sound ? wcwidth(static_cast<wchar_t>(character.code)) : 1;
    return width < 0 ? 1 : static_cast<std::size_t>(width);
}

}  // namespace

std::size_t ColumnsOf(std::string_view shown, std::size_t begin) {
    const InUtf8 inUtf8;
    std::size_t column = begin;
    while (!shown.empty()) {
        const Character first = FirstCharacter(shown);
        column += first.code == '\t' ? kTabStop - column % kTabStop : WidthOf(first);
        shown.remove_prefix(first.length);
    }
    return column - begin;
}

std::string BlanksFor(std::string_view shown) {
    std::string blanks;
    while (!shown.empty()) {
        const std::size_t tab = std::min(shown.find('\t'), shown.size());
        blanks.append(ColumnsOf(shown.substr(0, tab)), ' ');
        if (tab < shown.size()) blanks += '\t';
        shown.remove_prefix(std::min(tab + 1, shown.size()));
    }
    return blanks;
}

bool IsTerminal(int descriptor) { return isatty(descriptor) != 0; }

std::size_t TerminalColumns(int descriptor) {
    const char* const wanted = std::getenv("COLUMNS");
    std::size_t columns = 0;
    if (wanted) std::from_chars(wanted, wanted + std::strlen(wanted), columns);
    return columns > 0 ? columns : WindowColumns(descriptor);
}

std::size_t WindowColumns(int descriptor) {
    winsize size{};
    return ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : kUsualColumns;
}

}  // namespace zek::tool
