#include "model/entry.h"

#include "model/messages.h"
#include "model/output.h"

namespace zek {

namespace {

/// Cuts a value at its commas. A piece with a double quote is what stands between that quote and the next one, commas
/// included: text before the opening quote and behind the closing one is lost, which descriptions rely on.
std::vector<std::string> SubStringsOf(const std::string& value) {
    std::vector<std::string> pieces;
    if (value.empty()) return pieces;
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

std::unique_ptr<CZEKEntry> NewEntry(unsigned type, unsigned notation) {
    const auto bits = static_cast<tagNOTATION>(notation);
    switch (EntryClass(type)) {
        case kNumberClass: return std::make_unique<CGEDWORD>(type, bits);
        case kTextClass: return std::make_unique<CGESTRING>(type, bits);
        case kListClass: return std::make_unique<CGESTRINGLIST>(type, bits);
        case kValueClass: return std::make_unique<CGEVALUE>(type, bits);
        case kRepeaterClass: return std::make_unique<CGEREPEATER>(type, bits);
        default: return nullptr;
    }
}

}  // namespace zek

CZEKEntry::CZEKEntry() = default;

CZEKEntry::CZEKEntry(unsigned type, tagNOTATION notation) {
    m_dwType = type;
    m_eNotation = notation;
}

CZEKEntry::~CZEKEntry() = default;

void CZEKEntry::Init(const std::string& file, const std::string& key, const std::string& value, unsigned line) {
    SetFile(file);
    m_strName = key;
    m_dwLine = line;
    m_ZekEntryData.Create(m_dwType);
    if (!zek::HoldsData(*this)) LOG(zek::kEntryDataFailed, m_dwType);
    m_vstrSubStr = zek::SubStringsOf(value);
}

#define ZEK_DEFINE_ENTRY_KIND(Kind)                                                \
    Kind::Kind() = default;                                                        \
    Kind::Kind(unsigned type, tagNOTATION notation) : CZEKEntry(type, notation) {} \
    Kind::~Kind() = default;

ZEK_DEFINE_ENTRY_KIND(CGEDWORD)
ZEK_DEFINE_ENTRY_KIND(CGESTRING)
ZEK_DEFINE_ENTRY_KIND(CGESTRINGLIST)
ZEK_DEFINE_ENTRY_KIND(CGEREPEATER)
ZEK_DEFINE_ENTRY_KIND(CGEVALUE)
