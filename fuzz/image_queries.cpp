#include <algorithm>
#include <array>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "compile/compile.h"
#include "compile/tables.h"
#include "harness.h"
#include "queries.h"
#include "yardstick/plain_queries.h"
#include "zekcomp/errors.h"
#include "zekcomp/image.h"

namespace zek::fuzz {

namespace {

namespace plain = test::plain;

constexpr unsigned kNothing = 0xFFFFFFFF;
constexpr unsigned kLastKind = kImageRepeater + 1;
constexpr unsigned kLastKeyword = 0x02000018;
/// Kinds that no writer knows are asked for as well, so many of them.
constexpr std::size_t kMostStrangeKinds = 8;
/// So many steps of the plain queries take some hundredths of a second.
constexpr std::size_t kMostSteps = 1'000'000;
/// How many queries of an image look at each of its entries.
constexpr std::size_t kLooks = 100;

bool Same(const tagGCVALUE& value, const tagGCVALUE& expected) {
    if (value.dwKind != expected.dwKind || value.dwID != expected.dwID) return false;
    return value.dwKind == 2 ? !std::strcmp(value.pszName, expected.pszName) : value.qwNumber == expected.qwNumber;
}

template <class Result>
bool Same(const Result& result, const Result& expected) {
    return result == expected;
}

/// Asks the loaded image. Its answers are held against the plain ones; of a large image only some of them, which others
/// are for an image of another size.
class Questions {
public:
    Questions() : stride_(1 + Entries() * kLooks * (1 + Keys()) / kMostSteps), answers_(Entries()) {}

    void AskAll() {
        Collect();
        for (const unsigned kind : kinds_) AskKind(kind);
        for (const std::string& name : names_) {
            Hold(gcGetGroupIndex(name), [&] { return plain::GroupIndex(name); });
        }
        for (const unsigned word : words_) {
            const tagGCVALUE value = GetTblData(word);
            Require(value.dwKind != 2 || value.pszName, "a name text is there");
        }
        AskTables();
        AskNull();
    }

private:
    static std::size_t Entries() {
        std::size_t count = 0;
        for (const tagGCSECT* section : g_GCHead) {
            count += 1 + section->vEntries.size();
            for (const tagGCENTRY& entry : section->vEntries) count += entry.vdwValues.size() / kLooks;
        }
        return count;
    }

    static std::size_t Keys() {
        std::size_t count = g_tblDword.size();
        for (const IdentifierTable& table : kIdentifierTables) count += table.names ? table.names->size() : 0;
        return count;
    }

    /// What is asked for: kinds, names and numbers that are there, and some that are not.
    void Collect() {
        for (unsigned kind = kImageSectionClass; kind <= kLastKind; ++kind) kinds_.insert(kind);
        const std::size_t most = kinds_.size() + kMostStrangeKinds;
        for (const tagGCSECT* section : g_GCHead) {
            if (kinds_.size() < most) kinds_.insert(section->dwSect);
        }
        for (const IdentifierTable& table : kIdentifierTables) {
            if (table.names && !table.names->empty()) {
                names_.insert({table.names->begin()->first, table.names->rbegin()->first});
            }
            if (!table.counter) continue;
            words_.insert({table.classWord, *table.counter - 1, *table.counter});
        }
        if (!g_tblDword.empty()) numbers_.insert({g_tblDword.begin()->first, g_tblDword.rbegin()->first});
    }

    template <class Result, class Plain>
    void Hold(const Result& result, Plain&& answer) const {
        const unsigned code = gcGetLastError();
        if (++answers_ % stride_ != 0) return;
        const auto expected = answer();
        Require(Same(result, expected.result), "an answer is that of the plain query");
        Require(code == expected.code, "a code is that of the plain query");
    }

    void AskKind(unsigned kind) const {
        const unsigned count = gcGetSectCount(kind);
        for (const std::string& name : names_) {
            Hold(gcGetSectByName(kind, name), [&] { return plain::SectionByName(kind, name); });
        }
        for (const unsigned number : numbers_) {
            Hold(gcGetSectByID(kind, number), [&] { return plain::SectionById(kind, number); });
        }
        for (unsigned i = 0; i <= count; ++i) {
            tagGCSECT* const section = gcGetSectByIndex(kind, i);
            Hold(section, [&] { return plain::SectionByIndex(kind, i); });
            Require(!section == (i == count), "there are as many sections as counted");
            if (section) AskSection(*section);
        }
        Hold(gcGetSectByIndex(kind, kNothing), [&] { return plain::SectionByIndex(kind, kNothing); });
    }

    void AskSection(tagGCSECT& section) const {
        const unsigned count = gcGetEntryCount(&section);
        for (unsigned i = 0; i <= count; ++i) {
            unsigned name = kNothing;
            tagGCENTRY* const entry = gcGetEntryByIndex(&section, i, &name);
            Hold(entry, [&] { return plain::EntryByIndex(section, i); });
            Require(!entry == (i == count) && (!entry || name == entry->dwName), "entries have their names");
            if (entry) AskEntry(*entry);
        }
        for (const std::string& name : names_) {
            Hold(gcGetEntryByName(&section, name, nullptr), [&] { return plain::EntryByName(section, name); });
        }
        for (unsigned name = kIdKeyword; name <= kLastKeyword; ++name) {
            Hold(gcGetEntryByType(&section, name), [&] { return plain::EntryByType(section, name); });
        }
    }

    void AskEntry(tagGCENTRY& entry) const {
        const unsigned count = gcGetValueCount(&entry);
        for (unsigned i = 0; i <= count; ++i) {
            Hold(gcGetValueByIndex(&entry, i), [&] { return plain::ValueByIndex(entry, i); });
        }
        for (unsigned base = 0; base <= 0x1b0000; base += 0x10000) {
            for (const unsigned k : {0U, 1U, 2U, count - 2, count - 1, count}) {
                Hold(gcGetValueByID(&entry, base + k), [&] { return plain::ValueById(entry, base + k); });
            }
        }
    }

    static void AskTables() {
        std::array<unsigned char, kTableBlockSize> block;
        const std::size_t whole = g_tblTableData.size() / kTableBlockSize;
        for (std::size_t i = 0; i < whole + 2; ++i) {
            const bool given = gcGetTableData(static_cast<unsigned>(i), block.data());
            Require(given == (i < whole), "only whole blocks are given");
            if (!given) continue;
            const auto begin = g_tblTableData.begin() + static_cast<std::ptrdiff_t>(i * kTableBlockSize);
            Require(std::equal(block.begin(), block.end(), begin), "a block is that of its table");
        }
        gcGetTableData(kIdTableName, block.data());
        Require(!gcGetTableData(kIdOrdinalMask, block.data()), "the last ordinal has no block");
    }

    static void AskNull() {
        Require(gcGetEntryCount(nullptr) == kNothing && gcGetLastError() == kNoSection, "a null section is told");
        Require(!gcGetEntryByIndex(nullptr, 0, nullptr), "a null section has no entry");
        Require(gcGetValueCount(nullptr) == kNothing && gcGetLastError() == kNoEntry, "a null entry is told");
        Require(gcGetValueByID(nullptr, 0x10000).dwKind == 0, "a null entry has no value");
    }

    std::set<unsigned> kinds_;
    std::set<std::string> names_ = {"", "0", "none"};
    std::set<unsigned> numbers_ = {0, 1, kNothing};
    std::set<unsigned> words_ = {0, kIdUnresolved, kIdTableData, kIdArgument + 1, kIdValueType + 1, kIdOperator + 1};
    std::size_t stride_;           ///< of so many answers one is held against its plain one
    mutable std::size_t answers_;  ///< counts on from the number of entries
};

}  // namespace

void AskImage() { Questions().AskAll(); }

}  // namespace zek::fuzz
