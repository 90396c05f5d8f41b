#include "surplus_names.h"

#include <algorithm>
#include <set>
#include <string_view>

#include "decompile.h"
#include "image_bytes.h"

namespace zek::tool {
namespace {

constexpr std::size_t kDirectory = 128;
constexpr std::size_t kRecordHead = 8;
constexpr std::size_t kLongestName = std::size_t{1} << 20;

/// The names that were written, each with its NUL, and the length that the table says.
struct PropertyTable {
    std::string_view names;
    std::size_t length;
};

/// Whether an entry has a property name of that ordinal.
bool IsUsed(const ImageView& view, std::uint32_t ordinal) {
    for (const ImageView::Section section : view.AllSections()) {
        if (section.EntryWithId(kIdProperty + ordinal)) return true;
    }
    return false;
}

PropertyTable ReadTable(const ImageView& view) {
    const auto data = view.Bytes();
    const std::string_view bytes(reinterpret_cast<const char*>(data.data()), data.size());
    const std::size_t begin = WordAt(bytes, kDirectory) + kRecordHead;
    // Zeros fill the gap up to the next table, so what was written ends behind the last byte that is none. Only a last
    // name that is empty looks like the gap.
    const std::string_view gapped = bytes.substr(begin, WordAt(bytes, kDirectory + 4) - begin);
    const std::size_t last = gapped.find_last_not_of('\0');
    std::size_t size = last == std::string_view::npos ? 0 : last + 2;
    const auto count = std::count(gapped.begin(), gapped.begin() + static_cast<std::ptrdiff_t>(size), '\0');
    if (IsUsed(view, static_cast<std::uint32_t>(count))) ++size;
    return {gapped.substr(0, size), WordAt(bytes, begin - 4)};
}

std::set<std::string_view> NamesIn(std::string_view names) {
    std::set<std::string_view> all;
    while (!names.empty()) {
        const std::size_t end = std::min(names.find('\0'), names.size() - 1);
        all.insert(names.substr(0, end));
        names.remove_prefix(end + 1);
    }
    return all;
}

}  // namespace

std::optional<std::string> UnnumberedProperty(const ImageView& view) {
    const PropertyTable table = ReadTable(view);
    if (table.length <= table.names.size()) return std::nullopt;
    const std::size_t size = table.length - table.names.size() - 1;
    if (size > kLongestName) throw CannotExpress("the table of properties counts too many names");
    const std::set<std::string_view> numbered = NamesIn(table.names);
    // More names than the table has; of one character there may be too few.
    std::string name(size, 'a');
    for (std::size_t tries = 0; tries <= numbered.size(); ++tries) {
        if (!numbered.count(name)) return name;
        std::size_t place = 0;
        while (place < size && name[place] == '~') name[place++] = '!';
        if (place == size) break;
        do ++name[place];
        while (name[place] == '"' || name[place] == '=');
    }
    throw CannotExpress("the table of properties counts a name that would have to be one that it has");
}

}  // namespace zek::tool
