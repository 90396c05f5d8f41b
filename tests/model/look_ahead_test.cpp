// Fetching ahead of look-ups, which must not change what they find.
#include "model/look_ahead.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace zek::test {

namespace {

std::vector<std::string> Names(std::size_t count) {
    std::vector<std::string> names(count);
    for (std::size_t i = 0; i < count; ++i) names[i] = "NAME_" + std::to_string(i);
    return names;
}

void Add(const std::vector<std::string>& names, LookAhead::Names& table) {
    for (std::size_t i = 0; i < names.size(); ++i) table.Add(names[i], static_cast<unsigned>(i));
}

}  // namespace

TEST(LookAhead, IsForTablesThatTheCacheDoesNotHold) {
    LookAhead::Names table;
    EXPECT_EQ(LookAhead::IfLarge(nullptr), nullptr);
    EXPECT_EQ(LookAhead::IfLarge(&table), nullptr);
    Add(Names(3'000), table);
    EXPECT_EQ(LookAhead::IfLarge(&table), nullptr);
    Add(Names(7'000), table);
    EXPECT_EQ(LookAhead::IfLarge(&table), &table);
}

TEST(LookAhead, IsForModelsThatTheCacheDoesNotHold) {
    EXPECT_FALSE(LookAhead::IsWorthIt());
    CGSTABLE::m_sHeader.resize(40'000);
    CZEKSection::m_svpHSection = {&CGSTABLE::m_sHeader};
    EXPECT_TRUE(LookAhead::IsWorthIt());
    CGSTABLE::m_sHeader.clear();
}

TEST(LookAhead, HasNothingFetchedFromATableThatIsEmptyByThen) {
    LookAhead::Names table;
    LookAhead ahead;
    Add(Names(10), table);
    ahead.Note(&table, "NAME_1");
    table = {};
    ahead.FetchRows();
    EXPECT_EQ(table.Find("NAME_1"), nullptr);
}

TEST(LookAhead, FindsTheSameWhateverWasNoted) {
    const std::vector<std::string> names = Names(100'000);
    LookAhead::Names table;
    LookAhead ahead;
    Add(names, table);
    for (unsigned i = 0; i < names.size(); ++i) {
        ahead.Note(&table, names[i]);
        ahead.Note(&table, "ABSENT_" + names[i]);
        ahead.Note(nullptr, names[i]);
        if (i % 50 == 0) ahead.FetchRows();
        ASSERT_EQ(*table.Find(names[i]), i);
    }
    ahead.Note(&table, "late");
    // A table that has grown since a name was noted has its slots elsewhere.
    for (const std::string& name : names) table.Add(name + "_LATER", 1);
    ahead.FetchRows();
    EXPECT_EQ(table.Find("late"), nullptr);
    EXPECT_EQ(table.Size(), 2 * names.size());
}

TEST(VisitAhead, VisitsEachInOrderAndNotesTheOneBehindIt) {
    SectionList sections(4);
    std::vector<CGSSYSTEM> objects(4);
    for (unsigned i = 0; i < 4; ++i) {
        sections[i] = &objects[i];
        objects[i].m_dwLine = i + 1;
    }
    std::string steps;
    const auto note = [&](const CZEKSection& section, LookAhead&) {
        steps += " note " + std::to_string(section.m_dwLine);
    };
    const auto visit = [&](const CZEKSection& section) {
        steps += " visit " + std::to_string(section.m_dwLine);
        return section.m_dwLine < 3;
    };
    VisitAhead(sections, true, note, visit);
    EXPECT_EQ(std::exchange(steps, ""), " note 2 visit 1 note 3 visit 2 note 4 visit 3");
    VisitAhead(sections, false, note, visit);
    EXPECT_EQ(steps, " visit 1 visit 2 visit 3");
}

}  // namespace zek::test
