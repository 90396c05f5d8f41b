#include "model/typed_data.h"
#include "support/process_test.h"

namespace zek::test {

namespace {

constexpr char kCutShort[] = "vector::_M_range_check";

std::string Str(std::string_view text) { return Word(static_cast<unsigned>(text.size())) + std::string(text); }

std::string ListBytes(const List& list) {
    std::string bytes = Word(static_cast<unsigned>(list.size()));
    for (const std::string& text : list) bytes += Str(text);
    return bytes;
}

/// The bytes of a record that Fill has filled.
std::string FilledBytes(const ValueType& shape) {
    std::string bytes = Word(shape.type) + Str("WORD");
    for (std::size_t i = 0; i < shape.strings; ++i) bytes += Str("s" + std::to_string(i));
    return shape.list ? bytes + ListBytes({"l0", "", "l2"}) : bytes;
}

/// The bytes of the record that is left when only the first `present` of these bytes were there to read.
std::string BytesLeftOf(const ValueType& shape, std::size_t present) {
    std::size_t position = (Word(0) + Str("WORD")).size();
    if (position > present) return Word(0) + Str("");
    std::string bytes = FilledBytes(shape).substr(0, position);
    const auto isPresent = [&](std::string_view text) {
        if (position <= present) position += 4 + text.size();
        return position <= present;
    };
    for (std::size_t i = 0; i < shape.strings; ++i) {
        const std::string text = "s" + std::to_string(i);
        bytes += isPresent(text) ? Str(text) : Str("");
    }
    if (!shape.list) return bytes;
    List list;
    if (!isPresent("")) return bytes + ListBytes(list);
    for (const char* text : {"l0", "", "l2"}) {
        if (isPresent(text)) list.push_back(text);
    }
    return bytes + ListBytes(list);
}

struct EntryBytes {
    const char* name;
    unsigned type;
    std::string data;
};

const std::string kCall = FilledBytes({3, 1, true});

const EntryBytes kEntryBytes[] = {
    {"Number", kNumberEntry, Word(0x12345678)},
    {"EmptyText", kTextEntry, Str("")},
    {"Text", kTextEntry, Str("abc")},
    {"TextOfAnyBytes", kTextEntry, Str(std::string_view("a\0\xff\n", 4))},
    {"EmptyList", kListEntry, ListBytes({})},
    {"List", kListEntry, ListBytes({"1", "", "0x22"})},
    {"EmptyValue", kValueEntryType, Str(Word(0) + Str(""))},
    {"Value", kValueEntryType, Str(kCall)},
    {"EmptyRepeater", kRepeaterEntry, Str("") + Str("") + ListBytes({})},
    {"Repeater", kRepeaterEntry, Str("8") + Str("ACT") + ListBytes({"x", "y"})},
    {"UnknownClass", kNoClassEntry, ""},
};

}  // namespace

TEST(EntryDataBytes, AreTheTypeIdThenTheDataOfTheClass) {
    CZekEntryData number(0x10010005);
    *static_cast<unsigned*>(number.GetData()) = 0x12345678;
    EXPECT_EQ(Dump(BytesOf(number)), Dump(FromHex("05 00 01 10  78 56 34 12")));

    CZekEntryData text(0x10020019);
    EXPECT_EQ(Dump(BytesOf(text)), Dump(FromHex("19 00 02 10  00 00 00 00")));
    *static_cast<std::string*>(text.GetData()) = "a.zek";
    EXPECT_EQ(Dump(BytesOf(text)), Dump(FromHex("19 00 02 10  05 00 00 00 61 2e 7a 65 6b")));

    CZekEntryData list(0x10048001);
    EXPECT_EQ(Dump(BytesOf(list)), Dump(FromHex("01 80 04 10  00 00 00 00")));
    *static_cast<List*>(list.GetData()) = {"1", ""};
    EXPECT_EQ(Dump(BytesOf(list)), Dump(FromHex("01 80 04 10  02 00 00 00  01 00 00 00 31  00 00 00 00")));

    CZekEntryData value(0x10080007);
    *static_cast<CGeValue*>(value.GetData()) = CGeValue(1, "C");
    *StringsIn(*static_cast<CGeValue*>(value.GetData())) = "7";
    EXPECT_EQ(Dump(BytesOf(value)),
              Dump(FromHex("07 00 08 10  0e 00 00 00  01 00 00 00  01 00 00 00 43  01 00 00 00 37")));

    CZekEntryData repeater(0x10100001);
    *static_cast<RepeaterRecord*>(repeater.GetData()) = {"2", "A", {"x"}};
    EXPECT_EQ(Dump(BytesOf(repeater)), Dump(FromHex("01 00 10 10  01 00 00 00 32  01 00 00 00 41"
                                                    "  01 00 00 00  01 00 00 00 78")));

    CZekEntryData unknown(0x10200001);
    EXPECT_EQ(Dump(BytesOf(unknown)), Dump(FromHex("01 00 20 10")));
    CZekEntryData empty;
    EXPECT_EQ(Dump(BytesOf(empty)), Dump(FromHex("00 00 00 00")));
}

TEST(EntryDataBytes, AreReadBackWhole) {
    for (const EntryBytes& row : kEntryBytes) {
        SCOPED_TRACE(row.name);
        const std::string bytes = Word(row.type) + row.data;
        CZekEntryData data(kListEntry);
        static_cast<List*>(data.GetData())->assign({"what", "was", "there"});
        Restore(data, bytes + "left over");
        EXPECT_EQ(data.GetType(), row.type);
        EXPECT_EQ(Dump(BytesOf(data)), Dump(bytes));
    }
}

TEST(EntryDataBytes, CutShortAnywhereAreOutOfRange) {
    for (const EntryBytes& row : kEntryBytes) {
        const std::string bytes = Word(row.type) + row.data;
        for (std::size_t present = 0; present < bytes.size(); ++present) {
            SCOPED_TRACE(row.name + (" with " + std::to_string(present)));
            CZekEntryData data(kTextEntry);
            EXPECT_EQ(RestoreFailure(data, bytes.substr(0, present)), kCutShort);
            EXPECT_EQ(data.GetType(), present < 4 ? 0 : row.type);
            EXPECT_EQ(data.GetData() != nullptr, present >= 4);
        }
    }
}

TEST(EntryDataBytes, KeepWhatWasReadBeforeTheEnd) {
    CZekEntryData repeater;
    const std::string bytes = Word(kRepeaterEntry) + Str("8") + Str("ACT") + ListBytes({"x", "y"});
    EXPECT_EQ(RestoreFailure(repeater, std::string_view(bytes).substr(0, bytes.size() - 1)), kCutShort);
    const auto& record = *static_cast<const RepeaterRecord*>(repeater.GetData());
    EXPECT_EQ(record.count, "8");
    EXPECT_EQ(record.action, "ACT");
    EXPECT_EQ(record.parameters, List({"x"}));
}

TEST(EntryDataBytes, KeepTheElementsOfAListThatClaimsMore) {
    for (const unsigned count : {3U, 0x01000000U, 0xFFFFFFFFU}) {
        SCOPED_TRACE(count);
        CZekEntryData list;
        EXPECT_EQ(RestoreFailure(list, Word(kListEntry) + Word(count) + Str("1") + Str("2")), kCutShort);
        EXPECT_EQ(*static_cast<List*>(list.GetData()), List({"1", "2"}));
    }
}

TEST(EntryDataBytes, ReadAValueOnlyWithinItsBlock) {
    CZekEntryData data;
    EXPECT_EQ(RestoreFailure(data, Word(kValueEntryType) + Word(static_cast<unsigned>(kCall.size()) + 1) + kCall),
              kCutShort);
    EXPECT_EQ(static_cast<CGeValue*>(data.GetData())->GetStrType(), "")
        << "the block is not there, so nothing is read of it";
    EXPECT_EQ(RestoreFailure(data, Word(kValueEntryType) + Word(static_cast<unsigned>(kCall.size()) - 1) + kCall),
              kCutShort);
    EXPECT_EQ(static_cast<CGeValue*>(data.GetData())->GetStrType(), "WORD");
    EXPECT_EQ(RestoreFailure(data, Word(kValueEntryType) + Str(kCall + "left over")), "");
    EXPECT_EQ(Dump(BytesOf(data)), Dump(Word(kValueEntryType) + Str(kCall)));
}

TEST(EntryDataBytes, OfAHugeLengthAreOutOfRange) {
    CZekEntryData data;
    for (const unsigned type : {kTextEntry, kValueEntryType}) {
        SCOPED_TRACE(type);
        EXPECT_EQ(RestoreFailure(data, Word(type) + Word(0xFFFFFFFF) + "abcd"), kCutShort);
    }
}

TEST(GeValueBytes, AreTypeTextAndPayload) {
    for (const ValueType& shape : kValueTypes) {
        SCOPED_TRACE(shape.type);
        CGeValue value(shape.type, "WORD");
        Fill(value, shape);
        EXPECT_EQ(Dump(BytesOf(value)), Dump(FilledBytes(shape)));
    }
    CGeValue literal(6, "T6");
    Fill(literal, {6, 2, true});
    EXPECT_EQ(Dump(BytesOf(literal)),
              Dump(FromHex("06 00 00 00  02 00 00 00 54 36  02 00 00 00 73 30  02 00 00 00 73 31"
                           "  03 00 00 00  02 00 00 00 6c 30  00 00 00 00  02 00 00 00 6c 32")));
}

TEST(GeValueBytes, AreTypeAndTextForATypeWithoutPayload) {
    for (const unsigned type : kTypesWithoutPayload) {
        SCOPED_TRACE(type);
        const std::string bytes = Word(type) + Str("WORD");
        CGeValue value(type, "WORD");
        EXPECT_EQ(Dump(BytesOf(value)), Dump(bytes));
        CGeValue restored(2, "OLD");
        Restore(restored, bytes);
        EXPECT_EQ(restored.GetType(), type);
        EXPECT_EQ(restored.GetStrType(), "WORD");
        EXPECT_EQ(restored.GetData(), nullptr);
    }
}

TEST(GeValueBytes, AreReadBackWhole) {
    for (const ValueType& shape : kValueTypes) {
        SCOPED_TRACE(shape.type);
        CGeValue value(9, "OLD");
        Fill(value, {9, 4, true});
        Restore(value, FilledBytes(shape) + "left over");
        EXPECT_EQ(value.GetType(), shape.type);
        EXPECT_EQ(value.GetStrType(), "WORD");
        EXPECT_NE(value.GetData(), nullptr);
        EXPECT_EQ(Dump(BytesOf(value)), Dump(FilledBytes(shape)));
    }
}

TEST(GeValueBytes, CutShortAnywhereAreOutOfRangeAndKeepWhatWasRead) {
    for (const ValueType& shape : kValueTypes) {
        const std::string bytes = FilledBytes(shape);
        for (std::size_t present = 0; present < bytes.size(); ++present) {
            SCOPED_TRACE(std::to_string(shape.type) + " with " + std::to_string(present));
            CGeValue value(9, "OLD");
            EXPECT_EQ(RestoreFailure(value, bytes.substr(0, present)), kCutShort);
            EXPECT_EQ(Dump(BytesOf(value)), Dump(BytesLeftOf(shape, present)));
        }
    }
}

}  // namespace zek::test
