#include "frontend/parse.h"

#include <dlfcn.h>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

#include "frontend/messages.h"
#include "model/output.h"
#include "model/section.h"
#include "model/state.h"

namespace zek {

namespace {

constexpr char kEnumSection[] = "RSEnumSection";
constexpr char kGetSectInfo[] = "RSGetSectInfo";
constexpr char kEnumItem[] = "RSEnumItem";
/// Of our own parser library, beside the functions that every one has.
constexpr char kPeekItem[] = "RSPeekItem";
constexpr char kParserPath[] = "/usr/tavr/lib/libzekrsparser.so.0";

/// No text is longer: a larger size that the system has no memory for is one that the parser library made up.
constexpr unsigned kLongestText = 256U << 20;

/// A function of the parser library, or null; a null library means the process's global scope.
template <class Signature>
Signature* Look(void* library, const char* name) {
    return reinterpret_cast<Signature*>(dlsym(library, name));
}

/// A text that the parser library fills: asked for its size first, then filled. What the library leaves of it is zeros;
/// for a size that no text has, the system gives no memory until it is filled.
class TextBuffer {
public:
    unsigned* Size() { return &size_; }
    char* Data() { return data_; }
    /// False when there is no memory for a size that no text has. Throws `std::bad_alloc` when there is none for
    /// another.
    bool Allocate() {
        allocated_ = size_;
        if (allocated_ <= sizeof short_) {
            std::memset(short_, 0, allocated_);
            return true;
        }
        long_.reset(static_cast<char*>(std::calloc(allocated_, 1)));
        if (!long_ && allocated_ <= kLongestText) throw std::bad_alloc();
        data_ = long_.get();
        return data_ != nullptr;
    }
    void CopyTo(std::string& text) const { text.assign(data_, strnlen(data_, allocated_)); }

private:
    struct Free {
        void operator()(char* data) const { std::free(data); }
    };

    unsigned size_ = 0;
    unsigned allocated_ = 0;
    char* data_ = short_;
    char short_[128];
    std::unique_ptr<char, Free> long_;
};

using EnumSection = void*(void*, unsigned);
using GetSectInfo = unsigned(void*, char*, unsigned*, unsigned*);
using EnumItem = unsigned(void*, unsigned, char*, unsigned*, char*, unsigned*, unsigned*);
using PeekItem = unsigned(void*, unsigned, const char**, unsigned*, const char**, unsigned*, unsigned*);

// Each asks a function of the parser library, and gives 0 where that is null because the library lacks it.
void* TakeSection(EnumSection* enumSection, void* file, unsigned index) {
    return enumSection ? enumSection(file, index) : nullptr;
}

unsigned TakeName(GetSectInfo* getSectInfo, void* section, std::string& name, unsigned& line) {
    if (!getSectInfo) return 0;
    TextBuffer text;
    getSectInfo(section, nullptr, text.Size(), &line);
    if (!text.Allocate()) return 0;
    if (!getSectInfo(section, text.Data(), text.Size(), &line)) return 0;
    text.CopyTo(name);
    return 1;
}

unsigned TakeItem(EnumItem* enumItem, void* section, unsigned index, std::string& key, std::string& value,
                  unsigned& line) {
    if (!enumItem) return 0;
    TextBuffer keyText;
    TextBuffer valueText;
    enumItem(section, index, nullptr, keyText.Size(), nullptr, valueText.Size(), &line);
    if (!keyText.Allocate() || !valueText.Allocate()) return 0;
    if (!enumItem(section, index, keyText.Data(), keyText.Size(), valueText.Data(), valueText.Size(), &line)) return 0;
    keyText.CopyTo(key);
    valueText.CopyTo(value);
    return 1;
}

/// What gives the texts of items without copying them, or null. Where the functions are those of the process, another
/// library may come before ours and give the handles; ours cannot read these.
PeekItem* LookForPeek(void* library) {
    const auto baseOf = [library](const char* name) -> const void* {
        Dl_info info;
        return dladdr(dlsym(library, name), &info) ? info.dli_fbase : nullptr;
    };
    return baseOf(kPeekItem) == baseOf(kEnumItem) ? Look<PeekItem>(library, kPeekItem) : nullptr;
}

/// A function that is asked for many times while a file is read. It is looked up until it is found and then kept: done
/// for every item, the look-ups took a sixth of the time of reading.
template <class Signature>
class Kept {
public:
    Kept(void* library, const char* name) : library_(library), name_(name) {}

    operator Signature*() {
        if (!found_) found_ = Look<Signature>(library_, name_);
        return found_;
    }

private:
    void* library_;
    const char* name_;
    Signature* found_ = nullptr;
};

/// Tells the model while a section is read, and whether the model is large.
class ReadingSection {
public:
    ReadingSection() {
        g_readingSection = true;
        g_readingLargeModel = IsModelLarge();
    }
    ~ReadingSection() {
        g_readingSection = wasReading_;
        g_readingLargeModel = wasLarge_;
    }
    ReadingSection(const ReadingSection&) = delete;
    ReadingSection& operator=(const ReadingSection&) = delete;

private:
    bool wasReading_ = g_readingSection;
    bool wasLarge_ = g_readingLargeModel;
};

/// The reading of one open file, which a host that receives a message may close meanwhile: the handle and the name are
/// those that the parser has at the moment.
class Driver {
public:
    Driver(void* library, void* const& handle, const std::string& file)
        : handle_(handle),
          file_(file),
          enumSection_(library, kEnumSection),
          getSectInfo_(library, kGetSectInfo),
          enumItem_(library, kEnumItem),
          peekItem_(LookForPeek(library)) {}

    /// Reads every section; gives their number.
    unsigned ReadSections() {
        unsigned count = 0;
        while (void* section = TakeSection(enumSection_, handle_, count)) ReadSection(section, count++);
        return count;
    }

private:
    void ReadSection(void* handle, unsigned index) {
        std::string name;
        unsigned line = 0;
        if (!TakeName(getSectInfo_, handle, name, line)) return LOG(kSectionNameFailed, index + 1, index);
        const ReadingSection reading;
        CZEKSection* section = CZEKSection::Create(file_, name, line);
        if (!section) return LOG(kCreateSectionFailed, index + 1, name.c_str());
        for (unsigned item = 0; ReadItem(handle, item, line = 0); ++item) {
            if (section->SetEntry(file_, key_, value_, line)) continue;
            LOG(kAddItemFailed, item + 1, name.c_str());
            LOG(kEntryIgnored, section->GetFile(0).c_str(), line, section->m_strName.c_str(), key_.c_str());
        }
    }

    /// Whether the text's NUL is its last byte and no other one.
    static bool EndsInNul(const char* text, unsigned size) {
        return text && size > 0 && std::memchr(text, '\0', size) == text + size - 1;
    }

    /// Takes the item into the key and the value.
    unsigned ReadItem(void* section, unsigned index, unsigned& line) {
        if (!peekItem_) return TakeItem(enumItem_, section, index, key_, value_, line);
        const char* key = nullptr;
        const char* value = nullptr;
        unsigned keySize = 0;
        unsigned valueSize = 0;
        const bool peeked = peekItem_(section, index, &key, &keySize, &value, &valueSize, &line);
        if (!peeked && peekedBefore_) return 0;
        // Another maker's function of that name: every text of ours ends in its NUL.
        if (!peeked || !EndsInNul(key, keySize) || !EndsInNul(value, valueSize)) {
            return TakeItem(enumItem_, section, index, key_, value_, line = 0);
        }
        peekedBefore_ = true;
        key_.assign(key, keySize - 1);
        value_.assign(value, valueSize - 1);
        return 1;
    }

    void* const& handle_;
    const std::string& file_;
    Kept<EnumSection> enumSection_;
    Kept<GetSectInfo> getSectInfo_;
    Kept<EnumItem> enumItem_;
    PeekItem* peekItem_;
    bool peekedBefore_ = false;
    std::string key_;
    std::string value_;
};

}  // namespace

}  // namespace zek

CZEKParse::CZEKParse() : m_hLibrary(dlopen(zek::kParserPath, RTLD_LAZY)) {
    if (!m_hLibrary) LOG(zek::kLoadParserFailed, zek::kParserPath);
}

CZEKParse::~CZEKParse() {
    if (m_hLibrary) dlclose(m_hLibrary);
}

unsigned CZEKParse::Start(const std::string& file) {
    std::string name = file;
    m_hFile = nullptr;
    m_hFile = RSOpenFile(file);
    if (!m_hFile) return 0;
    // Its result is ignored: hosts rely on a file that could not be parsed being one without sections.
    RSParse(m_hFile);
    m_strFile = std::move(name);
    return 1;
}

void CZEKParse::Parse() {
    const auto close = [this] {
        if (m_hFile) RSCloseFile(m_hFile);
        m_hFile = nullptr;
        m_strFile.clear();
    };
    try {
        LOG(zek::kNoMoreSections, zek::Driver(m_hLibrary, m_hFile, m_strFile).ReadSections());
    } catch (...) {
        // A file that stayed open could not be opened again.
        close();
        throw;
    }
    close();
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
    return zek::TakeSection(zek::Look<zek::EnumSection>(m_hLibrary, zek::kEnumSection), file, index);
}

unsigned CZEKParse::RSGetSectInfo(void* section, std::string& name, unsigned& line) {
    return zek::TakeName(zek::Look<zek::GetSectInfo>(m_hLibrary, zek::kGetSectInfo), section, name, line);
}

unsigned CZEKParse::RSEnumItem(void* section, unsigned index, std::string& key, std::string& value, unsigned& line) {
    return zek::TakeItem(zek::Look<zek::EnumItem>(m_hLibrary, zek::kEnumItem), section, index, key, value, line);
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
