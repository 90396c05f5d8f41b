// Built several times, each time with another of the seven names renamed, so that the compiler finds six; and once with
// the function that gives items without copying.
#include "frontend/scripted_parser.h"

#include <algorithm>
#include <cstring>

using zek::test::kPeekedLine;
using zek::test::Script;
using zek::test::ScriptedItem;
using zek::test::ScriptedSection;
using zek::test::ScriptedText;
using zek::test::TheScript;

namespace {

using File = std::vector<ScriptedSection>;

/// The name of the file behind a handle.
std::string NameOf(const void* handle) {
    for (const auto& [name, file] : TheScript().files) {
        if (&file == handle) return name;
    }
    return "null";
}

void Note(const std::string& call) {
    if (TheScript().isQuiet) return;
    TheScript().calls += call + '\n';
    if (call != TheScript().awaitedCall) return;
    TheScript().awaitedCall.clear();
    TheScript().meanwhile();
}

std::string Buffer(const char* buffer, unsigned size) {
    return (buffer ? " buffer " : " null ") + std::to_string(size);
}

/// Stores the size for a null buffer, else fills the buffer as far as its size allows.
void Answer(const ScriptedText& text, char* buffer, unsigned* size) {
    if (!buffer) {
        *size = static_cast<unsigned>(static_cast<int>(text.text.size()) + 1 + text.sizeError);
        return;
    }
    if (!text.isLeft) std::memcpy(buffer, text.text.c_str(), std::min<std::size_t>(text.text.size() + 1, *size));
    if (TheScript().sizeAfterwards) *size = *TheScript().sizeAfterwards;
}

[[maybe_unused]] void Show(const ScriptedText& text, const char** begin, unsigned* size) {
    *begin = text.isNowhere ? nullptr : text.text.c_str();
    *size = text.peekedSize.value_or(static_cast<unsigned>(text.text.size()) + 1);
}

}  // namespace

#pragma GCC visibility push(default)
extern "C" {

void* RSOpenFile(const std::string& file) {
    Note("OpenFile " + file);
    if (TheScript().opensLeft == 0) return nullptr;
    --TheScript().opensLeft;
    const auto found = TheScript().files.find(file);
    return found == TheScript().files.end() ? nullptr : &found->second;
}

unsigned RSParse(void* file) {
    Note("Parse " + NameOf(file));
    return TheScript().parseStatus;
}

void* RSEnumSection(void* file, unsigned index) {
    Note("EnumSection " + NameOf(file) + ' ' + std::to_string(index));
    auto* sections = static_cast<File*>(file);
    if (!sections) return nullptr;
    return index < std::max(sections->size(), TheScript().sections) ? &(*sections)[index % sections->size()] : nullptr;
}

unsigned RSGetSectInfo(void* section, char* name, unsigned* size, unsigned* line) {
    const auto& scripted = *static_cast<const ScriptedSection*>(section);
    Note("GetSectInfo" + Buffer(name, *size));
    if (scripted.infoFails) return 0;
    Answer(scripted.name, name, size);
    if (!name) return TheScript().sizeStatus;
    if (scripted.line) *line = scripted.line;
    return 1;
}

unsigned RSEnumItem(void* section, unsigned index, char* key, unsigned* keySize, char* value, unsigned* valueSize,
                    unsigned* line) {
    const auto& items = static_cast<const ScriptedSection*>(section)->items;
    Note("EnumItem " + std::to_string(index) + Buffer(key, *keySize) + Buffer(value, *valueSize));
    if (index >= items.size()) return 0;
    Answer(items[index].key, key, keySize);
    Answer(items[index].value, value, valueSize);
    if (!key) return TheScript().sizeStatus;
    if (items[index].line) *line = items[index].line;
    return 1;
}

#if defined(ZEK_PEEKING)
unsigned RSPeekItem(void* section, unsigned index, const char** key, unsigned* keySize, const char** value,
                    unsigned* valueSize, unsigned* line) {
    const auto& items = static_cast<const ScriptedSection*>(section)->items;
    Note("PeekItem " + std::to_string(index));
    if (TheScript().isBlind || index >= items.size()) return 0;
    Show(items[index].key, key, keySize);
    Show(items[index].value, value, valueSize);
    *line = items[index].line + kPeekedLine;
    return 1;
}
#endif

void* RSFindSEction(void* file, const std::string& name) {
    Note("FindSEction " + NameOf(file) + ' ' + name);
    for (ScriptedSection& section : *static_cast<File*>(file)) {
        if (section.name.text == name) return &section;
    }
    return nullptr;
}

/// Leaves the handle to the caller, as a parser library may.
unsigned RSCloseFile(void** file) {
    Note("CloseFile " + NameOf(*file));
    return 1;
}

}  // extern "C"
#pragma GCC visibility pop
