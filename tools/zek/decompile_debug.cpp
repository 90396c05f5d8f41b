#include <algorithm>
#include <memory>
#include <set>

#include "debug_lines.h"
#include "debug_source.h"
#include "decompile.h"
#include "definition_order.h"
#include "definitions.h"
#include "failure.h"
#include "file_placing.h"
#include "image_bytes.h"
#include "printable.h"
#include "source_reading.h"

namespace zek::tool {
namespace {

/// By number, the word that stands for it when all is read and is defined last.
using LatestWords = std::map<unsigned, std::pair<std::size_t, std::string>>;

LatestWords LatestWordsOf(const std::map<std::string, unsigned>& words, const DefinitionOrder& order) {
    LatestWords latest;
    for (const auto& [word, number] : words) {
        const auto found = order.words.find(word);
        if (found == order.words.end()) continue;
        const std::pair<std::size_t, std::string> candidate = {found->second.first, word};
        const auto [there, isNew] = latest.emplace(number, candidate);
        if (!isNew && there->second.first < candidate.first) there->second = candidate;
    }
    return latest;
}

/// A debug image and what was found out about it.
struct Origin {
    DebugSource source;
    std::map<std::string, unsigned> words;
    std::vector<RecordedFile> files;
    DefinitionOrder definitions;
    LatestWords latest;
    std::vector<PlacedFile> placed;
};

/// What a source without sections is called, since no section tells.
constexpr char kUnnamedMain[] = "main.zek";

Origin OriginOf(std::string_view image) {
    Origin origin = {ReadDebugSource(image), PredefinedNames(image), {}, {}, {}, {}};
    origin.files = RecordedFiles(origin.source);
    if (origin.source.sections.empty()) {
        origin.placed = {{kUnnamedMain, kUnnamedMain, kUnnamedMain}};
        return origin;
    }
    origin.definitions = FollowDefinitions(origin.source, origin.files);
    origin.latest = LatestWordsOf(origin.words, origin.definitions);
    origin.placed = PlaceFiles(origin.source, origin.files);
    return origin;
}

/// The value of a definition. What the table of words says of the last definition of a word counts; the definition's
/// own number may have been converted again since, with words that were defined behind it. One that is in no table
/// failed when it was read, and no later: its word was defined behind it.
std::string ValueOf(const Origin& origin, const SourceSpot& spot, const DebugEntry& entry) {
    const auto word = origin.words.find(std::string(entry.key));
    const auto known = origin.definitions.words.find(entry.key);
    const auto place = origin.definitions.places.find(spot);
    if (word != origin.words.end()) {
        const bool isLast = known != origin.definitions.words.end() && known->second.last == spot;
        return std::to_string(isLast ? word->second : entry.number);
    }
    const auto later = origin.latest.find(entry.number);
    const bool isLater =
        place != origin.definitions.places.end() && later != origin.latest.end() && later->second.first > place->second;
    return isLater ? later->second.second : std::to_string(entry.number);
}

std::string LineOf(const Origin& origin, const PlacedFile& placed, std::uint32_t number, const RecordedLine& line) {
    if (!line.entry) return '[' + std::string(line.section->keyword) + ']';
    std::vector<std::string_view> texts = TextsOf(*line.entry);
    std::string text;
    const SourceSpot spot = {static_cast<std::uint32_t>(*placed.file), number};
    const auto include = placed.includes.find(number);
    if (include != placed.includes.end()) texts = {include->second};
    if (IsDefinition(*line.entry)) {
        text = ValueOf(origin, spot, *line.entry);
        texts = {text};
    }
    std::optional<std::string> item = ItemLine(line.entry->key, texts);
    if (!item) {
        throw CannotExpress(origin.source.Told(spot) + ": no item of a source has the key " + Quoted(line.entry->key) +
                            " and such a value");
    }
    return *std::move(item);
}

std::string TextOfFile(const Origin& origin, const PlacedFile& placed) {
    WrittenText text;
    if (!placed.file) return {};
    for (const auto& [number, line] : origin.files[*placed.file]) {
        text.SkipTo(number);
        text.Add(LineOf(origin, placed, number, line));
    }
    return text.Text();
}

/// Throws where a file would have to be the folder of another; `files` have their paths as keys.
void RequireFolders(const std::map<std::string, std::size_t>& files) {
    for (const auto& [path, position] : files) {
        for (std::size_t slash = 0; (slash = path.find('/', slash)) != std::string::npos; ++slash) {
            if (!files.count(path.substr(0, slash))) continue;
            throw CannotExpress(path.substr(0, slash) + " would be a file and the folder of " + path);
        }
    }
}

std::vector<WrittenFile> FilesOf(const Origin& origin) {
    std::vector<WrittenFile> files;
    std::map<std::string, std::size_t> positions;
    for (const PlacedFile& placed : origin.placed) {
        std::string text = TextOfFile(origin, placed);
        const auto [there, isNew] = positions.emplace(placed.path, files.size());
        if (isNew) {
            files.push_back({placed.path, std::move(text)});
        } else if (files[there->second].text != text) {
            throw CannotExpress("two different files were read by names of the file " + placed.path);
        }
    }
    RequireFolders(positions);
    return files;
}

void RequireSize(const Origin& origin) {
    std::uint64_t lines = 0;
    for (const PlacedFile& placed : origin.placed) {
        if (placed.file && !origin.files[*placed.file].empty()) lines += origin.files[*placed.file].rbegin()->first;
    }
    if (lines > kMostLines) throw CannotExpress("its files would have " + std::to_string(lines) + " lines");
}

void RequireReached(const Origin& origin) {
    std::set<std::size_t> reached;
    for (const PlacedFile& placed : origin.placed) {
        if (placed.file) reached.insert(*placed.file);
    }
    for (std::size_t i = 0; i < origin.files.size(); ++i) {
        if (origin.files[i].empty() || reached.count(i)) continue;
        throw CannotExpress("no [INCLUDE] leads to the file " + std::string(origin.source.files[i]));
    }
}

/// The words that only the outside can have defined.
std::vector<std::string> DefinitionsOutside(const Origin& origin) {
    std::vector<std::string> definitions;
    for (const auto& [word, number] : origin.words) {
        if (origin.definitions.words.count(word)) continue;
        const std::string why = WhyNoWord(word);
        if (!why.empty()) throw CannotExpress("no item defines the word " + Quoted(word) + ", nor can -D: " + why);
        definitions.push_back(word + '=' + std::to_string(number));
    }
    return definitions;
}

/// Compares the debug image of the source that was made with the one that it was made of.
class Comparison {
public:
    Comparison(const Origin& origin, std::string_view image, const std::string& main)
        : origin_(origin), got_(ReadDebugSource(image)), words_(PredefinedNames(image)) {
        for (const PlacedFile& placed : origin.placed) recorded_.emplace(placed.name, placed.recorded);
        recorded_.emplace(main, origin.placed.front().recorded);
    }

    std::string Difference() const {
        if (words_ != origin_.words) return WordDifference();
        const auto& wanted = origin_.source.sections;
        for (std::size_t i = 0; i < std::min(wanted.size(), got_.sections.size()); ++i) {
            const std::string where = DifferenceOf(wanted[i], got_.sections[i]);
            if (!where.empty()) return where;
        }
        if (wanted.size() == got_.sections.size()) return {};
        return "it has " + Counted(got_.sections.size(), "section", "sections") + " instead of " +
               std::to_string(wanted.size());
    }

private:
    /// The first word that only one of them defines, or that has two values.
    std::string WordDifference() const {
        const auto [wanted, got] =
            std::mismatch(origin_.words.begin(), origin_.words.end(), words_.begin(), words_.end());
        const bool isWanted = got == words_.end() || (wanted != origin_.words.end() && wanted->first <= got->first);
        return "the word " + Quoted(isWanted ? wanted->first : got->first);
    }

    std::string DifferenceOf(const DebugSection& wanted, const DebugSection& got) const {
        const std::string place = origin_.source.Told(wanted.spot) + ": [" + std::string(wanted.keyword) + ']';
        if (wanted.kind != got.kind || !IsSameSpot(wanted.spot, got.spot) ||
            wanted.entries.size() != got.entries.size()) {
            return place;
        }
        for (std::size_t i = 0; i < wanted.entries.size(); ++i) {
            if (IsSame(wanted.entries[i], got.entries[i])) continue;
            return origin_.source.Told(wanted.entries[i].spot) + ": [" + std::string(wanted.keyword) +
                   "]:" + Printable(wanted.entries[i].key);
        }
        return {};
    }

    bool IsSame(const DebugEntry& wanted, const DebugEntry& got) const {
        if (wanted.key != got.key || wanted.type != got.type || wanted.given != got.given) return false;
        if (!wanted.given) return true;
        if (!IsSameSpot(wanted.spot, got.spot)) return false;
        if (IsDefinition(wanted)) return wanted.number == got.number || MayDiffer(wanted);
        return wanted.number == got.number && (wanted.texts == got.texts || IsSameInclude(wanted, got));
    }

    /// Whether a definition may have another number: where its word is defined on another line too, and where it was
    /// converted again after the table took it.
    bool MayDiffer(const DebugEntry& definition) const {
        const auto count = origin_.definitions.spotCount.find(definition.key);
        const auto word = words_.find(std::string(definition.key));
        return (count != origin_.definitions.spotCount.end() && count->second > 1) ||
               (word != words_.end() && word->second != definition.number);
    }

    std::string RecordedName(const std::string& name) const {
        const auto found = recorded_.find(name);
        return found == recorded_.end() ? name : found->second;
    }

    bool IsSameSpot(const SourceSpot& wanted, const SourceSpot& got) const {
        return wanted.line == got.line &&
               RecordedName(std::string(got_.files[got.file])) == origin_.source.files[wanted.file];
    }

    /// Whether two items include one file, whatever it is called.
    bool IsSameInclude(const DebugEntry& wanted, const DebugEntry& got) const {
        if (got.texts.size() != 1 || wanted.texts.size() != 1) return false;
        const auto change = std::find_if(origin_.placed.begin(), origin_.placed.end(), [&](const PlacedFile& placed) {
            return placed.name == got_.files[got.spot.file] && placed.includes.count(got.spot.line);
        });
        return change != origin_.placed.end() && change->includes.at(got.spot.line) == got.texts[0];
    }

    const Origin& origin_;
    DebugSource got_;
    std::map<std::string, unsigned> words_;
    std::map<std::string, std::string> recorded_;  // names by what they are called now
};

}  // namespace

Decompiled DecompileDebug(std::string_view image) {
    const auto origin = std::make_shared<const Origin>(OriginOf(image));
    RequireReached(*origin);
    RequireSize(*origin);
    Decompiled made;
    made.main = origin->placed.front().name;
    made.files = FilesOf(*origin);
    made.definitions = DefinitionsOutside(*origin);
    made.debugDifference = [origin](std::string_view debug, const std::string& main) {
        return Comparison(*origin, debug, main).Difference();
    };
    return made;
}

}  // namespace zek::tool
