#include "word_items.h"

#include <algorithm>

#include "definition_order.h"
#include "failure.h"

namespace zek::tool {
namespace {

/// Nothing where the image does not tell the order in which its files were read.
std::map<std::string_view, SourceSpot> LastDefinitions(const DebugSource& source) {
    std::map<std::string_view, SourceSpot> last;
    try {
        for (const auto& [word, order] : FollowDefinitions(source, RecordedFiles(source)).words) {
            last.emplace(word, order.last);
        }
    } catch (const Failure&) {
        last.clear();
    }
    return last;
}

}  // namespace

WordItems::WordItems(const DebugSource& source, const std::map<std::string, unsigned>& names) : names_(names) {
    for (const DebugSection& section : source.sections) {
        for (const DebugEntry& entry : section.entries) {
            if (entry.given && IsDefinition(entry)) items_[entry.key].push_back({&section, &entry});
        }
    }
    last_ = LastDefinitions(source);
}

WordItem WordItems::Behind(std::string_view word) const {
    const auto found = items_.find(word);
    if (found == items_.end()) return {};
    const auto last = last_.find(word);
    if (last == last_.end()) return ByValue(word, found->second);
    const auto isThere = [&](const WordItem& each) { return each.item->spot == last->second; };
    const auto there = std::find_if(found->second.rbegin(), found->second.rend(), isThere);
    return there == found->second.rend() ? ByValue(word, found->second) : *there;
}

WordItem WordItems::ByValue(std::string_view word, const std::vector<WordItem>& items) const {
    const auto name = names_.find(std::string(word));
    const auto counts = [&](const WordItem& each) { return name != names_.end() && each.item->number == name->second; };
    const auto last = std::find_if(items.rbegin(), items.rend(), counts);
    // An item may tell another number than it gave: that of the word that it names, which was defined again below.
    return last == items.rend() ? items.back() : *last;
}

}  // namespace zek::tool
