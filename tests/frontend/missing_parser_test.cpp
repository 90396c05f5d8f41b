#include "frontend/parse.h"
#include "frontend/parser_host.h"
#include "model/section.h"
#include "support/process_test.h"

namespace zek::test {

namespace {

constexpr char kLoadFailed[] = "Parse::load rsparsea(/usr/tavr/lib/libzekrsparser.so.0) failed.\n";
constexpr char kNoSections[] = "Parse::No more sections(total = 0).\n";

}  // namespace

using MissingParser = ParserHost;

TEST_F(MissingParser, IsReportedOnceWhileTheLibraryIsLoaded) { EXPECT_EQ(TakeMessages(), kLoadFailed); }

TEST_F(MissingParser, LeavesACompilationWithoutSource) {
    TakeMessages();
    EXPECT_EQ(gccCompStart("main.zek"), 0U);
    gccParse();
    EXPECT_EQ(TakeMessages(), kNoSections);
    EXPECT_TRUE(CZEKSection::m_svpHSection.empty());
    gccCompEnd();
    EXPECT_EQ(TakeMessages(), "");
}

TEST_F(MissingParser, MakesEveryWrapperFailQuietly) {
    TakeMessages();
    int somewhere = 0;
    void* handle = &somewhere;
    std::string text = "text";
    std::string value = "value";
    unsigned line = 7;
    EXPECT_EQ(g_Parse.RSOpenFile("main.zek"), nullptr);
    EXPECT_EQ(g_Parse.RSParse(handle), 0U);
    EXPECT_EQ(g_Parse.RSEnumSection(handle, 0), nullptr);
    EXPECT_EQ(g_Parse.RSGetSectInfo(handle, text, line), 0U);
    EXPECT_EQ(g_Parse.RSEnumItem(handle, 0, text, value, line), 0U);
    EXPECT_EQ(g_Parse.RSFindSection(handle, "GROUP"), nullptr);
    EXPECT_EQ(g_Parse.RSCloseFile(handle), 0U);
    EXPECT_EQ(handle, &somewhere);
    EXPECT_EQ(text, "text");
    EXPECT_EQ(value, "value");
    EXPECT_EQ(line, 7U);
    EXPECT_EQ(TakeMessages(), "");
}

TEST_F(MissingParser, IsReportedAgainForEveryIncludedFile) {
    TakeMessages();
    TheScript().files["main.zek"] = {{"INCLUDE", 1, {{"FILE", "a.zek", 2}, {"FILE", "b.zek", 3}}}};
    TheScript().files["b.zek"] = {};
    Load("complete");
    ASSERT_EQ(gccCompStart("main.zek"), 1U);
    gccParse();
    EXPECT_EQ(TakeMessages(), std::string(kLoadFailed) +
                                  "Warning[main.zek:2], [INCLUDE]:FILE FILE a.zek cannot be loaded.\n" + kLoadFailed +
                                  kNoSections + "Parse::No more sections(total = 1).\n");
}

struct LackRow {
    const char* name;
    const char* messages;
    unsigned started;
    std::size_t groups;
    std::size_t filled;  ///< how many of the groups have their NAME
    const char* lastCall;
};

class ParserWithout : public ParserHost, public testing::WithParamInterface<LackRow> {};

TEST_P(ParserWithout, ReadsWhatItCan) {
    TakeMessages();
    TheScript().files["main.zek"] = {{"GROUP", 1, {{"NAME", "a", 2}}}, {"GROUP", 3, {{"NAME", "b", 4}}}};
    Load(std::string("without_") + GetParam().name);
    EXPECT_EQ(gccCompStart("main.zek"), GetParam().started);
    gccParse();
    EXPECT_EQ(TakeMessages(), GetParam().messages);
    EXPECT_EQ(CGSGROUP::m_sHeader.size(), GetParam().groups);
    std::size_t filled = 0;
    for (const CZEKSection* group : CGSGROUP::m_sHeader) filled += !group->m_vpEntry[1]->m_strName.empty();
    EXPECT_EQ(filled, GetParam().filled);
    const std::string calls = Calls();
    EXPECT_EQ(calls.substr(calls.rfind('\n', calls.size() - 2) + 1), GetParam().lastCall + std::string("\n"));
    EXPECT_EQ(g_Parse.RSFindSection(&TheScript().files["main.zek"], "GROUP") != nullptr,
              GetParam().name != std::string("RSFindSEction"));
}

constexpr char kTwoSections[] = "Parse::No more sections(total = 2).\n";

INSTANTIATE_TEST_SUITE_P(Function, ParserWithout,
                         testing::Values(LackRow{"RSOpenFile", kNoSections, 0, 0, 0, "EnumSection null 0"},
                                         LackRow{"RSParse", kTwoSections, 1, 2, 2, "CloseFile main.zek"},
                                         LackRow{"RSEnumSection", kNoSections, 1, 0, 0, "CloseFile main.zek"},
                                         LackRow{"RSGetSectInfo",
                                                 "Parse::Get section(NO. = 1,Index=0) name failed.\n"
                                                 "Parse::Get section(NO. = 2,Index=1) name failed.\n"
                                                 "Parse::No more sections(total = 2).\n",
                                                 1, 0, 0, "CloseFile main.zek"},
                                         LackRow{"RSEnumItem", kTwoSections, 1, 2, 0, "CloseFile main.zek"},
                                         LackRow{"RSFindSEction", kTwoSections, 1, 2, 2, "CloseFile main.zek"},
                                         LackRow{"RSCloseFile", kTwoSections, 1, 2, 2, "EnumSection main.zek 2"}),
                         RowName());

TEST_F(MissingParser, IsLookedForAtEveryCall) {
    TheScript().files["main.zek"] = {{"GROUP"}};
    EXPECT_EQ(g_Parse.Start("main.zek"), 0U);
    Load("without_RSEnumSection");
    EXPECT_EQ(g_Parse.Start("main.zek"), 1U);
    g_Parse.Parse();
    EXPECT_EQ(CGSGROUP::m_sHeader.size(), 0U);
    Load("complete");
    EXPECT_EQ(g_Parse.Start("main.zek"), 1U);
    g_Parse.Parse();
    EXPECT_EQ(CGSGROUP::m_sHeader.size(), 1U);
}

}  // namespace zek::test
