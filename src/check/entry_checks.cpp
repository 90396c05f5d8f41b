// The checks that all kinds of entries share.
#include "check/entry_checks.h"

#include <algorithm>
#include <cstdint>
#include <stdexcept>

#include "check/cross_references.h"
#include "check/messages.h"
#include "check/vocabulary.h"
#include "model/keyword_table.h"
#include "model/output.h"

namespace zek {

namespace {

constexpr unsigned kHighestTableIndex = 255;

bool BeginsWithDigit(const std::string& text) { return !text.empty() && text[0] >= '0' && text[0] <= '9'; }

/// "7" or "3.5": one number or a rising range, up to 255.
bool IsTableRow(const std::string& key) {
    const std::size_t dot = key.find('.');
    const std::string low = key.substr(0, dot);
    const std::string high = dot == std::string::npos ? low : key.substr(dot + 1);
    if (!IsNumber(low) || !IsNumber(high)) return false;
    return NumberOr0(high) <= kHighestTableIndex && NumberOr0(low) <= NumberOr0(high);
}

/// The highest argument that entries of a section may name: in an action its ARGNUMBER, 0 without one; nothing when
/// that is no number.
std::optional<unsigned> HighestArgument(CZEKObj& section, unsigned elsewhere) {
    if (section.m_strName != kActionName) return elsewhere;
    const std::string* count = TextOfEntry(static_cast<CZEKSection&>(section), kArgNumber);
    unsigned highest = 0;
    if (count && !StringToLong(*count, &highest)) return {};
    return highest;
}

/// The number behind the three characters of an argument name, or one above every argument.
std::uint64_t ArgumentNumber(const std::string& name) {
    if (name.size() < kArgPrefix.size()) throw std::out_of_range("basic_string::substr");
    unsigned number = 0;
    return StringToLong(name.substr(kArgPrefix.size()), &number) ? number : std::uint64_t{1} << 32;
}

/// Whether a key is the keyword of its entry, or the keyword of a family and a suffix that suits the family.
bool IsNameOf(const CZEKEntry& entry, std::string_view keyword) {
    const std::string& key = entry.m_strName;
    // The empty keyword is that of the free-named entries: an empty key is not their name.
    if (key == keyword) return !key.empty();
    if (!IsFamily(entry) || !HasPrefix(key, keyword)) return false;
    switch (entry.m_dwType) {
        case kDefinition:
        case kProperty:
        case kPrefixP:
        case kRepeaterItem: return !BeginsWithDigit(key);
        case kActionValue: return IsNumber(key.substr(keyword.size()));
        case kTableRow: return IsTableRow(key);
        default: return true;
    }
}

}  // namespace

std::optional<unsigned> DecidedAtOnce(CZEKEntry& entry, CZEKObj* parent, unsigned flag, unsigned ownClass) {
    if (!HoldsData(entry)) return entry.ChkEntryExist(parent, flag);
    const bool named = entry.ChkEntryName(parent, flag);
    // The data can be of another class than the entry only in a damaged debug image.
    const bool ofClass =
        EntryClass(entry.m_dwType) == ownClass && EntryClass(entry.m_ZekEntryData.GetType()) == ownClass;
    if (named && ofClass) return {};
    if (named) LOG(kBadEntryClass, WHERE(entry, *parent));
    CutSubStrings(entry);
    return 0;
}

void ReleaseSubStrings(CZEKEntry& entry, unsigned flag) {
    if (flag == 0) std::vector<std::string>().swap(entry.m_vstrSubStr);
}

void MoveOrCopyList(CZEKEntry& entry, std::size_t first, std::size_t count, unsigned flag, TextList& list) {
    std::vector<std::string>& subStrings = entry.m_vstrSubStr;
    const auto begin = subStrings.begin() + static_cast<std::ptrdiff_t>(first);
    const auto end = begin + static_cast<std::ptrdiff_t>(std::min(subStrings.size() - first, count));
    if (flag != 0) return list.assign(begin, end);
    subStrings.erase(end, subStrings.end());
    subStrings.erase(subStrings.begin(), begin);
    list = std::move(subStrings);
}

bool TakeSubString(CZEKEntry& entry, CZEKObj* parent, unsigned flag, std::string& text) {
    if (flag == 0 && TakeWhole(entry, text)) return true;
    CutSubStrings(entry);
    if (entry.m_vstrSubStr.empty()) {
        LOG(kNoSubString, WHERE(entry, *parent));
        return false;
    }
    if (entry.m_vstrSubStr.size() > 1) LOG(kMoreSubStrings, WHERE(entry, *parent));
    MoveOrCopy(entry.m_vstrSubStr.front(), flag, text);
    ReleaseSubStrings(entry, flag);
    return true;
}

}  // namespace zek

unsigned CZEKEntry::ChkEntryExist(CZEKObj* parent, unsigned) {
    if (zek::HoldsData(*this) || !(m_eNotation & zek::kRequired)) return 1;
    const tagNTMAP* row = zek::KeywordOf(m_dwType);
    m_strName = row ? row->pszName : "";
    LOG(zek::kEntryMissing, WHERE(*this, *parent));
    m_strName.clear();
    return 0;
}

unsigned CZEKEntry::ChkEntryName(CZEKObj* parent, unsigned) {
    const tagNTMAP* row = zek::KeywordOf(m_dwType);
    if (!row) return 0;
    if (zek::IsNameOf(*this, zek::TextOf(*row))) return 1;
    LOG(zek::kBadEntryName, WHERE(*this, *parent));
    return 0;
}

unsigned CZEKEntry::ChkDigital(const std::string& text, CZEKObj* parent, unsigned) {
    if (zek::IsNumberOrName(text)) return 1;
    LOG(zek::kNotANumber, WHERE(*this, *parent), text.c_str());
    return 0;
}

unsigned CZEKEntry::ChkArgName(const std::string& name, CZEKObj* parent, unsigned, unsigned maxArg) {
    const std::optional<unsigned> highest = zek::HighestArgument(*parent, maxArg);
    if (highest && zek::ArgumentNumber(name) <= *highest) return 1;
    LOG(zek::kBadArgName, WHERE(*this, *parent), name.c_str());
    return 0;
}

unsigned CZEKEntry::ChkGlobalName(const std::string& name, CZEKObj* parent, unsigned) {
    if (zek::References()->IsGlobal(name)) return 1;
    LOG(zek::kNoSuchGlobal, WHERE(*this, *parent), name.c_str());
    return 0;
}

unsigned CZEKEntry::ChkTableName(const std::string& name, CZEKObj* parent, unsigned) {
    if (zek::References()->FirstNamed(zek::kTableSection, name).section) return 1;
    LOG(zek::kNoSuchTable, WHERE(*this, *parent), name.c_str());
    return 0;
}

unsigned CZEKEntry::ChkActionName(const std::string& name, CZEKObj* parent, unsigned) {
    if (zek::References()->FirstNamed(zek::kActionSection, name).section) return 1;
    LOG(zek::kNoSuchAction, WHERE(*this, *parent), name.c_str());
    return 0;
}

unsigned CZEKEntry::ChkActionParamNum(const std::string& actionName, unsigned count, CZEKObj* parent, unsigned) {
    const std::optional<unsigned> needed = zek::References()->ParamCount(actionName);
    if (!needed) return 0;
    if (count == *needed) return 1;
    LOG(zek::kParamCount, WHERE(*this, *parent), actionName.c_str(), *needed, count);
    return 0;
}

unsigned CZEKEntry::IsValidEx(CZEKObj*, unsigned) { return 1; }
