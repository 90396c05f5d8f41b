#include "debugimage/debug_bytes.h"
#include "debugimage/model_text.h"

namespace zek::test {

using ObjectBytes = ProcessTest;
using EntryBytes = ProcessTest;
using SectionBytes = ProcessTest;

namespace {

template <class Thing>
std::string BytesOf(Thing& thing) {
    std::vector<unsigned char> bytes = {1, 2, 3};
    thing.GetBuffer(bytes);
    return ToString(bytes);
}

template <class Thing>
std::string Taken(Thing& thing, const std::string& bytes) {
    return Outcome([&] {
        thing.SetBuffer(ToVector(bytes));
        return 1;
    });
}

/// From here on objects are written and read without the list of files.
void PassTheFileList() {
    CZEKObj object;
    BytesOf(object);
    ASSERT_EQ(Taken(object, Object(0, 0, 0, 0, "") + List({})), "1");
}

std::string TextEntry(unsigned type, unsigned notation, const std::string& key, const std::string& text) {
    return EntryRecord(Object(type, notation, 9, 0, key), TextData(type, text));
}

constexpr unsigned kQuorzek = 0x20000001;
constexpr unsigned kVersionType = 0x10020001;

/// A [QUORZEK] section restored from these entries, as text; its one declared entry is VERSION.
std::string RestoredQuorzek(const Texts& entries) {
    CGSQUORZEK section;
    EXPECT_EQ(Taken(section, SectionRecord(Object(kQuorzek, 1, 1, 0, "QUORZEK"), entries)), "1");
    std::string text;
    for (CZEKEntry* entry : section.m_vpEntry) {
        text += entry->m_strName + '/' + std::to_string(entry->m_eNotation);
        if (entry->m_ZekEntryData.GetData()) text += '=' + ValueText(entry);
        text += ' ';
    }
    CGSQUORZEK::m_sHeader.clear();
    return text;
}

}  // namespace

TEST_F(ObjectBytes, OfTheFirstObjectWrittenBringTheListOfFiles) {
    CZEKObj object;
    object.m_dwType = 0x20000005;
    object.m_eNotation = static_cast<tagNOTATION>(2);
    object.m_dwLine = 0x01020304;
    object.m_dwFile = 7;
    object.m_strName = "ab";
    CZEKObj::m_svstrIncFiles = {"x", ""};
    const std::string fields = "05 00 00 20  02 00 00 00  04 03 02 01  07 00 00 00  02 00 00 00 61 62";
    EXPECT_EQ(Dump(BytesOf(object)), Dump(FromHex(fields + "02 00 00 00  01 00 00 00 78  00 00 00 00")));
    EXPECT_EQ(Dump(BytesOf(object)), Dump(FromHex(fields)));
}

TEST_F(ObjectBytes, BringAnEmptyListAsACountOfZeroAndNeverAgain) {
    CZEKObj object;
    EXPECT_EQ(BytesOf(object), Object(0, 0, 0, 0, "") + List({}));
    CZEKObj::m_svstrIncFiles = {"late"};
    EXPECT_EQ(BytesOf(object), Object(0, 0, 0, 0, ""));
}

TEST_F(ObjectBytes, OfTheFirstObjectReadAppendToTheListOfFiles) {
    CZEKObj::m_svstrIncFiles = {"own"};
    CZEKObj object;
    EXPECT_EQ(Taken(object, Object(1, 2, 3, 4, "n") + List({"a", "own"}) + "surplus"), "1");
    EXPECT_EQ(object.m_dwType, 1U);
    EXPECT_EQ(object.m_eNotation, 2U);
    EXPECT_EQ(object.m_dwLine, 3U);
    EXPECT_EQ(object.m_dwFile, 4U);
    EXPECT_EQ(object.m_strName, "n");
    const Texts expected = {"own", "a", "own"};
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, expected);
    EXPECT_EQ(Taken(object, Object(5, 6, 7, 8, "m") + List({"b"})), "1");
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, expected);
    EXPECT_EQ(object.m_strName, "m");
}

TEST_F(ObjectBytes, OfAnEmptyListEndTheReadingOfListsToo) {
    CZEKObj object;
    EXPECT_EQ(Taken(object, Object(0, 0, 0, 0, "") + List({})), "1");
    EXPECT_EQ(Taken(object, Object(0, 0, 0, 0, "") + List({"late"})), "1");
    EXPECT_TRUE(CZEKObj::m_svstrIncFiles.empty());
}

TEST_F(ObjectBytes, WithACutListAreOutOfRangeAndTheNextObjectBringsTheList) {
    const std::string whole = Object(1, 2, 3, 4, "n") + List({"a", "b"});
    CZEKObj object;
    EXPECT_EQ(Taken(object, whole.substr(0, whole.size() - 1)), kOutOfRangeText);
    EXPECT_EQ(object.m_strName, "n") << "what was read before stays";
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, Texts{"a"});
    EXPECT_EQ(Taken(object, Object(1, 2, 3, 4, "n")), kOutOfRangeText);
    EXPECT_EQ(Taken(object, Object(1, 2, 3, 4, "n") + List({"c"})), "1");
    EXPECT_EQ(CZEKObj::m_svstrIncFiles, (Texts{"a", "c"}));
}

TEST_F(ObjectBytes, CutInsideAFieldAreOutOfRangeAndKeepTheFieldsBefore) {
    PassTheFileList();
    const std::string whole = Object(1, 2, 3, 4, "name");
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        SCOPED_TRACE(length);
        CZEKObj object;
        EXPECT_EQ(Taken(object, whole.substr(0, length)), length == whole.size() ? "1" : kOutOfRangeText);
        EXPECT_EQ(object.m_dwType, length < 4 ? 0U : 1U);
        EXPECT_EQ(object.m_eNotation, length < 8 ? 0U : 2U);
        EXPECT_EQ(object.m_dwLine, length < 12 ? 0U : 3U);
        EXPECT_EQ(object.m_dwFile, length < 16 ? 0U : 4U);
        EXPECT_EQ(object.m_strName, length < whole.size() ? "" : "name");
    }
}

TEST_F(EntryBytes, AreTheCommonPartAndTheDataAsBlocks) {
    PassTheFileList();
    CGEVALUE entry(0x10080001, static_cast<tagNOTATION>(46));
    entry.m_dwLine = 6;
    entry.m_strName = "G_X";
    entry.m_vstrSubStr = {"not", "written"};
    entry.m_ZekEntryData.SetBuffer(ToVector(ValueData(0x10080001, 1, "W", Strings({"7"}))));
    EXPECT_EQ(Dump(BytesOf(entry)),
              Dump(FromHex("17 00 00 00  01 00 08 10  2e 00 00 00  06 00 00 00  00 00 00 00  03 00 00 00 47 5f 58"
                           "16 00 00 00  01 00 08 10  0e 00 00 00  01 00 00 00  01 00 00 00 57  01 00 00 00 37")));
}

TEST_F(EntryBytes, OfAnEntryWithoutDataHoldADataTypeOfZero) {
    PassTheFileList();
    CGESTRING entry(0x10020015, static_cast<tagNOTATION>(1));
    EXPECT_EQ(BytesOf(entry), EntryRecord(Object(0x10020015, 1, 0, 0, ""), Word(0)));
}

TEST_F(EntryBytes, AreReadInPlaceOfWhatTheEntryHeld) {
    PassTheFileList();
    CGESTRING entry(0x10020015, static_cast<tagNOTATION>(1));
    entry.Init("f", "NAME", "before", 3);
    EXPECT_EQ(
        Taken(entry,
              EntryRecord(Object(0x10020015, 2, 8, 5, "KEY") + "more", TextData(0x10020015, "new") + "more") + "more"),
        "1");
    EXPECT_EQ(entry.m_strName, "KEY");
    EXPECT_EQ(entry.m_eNotation, 2U);
    EXPECT_EQ(entry.m_dwLine, 8U);
    EXPECT_EQ(entry.m_dwFile, 5U);
    EXPECT_EQ(ValueText(&entry), "new");
    EXPECT_EQ(Taken(entry, EntryRecord(Object(0x10020015, 2, 8, 5, "KEY"), Word(0))), "1");
    EXPECT_EQ(entry.m_ZekEntryData.GetData(), nullptr);
}

TEST_F(EntryBytes, WithABlockThatOverrunsAreOutOfRange) {
    PassTheFileList();
    const std::string object = Object(0x10020015, 1, 1, 0, "NAME");
    const std::string data = TextData(0x10020015, "text");
    CGESTRING entry;
    EXPECT_EQ(Taken(entry, Word(static_cast<unsigned>(object.size() + 1)) + object), kOutOfRangeText);
    EXPECT_EQ(Taken(entry, Block(object) + Word(static_cast<unsigned>(data.size() + 1)) + data), kOutOfRangeText);
    EXPECT_EQ(entry.m_strName, "NAME");
    EXPECT_EQ(Taken(entry, Block(object) + Block(data.substr(0, data.size() - 1))), kOutOfRangeText);
    EXPECT_EQ(Taken(entry, Block(object)), kOutOfRangeText);
    EXPECT_EQ(Taken(entry, Block(object.substr(0, object.size() - 1)) + Block(data)), kOutOfRangeText);
}

TEST_F(SectionBytes, OfASectionWithoutEntriesEndWithACountOfZero) {
    PassTheFileList();
    CGSPROPERTY section(0x20000002, static_cast<tagNOTATION>(2));
    section.Init("p.zek", "PROPERTY", 12);
    EXPECT_EQ(Dump(BytesOf(section)), Dump(FromHex("1c 00 00 00  02 00 00 20  02 00 00 00  0c 00 00 00  00 00 00 00"
                                                   "08 00 00 00 50 52 4f 50 45 52 54 59  00 00 00 00")));
    CGSPROPERTY::m_sHeader.clear();
}

TEST_F(SectionBytes, HoldEveryEntryAsABlockDeclaredOnesWithoutDataIncluded) {
    PassTheFileList();
    CGSTABLE section(0x20000008, static_cast<tagNOTATION>(2));
    section.Init("t.zek", "TABLE", 1);
    section.SetEntry("t.zek", "3.4", "9", 2);
    EXPECT_EQ(BytesOf(section),
              SectionRecord(Object(0x20000008, 2, 1, 0, "TABLE"),
                            {EntryRecord(Object(0x10020015, 1, 0, 0, ""), Word(0)),
                             EntryRecord(Object(0x10028002, 1, 0, 0, ""), Word(0)),
                             EntryRecord(Object(0x10020012, 10, 2, 0, "3.4"), TextData(0x10020012, ""))}));
    CGSTABLE::m_sHeader.clear();
}

TEST_F(SectionBytes, AreReadIntoTheDeclaredEntryOfTheirType) {
    PassTheFileList();
    EXPECT_EQ(RestoredQuorzek({}), "/1 ");
    EXPECT_EQ(RestoredQuorzek({TextEntry(kVersionType, 1, "VERSION", "a")}), "VERSION/1=a ");
}

TEST_F(SectionBytes, OfARepeatedDeclaredKeyLeaveTheSecondValueOnly) {
    PassTheFileList();
    EXPECT_EQ(RestoredQuorzek({TextEntry(kVersionType, 1, "VERSION", "a"), TextEntry(kVersionType, 2, "VERSION", "b")}),
              "VERSION/2=b ");
}

TEST_F(SectionBytes, OfFamilyEntriesAreAppendedInOrder) {
    PassTheFileList();
    EXPECT_EQ(RestoredQuorzek({TextEntry(0x10020018, 10, "P_b", "1"), TextEntry(0x10020018, 10, "P_a", "2"),
                               TextEntry(kVersionType, 1, "VERSION", "3"), TextEntry(0x10020018, 10, "P_b", "4")}),
              "VERSION/1=3 P_b/10=1 P_a/10=2 P_b/10=4 ");
}

TEST_F(SectionBytes, OfAnUndeclaredTypeWithoutTheFamilyBitOverwriteEachOther) {
    PassTheFileList();
    EXPECT_EQ(RestoredQuorzek({TextEntry(0x10020015, 1, "NAME", "a"), TextEntry(0x10020015, 2, "NAME", "b")}),
              "/1 NAME/2=b ");
}

TEST_F(SectionBytes, ThatMakeADeclaredEntryAFamilyEntryLeaveNoneForTheNext) {
    PassTheFileList();
    EXPECT_EQ(RestoredQuorzek({TextEntry(kVersionType, 10, "a", "1"), TextEntry(kVersionType, 1, "b", "2"),
                               TextEntry(kVersionType, 2, "c", "3")}),
              "a/10=1 c/2=3 ");
}

TEST_F(SectionBytes, AreReadIntoTheNextEntryOnceTheFirstIsAFamilyEntry) {
    PassTheFileList();
    CGSGROUP section;
    for (const char* name : {"a", "b"}) section.SetEntry("main.zek", "NAME", name, 1);
    ASSERT_EQ(section.m_vpEntry.size(), 8U) << "seven declared entries and the repeated key";
    EXPECT_EQ(
        Taken(section, SectionRecord(Object(0x20000004, 2, 1, 0, "GROUP"), {TextEntry(0x10020015, 10, "first", "c"),
                                                                            TextEntry(0x10020015, 2, "second", "d")})),
        "1");
    ASSERT_EQ(section.m_vpEntry.size(), 8U);
    EXPECT_EQ(section.m_vpEntry[1]->m_strName, "first");
    EXPECT_EQ(section.m_vpEntry[7]->m_strName, "second");
    CGSGROUP::m_sHeader.clear();
}

TEST_F(SectionBytes, OfEveryClassBecomeAnEntryOfItsKind) {
    PassTheFileList();
    const auto record = [](unsigned type, const std::string& data) {
        return EntryRecord(Object(type, 10, 1, 0, "k"), Word(type) + data);
    };
    CGSPROPERTY section;
    ASSERT_EQ(Taken(section, SectionRecord(Object(0x20000002, 2, 1, 0, "PROPERTY"),
                                           {record(0x10010001, Word(31)), record(0x10020017, Str("t")),
                                            record(0x10200001, Str("t")), record(0x10048001, List({"a", "b"})),
                                            record(0x10080001, Block(Word(7) + Str("T") + List({"1"}))),
                                            record(0x10100001, Str("2") + Str("Do") + List({"x"}))})),
              "1");
    ASSERT_EQ(section.m_vpEntry.size(), 5U) << "an entry of an unknown class is passed over";
    EXPECT_NE(dynamic_cast<CGEDWORD*>(section.m_vpEntry[0]), nullptr);
    EXPECT_NE(dynamic_cast<CGESTRING*>(section.m_vpEntry[1]), nullptr);
    EXPECT_NE(dynamic_cast<CGESTRINGLIST*>(section.m_vpEntry[2]), nullptr);
    EXPECT_NE(dynamic_cast<CGEVALUE*>(section.m_vpEntry[3]), nullptr);
    EXPECT_NE(dynamic_cast<CGEREPEATER*>(section.m_vpEntry[4]), nullptr);
    Texts values;
    for (CZEKEntry* entry : section.m_vpEntry) values.push_back(ValueText(entry));
    EXPECT_EQ(values, (Texts{"0x1f", "t", ",a,b", "T,1", "2,Do,x"}));
    EXPECT_TRUE(section.m_vpEntry[1]->m_vstrSubStr.empty());
    CGSPROPERTY::m_sHeader.clear();
}

TEST_F(SectionBytes, WithARecordShorterThanEightBytesAreOutOfRange) {
    PassTheFileList();
    const std::string good = TextEntry(kVersionType, 1, "VERSION", "a");
    for (std::size_t length = 0; length < 8; ++length) {
        SCOPED_TRACE(length);
        CGSQUORZEK section;
        EXPECT_EQ(Taken(section, SectionRecord(Object(kQuorzek, 1, 1, 0, "QUORZEK"), {good, std::string(length, 'x')})),
                  kOutOfRangeText);
        EXPECT_EQ(ValueText(section.m_vpEntry.at(0)), "a") << "what was read before stays";
    }
    CGSQUORZEK::m_sHeader.clear();
}

TEST_F(SectionBytes, OfAnUnknownClassNeedNoMoreThanEightBytes) {
    PassTheFileList();
    EXPECT_EQ(RestoredQuorzek({Joined({4, 0x10200000}), TextEntry(kVersionType, 1, "VERSION", "a")}), "VERSION/1=a ");
}

TEST_F(SectionBytes, BehindTheLastEntryAreIgnored) {
    PassTheFileList();
    CGSQUORZEK section;
    EXPECT_EQ(Taken(section, SectionRecord(Object(kQuorzek, 1, 1, 0, "QUORZEK"), {}) + "surplus"), "1");
    EXPECT_EQ(section.m_vpEntry.size(), 1U);
    CGSQUORZEK::m_sHeader.clear();
}

}  // namespace zek::test
