#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "file_search.h"
#include "input_file.h"
#include "section_file.h"
#include "state.h"
#include "zekrsparser.h"

namespace {

using namespace zek::parser;

// Files being enumerated lie in each other, one include deep each; more would lead a chain of includes to the end of
// the stack.
constexpr std::size_t kMostEnumerated = 256;

// What `function` gives, or `failure` when it throws.
template <typename Result, typename Function>
Result WithoutThrowing(Result failure, Function function) noexcept {
    try {
        return function();
    } catch (...) {
        return failure;
    }
}

bool IsEnumerated(const FileIdentity& identity) {
    return std::any_of(g_enumerated.begin(), g_enumerated.end(),
                       [&](const SectionFile* file) { return file->Identity() == identity; });
}

SectionFile* OpenFile(const std::string& name) {
    if (g_enumerated.size() >= kMostEnumerated) return nullptr;
    std::optional<std::string> path = FindFile(name);
    if (!path) return nullptr;
    InputFile input(*path);
    if (!input.IsReadable() || IsEnumerated(input.Identity())) return nullptr;
    std::optional<Text> text = input.ReadWhole();
    if (!text) return nullptr;
    // Parsed already now: a failure would be told in no other way than this.
    auto file = std::make_unique<SectionFile>(std::move(*path), input.Identity(), g_openCount + 1, std::move(*text));
    // Room for it as well, so that its enumeration can begin in any case.
    if (g_enumerated.capacity() <= g_openFiles) g_enumerated.reserve(2 * g_openFiles + 1);
    ++g_openFiles;
    ++g_openCount;
    return file.release();
}

// Files are mostly enumerated in the order in which they were opened, but need not be. There is room for the file.
void BeginEnumeration(SectionFile* file) {
    const auto place = std::lower_bound(g_enumerated.begin(), g_enumerated.end(), file->Order(),
                                        [](const SectionFile* a, std::uint64_t order) { return a->Order() < order; });
    if (place == g_enumerated.end() || *place != file) g_enumerated.insert(place, file);
}

// One text on its way to the caller by the size protocol: first see whether it fits, then deliver it.
class Delivery {
public:
    Delivery(SizedText text, char* buffer, unsigned* size) : text_(text), buffer_(buffer), size_(size) {}

    bool Fits() const { return size_ && (!buffer_ || *size_ >= text_.size); }

    void Deliver() const {
        if (buffer_) {
            std::memcpy(buffer_, text_.begin, text_.size);
        } else {
            *size_ = text_.size;
        }
    }

private:
    SizedText text_;
    char* buffer_;
    unsigned* size_;
};

}  // namespace

void* RSOpenFile(const std::string& file) {
    return WithoutThrowing<void*>(nullptr, [&] { return OpenFile(file); });
}

unsigned RSParse(void* file) {
    if (!file) return 0;
    static_cast<SectionFile*>(file)->Show();
    return 1;
}

void* RSEnumSection(void* file, unsigned index) {
    if (!file) return nullptr;
    auto* const sectionFile = static_cast<SectionFile*>(file);
    BeginEnumeration(sectionFile);
    return sectionFile->SectionAt(index);
}

unsigned RSGetSectInfo(void* section, char* name, unsigned* size, unsigned* line) {
    if (!section) return 0;
    const auto* const found = static_cast<const Section*>(section);
    const Delivery delivery(found->file->NameOf(*found), name, size);
    if (!delivery.Fits()) return 0;
    delivery.Deliver();
    if (name && line) *line = found->line;
    return 1;
}

unsigned RSEnumItem(void* section, unsigned index, char* key, unsigned* keySize, char* value, unsigned* valueSize,
                    unsigned* line) {
    if (!section) return 0;
    const auto* const owner = static_cast<const Section*>(section);
    const ItemTexts* const item = owner->file->ItemAt(*owner, index);
    if (!item) return 0;
    const Delivery keyDelivery(item->key, key, keySize);
    const Delivery valueDelivery(item->value, value, valueSize);
    if (!keyDelivery.Fits() || !valueDelivery.Fits()) return 0;
    keyDelivery.Deliver();
    valueDelivery.Deliver();
    if ((key || value) && line) *line = item->line;
    return 1;
}

unsigned RSPeekItem(void* section, unsigned index, const char** key, unsigned* keySize, const char** value,
                    unsigned* valueSize, unsigned* line) {
    if (!section) return 0;
    const auto* const owner = static_cast<const Section*>(section);
    const ItemTexts* const item = owner->file->ItemAt(*owner, index);
    if (!item) return 0;
    *key = item->key.begin;
    *keySize = item->key.size;
    *value = item->value.begin;
    *valueSize = item->value.size;
    *line = item->line;
    return 1;
}

void* RSFindSEction(void* file, const std::string& name) {
    return file ? static_cast<SectionFile*>(file)->FindSection(name) : nullptr;
}

unsigned RSCloseFile(void** file) {
    if (!file || !*file) return 0;
    const std::unique_ptr<SectionFile> owned(static_cast<SectionFile*>(*file));
    std::erase(g_enumerated, owned.get());
    --g_openFiles;
    *file = nullptr;
    return 1;
}

void RSAddSearchDir(const std::string& dir) {
    WithoutThrowing(false, [&] {
        g_searchDirs.push_back(dir);
        return true;
    });
}

void RSClearSearchDirs() { g_searchDirs.clear(); }

void RSSetOpenHook(RSOpenHook hook, void* context) {
    g_openHook = hook;
    g_openHookContext = context;
}
