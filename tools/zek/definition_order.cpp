#include "definition_order.h"

#include <algorithm>

#include "decompile.h"
#include "failure.h"
#include "file_placing.h"

namespace zek::tool {
namespace {

constexpr std::size_t kMostReadings = 10000;

class Follower {
public:
    Follower(const DebugSource& source, const std::vector<RecordedFile>& files)
        : source_(source), files_(files), timesRead_(files.size()) {
        for (std::size_t i = 0; i < source.files.size(); ++i) positions_.emplace(source.files[i], i);
    }

    void Read(std::size_t file) {
        // The parser library refuses a file that is being read.
        if (std::find(open_.begin(), open_.end(), file) != open_.end()) return;
        if (++readings_ > kMostReadings) throw CannotExpress("its files are included too often");
        ++timesRead_[file];
        open_.push_back(file);
        for (const auto& [number, line] : files_[file]) Take(file, number, line);
        open_.pop_back();
    }

    /// Throws where a section was not read as often as its file, so that another file of the name has it.
    void RequireOneFileOfEachName() const {
        for (std::size_t file = 0; file < files_.size(); ++file) {
            for (const auto& [number, line] : files_[file]) {
                if (line.entry || timesRead_[file] == 0 || line.times == timesRead_[file]) continue;
                throw CannotExpress(source_.Told(line.section->spot) +
                                    ": this section was not read each time that the file was" + kTwoFiles);
            }
        }
    }

    DefinitionOrder definitions;

private:
    void Take(std::size_t file, std::uint32_t number, const RecordedLine& line) {
        if (!line.entry) return;
        if (IsDefinition(*line.entry)) {
            const SourceSpot spot = {static_cast<std::uint32_t>(file), number};
            definitions.words.emplace(line.entry->key, DefinitionOrder::Word{place_, spot}).first->second.last = spot;
            definitions.places[spot] = place_++;
        }
        if (!IsInclude(line)) return;
        const auto found = positions_.find(AskedName(source_.files[file], *line.entry));
        if (found != positions_.end()) Read(found->second);
    }

    const DebugSource& source_;
    const std::vector<RecordedFile>& files_;
    std::map<std::string, std::size_t, std::less<>> positions_;
    std::vector<std::size_t> open_;
    std::size_t readings_ = 0;
    std::vector<std::size_t> timesRead_;  // each file
    std::size_t place_ = 0;               // of the next definition
};

}  // namespace

DefinitionOrder FollowDefinitions(const DebugSource& source, const std::vector<RecordedFile>& files) {
    const std::size_t main = MainFile(files);
    if (main == files.size()) return {};
    Follower follower(source, files);
    follower.Read(main);
    follower.RequireOneFileOfEachName();
    for (const RecordedFile& file : files) {
        for (const auto& [number, line] : file) {
            if (line.entry && IsDefinition(*line.entry)) ++follower.definitions.spotCount[line.entry->key];
        }
    }
    return std::move(follower.definitions);
}

}  // namespace zek::tool
