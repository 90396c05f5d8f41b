#include "file_placing.h"

#include <algorithm>

#include "decompile.h"
#include "failure.h"
#include "joined_text.h"
#include "paths.h"
#include "printable.h"
#include "source_reading.h"

namespace zek::tool {
namespace {

constexpr std::size_t kMostPlaces = 10000;

/// The parts of a path between its slashes, without those that mean nothing.
std::vector<std::string> PartsOfPath(const std::string& path) {
    std::vector<std::string> parts;
    for (std::size_t at = 0; at <= path.size();) {
        const std::size_t slash = std::min(path.find('/', at), path.size());
        const std::string part = path.substr(at, slash - at);
        if (!part.empty() && part != ".") parts.push_back(part);
        at = slash + 1;
    }
    return parts;
}

/// Whether a name leads to a file inside the folder that it is looked for in.
bool StaysInside(const std::string& name) {
    const std::string path = WithSlashes(name);
    const std::vector<std::string> parts = PartsOfPath(path);
    return !path.starts_with('/') && !path.ends_with('/') && !parts.empty() &&
           std::find(parts.begin(), parts.end(), "..") == parts.end();
}

/// A name that does, made of one that does not: the folder above the outermost is that one itself.
std::string Inside(const std::string& name) {
    std::vector<std::string> parts;
    for (const std::string& part : PartsOfPath(WithSlashes(name))) {
        if (part != "..") {
            parts.push_back(part);
        } else if (!parts.empty()) {
            parts.pop_back();
        }
    }
    return parts.empty() ? "file.zek" : Joined(parts, "/");
}

/// A name that can be told on a line of its own.
std::string OnOneLine(std::string name) {
    std::replace(name.begin(), name.end(), '\n', '_');
    return name;
}

class Placing {
public:
    Placing(const DebugSource& source, const std::vector<RecordedFile>& files) : source_(source), files_(files) {
        for (std::size_t i = 0; i < source.files.size(); ++i) positions_.emplace(source.files[i], i);
    }

    std::vector<PlacedFile> Run() {
        const std::string main(source_.files[MainFile(files_)]);
        const std::string inside = Inside(main);
        // By its own name beside the files that it includes, wherever it was.
        Place(OnOneLine(StaysInside(main) ? main : inside.substr(inside.rfind('/') + 1)), main);
        for (std::size_t i = 0; i < placed_.size(); ++i) PlaceIncludes(i);
        return std::move(placed_);
    }

private:
    void PlaceIncludes(std::size_t position) {
        const std::optional<std::size_t> file = placed_[position].file;
        if (!file) return;
        for (const auto& [number, line] : files_[*file]) {
            if (IsInclude(line)) PlaceInclude(position, number, *line.entry);
        }
    }

    void PlaceInclude(std::size_t position, std::uint32_t number, const DebugEntry& entry) {
        const std::string folder = BackslashFolder(placed_[position].name);
        const std::string recorded = AskedName(placed_[position].recorded, entry);
        const std::string text(entry.texts.empty() ? "" : entry.texts[0]);
        std::string wanted = StaysInside(folder + text) ? text : Inside(text);
        while (!CanPlace(folder + wanted, recorded)) wanted = Another(wanted);
        Place(folder + wanted, recorded);
        if (wanted != text) placed_[position].includes[number] = wanted;
    }

    /// Whether the place of a name is free, or taken by the same file.
    bool CanPlace(const std::string& name, const std::string& recorded) const {
        const auto taken = paths_.find(Inside(name));
        return taken == paths_.end() || placed_[taken->second].recorded == recorded ||
               placed_[taken->second].name != name;
    }

    static std::string Another(const std::string& name) { return "other-" + name; }

    void Place(const std::string& name, const std::string& recorded) {
        if (std::any_of(placed_.begin(), placed_.end(), [&](const PlacedFile& file) { return file.name == name; })) {
            return;
        }
        if (placed_.size() >= kMostPlaces) throw CannotExpress("there are too many files");
        if (name.find('\0') != std::string::npos) throw CannotExpress("no file can be called " + Quoted(name));
        const auto found = positions_.find(recorded);
        PlacedFile file = {name, recorded, Inside(name)};
        if (found != positions_.end()) file.file = found->second;
        paths_.emplace(file.path, placed_.size());
        placed_.push_back(std::move(file));
    }

    const DebugSource& source_;
    const std::vector<RecordedFile>& files_;
    std::map<std::string_view, std::size_t> positions_;
    std::map<std::string, std::size_t> paths_;  // of the first file placed there
    std::vector<PlacedFile> placed_;
};

}  // namespace

std::vector<PlacedFile> PlaceFiles(const DebugSource& source, const std::vector<RecordedFile>& files) {
    return Placing(source, files).Run();
}

std::size_t MainFile(const std::vector<RecordedFile>& files) {
    // The compiler notes a file when it reads the first section of it, so the main source is the first to be noted.
    const auto first = std::find_if(files.begin(), files.end(), [](const RecordedFile& file) { return !file.empty(); });
    return static_cast<std::size_t>(first - files.begin());
}

}  // namespace zek::tool
