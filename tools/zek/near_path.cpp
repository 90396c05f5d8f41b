#include "near_path.h"

#include "printable.h"
#include "suggestion.h"

namespace zek::tool {

void NearPath::Add(const ShownSection& section) {
    if (section.name) names_.insert(*section.name);
    if (!IsMeant(path_, section)) return;
    isThere_ = true;
    for (const ShownEntry& entry : section.entries) keys_.insert(entry.key);
}

void NearPath::AddKey(const std::string& key) {
    isThere_ = true;
    keys_.insert(key);
}

std::string NearPath::Told() const {
    SectionPath near = path_;
    if (!isThere_ && !near.name) return {};
    std::string& wrong = isThere_ ? near.key : *near.name;
    const auto nearest = NearestName(wrong, isThere_ ? keys_ : names_);
    if (!nearest) return {};
    wrong = *nearest;
    return "; did you mean " + Printable(TextOf(near)) + '?';
}

}  // namespace zek::tool
