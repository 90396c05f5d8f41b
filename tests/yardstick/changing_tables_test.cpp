// Queries while the tables change in a random order: by our functions, and by a host that changes the maps itself. What
// the host does between two rounds of queries changes the size of the map, as far as it goes.
#include <functional>

#include "compile/compile.h"
#include "compile/image_stamp.h"
#include "compile/tables.h"
#include "model/entry_data.h"
#include "model/type_ids.h"
#include "support/process_test.h"
#include "yardstick/expected_answers.h"
#include "yardstick/random.h"

namespace zek::test {

namespace {

constexpr unsigned kNames = 300;
/// Identifiers that are asked for, and that sections and entries have; so many keys come seldom.
constexpr unsigned kOrdinals = 260;

std::string AnyName(Random& random) { return "n" + std::to_string(random.Below(kNames)); }

struct ChangedTable {
    unsigned classWord;
    std::map<std::string, unsigned>& names;
    unsigned& counter;
    void (*lookUp)(const std::string& name);  ///< one of our functions that adds a name with 0
};

void LookUpGroup(const std::string& name) {
    CZekEntryData data;
    data.Create(kParent);
    *static_cast<std::string*>(data.GetData()) = name;
    tagGCENTRY entry;
    SetEntryValues(kSensorSection, kParent, data.GetData(), entry);
}

void LookUpValue(const std::string& name) {
    std::string text = "VALUE_" + name;
    GetValueVal(text);
}

const std::vector<ChangedTable>& Tables() {
    static const std::vector<ChangedTable> tables = {
        {kIdProperty, g_tblProperty, g_idxProperty,
         [](const std::string& name) { GetEntryName(kPrefixP, "P_" + name); }},
        {kIdValue, g_tblValue, g_idxValue, LookUpValue},
        {kIdGroup, g_tblGroup, g_idxGroup, LookUpGroup}};
    return tables;
}

/// Groups that are named, sensors that have IDs, and properties with many entries.
void MakeSections(Random& random) {
    for (unsigned i = 0; i < 90; ++i) {
        const auto any = [&random](unsigned classWord) { return classWord + random.Below(kOrdinals); };
        g_GCHead.push_back(new tagGCSECT{kImageGroup, {{kIdName, {any(kIdGroup)}}}});
        g_GCHead.push_back(new tagGCSECT{kImageSensor, {{kIdID, {any(kIdNumber)}}}});
        if (i > 1) continue;
        auto* section = new tagGCSECT{kImageProperty, {}};
        for (unsigned j = 0; j < 90; ++j) section->vEntries.push_back({any(kIdProperty), {}});
        g_GCHead.push_back(section);
    }
}

using Change = std::function<void()>;

/// A few changes of one direction that a host makes in a map.
template <class Key, class Any>
void AddHostsChanges(std::vector<Change>& changes, Random& random, std::map<Key, unsigned>& keys, unsigned classWord,
                     Any any) {
    const bool erases = random.Chance(50);
    for (unsigned left = random.Below(4); left > 0; --left) {
        changes.push_back([&keys, &random, classWord, any, erases] {
            if (!erases) {
                keys.try_emplace(any(random), classWord + random.Below(kOrdinals));
            } else if (const auto place = keys.lower_bound(any(random)); place != keys.end()) {
                keys.erase(place);
            }
        });
    }
}

/// Keys that InsertTbl numbers, mostly one by one; seldom so many that the table grows long.
template <class Key, class Any>
void AddInsertions(std::vector<Change>& changes, Random& random, std::map<Key, unsigned>& keys, unsigned& counter,
                   Any any) {
    for (unsigned left = random.Chance(15) ? 90 : random.Below(4); left > 0; --left) {
        changes.push_back([&keys, &counter, &random, any] {
            InsertTbl(keys, counter, any(random), random.Chance(90) ? 1 : random.Below(3));
        });
    }
}

void ChangeNames(const ChangedTable& table, Random& random) {
    std::vector<Change> changes;
    AddHostsChanges(changes, random, table.names, table.classWord, AnyName);
    AddInsertions(changes, random, table.names, table.counter, AnyName);
    for (unsigned left = random.Below(3); left > 0; --left) {
        changes.push_back([&table, &random] { table.lookUp(AnyName(random)); });
    }
    random.Shuffle(changes);
    if (random.Chance(5)) {
        table.names.clear();
        table.counter = table.classWord;
    }
    for (const Change& change : changes) change();
}

void ChangeNumbers(Random& random) {
    const auto any = [](Random& some) { return some.Below(kNames); };
    std::vector<Change> changes;
    AddHostsChanges(changes, random, g_tblDword, kIdNumber, any);
    AddInsertions(changes, random, g_tblDword, g_idxDword, any);
    random.Shuffle(changes);
    for (const Change& change : changes) change();
}

void CompareClass(unsigned classWord) {
    for (unsigned id = classWord; id < classWord + kOrdinals; ++id) ExpectValue(GetTblData(id), plain::Resolved(id));
}

void CompareSections(Random& random) {
    for (unsigned i = 0; i < 10; ++i) {
        const std::string name = AnyName(random);
        for (const unsigned kind : {kImageGroup, kImageProperty}) {
            Expect(gcGetSectByName(kind, name), plain::SectionByName(kind, name));
        }
        const unsigned number = random.Below(kNames);
        Expect(gcGetSectByID(kImageSensor, number), plain::SectionById(kImageSensor, number));
        for (tagGCSECT* section : plain::ImageSections(kImageProperty)) {
            Expect(gcGetEntryByName(section, name, nullptr), plain::EntryByName(*section, name));
        }
    }
}

}  // namespace

class QueriesOfChangingTables : public ProcessTest, public testing::WithParamInterface<unsigned> {};

TEST_P(QueriesOfChangingTables, AnswerAsThePlainOnesDo) {
    Random random(GetParam());
    MakeSections(random);
    unsigned ofLongTables = 0;
    for (unsigned round = 0; round < 400 && !HasFailure(); ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        const unsigned row = random.Below(Tables().size() + 1);
        if (row == Tables().size()) {
            ChangeNumbers(random);
            CompareClass(kIdNumber);
        } else {
            const ChangedTable& table = Tables()[row];
            ChangeNames(table, random);
            CompareClass(table.classWord);
            ofLongTables += table.names.size() > kWalkedAtOnce;
        }
        CompareSections(random);
    }
    EXPECT_GE(ofLongTables, 100U) << "rounds about tables that are not walked";
    gcUnInit();
}

INSTANTIATE_TEST_SUITE_P(Seed, QueriesOfChangingTables, testing::Range(0U, 20U));

}  // namespace zek::test
