#include <map>
#include <memory>
#include <optional>
#include <string>

#include "command.h"
#include "debug_lines.h"
#include "failure.h"
#include "image_check.h"
#include "include_ways.h"
#include "json_output.h"
#include "near_path.h"
#include "origin.h"
#include "pair_check.h"
#include "printable.h"
#include "progress.h"
#include "source_pairing.h"
#include "word_json.h"
#include "word_text.h"

namespace zek::tool {
namespace {

constexpr char kOriginExample[] =
    "Example:\n"
    "  zek origin board.zkd SENSOR/CPU0_TEMP/VALUE board.zki\n"
    "\n"
    "Shows where a value of the debug image was written, and where what it names was: the words of [DEFINE] and "
    "[IFDEF]\n"
    "with their numbers, globals, values, actions, tables and groups, sensors and views by their IDs; for each the\n"
    "includes that lead there. With the compiled image of the same source, the words that the value became. PATH is "
    "as\n"
    "for 'zek get'; a byte of a table leads to the row that set it, a word to the item that gives it its value.";

struct OriginOptions {
    std::string debug;
    std::string path;
    std::string compiled;
    bool json = false;
};

/// The words that an entry became; nothing where the image has no such entry.
std::optional<std::vector<ShownWord>> WordsOf(const Image& image, const DebugSource& source, const Origin& origin) {
    const SourcePairing pairing(source);
    std::optional<std::vector<ShownWord>> words;
    image.ForEachSectionOf(origin.section->keyword, [&](const ShownSection& section) {
        if (words || pairing.SectionOf(section) != origin.section) return;
        const std::vector<const DebugEntry*> entries = SourcePairing::EntriesOf(section, *origin.section);
        for (std::size_t i = 0; i < entries.size(); ++i) {
            if (entries[i] == origin.entry) words = section.entries[i].words;
        }
    });
    if (words && origin.element && *origin.element < words->size()) return {{(*words)[*origin.element]}};
    return words;
}

class OriginWriter {
public:
    explicit OriginWriter(const DebugSource& source) : source_(source), ways_(source) {}

    void WriteAsText(const Origin& origin, const std::optional<std::vector<ShownWord>>& words, bool compiled) {
        for (const OriginStep& step : origin.steps) {
            const std::string place = step.spot.line ? source_.Told(step.spot) : "predefined";
            out_.Write(place + ": " + step.what + ' ' + Printable(step.text) + '\n');
            WriteWays(WaysTo(step));
        }
        if (compiled) out_.Write(words ? "compiled:\n" : "compiled: no entry of its own\n");
        for (const ShownWord& word : words.value_or(std::vector<ShownWord>())) out_.Write("  " + ToldWord(word) + '\n');
        out_.Finish();
    }

    void WriteAsJson(const std::string& path, const Origin& origin,
                     const std::optional<std::vector<ShownWord>>& words) {
        JsonOutput json(out_, "zek-origin/1");
        json.Member("path", JsonText(path));
        json.BeginArray("steps");
        for (const OriginStep& step : origin.steps) json.Element(JsonOf(step));
        json.End();
        if (words) WriteWords(json, "words", *words);
        json.Finish();
    }

private:
    IncludeWays::Ways WaysTo(const OriginStep& step) const {
        return step.spot.line ? ways_.To(step.spot.file) : IncludeWays::Ways();
    }

    void WriteWays(const IncludeWays::Ways& ways) {
        const char* before = "";
        for (const IncludeWay& way : ways.told) {
            for (const SourceSpot& spot : way) {
                out_.Write(std::string("  ") + before + "included from " + source_.Told(spot) + '\n');
                before = "";
            }
            before = "or ";
        }
        if (ways.areMore) out_.Write("  or included in other ways\n");
    }

    void AddSpot(Json& json, const SourceSpot& spot) const {
        if (spot.line == 0) return;
        if (spot.file < source_.files.size()) json["file"] = JsonText(std::string(source_.files[spot.file]));
        json["line"] = spot.line;
    }

    Json JsonOf(const OriginStep& step) const {
        Json json = {{"what", step.what}, {"text", JsonText(step.text)}};
        AddSpot(json, step.spot);
        const IncludeWays::Ways ways = WaysTo(step);
        json["includedFrom"] = ways.told.empty() ? Json::array() : JsonOf(ways.told[0]);
        for (std::size_t i = 1; i < ways.told.size(); ++i) json["orIncludedFrom"].push_back(JsonOf(ways.told[i]));
        if (ways.areMore) json["moreWays"] = true;
        return json;
    }

    Json JsonOf(const IncludeWay& way) const {
        Json places = Json::array();
        for (const SourceSpot& spot : way) {
            places.push_back(Json::object());
            AddSpot(places.back(), spot);
        }
        return places;
    }

    const DebugSource& source_;
    IncludeWays ways_;
    StandardOutput out_;
};

std::string DidYouMean(const DebugSource& source, const std::map<std::string, unsigned>& names,
                       const std::map<std::string, unsigned>& given, const SectionPath& path) {
    NearPath near(path);
    for (const auto& [word, number] : given) near.AddKey(word);
    for (const DebugSection& section : source.sections) {
        if (section.keyword != path.keyword) continue;
        ShownSection stub = StubOf(section, names);
        for (const DebugEntry& entry : section.entries) {
            if (entry.given) stub.entries.push_back({std::string(entry.key), 0, {}, {}, &entry});
        }
        near.Add(stub);
    }
    return near.Told();
}

/// Why nothing stands at a path.
std::string WhyNoOrigin(const DebugSource& source, const std::map<std::string, unsigned>& names,
                        const SectionPath& path, const std::string& text) {
    const auto given = path.keyword == "DEFINE" ? GivenWords(source, names) : std::map<std::string, unsigned>();
    const auto word = given.find(path.key);
    if (word == given.end()) return " has no value " + Printable(text) + DidYouMean(source, names, given, path);
    return ": " + Printable(text) +
           " stands in no source; the compiler was given it, as by -D: " + std::to_string(word->second);
}

int RunOrigin(const OriginOptions& options) {
    const SectionPath path = ParsePath(options.path);
    const Progress progress(options.debug, "reading");
    const std::string bytes = BytesOfImage(options.debug);
    const DebugSource source = SourceIn(options.debug, bytes);
    ShowPhase("looking for the value");
    const auto names = PredefinedNames(bytes);
    const Origin origin = FindOrigin(source, names, path);
    if (!origin.entry) throw Failure(kSourceHasErrors, options.debug + WhyNoOrigin(source, names, path, options.path));
    const bool compiled = !options.compiled.empty();
    std::optional<std::vector<ShownWord>> words;
    if (compiled) {
        const Image image(options.compiled);
        if (image.Kind() != ImageKind::kCompiled) {
            throw Failure(kUsageOrFiles, options.compiled + " is no compiled image");
        }
        RequireBelonging(ComparedPair(options.compiled, image.Bytes(), options.debug, bytes));
        words = WordsOf(image, source, origin);
    }
    OriginWriter writer(source);
    if (options.json) {
        writer.WriteAsJson(options.path, origin, words);
    } else {
        writer.WriteAsText(origin, words, compiled);
    }
    return kFine;
}

Run PrepareOrigin(Words& words) {
    const auto options = std::make_shared<OriginOptions>();
    words.File("DEBUG", options->debug, "The debug image");
    words.Argument("PATH", options->path, "The value, such as SENSOR/CPU0_TEMP/VALUE");
    words.OptionalFile("IMAGE", options->compiled, "The compiled image of the same source");
    words.Flag("--json", options->json, "As JSON");
    return [options] { return RunOrigin(*options); };
}

}  // namespace

const CommandSpec kOriginCommand = {
    "origin",
    "Show where in the source a value comes from",
    kOriginExample,
    PrepareOrigin,
    {kDone, "the debug image has no such value, or the images do not belong together", kWrongLineOrFile, kNotValid}};

}  // namespace zek::tool
