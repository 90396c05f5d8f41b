#include <array>
#include <nlohmann/json.hpp>

#include "code_table.h"
#include "failure.h"
#include "printable.h"
#include "renderer.h"

namespace zek::tool {
namespace {

using nlohmann::ordered_json;

constexpr std::array<const char*, 3> kLevels = {"note", "warning", "error"};
constexpr char kSchema[] = "https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/sarif-schema-2.1.0.json";

/// A path as a reference: relative as it is, absolute as a file. Whatever has a meaning there is written by its bytes.
std::string Reference(const std::string& path) {
    constexpr std::string_view kKept = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
    std::string reference = path.starts_with('/') ? "file://" : "";
    for (const char byte : path) {
        if (kKept.find(byte) != kKept.npos) {
            reference += byte;
        } else {
            reference += '%' + Hex({&byte, 1});
        }
    }
    return reference;
}

ordered_json Message(const std::string& text) { return {{"text", Printable(text)}}; }

/// Columns count characters here.
ordered_json Region(const Place& place, SourceText& text) {
    ordered_json region = {{"startLine", place.line}};
    if (place.column == 0) return region;
    const std::string_view line = text.Line(place.path, place.line);
    const std::string_view before = line.substr(0, place.column - 1);
    const std::size_t column = CountCharacters(before) + 1;
    region["startColumn"] = column;
    region["endColumn"] = column + CountCharacters(line.substr(before.size(), place.length));
    return region;
}

ordered_json Location(const Place& place, SourceText& text) {
    ordered_json physical = {{"artifactLocation", {{"uri", Reference(place.path)}}}};
    if (place.line) physical["region"] = Region(place, text);
    return {{"physicalLocation", physical}};
}

ordered_json Related(const Place& place, const std::string& note, SourceText& text) {
    ordered_json related = Location(place, text);
    related["message"] = Message(note);
    return related;
}

ordered_json FixOf(const Fix& fix, SourceText& text) {
    const ordered_json replacement = {{"deletedRegion", Region(fix.place, text)},
                                      {"insertedContent", {{"text", Printable(fix.text)}}}};
    ordered_json change = {{"artifactLocation", {{"uri", Reference(fix.place.path)}}}};
    change["replacements"] = ordered_json::array({replacement});
    ordered_json json = {{"description", Message(Filled(NoteText::kMeant, {fix.text}))}};
    json["artifactChanges"] = ordered_json::array({change});
    return json;
}

ordered_json Result(const Finding& finding, SourceText& text) {
    ordered_json result = {{"ruleId", finding.code},
                           {"level", kLevels[static_cast<std::size_t>(finding.severity)]},
                           {"message", Message(finding.message)}};
    result["locations"] = ordered_json::array();
    if (!finding.place.path.empty()) result["locations"].push_back(Location(finding.place, text));
    ordered_json related = ordered_json::array();
    for (const Note& note : finding.notes) {
        related.push_back(Related(note.place.path.empty() ? finding.place : note.place, note.text, text));
    }
    for (const Place& item : finding.way) related.push_back(Related(item, Filled(NoteText::kIncludedFrom), text));
    if (!related.empty()) result["relatedLocations"] = related;
    // A name that can only be shown in another spelling is nothing to put into a file.
    if (finding.fix && finding.fix->place.column && Printable(finding.fix->text) == finding.fix->text) {
        result["fixes"] = ordered_json::array({FixOf(*finding.fix, text)});
    }
    return result;
}

/// No finding, and so without a rule.
ordered_json ResultOfLeft(const std::string& source, const std::string& left) {
    const ordered_json physical = {{"artifactLocation", {{"uri", Reference(source)}}}};
    ordered_json result = {{"kind", "informational"}, {"level", "none"}, {"message", Message(source + ": " + left)}};
    result["locations"] = ordered_json::array({{{"physicalLocation", physical}}});
    return result;
}

ordered_json Rule(const CodeRow& row) {
    const std::size_t level = row.level == Level::kError ? 2 : row.level == Level::kWarning ? 1 : 0;
    return {{"id", row.code},
            {"shortDescription", {{"text", WithoutPlace(row.format)}}},
            {"fullDescription", {{"text", row.cause}}},
            {"help", {{"text", row.cure}}},
            {"defaultConfiguration", {{"level", kLevels[level]}}}};
}

/// Each rule and each result on a line of its own.
class Sarif : public Renderer {
public:
    std::string Begin() override {
        std::string json = std::string("{\"$schema\": \"") + kSchema +
                           "\", \"version\": \"2.1.0\", \"runs\": [{\"tool\": {\"driver\": {\"name\": \"zek\", "
                           "\"version\": \"" ZEK_TOOL_VERSION "\", \"rules\": [";
        const char* before = "\n  ";
        for (const CodeGroup& group : CodeGroups()) {
            for (const CodeRow& row : group.rows) {
                json += before + Rule(row).dump();
                before = ",\n  ";
            }
        }
        return json + "]}}, \"columnKind\": \"unicodeCodePoints\", \"results\": [\n";
    }

    std::string Of(const SourceFindings& all, SourceText& text) override {
        std::string json;
        for (const Finding& finding : all.findings) {
            json += (json.empty() ? "  " : ",\n  ") + Result(finding, text).dump();
        }
        const std::string left = all.TellLeft();
        if (!left.empty()) json += (json.empty() ? "  " : ",\n  ") + ResultOfLeft(all.source, left).dump();
        return json;
    }

    std::string OfFailure(const std::string& source, const std::string& why) override {
        ordered_json notification = {{"level", "error"}, {"message", Message(why)}};
        const ordered_json physical = {{"artifactLocation", {{"uri", Reference(source)}}}};
        notification["locations"] = ordered_json::array({{{"physicalLocation", physical}}});
        notifications_.push_back(notification);
        return {};
    }

    std::string Separator() override { return ",\n"; }

    std::string End(int code) override {
        const bool successful = code == kFine || code == kSourceHasErrors;
        ordered_json invocation = {{"executionSuccessful", successful}, {"exitCode", code}};
        if (!notifications_.empty()) invocation["toolExecutionNotifications"] = notifications_;
        return "], \"invocations\": [" + invocation.dump() + "]}]}\n";
    }

private:
    ordered_json notifications_ = ordered_json::array();
};

}  // namespace

std::unique_ptr<Renderer> SarifRenderer() { return std::make_unique<Sarif>(); }

}  // namespace zek::tool
