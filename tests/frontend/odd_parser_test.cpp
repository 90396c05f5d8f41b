#include <dlfcn.h>
#include <new>

#include "frontend/parse.h"
#include "frontend/parser_host.h"
#include "model/section.h"
#include "model/section_text.h"
#include "support/resources.h"

namespace zek::test {

using Texts = std::vector<std::string>;

/// A process whose parser library does what the script says.
class OddParser : public ParserHost {
protected:
    explicit OddParser(const char* library = "complete") : library_(library) {}

    void SetUp() override {
        ParserHost::SetUp();
        Load(library_);
        TakeMessages();
    }

    /// Reads a file of these sections.
    static void Read(std::vector<ScriptedSection> sections) {
        TheScript().files["main.zek"] = std::move(sections);
        ASSERT_EQ(gccCompStart("main.zek"), 1U);
        gccParse();
    }

private:
    const char* library_;
};

TEST_F(OddParser, IsAskedForTheSizesFirstAndThenForTheTexts) {
    Read({{"GROUP", 1, {{"NAME", "abc", 2}}}});
    EXPECT_EQ(Calls(),
              "OpenFile main.zek\nParse main.zek\nEnumSection main.zek 0\n"
              "GetSectInfo null 0\nGetSectInfo buffer 6\n"
              "EnumItem 0 null 0 null 0\nEnumItem 0 buffer 5 buffer 4\n"
              "EnumItem 1 null 0 null 0\nEnumItem 1 buffer 0 buffer 0\n"
              "EnumSection main.zek 1\nCloseFile main.zek\n");
}

TEST_F(OddParser, IsAskedItselfThoughAnotherCouldGiveItemsWithoutCopying) {
    ASSERT_NE(dlopen(ZEK_OWN_PARSER, RTLD_NOW | RTLD_GLOBAL), nullptr) << dlerror();
    ASSERT_NE(dlsym(RTLD_DEFAULT, "RSPeekItem"), nullptr);
    Read({{"GROUP", 1, {{"NAME", "abc", 2}}}});
    EXPECT_NE(Calls().find("EnumItem 0 buffer 5 buffer 4\n"), std::string::npos);
    EXPECT_EQ(TakeMessages(), "Parse::No more sections(total = 1).\n");
}

TEST_F(OddParser, IsPassedANullFileWithoutAStart) {
    gccParse();
    EXPECT_EQ(Calls(), "EnumSection null 0\n");
    EXPECT_EQ(TakeMessages(), "Parse::No more sections(total = 0).\n");
}

TEST_F(OddParser, IsForgottenTheFileEvenWhereItLeavesTheHandle) {
    Read({{"GROUP"}});
    Calls();
    gccParse();
    EXPECT_EQ(Calls(), "EnumSection null 0\n");
}

TEST_F(OddParser, LosesTheFirstFileOfTwoStarts) {
    TheScript().files["first.zek"] = {{"GROUP"}};
    ASSERT_EQ(gccCompStart("first.zek"), 1U);
    Read({});
    EXPECT_EQ(Calls(),
              "OpenFile first.zek\nParse first.zek\nOpenFile main.zek\nParse main.zek\n"
              "EnumSection main.zek 0\nCloseFile main.zek\n");
    EXPECT_TRUE(CZEKSection::m_svpHSection.empty());
}

TEST_F(OddParser, LosesItsFileWhenTheNextCannotBeOpened) {
    TheScript().files["first.zek"] = {{"GROUP"}};
    ASSERT_EQ(gccCompStart("first.zek"), 1U);
    EXPECT_EQ(gccCompStart("none.zek"), 0U);
    gccParse();
    EXPECT_EQ(Calls(), "OpenFile first.zek\nParse first.zek\nOpenFile none.zek\nEnumSection null 0\n");
    EXPECT_EQ(TakeMessages(), "Parse::No more sections(total = 0).\n") << "a failed start says nothing";
}

TEST_F(OddParser, HasNoFileWhileTheNextIsOpened) {
    TheScript().files["first.zek"] = {{"GROUP"}};
    ASSERT_EQ(gccCompStart("first.zek"), 1U);
    TheScript().awaitedCall = "OpenFile main.zek";
    TheScript().meanwhile = gccParse;
    Read({{"TABLE"}});
    EXPECT_EQ(Calls(),
              "OpenFile first.zek\nParse first.zek\nOpenFile main.zek\nEnumSection null 0\nParse main.zek\n"
              "EnumSection main.zek 0\nGetSectInfo null 0\nGetSectInfo buffer 6\n"
              "EnumItem 0 null 0 null 0\nEnumItem 0 buffer 0 buffer 0\nEnumSection main.zek 1\nCloseFile main.zek\n");
}

TEST_F(OddParser, IsAskedForTheNextSectionOfTheFileThatIsOpenThen) {
    TheScript().files["other.zek"] = {{"GROUP"}, {"SYSTEM"}};
    TheScript().awaitedCall = "EnumItem 0 null 0 null 0";
    TheScript().meanwhile = [] { gccCompStart("other.zek"); };
    Read({{"TABLE"}, {"TABLE"}});
    EXPECT_EQ(CGSTABLE::m_sHeader.size(), 1U);
    ASSERT_EQ(CGSSYSTEM::m_sHeader.size(), 1U);
    EXPECT_EQ(CGSSYSTEM::m_sHeader[0]->GetFile(0), "other.zek");
    EXPECT_EQ(TakeMessages(), "Parse::No more sections(total = 2).\n");
}

TEST_F(OddParser, IsAskedForNoMoreSectionsOfAFileThatWasReadMeanwhile) {
    TheScript().awaitedCall = "GetSectInfo null 0";
    TheScript().meanwhile = gccParse;
    ScriptedSection nameless{"TABLE"};
    nameless.infoFails = true;
    Read({nameless, {"GROUP"}});
    EXPECT_EQ(CGSGROUP::m_sHeader.size(), 1U);
    EXPECT_EQ(Calls(),
              "OpenFile main.zek\nParse main.zek\nEnumSection main.zek 0\nGetSectInfo null 0\n"
              "EnumSection main.zek 0\nGetSectInfo null 0\nGetSectInfo buffer 0\nEnumSection main.zek 1\n"
              "GetSectInfo null 0\nGetSectInfo buffer 6\nEnumItem 0 null 0 null 0\nEnumItem 0 buffer 0 buffer 0\n"
              "EnumSection main.zek 2\nCloseFile main.zek\nGetSectInfo buffer 0\nEnumSection null 1\n");
    EXPECT_EQ(TakeMessages(),
              "Parse::Get section(NO. = 1,Index=0) name failed.\nParse::No more sections(total = 2).\n"
              "Parse::Get section(NO. = 1,Index=0) name failed.\nParse::No more sections(total = 1).\n");
}

TEST_F(OddParser, KeepsAFileOpenThatADestroyedObjectHeld) {
    TheScript().files["main.zek"] = {};
    {
        CZEKParse parse;
        ASSERT_EQ(parse.Start("main.zek"), 1U);
    }
    EXPECT_EQ(Calls(), "OpenFile main.zek\nParse main.zek\n");
}

TEST_F(OddParser, MayOpenAFileAgainThatIsBeingReadHoweverDeep) {
    constexpr std::size_t kOpens = 300;
    TheScript().opensLeft = kOpens;
    Read({{"INCLUDE", 1, {{"FILE", "main.zek", 2}}}, {"GROUP"}});
    EXPECT_EQ(CGSINCLUDE::m_sHeader.size(), kOpens);
    EXPECT_EQ(CGSGROUP::m_sHeader.size(), kOpens);
    std::string loading;
    std::string ends;
    for (std::size_t i = 0; i < kOpens; ++i) {
        loading += "Parse::load rsparsea(/usr/tavr/lib/libzekrsparser.so.0) failed.\n";
        ends += "Parse::No more sections(total = 2).\n";
    }
    EXPECT_EQ(TakeMessages(), loading + "Warning[main.zek:2], [INCLUDE]:FILE FILE main.zek cannot be loaded.\n" + ends);
}

TEST_F(OddParser, HasItsAnswersPassedOn) {
    TheScript().files["main.zek"] = {{"TABLE"}, {"GROUP"}};
    TheScript().parseStatus = 7;
    void* file = g_Parse.RSOpenFile("main.zek");
    EXPECT_EQ(file, &TheScript().files["main.zek"]);
    EXPECT_EQ(g_Parse.RSParse(file), 7U);
    EXPECT_EQ(g_Parse.RSFindSection(file, "GROUP"), &TheScript().files["main.zek"][1]);
    EXPECT_EQ(g_Parse.RSCloseFile(file), 1U);
    EXPECT_EQ(Calls(), "OpenFile main.zek\nParse main.zek\nFindSEction main.zek GROUP\nCloseFile main.zek\n");
}

TEST_F(OddParser, MayFailToParse) {
    TheScript().parseStatus = 0;
    Read({{"GROUP"}});
    EXPECT_EQ(CGSGROUP::m_sHeader.size(), 1U);
}

TEST_F(OddParser, MayAnswerTheSizeCallsWithFailure) {
    TheScript().sizeStatus = 0;
    Read({{"GROUP", 1, {{"NAME", "abc", 2}}}});
    EXPECT_EQ(CGSGROUP::m_sHeader.at(0)->m_vpEntry[1]->m_vstrSubStr, std::vector<std::string>({"abc"}));
}

TEST_F(OddParser, MayFailToNameASection) {
    ScriptedSection nameless{"TABLE"};
    nameless.infoFails = true;
    Read({{"GROUP"}, nameless, {"GROUP"}});
    EXPECT_EQ(TakeMessages(),
              "Parse::Get section(NO. = 2,Index=1) name failed.\nParse::No more sections(total = 3).\n");
    EXPECT_EQ(CGSGROUP::m_sHeader.size(), 2U);
}

TEST_F(OddParser, MayLeaveTheLinesAsTheyAre) {
    Read({{"GROUP", 5, {{"NAME", "a", 6}, {"PARENT", "b", 0}}}, {"GROUP", 0}});
    ASSERT_EQ(CGSGROUP::m_sHeader.size(), 2U);
    EXPECT_EQ(CGSGROUP::m_sHeader[0]->m_dwLine, 5U);
    EXPECT_EQ(CGSGROUP::m_sHeader[0]->m_vpEntry[1]->m_dwLine, 6U);
    EXPECT_EQ(CGSGROUP::m_sHeader[0]->m_vpEntry[0]->m_dwLine, 0U) << "not the line of the item before";
    EXPECT_EQ(CGSGROUP::m_sHeader[1]->m_dwLine, 0U);
}

TEST_F(OddParser, MayPutMoreBehindTheTerminator) {
    const auto text = [](const std::string& name) { return ScriptedText(name + std::string("\0rest", 5)); };
    Read({{text("GROUP"), 1, {{text("NAME"), text("abc"), 2}}}});
    EXPECT_EQ(CGSGROUP::m_sHeader.at(0)->m_strName, "GROUP");
    EXPECT_EQ(CGSGROUP::m_sHeader.at(0)->m_vpEntry[1]->m_strName, "NAME");
    EXPECT_EQ(CGSGROUP::m_sHeader.at(0)->m_vpEntry[1]->m_vstrSubStr, std::vector<std::string>({"abc"}));
}

TEST_F(OddParser, IsReadNoFurtherThanTheSizeThatItNamed) {
    ScriptedText name("GROUPS");
    name.sizeError = -2;  // room for "GROUP", none for a terminator
    ScriptedText value("a");
    value.sizeError = 100;
    Read({{name, 1, {{"NAME", value, 2}}}, {"GROUP"}});
    EXPECT_EQ(CGSGROUP::m_sHeader.at(0)->m_strName, "GROUP");
    EXPECT_EQ(CGSGROUP::m_sHeader.at(0)->m_vpEntry[1]->m_vstrSubStr, std::vector<std::string>({"a"}));
}

TEST_F(OddParser, MayNameASizeOfZero) {
    ScriptedText none("");
    none.sizeError = -1;
    Read({{none}, {"PROPERTY", 1, {{"KEY", none, 2}}}});
    EXPECT_EQ(TakeMessages(), "Create section(1, ) object failed.\nParse::No more sections(total = 2).\n");
    EXPECT_EQ(EntriesOf(*CGSPROPERTY::m_sHeader.at(0)), "STRING 10020017 10 KEY 2\n");
}

TEST_F(OddParser, MaySendAnEmptyKey) {
    Read({{"GROUP", 1, {{"", "a", 2}, {"NAME", "b", 3}}}, {"TABLE", 4, {{"", "1", 5}}}});
    EXPECT_EQ(TakeMessages(),
              "Add Item(NO. = 1) of section(GROUP) failed.\n"
              "Warning[main.zek:2]: [GROUP]:, This ENTRY is ignored because of invalid entry name.\n"
              "Parse::No more sections(total = 2).\n");
    EXPECT_EQ(CGSTABLE::m_sHeader.at(0)->m_vpEntry.size(), 3U);
}

TEST_F(OddParser, MayKeepTheBracketsOfAName) {
    Read({{"[GROUP]", 1, {{"NAME", "a", 2}}}});
    EXPECT_EQ(TakeMessages(), "Create section(1, [GROUP]) object failed.\nParse::No more sections(total = 1).\n");
    EXPECT_EQ(Calls().find("EnumItem"), std::string::npos) << "the items of a refused section are not asked for";
}

TEST_F(OddParser, MayFillNothingAndSaySo) {
    ScriptedText key("KEY");
    key.isLeft = true;
    ScriptedText value(std::string(500, 'x'));
    value.isLeft = true;
    Read({{"PROPERTY", 1, {{key, "a", 2}, {"KEY", value, 3}}}});
    EXPECT_EQ(EntriesOf(*CGSPROPERTY::m_sHeader.at(0)), "STRING 10020017 10\nSTRING 10020017 10 KEY 3\n");
}

TEST_F(OddParser, MayNameAnotherSizeTheSecondTime) {
    for (const unsigned size : {0U, 1U, 0xFFFFFFFFU}) {
        SCOPED_TRACE(size);
        TheScript().sizeAfterwards = size;
        Read({{"PROPERTY", 1, {{"KEY", std::string(500, 'a'), 2}}}});
        EXPECT_EQ(CGSPROPERTY::m_sHeader.back()->m_vpEntry.at(0)->m_vstrSubStr, Texts{std::string(500, 'a')});
    }
}

TEST_F(OddParser, MayNameASizeThatNoTextHas) {
    ScriptedText huge("a");
    huge.sizeError = 1 << 30;
    const std::size_t before = ResidentMemory();
    Read({{huge, 1}, {"PROPERTY", 1, {{huge, huge, 2}}}});
    EXPECT_LT(ResidentMemory(), before + (64 << 20));
    EXPECT_EQ(TakeMessages(), "Create section(1, a) object failed.\nParse::No more sections(total = 2).\n");
    EXPECT_EQ(EntriesOf(*CGSPROPERTY::m_sHeader.at(0)), "STRING 10020017 10 a 2 [a]\n");
}

#if !defined(__SANITIZE_ADDRESS__)
// The address space cannot be limited under the sanitizer.
TEST_F(OddParser, FailsWhereItNamesASizeThatNoTextAndNoMemoryHas) {
    ScriptedText negative("a");
    negative.sizeError = -3;
    {
        const ScarceMemory scarce(64 << 20);
        Read({{negative, 1, {{"KEY", "a", 2}}},
              {"PROPERTY", 3, {{"KEY", "a", 4}, {"NEXT", negative, 5}, {"LAST", "a", 6}}},
              {"PROPERTY", 7, {{negative, "a", 8}}}});
    }
    EXPECT_EQ(TakeMessages(),
              "Parse::Get section(NO. = 1,Index=0) name failed.\nParse::No more sections(total = 3).\n");
    EXPECT_EQ(EntriesOf(*CGSPROPERTY::m_sHeader.at(0)), "STRING 10020017 10 KEY 4 [a]\n")
        << "the section ends with the item that fails";
    EXPECT_EQ(EntriesOf(*CGSPROPERTY::m_sHeader.at(1)), "");
}

TEST_F(OddParser, IsClosedWhenThereIsNoMemoryForASizeThatItNames) {
    ScriptedText large("a");
    large.sizeError = 200 << 20;
    TheScript().files["main.zek"] = {{"PROPERTY", 1, {{"KEY", large, 2}}}};
    ASSERT_EQ(gccCompStart("main.zek"), 1U);
    {
        const ScarceMemory scarce(64 << 20);
        EXPECT_THROW(gccParse(), std::bad_alloc);
    }
    EXPECT_TRUE(Calls().ends_with("CloseFile main.zek\n"));
    gccCompEnd();
    Read({{"PROPERTY", 1, {{"KEY", "a", 2}}}});
    EXPECT_EQ(EntriesOf(*CGSPROPERTY::m_sHeader.at(0)), "STRING 10020017 10 KEY 2 [a]\n");
}
#endif

/// A process whose parser library gives items without copying, too.
class PeekedParser : public OddParser {
protected:
    PeekedParser() : OddParser("peeking") {}

    /// Reads a section of an item with this key and value, and one behind it; gives the section.
    static std::string Read(const ScriptedText& key, const ScriptedText& value) {
        OddParser::Read({{"PROPERTY", 1, {{key, value, 2}, {"NEXT", "b", 3}}}});
        return EntriesOf(*CGSPROPERTY::m_sHeader.back());
    }
    static std::string NextItem() { return "STRING 10020017 10 NEXT " + std::to_string(3 + kPeekedLine) + " [b]\n"; }
};

TEST_F(PeekedParser, IsAskedForItemsInNoOtherWay) {
    EXPECT_EQ(Read("KEY", "a"), "STRING 10020017 10 KEY 1002 [a]\n" + NextItem());
    EXPECT_EQ(Calls(),
              "OpenFile main.zek\nParse main.zek\nEnumSection main.zek 0\n"
              "GetSectInfo null 0\nGetSectInfo buffer 9\nPeekItem 0\nPeekItem 1\nPeekItem 2\n"
              "EnumSection main.zek 1\nCloseFile main.zek\n");
}

TEST_F(PeekedParser, IsAskedAgainForAnItemThatIsNowhereOrDoesNotEndWhereItsSizeSays) {
    ScriptedText nowhere("abc");
    nowhere.isNowhere = true;
    std::vector<ScriptedText> odd = {nowhere};
    // No size, sizes that leave some of the text out, and two that go on into what follows it.
    for (const unsigned size : {0U, 1U, 3U, 6U, 9U}) {
        odd.push_back(size >= 6 ? ScriptedText(std::string("abc\0rest", 8)) : ScriptedText("abc"));
        odd.back().peekedSize = size;
    }
    for (const ScriptedText& text : odd) {
        SCOPED_TRACE(text.peekedSize.value_or(4));
        EXPECT_EQ(Read(text, "a"), "STRING 10020017 10 abc 2 [a]\n" + NextItem());
        EXPECT_NE(Calls().find("PeekItem 0\nEnumItem 0 null 0 null 0\n"), std::string::npos);
        EXPECT_EQ(Read("KEY", text), "STRING 10020017 10 KEY 2 [abc]\n" + NextItem());
        EXPECT_NE(Calls().find("PeekItem 0\nEnumItem 0 null 0 null 0\n"), std::string::npos);
    }
}

TEST_F(PeekedParser, IsAskedAgainUntilALookAtAnItemHasFoundOne) {
    TheScript().isBlind = true;
    EXPECT_EQ(Read("KEY", "a"), "STRING 10020017 10 KEY 2 [a]\nSTRING 10020017 10 NEXT 3 [b]\n");
}

TEST_F(OddParser, MayHaveAMillionSections) {
    constexpr unsigned kSections = 1'000'000;
    TheScript().isQuiet = true;
    TheScript().sections = kSections;
    const ScarceMemory scarce(std::size_t{1} << 30);
    Read({{"SENSOR", 1, {{"NAME", "a", 2}}}});
    EXPECT_EQ(TakeMessages(), "Parse::No more sections(total = 1000000).\n");
    EXPECT_EQ(CGSSENSOR::m_sHeader.size(), kSections);
    EXPECT_EQ(EntriesOf(*CGSSENSOR::m_sHeader.back()), EntriesOf(*CGSSENSOR::m_sHeader.at(kPlainModel + 1)));
}

TEST_F(OddParser, MayHaveItemsOf64Mebibytes) {
    const std::string text(64 << 20, 'a');
    TheScript().files["main.zek"] = {{"PROPERTY", 1, {{text, text, 2}}}, {"GROUP", 3, {{text, "b", 4}}}};
    const ScarceMemory scarce(10 * text.size());
    ASSERT_EQ(gccCompStart("main.zek"), 1U);
    gccParse();
    const CZEKEntry& entry = *CGSPROPERTY::m_sHeader.at(0)->m_vpEntry.at(0);
    EXPECT_TRUE(entry.m_strName == text);
    EXPECT_TRUE(entry.m_vstrSubStr == Texts{text});
    const std::string messages = TakeMessages();
    EXPECT_TRUE(messages == "Add Item(NO. = 1) of section(GROUP) failed.\nWarning[main.zek:4]: [GROUP]:" + text +
                                ", This ENTRY is ignored because of invalid entry name.\n"
                                "Parse::No more sections(total = 2).\n");
}

TEST_F(OddParser, MayOpenAFileAThousandDeepAndNoDeeper) {
    TheScript().isQuiet = true;
    Read({{"INCLUDE", 1, {{"FILE", "main.zek", 2}}}, {"GROUP"}});
    EXPECT_EQ(CGSGROUP::m_sHeader.size(), 1001U);
    const std::string messages = TakeMessages();
    const std::string refused = "Warning[main.zek:2], [INCLUDE]:FILE FILE main.zek cannot be loaded.\n";
    EXPECT_EQ(messages.find(refused), messages.rfind(refused));
    EXPECT_NE(messages.find(refused), std::string::npos);
    gccCompEnd();
    Read({{"INCLUDE", 1, {{"FILE", "main.zek", 2}}}, {"GROUP"}});
    EXPECT_EQ(CGSGROUP::m_sHeader.size(), 1001U) << "the depth is counted anew";
}

}  // namespace zek::test
