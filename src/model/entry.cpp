#include "model/entry.h"

#include <algorithm>
#include <new>

#include "model/absent_entries.h"
#include "model/messages.h"
#include "model/output.h"
#include "model/state.h"

namespace zek {

namespace {

bool IsOneSubString(std::string_view value) {
    // Most values are a few characters: a search for each of the two would take longer to begin.
    return std::none_of(value.begin(), value.end(),
                        [](char character) { return character == ',' || character == '"'; });
}

std::string_view WaitingValueOf(const CZEKEntry& entry) { return g_waitingValues.At(entry.m_dwWaiting); }

void StopWaiting(CZEKEntry& entry) {
    if (entry.m_dwWaiting == 0) return;
    entry.m_dwWaiting = 0;
    g_waitingValues.Drop(g_readingLargeModel);
}

/// Cuts a value at its commas. A piece with a double quote is what stands between that quote and the next one, commas
/// included: text before the opening quote and behind the closing one is lost, which descriptions rely on.
TextList SubStringsOf(std::string_view value) {
    if (value.empty()) return {};
    if (IsOneSubString(value)) return {1, std::string(value)};
    TextList pieces;
    // Looked for again only behind a quoted piece: in a long list each search would go to its end.
    std::size_t quote = value.find('"');
    if (quote == std::string::npos) {
        pieces.reserve(static_cast<std::size_t>(std::count(value.begin(), value.end(), ',')) + 1);
    }
    for (std::size_t start = 0;;) {
        std::size_t comma = value.find(',', start);
        if (quote < start) quote = value.find('"', start);
        if (quote == std::string::npos || comma < quote) {
            pieces.emplace_back(value.substr(start, comma - start));
        } else {
            const std::size_t closing = value.find('"', quote + 1);
            pieces.emplace_back(value.substr(quote + 1, closing - quote - 1));
            comma = closing == std::string::npos ? closing : value.find(',', closing);
        }
        if (comma == std::string::npos) return pieces;
        start = comma + 1;
    }
}

template <class Kind>
CZEKEntry* Construct(void* memory, unsigned type, tagNOTATION notation) {
    static_assert(sizeof(Kind) == sizeof(CZEKEntry) && sizeof(Kind) <= Pool::kLargest);
    return new (memory) Kind(type, notation);
}

}  // namespace

void CutSubStrings(CZEKEntry& entry) {
    if (entry.m_dwWaiting == 0) return;
    // A host may have put some there.
    if (entry.m_vstrSubStr.empty()) entry.m_vstrSubStr = SubStringsOf(WaitingValueOf(entry));
    StopWaiting(entry);
}

bool TakeWhole(CZEKEntry& entry, std::string& text) {
    if (entry.m_dwWaiting == 0 || !entry.m_vstrSubStr.empty()) return false;
    const std::string_view value = WaitingValueOf(entry);
    if (!IsOneSubString(value)) return false;
    text = value;
    StopWaiting(entry);
    return true;
}

CZEKEntry* ConstructEntry(void* memory, unsigned type, unsigned notation) {
    const auto bits = static_cast<tagNOTATION>(notation);
    switch (EntryClass(type)) {
        case kNumberClass: return Construct<CGEDWORD>(memory, type, bits);
        case kTextClass: return Construct<CGESTRING>(memory, type, bits);
        case kListClass: return Construct<CGESTRINGLIST>(memory, type, bits);
        case kValueClass: return Construct<CGEVALUE>(memory, type, bits);
        case kRepeaterClass: return Construct<CGEREPEATER>(memory, type, bits);
        default: return nullptr;
    }
}

std::unique_ptr<CZEKEntry> NewEntry(unsigned type, unsigned notation) {
    void* const memory = g_pool.Take(sizeof(CZEKEntry));
    CZEKEntry* const entry = ConstructEntry(memory, type, notation);
    if (!entry) g_pool.Give(memory, sizeof(CZEKEntry));
    return std::unique_ptr<CZEKEntry>(entry);
}

}  // namespace zek

CZEKEntry::CZEKEntry() noexcept { m_ZekEntryData.m_bOfEntry = true; }

CZEKEntry::CZEKEntry(unsigned type, tagNOTATION notation) noexcept : CZEKEntry() {
    m_dwType = type;
    m_eNotation = notation;
}

CZEKEntry::~CZEKEntry() { zek::StopWaiting(*this); }

void CZEKEntry::operator delete(void* memory, std::size_t size) {
    if (zek::IsShared(memory)) return zek::RenewSharedEntry(memory);
    zek::g_pool.Give(memory, size);
}

void CZEKEntry::Init(const std::string& file, const std::string& key, const std::string& value, unsigned line) {
    SetFile(file);
    m_strName = key;
    m_dwLine = line;
    m_ZekEntryData.Create(m_dwType);
    if (!zek::HoldsData(*this)) LOG(zek::kEntryDataFailed, m_dwType);
    if (value.empty()) return;
    zek::CutSubStrings(*this);
    if (!m_vstrSubStr.empty()) {
        for (std::string& piece : zek::SubStringsOf(value)) m_vstrSubStr.push_back(std::move(piece));
    } else if (zek::g_readingLargeModel) {
        m_dwWaiting = zek::g_waitingValues.Keep(value);
    } else {
        m_vstrSubStr = zek::SubStringsOf(value);
    }
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
