#include "frontend/parse.h"

#include <dlfcn.h>
#include <cstring>
#include <memory>

#include "frontend/messages.h"
#include "model/output.h"
#include "model/section.h"

namespace zek {

namespace {

constexpr char kEnumItem[] = "RSEnumItem";
constexpr char kParserPath[] = "/usr/tavr/lib/libzekrsparser.so.0";

/// A function of the parser library, looked up anew for every call; a null library means the process's global scope.
template <class Signature>
Signature* Look(void* library, const char* name) {
    return reinterpret_cast<Signature*>(dlsym(library, name));
}

/// A text that the parser library fills: asked for its size first, then filled.
class TextBuffer {
public:
    unsigned* Size() { return &size_; }
    char* Data() { return data_; }
    void Allocate() {
        allocated_ = size_;
        if (allocated_ <= sizeof short_) return;
        long_.reset(new char[allocated_]);
        data_ = long_.get();
    }
    void CopyTo(std::string& text) const { text.assign(data_, strnlen(data_, allocated_)); }

private:
    unsigned size_ = 0;
    unsigned allocated_ = 0;
    char* data_ = short_;
    char short_[128];
    std::unique_ptr<char[]> long_;
};

using EnumItem = unsigned(void*, unsigned, char*, unsigned*, char*, unsigned*, unsigned*);

/// Asks for an item: false, and nothing is changed but the line, when there is none.
bool TakeItem(EnumItem* enumItem, void* section, unsigned index, std::string& key, std::string& value, unsigned& line) {
    TextBuffer keyText;
    TextBuffer valueText;
    enumItem(section, index, nullptr, keyText.Size(), nullptr, valueText.Size(), &line);
    keyText.Allocate();
    valueText.Allocate();
    if (!enumItem(section, index, keyText.Data(), keyText.Size(), valueText.Data(), valueText.Size(), &line)) {
        return false;
    }
    keyText.CopyTo(key);
    valueText.CopyTo(value);
    return true;
}

}  // namespace

}  // namespace zek

CZEKParse::CZEKParse() : m_hLibrary(dlopen(zek::kParserPath, RTLD_LAZY)) {
    if (!m_hLibrary) LOG(zek::kLoadParserFailed, zek::kParserPath);
}

CZEKParse::~CZEKParse() {
    if (m_hLibrary) dlclose(m_hLibrary);
}

unsigned CZEKParse::Start(const std::string& file) {
    m_hFile = RSOpenFile(file);
    if (!m_hFile) return 0;
    RSParse(m_hFile);
    m_strFile = file;
    return 1;
}

void CZEKParse::Parse() {
    unsigned count = 0;
    for (void* handle = nullptr; (handle = RSEnumSection(m_hFile, count)) != nullptr; ++count)
        ParseSection(handle, count);
    LOG(zek::kNoMoreSections, count);
    if (m_hFile) RSCloseFile(m_hFile);
    m_hFile = nullptr;
    m_strFile.clear();
}

void CZEKParse::ParseSection(void* handle, unsigned index) {
    std::string name;
    unsigned line = 0;
    if (!RSGetSectInfo(handle, name, line)) return LOG(zek::kSectionNameFailed, index + 1, index);
    CZEKSection* section = CZEKSection::Create(m_strFile, name, line);
    if (!section) return LOG(zek::kCreateSectionFailed, index + 1, name.c_str());
    // Looked up once for all items of the section: a tenth of the reading time would go into looking it up for each.
    const auto enumItem = zek::Look<zek::EnumItem>(m_hLibrary, zek::kEnumItem);
    if (!enumItem) return;
    std::string key;
    std::string value;
    for (unsigned item = 0; zek::TakeItem(enumItem, handle, item, key, value, line = 0); ++item) {
        if (section->SetEntry(m_strFile, key, value, line)) continue;
        LOG(zek::kAddItemFailed, item + 1, name.c_str());
        LOG(zek::kEntryIgnored, section->GetFile(0).c_str(), line, section->m_strName.c_str(), key.c_str());
    }
}

void CZEKParse::End() { CZEKSection::Destory(); }

void* CZEKParse::RSOpenFile(const std::string& file) {
    const auto function = zek::Look<void*(const std::string&)>(m_hLibrary, "RSOpenFile");
    return function ? function(file) : nullptr;
}

unsigned CZEKParse::RSParse(void* file) {
    const auto function = zek::Look<unsigned(void*)>(m_hLibrary, "RSParse");
    return function ? function(file) : 0;
}

void* CZEKParse::RSEnumSection(void* file, unsigned index) {
    const auto function = zek::Look<void*(void*, unsigned)>(m_hLibrary, "RSEnumSection");
    return function ? function(file, index) : nullptr;
}

unsigned CZEKParse::RSGetSectInfo(void* section, std::string& name, unsigned& line) {
    const auto function = zek::Look<unsigned(void*, char*, unsigned*, unsigned*)>(m_hLibrary, "RSGetSectInfo");
    if (!function) return 0;
    zek::TextBuffer text;
    function(section, nullptr, text.Size(), &line);
    text.Allocate();
    if (!function(section, text.Data(), text.Size(), &line)) return 0;
    text.CopyTo(name);
    return 1;
}

unsigned CZEKParse::RSEnumItem(void* section, unsigned index, std::string& key, std::string& value, unsigned& line) {
    const auto function = zek::Look<zek::EnumItem>(m_hLibrary, zek::kEnumItem);
    return function && zek::TakeItem(function, section, index, key, value, line);
}

void* CZEKParse::RSFindSection(void* file, const std::string& name) {
    // The parser library exports it with the capital E.
    const auto function = zek::Look<void*(void*, const std::string&)>(m_hLibrary, "RSFindSEction");
    return function ? function(file, name) : nullptr;
}

unsigned CZEKParse::RSCloseFile(void*& file) {
    const auto function = zek::Look<unsigned(void**)>(m_hLibrary, "RSCloseFile");
    return function ? function(&file) : 0;
}
