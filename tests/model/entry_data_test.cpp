#include "model/entry_data.h"

#include <utility>

#include "model/typed_data.h"
#include "support/process_test.h"

namespace zek::test {

namespace {

std::string& TextIn(const CZekEntryData& data) { return *static_cast<std::string*>(data.GetData()); }
unsigned& NumberIn(const CZekEntryData& data) { return *static_cast<unsigned*>(data.GetData()); }
List& ListIn(const CZekEntryData& data) { return *static_cast<List*>(data.GetData()); }
CGeValue& ValueIn(const CZekEntryData& data) { return *static_cast<CGeValue*>(data.GetData()); }
RepeaterRecord& RepeaterIn(const CZekEntryData& data) { return *static_cast<RepeaterRecord*>(data.GetData()); }

constexpr unsigned kEveryClass[] = {kNumberEntry, kTextEntry, kListEntry, kValueEntryType, kRepeaterEntry};

/// A holder of each class, filled.
CZekEntryData Filled(unsigned type) {
    CZekEntryData data(type);
    switch (type) {
        case kNumberEntry: NumberIn(data) = 7; break;
        case kTextEntry: TextIn(data) = "text"; break;
        case kListEntry: ListIn(data) = {"a", "", "c"}; break;
        case kValueEntryType:
            ValueIn(data).Create(3, "CALL");
            Fill(ValueIn(data), {3, 1, true});
            break;
        case kRepeaterEntry: RepeaterIn(data) = {"2", "ACT", {"x", "y"}}; break;
        default: break;
    }
    return data;
}

}  // namespace

TEST(EntryData, StartsEmpty) {
    const CZekEntryData data;
    EXPECT_EQ(data.GetType(), 0U);
    EXPECT_EQ(data.GetData(), nullptr);
}

TEST(EntryData, KeepsTheTypeIdAndHoldsEmptyDataOfItsClass) {
    for (const unsigned type : kEveryClass) {
        SCOPED_TRACE(type);
        const CZekEntryData data(type);
        EXPECT_EQ(data.GetType(), type);
        EXPECT_NE(data.GetData(), nullptr);
    }
    EXPECT_EQ(TextIn(CZekEntryData(kTextEntry)), "");
    EXPECT_EQ(ListIn(CZekEntryData(kListEntry)), List());
    const CZekEntryData value(kValueEntryType);
    EXPECT_EQ(ValueIn(value).GetType(), 0U);
    EXPECT_EQ(ValueIn(value).GetStrType(), "");
    EXPECT_EQ(ValueIn(value).GetData(), nullptr);
    const CZekEntryData repeater(kRepeaterEntry);
    EXPECT_EQ(RepeaterIn(repeater).count, "");
    EXPECT_EQ(RepeaterIn(repeater).action, "");
    EXPECT_EQ(RepeaterIn(repeater).parameters, List());
}

TEST(EntryData, HoldsNothingForAnUnknownClass) {
    for (const unsigned type :
         {0U, 1U, 0x20000001U, 0x10030000U, kNoClassEntry, 0x00010000U, 0x20010000U, 0xFFFFFFFFU}) {
        SCOPED_TRACE(type);
        CZekEntryData data(type);
        EXPECT_EQ(data.GetType(), type);
        EXPECT_EQ(data.GetData(), nullptr);
        data.Destory();
        EXPECT_EQ(data.GetType(), 0U);
        EXPECT_EQ(data.GetData(), nullptr);
    }
}

TEST(EntryData, CreateFreesNothing) {
    CZekEntryData data = Filled(kTextEntry);
    CZekEntryData first;
    first.m_dwType = data.GetType();
    first.m_pData = data.GetData();
    data.Create(kTextEntry);
    EXPECT_NE(data.GetData(), first.GetData());
    EXPECT_EQ(TextIn(data), "");
    EXPECT_EQ(TextIn(first), "text");
}

TEST(EntryData, CreateOfAnUnknownClassLeavesTheDataAsItWas) {
    CZekEntryData data = Filled(kTextEntry);
    const void* before = data.GetData();
    data.Create(kNoClassEntry);
    EXPECT_EQ(data.GetType(), kNoClassEntry);
    EXPECT_EQ(data.GetData(), before);
    EXPECT_EQ(TextIn(data), "text");
    data.m_dwType = kTextEntry;  // so that the holder frees the text again
}

TEST(EntryData, DestoryEmptiesTheHolder) {
    for (const unsigned type : kEveryClass) {
        SCOPED_TRACE(type);
        CZekEntryData data = Filled(type);
        data.Destory();
        EXPECT_EQ(data.GetType(), 0U);
        EXPECT_EQ(data.GetData(), nullptr);
        data.Destory();
        EXPECT_EQ(data.GetData(), nullptr);
    }
}

TEST(EntryData, CopiesDeeply) {
    for (const unsigned type : kEveryClass) {
        SCOPED_TRACE(type);
        CZekEntryData original = Filled(type);
        const std::string bytes = BytesOf(original);
        CZekEntryData copied(original);
        CZekEntryData assigned = Filled(kRepeaterEntry);
        EXPECT_EQ(&(assigned = original), &assigned);
        EXPECT_NE(copied.GetData(), original.GetData());
        EXPECT_NE(assigned.GetData(), original.GetData());
        original.Destory();
        EXPECT_EQ(Dump(BytesOf(copied)), Dump(bytes));
        EXPECT_EQ(Dump(BytesOf(assigned)), Dump(bytes));
    }
}

TEST(EntryData, CopiesTheTypeOfAHolderWithoutData) {
    const CZekEntryData unknown(kNoClassEntry);
    CZekEntryData assigned = Filled(kTextEntry);
    assigned = unknown;
    EXPECT_EQ(assigned.GetType(), kNoClassEntry);
    EXPECT_EQ(assigned.GetData(), nullptr);
    const CZekEntryData copied(unknown);
    EXPECT_EQ(copied.GetType(), kNoClassEntry);
    EXPECT_EQ(copied.GetData(), nullptr);
}

TEST(EntryData, IsUnchangedWhenAssignedToItself) {
    for (const unsigned type : kEveryClass) {
        SCOPED_TRACE(type);
        CZekEntryData data = Filled(type);
        const void* before = data.GetData();
        const std::string bytes = BytesOf(data);
        const CZekEntryData& same = data;
        EXPECT_EQ(&(data = same), &data);
        EXPECT_EQ(data.GetData(), before);
        EXPECT_EQ(Dump(BytesOf(data)), Dump(bytes));
    }
}

}  // namespace zek::test
