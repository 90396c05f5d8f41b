// A section-file parser library of another maker, small and simple: lines "[NAME]" and "KEY=VALUE". It has neither
// search folders nor a hook.
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

namespace {

struct Item {
    std::string key;
    std::string value;
    unsigned line;
};

struct Section {
    std::string name;
    unsigned line;
    std::vector<Item> items;
};

using File = std::vector<Section>;

void AddLine(File& file, const std::string& text, unsigned line) {
    if (text.starts_with('[')) {
        file.push_back({text.substr(1, text.size() - 2), line, {}});
        return;
    }
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || file.empty()) return;
    file.back().items.push_back({text.substr(0, equals), text.substr(equals + 1), line});
}

unsigned Give(const std::string& text, char* buffer, unsigned* size) {
    if (buffer) std::memcpy(buffer, text.c_str(), text.size() + 1);
    *size = static_cast<unsigned>(text.size()) + 1;
    return 1;
}

}  // namespace

extern "C" {

void* RSOpenFile(const std::string& name) {
    std::ifstream in(name);
    if (!in) return nullptr;
    auto* file = new File;
    unsigned line = 0;
    for (std::string text; std::getline(in, text);) AddLine(*file, text, ++line);
    return file;
}

unsigned RSParse(void*) { return 1; }

void* RSEnumSection(void* file, unsigned index) {
    auto* sections = static_cast<File*>(file);
    return sections && index < sections->size() ? &(*sections)[index] : nullptr;
}

unsigned RSGetSectInfo(void* section, char* name, unsigned* size, unsigned* line) {
    const auto* found = static_cast<Section*>(section);
    *line = found->line;
    return Give(found->name, name, size);
}

unsigned RSEnumItem(void* section, unsigned index, char* key, unsigned* keySize, char* value, unsigned* valueSize,
                    unsigned* line) {
    const auto* found = static_cast<Section*>(section);
    if (index >= found->items.size()) return 0;
    *line = found->items[index].line;
    return Give(found->items[index].key, key, keySize) & Give(found->items[index].value, value, valueSize);
}

void* RSFindSEction(void*, const std::string&) { return nullptr; }

unsigned RSCloseFile(void** file) {
    delete static_cast<File*>(*file);
    *file = nullptr;
    return 1;
}

}  // extern "C"
