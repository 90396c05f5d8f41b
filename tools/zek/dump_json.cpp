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

void WriteEntry(const ShownEntry& entry, const Image& image, JsonOutput& json) {
    json.BeginObject();
    json.Member("key", JsonText(entry.key));
    if (image.Kind() == ImageKind::kCompiled) {
        json.Member("id", entry.id);
        WriteWords(json, "values", entry.words);
    } else {
        json.Member("value", JsonText(entry.value));
        if (const auto final = OtherFinalNumber(image, entry)) json.Member("final", *final);
    }
    json.End();
}

void WriteSection(const ShownSection& section, const Image& image, JsonOutput& json) {
    json.BeginObject();
    json.Member("section", section.keyword);
    json.Member("index", section.index);
    if (section.name) json.Member("name", JsonText(*section.name));
    if (section.id) json.Member("id", *section.id);
    if (section.parent) json.Member("parent", JsonText(*section.parent));
    json.BeginArray("entries");
    for (const ShownEntry& entry : section.entries) WriteEntry(entry, image, json);
    json.End();
    json.End();
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
    image.ForEachTable([&](const ShownTable& table) { WriteWords(json, table.name, table.words); });
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

void WriteWords(JsonOutput& json, const std::string& name, const std::vector<ShownWord>& words) {
    json.BeginArray(name);
    for (const ShownWord& word : words) json.Element(Word(word));
    json.End();
}

void DumpAsJson(const Image& image, StandardOutput& out) {
    const bool compiled = image.Kind() == ImageKind::kCompiled;
    JsonOutput json(out, "zek-dump/1");
    json.Member("image", NameOf(image.Kind()));
    json.Member("version", image.Info().dwVersion);
    json.Member("time", image.Info().dwTime);
    json.BeginArray("sections");
    image.ForEachSection([&](const ShownSection& section) { WriteSection(section, image, json); });
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
