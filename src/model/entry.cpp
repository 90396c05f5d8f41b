#include "model/entry.h"

#include <algorithm>
#include <new>

#include "model/messages.h"
#include "model/output.h"
#include "model/state.h"

namespace zek {

namespace {

/// Cuts a value at its commas. A piece with a double quote is what stands between that quote and the next one, commas
/// included: text before the opening quote and behind the closing one is lost, which descriptions rely on.
std::vector<std::string> SubStringsOf(const std::string& value) {
    std::vector<std::string> pieces;
    if (value.empty()) return pieces;
    if (value.find('"') == std::string::npos) {
        pieces.reserve(static_cast<std::size_t>(std::count(value.begin(), value.end(), ',')) + 1);
    }
    for (std::size_t start = 0;;) {
        std::size_t comma = value.find(',', start);
        const std::size_t quote = value.find('"', start);
        if (quote == std::string::npos || comma < quote) {
            pieces.push_back(value.substr(start, comma - start));
        } else {
            const std::size_t closing = value.find('"', quote + 1);
            pieces.push_back(value.substr(quote + 1, closing - quote - 1));
            comma = closing == std::string::npos ? closing : value.find(',', closing);
        }
        if (comma == std::string::npos) return pieces;
        start = comma + 1;
    }
}

}  // namespace

namespace {

template <class Kind>
std::unique_ptr<CZEKEntry> Make(unsigned type, tagNOTATION notation) {
    return std::unique_ptr<CZEKEntry>(new (g_pool.Take(sizeof(Kind))) Kind(type, notation));
}

}  // namespace

std::unique_ptr<CZEKEntry> NewEntry(unsigned type, unsigned notation) {
    const auto bits = static_cast<tagNOTATION>(notation);
    switch (EntryClass(type)) {
        case kNumberClass: return Make<CGEDWORD>(type, bits);
        case kTextClass: return Make<CGESTRING>(type, bits);
        case kListClass: return Make<CGESTRINGLIST>(type, bits);
        case kValueClass: return Make<CGEVALUE>(type, bits);
        case kRepeaterClass: return Make<CGEREPEATER>(type, bits);
        default: return nullptr;
    }
}

}  // namespace zek

CZEKEntry::CZEKEntry() noexcept = default;

CZEKEntry::CZEKEntry(unsigned type, tagNOTATION notation) noexcept {
    m_dwType = type;
    m_eNotation = notation;
}

CZEKEntry::~CZEKEntry() = default;

void CZEKEntry::operator delete(void* memory, std::size_t size) {
    if (zek::g_pool.Owns(memory)) {
        zek::g_pool.Give(memory, size);
    } else {
        ::operator delete(memory);
    }
}

void CZEKEntry::Init(const std::string& file, const std::string& key, const std::string& value, unsigned line) {
    SetFile(file);
    m_strName = key;
    m_dwLine = line;
    m_ZekEntryData.Create(m_dwType);
    if (!zek::HoldsData(*this)) LOG(zek::kEntryDataFailed, m_dwType);
    m_vstrSubStr = zek::SubStringsOf(value);
}

#define ZEK_DEFINE_ENTRY_KIND(Kind)                                                         \
    Kind::Kind() noexcept = default;                                                        \
    Kind::Kind(unsigned type, tagNOTATION notation) noexcept : CZEKEntry(type, notation) {} \
    Kind::~Kind() = default;

ZEK_DEFINE_ENTRY_KIND(CGEDWORD)
ZEK_DEFINE_ENTRY_KIND(CGESTRING)
ZEK_DEFINE_ENTRY_KIND(CGESTRINGLIST)
ZEK_DEFINE_ENTRY_KIND(CGEREPEATER)
ZEK_DEFINE_ENTRY_KIND(CGEVALUE)
