#include "include_ways.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "debug_lines.h"

namespace zek::tool {
namespace {

/// As deep as the parser library goes into includes.
constexpr std::size_t kDeepest = 256;

/// Goes from a file to those that include it, as far up as it gets, and back to where another item leads on.
class Climber {
public:
    using Asking = std::function<const std::vector<SourceSpot>&(std::uint32_t file)>;

    explicit Climber(Asking asking) : asking_(std::move(asking)) {}

    IncludeWays::Ways From(std::uint32_t file) {
        levels_.push_back({file});
        while (!levels_.empty() && !ways_.areMore) {
            if (const SourceSpot* const item = NextItem()) {
                way_.push_back(*item);
                levels_.push_back({item->file, item});
            } else {
                Leave();
            }
        }
        return std::move(ways_);
    }

private:
    struct Level {
        std::uint32_t file;
        const SourceSpot* item = nullptr;  // that led here
        std::size_t next = 0;              // of the items that ask for the file
        bool isTop = true;                 // none of them led on so far
    };

    bool IsOnWay(const SourceSpot& item) const {
        return std::any_of(levels_.begin(), levels_.end(), [&](const Level& level) { return level.item == &item; });
    }

    /// Null where no other leads on. A file may lead to another of its name, but no item to itself.
    const SourceSpot* NextItem() {
        if (levels_.size() > kDeepest) return nullptr;
        Level& level = levels_.back();
        for (const std::vector<SourceSpot>& items = asking_(level.file); level.next < items.size();) {
            const SourceSpot& item = items[level.next++];
            if (IsOnWay(item)) continue;
            level.isTop = false;
            return &item;
        }
        return nullptr;
    }

    void Leave() {
        const Level level = levels_.back();
        levels_.pop_back();
        if (way_.empty()) return;
        if (level.isTop && ways_.told.size() == IncludeWays::kMost) ways_.areMore = true;
        if (level.isTop && !ways_.areMore) ways_.told.push_back(way_);
        way_.pop_back();
    }

    Asking asking_;
    std::vector<Level> levels_;
    IncludeWay way_;
    IncludeWays::Ways ways_;
};

const std::vector<SourceSpot> kNobody;

}  // namespace

IncludeWays::IncludeWays(const DebugSource& source) : source_(source) {
    for (const RecordedLine& line : IncludeItems(source)) {
        const SourceSpot& spot = line.entry->spot;
        if (spot.file < source.files.size()) items_[AskedName(source.files[spot.file], *line.entry)].push_back(spot);
    }
}

IncludeWays::Ways IncludeWays::To(std::uint32_t file) const {
    if (file >= source_.files.size()) return {};
    const auto asking = [&](std::uint32_t each) -> const Spots& {
        const auto found = items_.find(source_.files[each]);
        return found == items_.end() ? kNobody : found->second;
    };
    return Climber(asking).From(file);
}

}  // namespace zek::tool
