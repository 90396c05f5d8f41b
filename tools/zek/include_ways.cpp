#include "include_ways.h"

#include <functional>
#include <utility>

#include "debug_lines.h"

namespace zek::tool {
namespace {

/// Goes from a file to those that include it, as far up as it gets, and back to where another item leads on.
class Climber {
public:
    using Asking = std::function<const std::vector<SourceSpot>&(std::uint32_t file)>;

    Climber(std::size_t files, Asking asking) : isOpen_(files), asking_(std::move(asking)) {}

    IncludeWays::Ways From(std::uint32_t file) {
        Enter(file);
        while (!levels_.empty() && !ways_.areMore) {
            if (const SourceSpot* const item = NextItem()) {
                way_.push_back(*item);
                Enter(item->file);
            } else {
                Leave();
            }
        }
        return std::move(ways_);
    }

private:
    struct Level {
        std::uint32_t file;
        std::size_t next = 0;  // of the items that ask for the file
        bool isTop = true;     // none of them led on so far
    };

    void Enter(std::uint32_t file) {
        isOpen_[file] = true;
        levels_.push_back({file});
    }

    /// Null where no other leads on. No file leads to itself in a source that was compiled, but a damaged image may
    /// say so.
    const SourceSpot* NextItem() {
        Level& level = levels_.back();
        for (const std::vector<SourceSpot>& items = asking_(level.file); level.next < items.size();) {
            const SourceSpot& item = items[level.next++];
            if (isOpen_[item.file]) continue;
            level.isTop = false;
            return &item;
        }
        return nullptr;
    }

    void Leave() {
        const Level level = levels_.back();
        levels_.pop_back();
        isOpen_[level.file] = false;
        if (way_.empty()) return;
        if (level.isTop && ways_.told.size() == IncludeWays::kMost) ways_.areMore = true;
        if (level.isTop && !ways_.areMore) ways_.told.push_back(way_);
        way_.pop_back();
    }

    std::vector<bool> isOpen_;  // whether the way leads through a file
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
    return Climber(source_.files.size(), asking).From(file);
}
}  // namespace zek::tool
