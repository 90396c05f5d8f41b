// Hosts that were built against these classes reach into them: sizes, field offsets and virtual slots are part of the
// binary interface.
#include <dlfcn.h>
#include <link.h>

#include <memory>
#include <type_traits>

#include "frontend/parse.h"
#include "model/keyword_table.h"
#include "model/section.h"
#include "model/section_kinds.h"
#include "support/process_test.h"

namespace zek::test {

static_assert(std::is_same_v<std::underlying_type_t<tagNOTATION>, unsigned> && sizeof(unsigned) == 4);
static_assert(sizeof(tagNTMAP) == 16 && offsetof(tagNTMAP, pszName) == 0 && offsetof(tagNTMAP, dwID) == 8);
static_assert(sizeof(CZEKObj) == 64);
static_assert(sizeof(CZEKSection) == 88);
static_assert(sizeof(CGSGROUP) == 88 && sizeof(CGSINCLUDE) == 88);
static_assert(sizeof(CGSIFDEF) == 96);
static_assert(sizeof(CZEKEntry) == 104);
static_assert(sizeof(CGEDWORD) == 104 && sizeof(CGESTRING) == 104 && sizeof(CGESTRINGLIST) == 104);
static_assert(sizeof(CGEVALUE) == 104 && sizeof(CGEREPEATER) == 104);
static_assert(sizeof(CZekEntryData) == 16 && offsetof(CZekEntryData, m_dwType) == 0 &&
              offsetof(CZekEntryData, m_pData) == 8);
static_assert(sizeof(CGeValue) == 48 && offsetof(CGeValue, m_dwType) == 0 && offsetof(CGeValue, m_pData) == 8);
static_assert(offsetof(CGeValue, m_strType) == 16);
static_assert(sizeof(CZEKParse) == 48);
static_assert(!std::is_polymorphic_v<CZekEntryData> && !std::is_polymorphic_v<CGeValue> &&
              !std::is_polymorphic_v<CZEKParse>);

namespace {

template <class Field>
std::ptrdiff_t OffsetIn(const void* object, const Field& field) {
    return reinterpret_cast<const char*>(&field) - static_cast<const char*>(object);
}

void ExpectObjectFields(const CZEKObj& object) {
    EXPECT_EQ(OffsetIn(&object, object.m_dwType), 8);
    EXPECT_EQ(OffsetIn(&object, object.m_eNotation), 12);
    EXPECT_EQ(OffsetIn(&object, object.m_dwLine), 16);
    EXPECT_EQ(OffsetIn(&object, object.m_strName), 24);
    EXPECT_EQ(OffsetIn(&object, object.m_dwFile), 56);
}

void* const* VirtualTableOf(const CZEKObj& object) { return *reinterpret_cast<void* const* const*>(&object); }

/// How many virtual operations the class has, by the size of its table (two words stand before the operations).
std::size_t VirtualCountOf(const CZEKObj& object) {
    Dl_info info = {};
    ElfW(Sym)* symbol = nullptr;
    if (!dladdr1(VirtualTableOf(object), &info, reinterpret_cast<void**>(&symbol), RTLD_DL_SYMENT) || !symbol) return 0;
    return symbol->st_size / sizeof(void*) - 2;
}

/// Expects the operations of the class (as its symbol begins, such as "8CGSGROUP") in this order after its destructors.
void ExpectSlots(const CZEKObj& object, const std::string& owner, const std::vector<std::string>& operations) {
    SCOPED_TRACE(owner);
    std::vector<std::string> symbols{"_ZN" + owner + "D1Ev", "_ZN" + owner + "D0Ev"};
    symbols.insert(symbols.end(), operations.begin(), operations.end());
    ASSERT_EQ(VirtualCountOf(object), symbols.size());
    for (std::size_t slot = 0; slot < symbols.size(); ++slot) {
        EXPECT_EQ(VirtualTableOf(object)[slot], dlsym(RTLD_DEFAULT, symbols[slot].c_str())) << symbols[slot];
    }
}

}  // namespace

using Layout = ProcessTest;

TEST_F(Layout, PutsTheFieldsOfAnObjectFirst) {
    ExpectObjectFields(CZEKObj());
    ExpectObjectFields(CZEKSection());
    ExpectObjectFields(CGESTRING());
}

TEST_F(Layout, PutsTheOwnFieldsBehindThem) {
    const auto& section = *new CGSIFDEF;  // listed, so destroyed with the model
    EXPECT_EQ(OffsetIn(&section, section.m_vpEntry), 64);
    EXPECT_EQ(OffsetIn(&section, section.m_dwSeen), 88);
    EXPECT_EQ(OffsetIn(&section, section.m_dwCondition), 92);
    const CGEVALUE entry;
    EXPECT_EQ(OffsetIn(&entry, entry.m_ZekEntryData), 64);
    EXPECT_EQ(OffsetIn(&entry, entry.m_vstrSubStr), 80);
}

TEST_F(Layout, PutsTheHandlesOfTheFrontEndBeforeItsFileName) {
    struct Fields {
        void* library;
        void* file;
        std::string name;
    };
    Write("main.zek", "");
    const auto& fields = *reinterpret_cast<const Fields*>(&g_Parse);
    EXPECT_EQ(fields.file, nullptr);
    EXPECT_EQ(fields.name, "");
    ASSERT_EQ(g_Parse.Start("main.zek"), 1U);
    EXPECT_NE(fields.file, nullptr);
    EXPECT_EQ(fields.name, "main.zek");
    void* dropped = fields.file;
    EXPECT_EQ(g_Parse.Start("none.zek"), 0U);
    EXPECT_EQ(fields.file, nullptr);
    EXPECT_EQ(fields.name, "main.zek") << "a failed start leaves the name";
    g_Parse.RSCloseFile(dropped);
    g_Parse.Parse();
    EXPECT_EQ(fields.name, "");
}

TEST_F(Layout, OrdersTheVirtualOperationsOfObjectsAndSections) {
    const std::string strings = "ERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEES7_S7_j";
    const auto setEntryOf = [&](const std::string& owner) { return "_ZN" + owner + "8SetEntry" + strings; };
    ExpectSlots(CZEKObj(), "7CZEKObj", {});
    ExpectSlots(CZEKSection(), "11CZEKSection", {setEntryOf("11CZEKSection")});
    ExpectSlots(CGSQUORZEK(), "10CGSQUORZEK", {setEntryOf("11CZEKSection")});
    ExpectSlots(CGSGROUP(), "8CGSGROUP", {setEntryOf("11CZEKSection")});
    ExpectSlots(CGSPROPERTY(), "11CGSPROPERTY", {setEntryOf("11CGSPROPERTY")});
    ExpectSlots(CGSSYSTEM(), "9CGSSYSTEM", {setEntryOf("9CGSSYSTEM")});
    ExpectSlots(CGSSENSOR(), "9CGSSENSOR", {setEntryOf("9CGSSENSOR")});
    ExpectSlots(CGSDEVICE(), "9CGSDEVICE", {setEntryOf("9CGSDEVICE")});
    ExpectSlots(CGSACTION(), "9CGSACTION", {setEntryOf("9CGSACTION")});
    ExpectSlots(CGSTABLE(), "8CGSTABLE", {setEntryOf("8CGSTABLE")});
    ExpectSlots(CGSTAVRGROUP(), "12CGSTAVRGROUP", {setEntryOf("12CGSTAVRGROUP")});
    ExpectSlots(CGSGLOBAL(), "9CGSGLOBAL", {setEntryOf("9CGSGLOBAL")});
    ExpectSlots(CGSREPEATER(), "11CGSREPEATER", {setEntryOf("11CGSREPEATER")});
    ExpectSlots(CGSDEFINE(), "9CGSDEFINE", {setEntryOf("9CGSDEFINE")});
    ExpectSlots(CGSIFDEF(), "8CGSIFDEF", {setEntryOf("8CGSIFDEF")});
    ExpectSlots(CGSINCLUDE(), "10CGSINCLUDE", {setEntryOf("10CGSINCLUDE")});
    for (zek::SectionList* list : CZEKSection::m_svpHSection) list->clear();  // they are gone already
}

TEST_F(Layout, OrdersTheVirtualOperationsOfEntries) {
    const auto checksOf = [](const std::string& first, const std::string& second) {
        return std::vector<std::string>{"_ZN" + first + "7IsValidEP7CZEKObjj",
                                        "_ZN" + second + "9IsValidExEP7CZEKObjj"};
    };
    ExpectSlots(CGEDWORD(), "8CGEDWORD", checksOf("8CGEDWORD", "9CZEKEntry"));
    ExpectSlots(CGESTRING(), "9CGESTRING", checksOf("9CGESTRING", "9CGESTRING"));
    ExpectSlots(CGESTRINGLIST(), "13CGESTRINGLIST", checksOf("13CGESTRINGLIST", "13CGESTRINGLIST"));
    ExpectSlots(CGEVALUE(), "8CGEVALUE", checksOf("8CGEVALUE", "8CGEVALUE"));
    ExpectSlots(CGEREPEATER(), "11CGEREPEATER", checksOf("11CGEREPEATER", "11CGEREPEATER"));
    static_assert(std::is_abstract_v<CZEKEntry>);
}

TEST_F(Layout, ReachesTheKindThroughTheBase) {
    CGSTABLE table;
    CZEKSection& section = table;
    EXPECT_EQ(section.SetEntry("a.zek", "7", "1", 2), 1U) << "the base would refuse a row";
    const std::unique_ptr<CZEKEntry> entry = std::make_unique<CGEDWORD>(0x10010001, tagNOTATION{10});
    entry->Init("a.zek", "A", "12", 3);
    EXPECT_EQ(entry->IsValid(&section, 255), 1U);
    EXPECT_EQ(*static_cast<const unsigned*>(entry->m_ZekEntryData.GetData()), 12U);
    EXPECT_EQ(entry->IsValidEx(&section, 255), 1U);
    CGSTABLE::m_sHeader.clear();
}

}  // namespace zek::test
