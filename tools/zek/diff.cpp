#include "diff.h"

#include <algorithm>
#include <map>
#include <string_view>

#include "renames.h"
#include "section_keywords.h"
#include "section_path.h"

namespace zek::tool {
namespace {

std::string TypeOf(const std::string& value) { return value.substr(0, value.find(',')); }

bool IsTyped(const std::string& keyword, const std::string& key) {
    return keyword == "GLOBAL" || (keyword != "PROPERTY" && (key == "VALUE" || key.starts_with("VALUE_")));
}

/// Whether hosts ask for entries of that key: not for what stands in debug images alone.
bool IsAskedFor(const std::string& keyword, const std::string& key) {
    const bool isRead = keyword == "DEFINE" || keyword == "IFDEF" || keyword == kIncludeKeyword;
    return !isRead && (keyword != "TABLE" || key == "NAME" || key == "TYPE");
}

/// Whether a host that knew the value before is misled by the one after: a type of another kind, or another ID.
bool Breaks(const Difference& changed) {
    if (HasName(changed.keyword) && (changed.key == "ID" || changed.key == "TYPE")) return true;
    return IsTyped(changed.keyword, changed.key) && TypeOf(changed.before) != TypeOf(changed.after);
}

using ValuesByKey = std::map<std::string_view, const DescribedValue*>;

ValuesByKey ByKey(const DescribedSection& section) {
    ValuesByKey values;
    for (const DescribedValue& value : section.values) values.emplace(value.key, &value);
    return values;
}

std::string ByteText(char byte) { return std::to_string(static_cast<unsigned char>(byte)); }

class Comparison {
public:
    Comparison(const DescribedImage& before, const DescribedImage& after,
               const std::function<void(const Difference&)>& show)
        : before_(before), after_(after), renames_(before_, after_), show_(show) {}

    void Show() {
        for (const std::string& keyword : before_.Keywords()) ShowKind(keyword);
        for (const std::string& keyword : after_.Keywords()) {
            if (before_.Of(keyword).empty()) ShowKind(keyword);
        }
    }

private:
    void ShowKind(const std::string& keyword) {
        for (const Identity& identity : before_.Of(keyword)) {
            const DescribedSection& section = *before_.Find(keyword, identity);
            if (const DescribedSection* now = after_.Find(keyword, identity)) {
                ShowValues(section, *now);
            } else if (const Identity* renamed = renames_.NewOf(keyword, identity)) {
                show_({Change::kRenamed, keyword, identity.first, "", "", renamed->first, true});
            } else if (HasName(keyword)) {
                show_({Change::kRemoved, keyword, identity.first, "", "", "", true});
            } else {
                ShowValues(section, {keyword, ""});
            }
        }
        for (const Identity& identity : after_.Of(keyword)) {
            if (before_.Find(keyword, identity) || renames_.IsNew(keyword, identity)) continue;
            if (HasName(keyword)) {
                show_({Change::kAdded, keyword, identity.first});
            } else {
                ShowValues({keyword, ""}, *after_.Find(keyword, identity));
            }
        }
    }

    void ShowValues(const DescribedSection& before, const DescribedSection& after) {
        const ValuesByKey then = ByKey(before);
        const ValuesByKey now = ByKey(after);
        Difference difference = {Change::kChanged, before.keyword, before.name};
        for (const DescribedValue& value : before.values) {
            const auto found = now.find(value.key);
            if (found != now.end() && renames_.Applied(value) == found->second->text) continue;
            difference.key = value.key;
            difference.before = value.text;
            difference.after = found == now.end() ? "" : found->second->text;
            difference.change = found == now.end() ? Change::kRemoved : Change::kChanged;
            difference.breaks = found == now.end() ? IsAskedFor(before.keyword, value.key) : Breaks(difference);
            show_(difference);
        }
        for (const DescribedValue& value : after.values) {
            if (!then.contains(value.key))
                show_({Change::kAdded, after.keyword, after.name, value.key, "", value.text});
        }
        ShowBytes(before, after);
    }

    void ShowBytes(const DescribedSection& before, const DescribedSection& after) {
        for (std::size_t row = 0; row < std::min(before.bytes.size(), after.bytes.size()); ++row) {
            if (before.bytes[row] == after.bytes[row]) continue;
            show_({Change::kChanged, before.keyword, before.name, std::to_string(row), ByteText(before.bytes[row]),
                   ByteText(after.bytes[row])});
        }
    }

    NamedSections before_;
    NamedSections after_;
    Renames renames_;
    const std::function<void(const Difference&)>& show_;
};

}  // namespace

void Compare(const DescribedImage& before, const DescribedImage& after,
             const std::function<void(const Difference&)>& show) {
    Comparison(before, after, show).Show();
}

}  // namespace zek::tool
