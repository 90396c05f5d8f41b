#include "model/ge_value.h"

#include "model/typed_data.h"
#include "support/process_test.h"

namespace zek::test {

TEST(GeValue, StartsEmpty) {
    const CGeValue value;
    EXPECT_EQ(value.GetType(), 0U);
    EXPECT_EQ(value.GetData(), nullptr);
    EXPECT_EQ(value.GetStrType(), "");
}

TEST(GeValue, HoldsTheEmptyPayloadOfItsType) {
    for (const ValueType& shape : kValueTypes) {
        SCOPED_TRACE(shape.type);
        const CGeValue value(shape.type, "WORD");
        EXPECT_EQ(value.GetType(), shape.type);
        EXPECT_EQ(value.GetStrType(), "WORD");
        ASSERT_NE(value.GetData(), nullptr);
        for (std::size_t i = 0; i < shape.strings; ++i) EXPECT_EQ(StringsIn(value)[i], "");
        if (shape.list) {
            EXPECT_EQ(ListIn(value, shape), List());
        }
    }
}

TEST(GeValue, HoldsNoPayloadForTheOtherTypes) {
    const auto expectNone = [](unsigned type) {
        SCOPED_TRACE(type);
        const CGeValue value(type, "WORD");
        EXPECT_EQ(value.GetType(), type);
        EXPECT_EQ(value.GetStrType(), "WORD");
        EXPECT_EQ(value.GetData(), nullptr);
    };
    for (unsigned type = 13; type <= 100; ++type) expectNone(type);
    for (const unsigned type : kTypesWithoutPayload) expectNone(type);
}

TEST(GeValue, CreateFreesNothing) {
    const ValueType shape{10, 2, false};
    CGeValue value(10, "FIRST");
    Fill(value, shape);
    CGeValue first;
    first.m_dwType = value.GetType();
    first.m_pData = value.GetData();
    value.Create(10, "SECOND");
    EXPECT_NE(value.GetData(), first.GetData());
    EXPECT_EQ(value.GetStrType(), "SECOND");
    EXPECT_EQ(StringsIn(value)[1], "");
    EXPECT_EQ(StringsIn(first)[1], "s1");
}

TEST(GeValue, DestoryEmptiesTheRecord) {
    const auto expectEmptied = [](CGeValue& value) {
        SCOPED_TRACE(value.GetType());
        value.Destory();
        EXPECT_EQ(value.GetType(), 0U);
        EXPECT_EQ(value.GetData(), nullptr);
        EXPECT_EQ(value.GetStrType(), "");
    };
    for (const ValueType& shape : kValueTypes) {
        CGeValue value(shape.type, "WORD");
        Fill(value, shape);
        expectEmptied(value);
        expectEmptied(value);
    }
    for (const unsigned type : kTypesWithoutPayload) {
        CGeValue value(type, "WORD");
        expectEmptied(value);
    }
}

TEST(GeValue, CopiesDeeply) {
    for (const ValueType& shape : kValueTypes) {
        SCOPED_TRACE(shape.type);
        CGeValue original(shape.type, "WORD");
        Fill(original, shape);
        const std::string bytes = BytesOf(original);
        CGeValue copied(original);
        CGeValue assigned(9, "OLD");
        Fill(assigned, {9, 4, true});
        EXPECT_EQ(&(assigned = original), &assigned);
        EXPECT_NE(copied.GetData(), nullptr);
        EXPECT_NE(copied.GetData(), original.GetData());
        EXPECT_NE(assigned.GetData(), original.GetData());
        original.Destory();
        EXPECT_EQ(Dump(BytesOf(copied)), Dump(bytes));
        EXPECT_EQ(Dump(BytesOf(assigned)), Dump(bytes));
    }
}

TEST(GeValue, CopiesTypeAndTextOfARecordWithoutPayload) {
    const CGeValue original(50, "WORD");
    CGeValue assigned(2, "OLD");
    assigned = original;
    for (const CGeValue& copy : {assigned, CGeValue(original)}) {
        EXPECT_EQ(copy.GetType(), 50U);
        EXPECT_EQ(copy.GetStrType(), "WORD");
        EXPECT_EQ(copy.GetData(), nullptr);
    }
}

TEST(GeValue, IsUnchangedWhenAssignedToItself) {
    for (const ValueType& shape : kValueTypes) {
        SCOPED_TRACE(shape.type);
        CGeValue value(shape.type, "WORD");
        Fill(value, shape);
        const void* before = value.GetData();
        const std::string bytes = BytesOf(value);
        const CGeValue& same = value;
        EXPECT_EQ(&(value = same), &value);
        EXPECT_EQ(value.GetData(), before);
        EXPECT_EQ(Dump(BytesOf(value)), Dump(bytes));
    }
}

}  // namespace zek::test
