#include "interface/visible_entries.h"

#include <algorithm>
#include <iterator>

#include "model/state.h"

namespace zek {

namespace {

/// A section of no more entries than this is read at every call: that is quick, and whatever a host changes in it is
/// seen.
constexpr std::size_t kReadAtOnce = 64;

const std::vector<CZEKEntry*>& Read(const CZEKSection& section, std::vector<CZEKEntry*>& visible) {
    visible.clear();
    std::copy_if(section.m_vpEntry.begin(), section.m_vpEntry.end(), std::back_inserter(visible),
                 [](const CZEKEntry* entry) { return HoldsData(*entry); });
    return visible;
}

}  // namespace

const std::vector<CZEKEntry*>& VisibleEntries::Of(const CZEKSection& section) {
    return section.m_vpEntry.size() <= kReadAtOnce ? Read(section, short_) : OfLong(section);
}

const std::vector<CZEKEntry*>& VisibleEntries::OfLong(const CZEKSection& section) {
    if (changes_ != g_modelChanges) {
        long_.clear();
        changes_ = g_modelChanges;
    }
    Kept& kept = long_[&section];
    if (kept.entries != section.m_vpEntry.size()) {
        kept.entries = 0;
        Read(section, kept.visible);
        kept.entries = section.m_vpEntry.size();
    }
    return kept.visible;
}

}  // namespace zek
