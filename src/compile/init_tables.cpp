#include "compile/init_tables.h"

#include <algorithm>
#include <array>
#include <vector>

#include "check/vocabulary.h"
#include "compile/tables.h"
#include "model/section.h"

namespace zek {

namespace {

constexpr std::size_t kWholeKey = 0;
constexpr std::size_t kNoneOfKey = std::string::npos;

constexpr NameRule kNameRules[] = {
    {kProperty, kIdProperty, kWholeKey}, {kPrefixP, kIdProperty, 2}, {kGlobal, kIdGlobal, 2},
    {kValue, kIdValue, kNoneOfKey},      {kValueInit, kIdValue, 6},  {kValueDeinit, kIdValue, 6},
    {kValueEntry, kIdValue, 6},          {kValueExit, kIdValue, 6},  {kValueIpmi, kIdValue, 6},
    {kActionValue, kIdValue, 6},         {kOwnValue, kIdValue, 6},   {kRepeaterItem, kIdRepeater, kWholeKey},
};
static_assert(std::size(kNameRules) == 12, "one row per entry type that a name table names");

struct NumberedKeys {
    unsigned sectionType;
    std::array<unsigned, 2> entryTypes;  ///< 0 for none
};

/// The entries whose keys are numbered, in the order in which each table numbers them.
constexpr NumberedKeys kNumberedKeys[] = {
    {kPropertySection, {kProperty}},
    {kSensorSection, {kPrefixP, kOwnValue}},
    {kDeviceSection, {kPrefixP, kOwnValue}},
    {kSystemSection, {kPrefixP}},
    {kGlobalSection, {kGlobal}},
    {kActionSection, {kActionValue}},
    {kRepeaterSection, {kRepeaterItem}},
};

/// The suffixes of the fixed value keywords hold the first value identifiers of every image.
constexpr const char* kFixedValues[] = {"IPMI", "", "INIT", "DEINIT", "ENTRY", "EXIT"};

constexpr char kRootGroup[] = "0";

using TableBlock = std::array<unsigned char, kTableBlockSize>;

/// Visits the entries of a family in a section, in order. In a damaged debug image one of them can lack the family bit;
/// it is then the last that a look-up by position ever finds.
template <class Visit>
void ForEachOf(const CZEKSection& section, unsigned entryType, Visit&& visit) {
    for (const CZEKEntry* entry : section.m_vpEntry) {
        if (entry->m_dwType != entryType) continue;
        visit(*entry);
        if (!IsFamily(*entry)) return;
    }
}

void NumberFixedValues() {
    for (const char* name : kFixedValues) Number(kIdValue, name);
}

void NumberKeys(const CZEKSection& section, const NameRule& rule) {
    ForEachOf(section, rule.entryType,
              [&rule](const CZEKEntry& entry) { Number(rule.classWord, WithoutPrefix(entry.m_strName, rule.prefix)); });
}

constexpr unsigned kAllTables = 0;

/// Numbers the keys of a table, or of all tables: for these at once, because the entries of a section are no longer in
/// the cache when all other sections have been walked.
void NumberKeys(unsigned classWord) {
    for (const NumberedKeys& keys : kNumberedKeys) {
        std::vector<const NameRule*> rules;
        for (unsigned entryType : keys.entryTypes) {
            const NameRule* rule = NameRuleOf(entryType);
            if (rule && (classWord == kAllTables || classWord == rule->classWord)) rules.push_back(rule);
        }
        if (rules.empty()) continue;
        for (const CZEKSection* section : SectionsOf(keys.sectionType)) {
            for (const NameRule* rule : rules) NumberKeys(*section, *rule);
        }
    }
}

void NumberNames(unsigned sectionType, unsigned classWord) {
    for (CZEKSection* section : SectionsOf(sectionType)) {
        if (const std::string* name = TextOfEntry(*section, kName)) Number(classWord, *name);
    }
}

/// Sets what a table row sets: the bytes from the number before the dot to the one behind it. What lies above the block
/// is left out.
void SetRow(TableBlock& block, const CZEKEntry& row) {
    const std::string* text = TextOf(row);
    if (!text) return;
    const std::string& key = row.m_strName;
    const std::size_t dot = key.find('.');
    const unsigned low = NumberOr0(key.substr(0, dot));
    const unsigned high = dot == std::string::npos ? low : NumberOr0(key.substr(dot + 1));
    const auto byte = static_cast<unsigned char>(NumberOr0(*text));
    const unsigned end = std::min(high, kTableBlockSize - 1);
    for (unsigned i = low; i <= end; ++i) block[i] = byte;
}

}  // namespace

const NameRule* NameRuleOf(unsigned entryType) {
    const auto* rule = std::find_if(std::begin(kNameRules), std::end(kNameRules),
                                    [entryType](const NameRule& row) { return row.entryType == entryType; });
    return rule == std::end(kNameRules) ? nullptr : rule;
}

std::string_view WithoutPrefix(std::string_view key, std::size_t prefix) {
    return key.substr(std::min(prefix, key.size()));
}

}  // namespace zek

unsigned InitTblD() {
    zek::NumberFixedValues();
    zek::NumberKeys(zek::kAllTables);
    InitGroupD();
    InitActionD();
    InitTableDataD();
    return 1;
}

unsigned InitPropertyD() {
    zek::NumberKeys(zek::kIdProperty);
    return 1;
}

unsigned InitGlobalD() {
    zek::NumberKeys(zek::kIdGlobal);
    return FindSectHead(zek::kGlobalSection) != nullptr;
}

unsigned InitValueD() {
    zek::NumberFixedValues();
    zek::NumberKeys(zek::kIdValue);
    return 1;
}

unsigned InitRepeaterD() {
    zek::NumberKeys(zek::kIdRepeater);
    return 1;
}

unsigned InitGroupD() {
    zek::Number(zek::kIdGroup, zek::kRootGroup);
    zek::NumberNames(zek::kGroupSection, zek::kIdGroup);
    return 1;
}

unsigned InitActionD() {
    zek::NumberNames(zek::kActionSection, zek::kIdAction);
    return 1;
}

unsigned InitTableDataD() {
    g_tblTableData.clear();
    // The block is not cleared between tables: a byte that no row sets keeps the previous table's value. Hosts rely on
    // it.
    zek::TableBlock block{};
    const zek::SectionList& tables = zek::SectionsOf(zek::kTableSection);
    g_tblTableData.reserve(tables.size() * zek::kTableBlockSize);
    for (CZEKSection* section : tables) {
        const std::string* name = zek::TextOfEntry(*section, zek::kName);
        if (!name) continue;
        zek::Number(zek::kIdTableName, *name);
        zek::ForEachOf(*section, zek::kTableRow, [&block](const CZEKEntry& row) { zek::SetRow(block, row); });
        g_tblTableData.insert(g_tblTableData.end(), block.begin(), block.end());
    }
    return 1;
}
