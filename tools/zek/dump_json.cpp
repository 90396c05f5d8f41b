#include "dump.h"

#include <nlohmann/json.hpp>

#include "json_text.h"

namespace zek::tool {
namespace {

using Json = nlohmann::ordered_json;

Json Word(const ShownWord& word) {
    Json json = {{"word", word.word}, {"class", word.wordClass}};
    if (word.number) json["number"] = *word.number;
    if (word.text) json["text"] = JsonText(*word.text);
    return json;
}

Json Words(const std::vector<ShownWord>& words) {
    Json json = Json::array();
    for (const ShownWord& word : words) json.push_back(Word(word));
    return json;
}

Json Entry(const ShownEntry& entry, bool compiled) {
    Json json = {{"key", JsonText(entry.key)}};
    if (compiled) {
        json["id"] = entry.id;
        json["values"] = Words(entry.words);
    } else {
        json["value"] = JsonText(entry.value);
    }
    return json;
}

Json Section(const ShownSection& section, bool compiled) {
    Json json = {{"section", section.keyword}, {"index", section.index}};
    if (section.name) json["name"] = JsonText(*section.name);
    if (section.id) json["id"] = *section.id;
    if (section.parent) json["parent"] = JsonText(*section.parent);
    json["entries"] = Json::array();
    for (const ShownEntry& entry : section.entries) json["entries"].push_back(Entry(entry, compiled));
    return json;
}

Json Block(const ShownBlock& block) {
    Json json = {{"index", block.index}};
    if (block.name) json["name"] = JsonText(*block.name);
    json["bytes"] = Json::array();
    for (const char byte : block.bytes) json["bytes"].push_back(static_cast<unsigned char>(byte));
    return json;
}

/// A member of the outermost object whose elements are written one by one, so that an image of any size takes little
/// memory.
class Elements {
public:
    Elements(StandardOutput& out, const std::string& name, char open, char close) : out_(out), close_(close) {
        out_.Write(",\n" + Json(name).dump() + ": " + open);
    }
    Elements(const Elements&) = delete;
    Elements& operator=(const Elements&) = delete;

    void Add(const std::string& element) {
        out_.Write((empty_ ? "\n " : ",\n ") + element);
        empty_ = false;
    }
    void End() { out_.Write(std::string(empty_ ? "" : "\n") + close_); }

private:
    StandardOutput& out_;
    char close_;
    bool empty_ = true;
};

void WriteTables(const Image& image, StandardOutput& out) {
    Elements tables(out, "tables", '{', '}');
    image.ForEachTable(
        [&](const ShownTable& table) { tables.Add(Json(table.name).dump() + ": " + Words(table.words).dump()); });
    tables.End();
    Elements blocks(out, "tableData", '[', ']');
    image.ForEachBlock([&](const ShownBlock& block) { blocks.Add(Block(block).dump()); });
    blocks.End();
}

void WriteNames(const Image& image, StandardOutput& out) {
    Elements names(out, "predefinedNames", '[', ']');
    for (const auto& [name, value] : image.Names())
        names.Add(Json({{"name", JsonText(name)}, {"number", value}}).dump());
    names.End();
}

}  // namespace

void DumpAsJson(const Image& image, StandardOutput& out) {
    const bool compiled = image.Kind() == ImageKind::kCompiled;
    out.Write("{\"image\": " + Json(compiled ? "compiled" : "debug").dump());
    out.Write(",\n\"version\": " + std::to_string(image.Info().dwVersion));
    out.Write(",\n\"time\": " + std::to_string(image.Info().dwTime));
    Elements sections(out, "sections", '[', ']');
    image.ForEachSection([&](const ShownSection& section) { sections.Add(Section(section, compiled).dump()); });
    sections.End();
    if (compiled) {
        // A valid image has no section of an unknown kind. Scripts look for the member.
        out.Write(",\n\"unknownSections\": 0");
        WriteTables(image, out);
    } else {
        WriteNames(image, out);
    }
    out.Write("\n}\n");
}

}  // namespace zek::tool
