#include "debugimage/debug_bytes.h"
#include "debugimage/model_text.h"
#include "debugimage/small_debug_image.h"
#include "support/resources.h"

namespace zek::test {

using DebugQuery = ProcessTest;
using DebugLoading = ProcessTest;

namespace {

/// Both slots after a call; they hold 77 and 88 beforehand.
template <class Call>
std::string SlotsAfter(Call&& call) {
    gcSetLastError(77);
    gdSetLastError(88);
    call();
    return "gc " + std::to_string(gcGetLastError()) + ", gd " + std::to_string(gdGetLastError());
}

constexpr char kNoSlot[] = "gc 77, gd 88";
constexpr char kSuccess[] = "gc 77, gd 0";

/// An entry that holds this data.
template <class Kind>
std::string Shown(const std::string& data) {
    Kind entry;
    entry.m_ZekEntryData.SetBuffer(ToVector(data));
    entry.m_dwType = entry.m_ZekEntryData.GetType();
    return ValueText(&entry);
}

std::string ShownValueOf(unsigned type, const std::string& payload) {
    return Shown<CGEVALUE>(ValueData(0x10080000, type, "T", payload));
}

/// A sensor of many keys, the prefix with their number from 0 on behind it.
std::string LongSensor(const std::string& prefix, unsigned keys) {
    std::string source = "[SENSOR]\n";
    for (unsigned i = 0; i < keys; ++i) source += prefix + std::to_string(i) + " = x\n";
    return source;
}

/// Expects a query of a section to give `result` with these slots.
template <class Query, class Result>
void ExpectAnswer(Query query, CZEKSection* section, Result result, const char* slots) {
    Result given{};
    EXPECT_EQ(SlotsAfter([&] { given = query(section); }), slots);
    EXPECT_EQ(given, result);
}

void ExpectText(const char* (*query)(CZEKSection*), CZEKSection* section, const char* text, const char* slots) {
    const char* given = nullptr;
    EXPECT_EQ(SlotsAfter([&] { given = query(section); }), slots);
    EXPECT_STREQ(given, text);
}

}  // namespace

TEST_F(DebugLoading, SetsTheOtherSlotOnSuccessAndNoneOnFailure) {
    Write("small.metad", SmallDebugImage());
    Write("magic.metad", SmallDebugImage().replace(0, 1, "x"));
    Write("version.metad", SmallDebugImage().replace(16, 1, "x"));
    EXPECT_EQ(SlotsAfter([] { EXPECT_EQ(gdInit("small.metad", nullptr), 1U); }), "gc 0, gd 88");
    for (const char* file : {"missing.metad", "magic.metad", "version.metad"}) {
        SCOPED_TRACE(file);
        EXPECT_EQ(SlotsAfter([&] { EXPECT_EQ(gdInit(file, nullptr), 0U); }), kNoSlot);
    }
    EXPECT_EQ(SlotsAfter([] { EXPECT_EQ(gdUnInit(), 1U); }), kNoSlot);
}

TEST_F(DebugLoading, ThatThrowsSetsNoSlot) {
    Write("broken.metad", DebugImage({}, {{""}}));
    EXPECT_EQ(SlotsAfter([] { EXPECT_THROW(gdInit("broken.metad", nullptr), std::out_of_range); }), kNoSlot);
}

TEST_F(DebugLoading, LeavesNoFileOpen) {
    const auto before = OpenFiles();
    for (const std::string& image :
         {SmallDebugImage(), std::string("QUOR"), DebugHead(0x01000001), DebugImage({}, {{""}})}) {
        Loaded(image);
        EXPECT_EQ(OpenFiles(), before);
    }
}

TEST_F(DebugLoading, AfterFailedLoadsGivesTheWholeImage) {
    EXPECT_EQ(Loaded("QUOR"), "0");
    EXPECT_EQ(Loaded(DebugImage({{"N", 1}}, {{""}})), kOutOfRangeText);
    gdUnInit();
    EXPECT_EQ(Loaded(SmallDebugImage()), "1");
    EXPECT_EQ(ModelText(),
              "QUORZEK@1 main.zek: VERSION=1.0\nDEFINE@3 main.zek: CONST=0x1\nGLOBAL@5 main.zek: G_X=CONST,7\n");
    EXPECT_EQ(NamesText(), "CONST=1");
}

TEST_F(DebugQuery, GivesASectionByKindAndPosition) {
    Source("[SENSOR]\nNAME=a\n[GROUP]\n[SENSOR]\nNAME=b\n");
    const auto& sensors = CGSSENSOR::m_sHeader;
    const struct {
        unsigned kind;
        unsigned index;
        CZEKSection* section;
        const char* slots;
    } rows[] = {{5, 0, sensors[0], kSuccess},           {0x20000005, 0, sensors[0], kSuccess},
                {0xFF000005, 1, sensors[1], kSuccess},  {4, 0, CGSGROUP::m_sHeader[0], kSuccess},
                {5, 2, nullptr, "gc 4, gd 88"},         {5, 0xFFFFFFFF, nullptr, "gc 4, gd 88"},
                {6, 0, nullptr, "gc 77, gd 1"},         {0, 0, nullptr, "gc 77, gd 1"},
                {0x20010005, 0, nullptr, "gc 77, gd 1"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.kind);
        CZEKSection* section = nullptr;
        EXPECT_EQ(SlotsAfter([&] { section = gdGetSectByIndex(row.kind, row.index); }), row.slots);
        EXPECT_EQ(section, row.section);
    }
}

TEST_F(DebugQuery, AfterTheTearDownAnswersAsForAKindNeverMade) {
    Source("[SENSOR]\nNAME=a\n");
    gdUnInit();
    EXPECT_EQ(SlotsAfter([] { EXPECT_EQ(gdGetSectByIndex(5, 0), nullptr); }), "gc 77, gd 1");
}

TEST_F(DebugQuery, GivesTheEntriesThatHoldDataByPosition) {
    Source("[SENSOR]\nNAME=a\nVALUE=1\nP_x=1\n[SENSOR]\n[DEFINE]\n[GROUP]\nNAME=b\n");
    CZEKSection* sensor = gdGetSectByIndex(5, 0);
    const char* const keys[] = {"NAME", "VALUE", "P_x"};
    for (unsigned i = 0; i < 3; ++i) {
        CZEKEntry* entry = nullptr;
        EXPECT_EQ(SlotsAfter([&] { entry = gdGetEntryByIndex(sensor, i); }), kSuccess);
        ASSERT_NE(entry, nullptr);
        EXPECT_EQ(entry->m_strName, keys[i]);
    }
    const auto failing = [](CZEKSection* section, unsigned index) {
        return SlotsAfter([=] { EXPECT_EQ(gdGetEntryByIndex(section, index), nullptr); });
    };
    EXPECT_EQ(failing(sensor, 3), "gc 4, gd 88");
    EXPECT_EQ(failing(sensor, 0xFFFFFFFF), "gc 4, gd 88");
    EXPECT_EQ(failing(gdGetSectByIndex(4, 0), 1), "gc 4, gd 88") << "one entry, a second asked for";
    EXPECT_EQ(failing(gdGetSectByIndex(5, 1), 0), "gc 2, gd 88") << "only declared entries, none given";
    EXPECT_EQ(failing(gdGetSectByIndex(12, 0), 0), "gc 2, gd 88") << "no entries at all";
    EXPECT_EQ(failing(nullptr, 0), "gc 77, gd 1");
}

TEST_F(DebugQuery, GivesTheNumberOfASectionsID) {
    Check(
        "[DEVICE]\nID=0x10\n[DEVICE]\nID=7up\n[DEVICE]\nID=abc\n[DEVICE]\nNAME=n\n[DEVICE]\nID=4294967295\n"
        "[DEVICE]\nID=0\n[GROUP]\nNAME=g\n[DEVICE]\nID=NAMED\n[DEFINE]\nNAMED=5\n");
    const auto device = [](unsigned index) { return gdGetSectByIndex(6, index); };
    ExpectAnswer(gdGetSectID, device(0), 16U, kSuccess);
    ExpectAnswer(gdGetSectID, device(1), 7U, kSuccess);
    ExpectAnswer(gdGetSectID, device(2), 0xFFFFFFFFU, "gc 77, gd 3");
    ExpectAnswer(gdGetSectID, device(3), 0xFFFFFFFFU, "gc 77, gd 3");
    ExpectAnswer(gdGetSectID, device(4), 0xFFFFFFFFU, kSuccess);
    ExpectAnswer(gdGetSectID, device(5), 0U, kSuccess);
    ExpectAnswer(gdGetSectID, device(6), 0xFFFFFFFFU, "gc 77, gd 3");
    ExpectAnswer(gdGetSectID, gdGetSectByIndex(4, 0), 0U, "gc 77, gd 2");
    ExpectAnswer(gdGetSectID, static_cast<CZEKSection*>(nullptr), 0xFFFFFFFFU, "gc 77, gd 1");
}

TEST_F(DebugQuery, GivesTheTextsOfASectionsNameAndParent) {
    Check("[GROUP]\nPARENT=0\nNAME=g\n[GROUP]\nPARENT=\n[DEVICE]\nNAME=d\n[PROPERTY]\nNAME=p\n");
    CZEKSection* group = gdGetSectByIndex(4, 0);
    ExpectText(gdGetSectName, group, "g", kSuccess);
    ExpectText(gdGetSectPName, group, "0", kSuccess);
    ExpectText(gdGetSectName, gdGetSectByIndex(4, 1), nullptr, "gc 77, gd 3");
    ExpectText(gdGetSectPName, gdGetSectByIndex(4, 1), "", kSuccess);
    ExpectText(gdGetSectName, gdGetSectByIndex(6, 0), "d", kSuccess);
    ExpectText(gdGetSectPName, gdGetSectByIndex(6, 0), nullptr, "gc 77, gd 2");
    ExpectText(gdGetSectName, gdGetSectByIndex(2, 0), nullptr, "gc 77, gd 2");
    ExpectText(gdGetSectName, nullptr, nullptr, "gc 77, gd 1");
    ExpectText(gdGetSectPName, nullptr, nullptr, "gc 77, gd 1");
}

TEST_F(DebugQuery, GivesTheFirstOfRepeatedNames) {
    Check("[GROUP]\nNAME=first\nNAME=second\n");
    EXPECT_STREQ(gdGetSectName(gdGetSectByIndex(4, 0)), "first");
}

TEST_F(DebugQuery, GivesTheKeyOfAnEntryAsWritten) {
    Source("[GLOBAL]\nG_some key=1\n[DEVICE]\nNAME=n\n");
    const auto keyOf = [](CZEKEntry* entry) {
        const char* key = nullptr;
        EXPECT_EQ(SlotsAfter([&] { key = gdGetEntryName(entry); }), entry ? kSuccess : "gc 77, gd 2");
        return std::string(key ? key : "(null)");
    };
    EXPECT_EQ(keyOf(gdGetEntryByIndex(gdGetSectByIndex(10, 0), 0)), "G_some key");
    EXPECT_EQ(keyOf(gdGetSectByIndex(6, 0)->m_vpEntry.at(1)), "") << "a declared entry that was not given";
    EXPECT_EQ(keyOf(nullptr), "(null)");
}

TEST_F(DebugQuery, GivesTextsThatAreTheModelsOwn) {
    Check("[GROUP]\nPARENT=0\nNAME=g\n");
    CZEKSection* group = gdGetSectByIndex(4, 0);
    const CZEKEntry* parent = group->m_vpEntry.at(0);
    const CZEKEntry* name = group->m_vpEntry.at(1);
    EXPECT_EQ(gdGetSectPName(group), static_cast<std::string*>(parent->m_ZekEntryData.GetData())->c_str());
    EXPECT_EQ(gdGetSectName(group), static_cast<std::string*>(name->m_ZekEntryData.GetData())->c_str());
    EXPECT_EQ(gdGetEntryName(gdGetEntryByIndex(group, 1)), name->m_strName.c_str());
}

TEST_F(DebugQuery, ShowsAValueWithoutTouchingASlot) {
    CGESTRING entry;
    entry.m_dwType = 0x10020015;
    entry.m_ZekEntryData.SetBuffer(ToVector(TextData(0x10020015, "text")));
    char out[8];
    std::fill(std::begin(out), std::end(out), '#');
    EXPECT_EQ(SlotsAfter([&] { EXPECT_EQ(gdGetValue(&entry, out), 1U); }), kNoSlot);
    EXPECT_EQ(std::string(out, sizeof out), std::string("text\0###", 8));
    EXPECT_EQ(SlotsAfter([&] { EXPECT_EQ(gdGetValue(nullptr, out), 0U); }), "gc 77, gd 2");
    EXPECT_EQ(std::string(out, sizeof out), std::string("text\0###", 8));
}

TEST_F(DebugQuery, ShowsNothingOfAnEntryWithoutData) {
    CGESTRING text(0x10020015, static_cast<tagNOTATION>(1));
    CGEVALUE value(0x10080000, static_cast<tagNOTATION>(37));
    CGEDWORD number(0x10010001, static_cast<tagNOTATION>(10));
    CGESTRINGLIST list(0x10048001, static_cast<tagNOTATION>(1));
    CGEREPEATER repeater(0x10100001, static_cast<tagNOTATION>(10));
    for (CZEKEntry* entry :
         {static_cast<CZEKEntry*>(&text), static_cast<CZEKEntry*>(&value), static_cast<CZEKEntry*>(&number),
          static_cast<CZEKEntry*>(&list), static_cast<CZEKEntry*>(&repeater)}) {
        SCOPED_TRACE(entry->m_dwType);
        char out[4] = "old";
        EXPECT_EQ(SlotsAfter([&] { EXPECT_EQ(gdGetValue(entry, out), 1U); }), kNoSlot);
        EXPECT_STREQ(out, "");
    }
}

TEST_F(DebugQuery, WritesNothingForAnEntryOfAnUnknownClass) {
    CGESTRING entry;
    entry.m_ZekEntryData.SetBuffer(ToVector(TextData(0x10020015, "text")));
    entry.m_dwType = 0x10200001;
    char out[4] = "old";
    EXPECT_EQ(SlotsAfter([&] { EXPECT_EQ(gdGetValue(&entry, out), 1U); }), kNoSlot);
    EXPECT_STREQ(out, "old");
}

TEST_F(DebugQuery, ShowsNumbersInHexadecimal) {
    for (const auto& [number, text] : {std::pair(0U, "0x0"), std::pair(31U, "0x1f"), std::pair(255U, "0xff"),
                                       std::pair(0xFFFFFFFFU, "0xffffffff")}) {
        EXPECT_EQ(Shown<CGEDWORD>(Joined({0x10010001, number})), text);
    }
}

TEST_F(DebugQuery, ShowsTextsListsAndRepeaterItems) {
    EXPECT_EQ(Shown<CGESTRING>(TextData(0x10028008, " a,b ")), " a,b ");
    EXPECT_EQ(Shown<CGESTRING>(TextData(0x10020013, "")), "");
    EXPECT_EQ(Shown<CGESTRINGLIST>(Word(0x10048001) + List({"a", "b"})), ",a,b");
    EXPECT_EQ(Shown<CGESTRINGLIST>(Word(0x10048001) + List({"", ""})), ",,");
    EXPECT_EQ(Shown<CGESTRINGLIST>(Word(0x10048001) + List({})), "");
    EXPECT_EQ(Shown<CGEREPEATER>(Word(0x10100001) + Strings({"x", "y"}) + List({"1", "2"})), "x,y,1,2");
    EXPECT_EQ(Shown<CGEREPEATER>(Word(0x10100001) + Strings({"", ""}) + List({})), ",");
}

TEST_F(DebugQuery, ShowsValuesByTheirType) {
    const struct {
        unsigned type;
        std::string payload;
        const char* shown;
    } rows[] = {{0, "", "T"},
                {1, Strings({"p"}), "T,p"},
                {2, Strings({"+", "p", "q", "", ""}), "T,+,p,q,,"},
                {2, Strings({"==", "p", "q", "r", "s"}), "T,==,p,q,r,s"},
                {3, Strings({"p"}) + List({"x", "y"}), "T,p,x,y"},
                {4, Strings({"p", "q", "r", "s"}), "T,p,s,r,q"},
                {5, Strings({"p", "q", "r", "s"}) + List({"x"}), "T,p,q,r,s,x"},
                {6, Strings({"p", "q"}) + List({"x"}), "T,p,q,x"},
                {7, List({"x", "y"}), "T,x,y"},
                {7, List({}), "T"},
                {8, Strings({"p", "q", "r", "s"}), "T,p,s,r,q"},
                {9, Strings({"p", "q", "r", "s"}) + List({}), "T,p,q,r,s"},
                {10, Strings({"p", "q"}), "T,p,q"},
                {11, Strings({"p", "q", "r", "s"}) + List({"x"}), "T,p,q,r,s,x"},
                {12, Strings({"p", "q", "r", "s"}), "T,p,s,r,q"},
                {13, Strings({"p"}), "T"},
                {50, "", "T"},
                {100, "", "T"},
                {101, Strings({"p"}), "T,p"},
                {102, Strings({"p", "q"}) + List({"x", "y"}), "T,p,q,x,y"},
                {103, Strings({"p"}), "T,p"},
                {104, Strings({"p"}), "T,p"},
                {105, Strings({"p"}), "T"},
                {0xFFFFFFFF, "", "T"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.type);
        EXPECT_EQ(ShownValueOf(row.type, row.payload), row.shown);
    }
    EXPECT_EQ(Shown<CGEVALUE>(ValueData(0x10080000, 1, "", Strings({"p"}))), ",p");
}

TEST_F(DebugQuery, InOneProcessGivesWhatAnotherChecked) {
    InChild([&] {
        ASSERT_EQ(Check("[DEFINE]\nREAD=4\n[GROUP]\nPARENT=0\nNAME=A\nCHILDGROUP=0\nVALUE_INIT=READ,1,2,3,4\n"), 1U);
        ASSERT_EQ(gccOutputD("model.metad"), 1U);
    });
    ASSERT_EQ(gdInit("model.metad", nullptr), 1U);
    CZEKSection* group = gdGetSectByIndex(0x20000004, 0);
    ASSERT_NE(group, nullptr);
    EXPECT_STREQ(gdGetSectName(group), "A");
    EXPECT_STREQ(gdGetSectPName(group), "0");
    CZEKEntry* value = gdGetEntryByIndex(group, 3);
    ASSERT_NE(value, nullptr);
    EXPECT_STREQ(gdGetEntryName(value), "VALUE_INIT");
    EXPECT_EQ(ValueText(value), "READ,1,4,3,2");
    EXPECT_EQ(gdUnInit(), 1U);
    EXPECT_EQ(gdGetSectByIndex(4, 0), nullptr);
}

TEST_F(DebugQuery, CountsTheEntriesOfALongSectionAsThoseOfAShortOne) {
    Source(LongSensor("P_", 1000));
    CZEKSection* sensor = gdGetSectByIndex(5, 0);
    const auto keyAt = [&](unsigned index) { return gdGetEntryName(gdGetEntryByIndex(sensor, index)); };
    EXPECT_STREQ(keyAt(0), "P_0");
    EXPECT_STREQ(keyAt(999), "P_999");
    EXPECT_STREQ(keyAt(500), "P_500");
    EXPECT_EQ(SlotsAfter([&] { EXPECT_EQ(gdGetEntryByIndex(sensor, 1000), nullptr); }), "gc 4, gd 88");
    // A declared entry that gets its data stands before them.
    sensor->SetEntry("main.zek", "NAME", "S", 1);
    EXPECT_STREQ(keyAt(0), "NAME");
    EXPECT_STREQ(keyAt(1000), "P_999");
    gdGetEntryByIndex(sensor, 1)->m_ZekEntryData.Destory();
    EXPECT_STREQ(keyAt(1), "P_1");
    gdUnInit();
    Source("[SENSOR]\nP_only = x\n");
    sensor = gdGetSectByIndex(5, 0);
    EXPECT_STREQ(keyAt(0), "P_only");
    EXPECT_EQ(gdGetEntryByIndex(sensor, 1), nullptr);
}

TEST_F(DebugQuery, KeepsTheEntriesOfALongSectionWhileAHostCopiesTheirData) {
    constexpr unsigned kEntries = 50'000;
    Source(LongSensor("P_", kEntries));
    CZEKSection* sensor = gdGetSectByIndex(5, 0);
    unsigned copied = 0;
    // Counting the entries anew behind every copy would take minutes.
    InChild([&] {
        alarm(60);
        while (const CZEKEntry* entry = gdGetEntryByIndex(sensor, copied)) {
            const CZekEntryData copy(entry->m_ZekEntryData);
            copied += copy.GetType() == entry->m_dwType;
        }
        EXPECT_EQ(copied, kEntries);
    });
}

TEST_F(DebugQuery, CountsTheEntriesOfSeveralLongSectionsInTurn) {
    Source(LongSensor("P_a", 1000) + LongSensor("P_b", 1000) + "[SENSOR]\nP_short = x\n");
    const auto expectKeys = [](unsigned position, const std::string& prefix, unsigned first) {
        SCOPED_TRACE(prefix + std::to_string(first));
        CZEKSection* sensor = gdGetSectByIndex(5, position);
        EXPECT_EQ(gdGetEntryName(gdGetEntryByIndex(sensor, 500)), prefix + std::to_string(first + 500));
        EXPECT_EQ(gdGetEntryName(gdGetEntryByIndex(sensor, 999 - first)), prefix + "999");
        EXPECT_EQ(gdGetEntryByIndex(sensor, 1000 - first), nullptr);
    };
    for (unsigned first = 0; first < 3; ++first) {
        expectKeys(0, "P_a", 0);
        expectKeys(1, "P_b", first);
        EXPECT_STREQ(gdGetEntryName(gdGetEntryByIndex(gdGetSectByIndex(5, 2), 0)), "P_short");
        expectKeys(0, "P_a", 0);
        gdGetEntryByIndex(gdGetSectByIndex(5, 1), 0)->m_ZekEntryData.Destory();
    }
    // A host that lists an entry itself is followed, since the section has one more.
    CZEKSection* sensor = gdGetSectByIndex(5, 0);
    auto entry = std::make_unique<CGESTRING>(kProperty, tagNOTATION{10});
    entry->Init("main.zek", "P_more", "x", 1);
    expectKeys(0, "P_a", 0);
    sensor->m_vpEntry.push_back(entry.release());
    EXPECT_STREQ(gdGetEntryName(gdGetEntryByIndex(sensor, 1000)), "P_more");
}

TEST_F(DebugQuery, GivesEntriesOfSeveralLongSectionsInTurnInNoTime) {
    constexpr unsigned kKeys = 100'000;
    Source(LongSensor("P_a", kKeys) + LongSensor("P_b", kKeys));
    InChild([] {
        // Reading a section for every entry would take minutes.
        alarm(20);
        for (unsigned i = 0; i < kKeys; ++i) {
            ASSERT_NE(gdGetEntryByIndex(gdGetSectByIndex(5, 0), i), nullptr);
            ASSERT_NE(gdGetEntryByIndex(gdGetSectByIndex(5, 1), i), nullptr);
        }
    });
}

}  // namespace zek::test
