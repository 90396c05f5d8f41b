#include "word_items.h"

#include <algorithm>

namespace zek::tool {

WordItems::WordItems(const DebugSource& source, const std::map<std::string, unsigned>& names) : names_(names) {
    for (const DebugSection& section : source.sections) {
        for (const DebugEntry& entry : section.entries) {
            if (entry.given && IsDefinition(entry)) items_[entry.key].push_back({&section, &entry});
        }
    }
}

WordItem WordItems::Behind(std::string_view word) const {
    const auto found = items_.find(word);
    if (found == items_.end()) return {};
    const std::vector<WordItem>& items = found->second;
    const auto name = names_.find(std::string(word));
    const auto counts = [&](const WordItem& each) { return name != names_.end() && each.item->number == name->second; };
    const auto last = std::find_if(items.rbegin(), items.rend(), counts);
    // An item may tell another number than it gave: that of the word that it names, which was defined again below.
    return last == items.rend() ? items.back() : *last;
}

}  // namespace zek::tool
