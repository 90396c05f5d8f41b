#include "dump.h"

#include "word_json.h"

namespace zek::tool {
namespace {

Json Word(const ShownWord& word) {
    Json json = {{"word", word.word}, {"class", word.wordClass}};
    if (word.number) json["number"] = *word.number;
    if (word.text) json["text"] = JsonText(*word.text);
    return json;
}

Json Entry(const ShownEntry& entry, bool compiled) {
    Json json = {{"key", JsonText(entry.key)}};
    if (compiled) {
        json["id"] = entry.id;
        json["values"] = JsonOfWords(entry.words);
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

void WriteTables(const Image& image, JsonOutput& json) {
    json.BeginObject("tables");
    image.ForEachTable([&](const ShownTable& table) { json.Element(table.name, JsonOfWords(table.words)); });
    json.End();
    json.BeginArray("tableData");
    image.ForEachBlock([&](const ShownBlock& block) { json.Element(Block(block)); });
    json.End();
}

void WriteNames(const Image& image, JsonOutput& json) {
    json.BeginArray("predefinedNames");
    for (const auto& [name, value] : image.Names()) json.Element({{"name", JsonText(name)}, {"number", value}});
    json.End();
}

}  // namespace

Json JsonOfWords(const std::vector<ShownWord>& words) {
    Json json = Json::array();
    for (const ShownWord& word : words) json.push_back(Word(word));
    return json;
}

void DumpAsJson(const Image& image, StandardOutput& out) {
    const bool compiled = image.Kind() == ImageKind::kCompiled;
    JsonOutput json(out, "zek-dump/1");
    json.Member("image", NameOf(image.Kind()));
    json.Member("version", image.Info().dwVersion);
    json.Member("time", image.Info().dwTime);
    json.BeginArray("sections");
    image.ForEachSection([&](const ShownSection& section) { json.Element(Section(section, compiled)); });
    json.End();
    if (compiled) {
        // A valid image has no section of an unknown kind. Scripts look for the member.
        json.Member("unknownSections", 0);
        WriteTables(image, json);
    } else {
        WriteNames(image, json);
    }
    json.Finish();
}

}  // namespace zek::tool
