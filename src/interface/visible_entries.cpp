#include "interface/visible_entries.h"

#include <algorithm>
#include <iterator>

#include "model/state.h"

namespace zek {

namespace {

/// A section of no more entries than this is read at every call: that is quick, and whatever a host changes in it is
/// seen.
constexpr std::size_t kReadAtOnce = 64;

}  // namespace

const std::vector<CZEKEntry*>& VisibleEntries::Of(const CZEKSection& section) {
    const auto& entries = section.m_vpEntry;
    const bool kept = section_ == &section && changes_ == g_modelChanges && entries_ == entries.size();
    if (kept && entries.size() > kReadAtOnce) return visible_;
    section_ = nullptr;
    visible_.clear();
    std::copy_if(entries.begin(), entries.end(), std::back_inserter(visible_),
                 [](const CZEKEntry* entry) { return HoldsData(*entry); });
    section_ = &section;
    changes_ = g_modelChanges;
    entries_ = entries.size();
    return visible_;
}

}  // namespace zek
