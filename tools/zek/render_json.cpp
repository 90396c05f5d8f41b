#include <array>

#include "json_text.h"
#include "renderer.h"

namespace zek::tool {
namespace {

using nlohmann::ordered_json;

constexpr std::array<const char*, 3> kSeverities = {"note", "warning", "error"};

ordered_json JsonPlace(const Place& place) {
    ordered_json json = {{"path", JsonText(place.path)}};
    if (place.line) json["line"] = place.line;
    if (place.line && place.column) {
        json["column"] = place.column;
        json["length"] = place.length;
    }
    return json;
}

ordered_json JsonNote(const Note& note) {
    ordered_json json = {{"text", Printable(note.text)}};
    if (!note.place.path.empty()) json["place"] = JsonPlace(note.place);
    return json;
}

ordered_json JsonFinding(const Finding& finding) {
    ordered_json json = {{"code", finding.code},
                         {"severity", kSeverities[static_cast<std::size_t>(finding.severity)]},
                         {"message", Printable(finding.message)}};
    if (!finding.place.path.empty()) json["place"] = JsonPlace(finding.place);
    json["notes"] = ordered_json::array();
    for (const Note& note : finding.notes) json["notes"].push_back(JsonNote(note));
    if (finding.fix) {
        json["fix"] = {{"place", JsonPlace(finding.fix->place)}, {"text", JsonText(finding.fix->text)}};
    }
    json["includedFrom"] = ordered_json::array();
    for (const Place& item : finding.way) json["includedFrom"].push_back(JsonPlace(item));
    return json;
}

/// What stands before the findings of a source.
ordered_json JsonHead(const SourceFindings& all) {
    const auto left = [&](Severity severity) { return all.left[static_cast<std::size_t>(severity)]; };
    return {{"source", JsonText(all.source)},
            {"errors", all.Count(Severity::kError)},
            {"warnings", all.Count(Severity::kWarning)},
            {"notShown",
             {{"errors", left(Severity::kError)},
              {"warnings", left(Severity::kWarning)},
              {"notes", left(Severity::kNote)}}}};
}

/// Each finding on a line of its own.
class Json : public Renderer {
public:
    std::string Begin() override {
        return "{\"schema\": \"zek-findings/2\", \"tool\": \"zek " ZEK_TOOL_VERSION "\", \"sources\": [\n";
    }

    std::string Of(const SourceFindings& all, SourceText&) override {
        std::string json = JsonHead(all).dump();
        json.replace(json.size() - 1, 1, ", \"findings\": [");
        const char* before = "\n  ";
        for (const Finding& finding : all.findings) {
            json += before + JsonFinding(finding).dump();
            before = ",\n  ";
        }
        return json + "]}";
    }

    std::string OfFailure(const std::string& source, const std::string& why) override {
        ordered_json json = JsonHead({source});
        json["findings"] = ordered_json::array();
        json["failure"] = Printable(why);
        return json.dump();
    }

    std::string Separator() override { return ",\n"; }
    std::string End(int code) override { return "\n], \"exitCode\": " + std::to_string(code) + "}\n"; }
};

}  // namespace

std::unique_ptr<Renderer> JsonRenderer() { return std::make_unique<Json>(); }

}  // namespace zek::tool
