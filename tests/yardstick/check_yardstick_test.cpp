// The check of generated sources, against the plain second pass.
#include "check/vocabulary.h"
#include "yardstick/generated_source.h"
#include "yardstick/plain_checks.h"

namespace zek::test {

using CheckOfGeneratedSource = GeneratedSource;

namespace {

struct FirstPass {
    bool valid = true;
    std::string messages;
};

/// Reads the source and lets every section make its first pass, then destroys the model.
FirstPass FirstPassAlone() {
    TakeMessages();
    FirstPass pass;
    for (const auto* list : CZEKSection::m_svpHSection) {
        for (CZEKSection* section : *list) pass.valid &= section->IsValid(0) != 0;
    }
    pass.messages = TakeMessages();
    gccCompEnd();
    return pass;
}

/// Each section asked on its own, outside of the whole check.
void CompareSections() {
    for (const auto* list : CZEKSection::m_svpHSection) {
        for (CZEKSection* section : *list) {
            plain::SecondPass plain;
            const bool valid = plain.Section(*section);
            EXPECT_EQ(section->IsValidEx(0), unsigned{valid});
            EXPECT_EQ(TakeMessages(), plain.messages);
        }
    }
}

/// Each question that an entry can ask, asked of names that there may be.
void CompareQuestions() {
    const std::vector<std::string> names = {"A",   "B",      "Action0", "Action1", "Table0", "G_0",
                                            "G_1", "G_none", "VALUE_1", "",        "0"};
    const auto sections = plain::Sections(kActionSection);
    if (sections.empty()) return;
    CZEKSection& section = *sections.front();
    CZEKEntry& entry = *section.m_vpEntry.front();
    for (const std::string& name : names) {
        SCOPED_TRACE("name '" + name + "'");
        plain::SecondPass plain;
        CGEVALUE value(kActionValue, tagNOTATION{kNotationActionValue});
        EXPECT_EQ(entry.ChkGlobalName(name, &section, 0), unsigned{plain.Global(entry, section, name)});
        EXPECT_EQ(entry.ChkTableName(name, &section, 0), unsigned{plain.Table(entry, section, name)});
        EXPECT_EQ(entry.ChkActionName(name, &section, 0), unsigned{plain.Action(entry, section, name)});
        EXPECT_EQ(entry.ChkActionParamNum(name, 1, &section, 0), unsigned{plain.ParamCount(entry, section, name, 1)});
        EXPECT_EQ(value.ChkValueName(name, &section, 0), unsigned{plain.ValueName(value, section, name)});
        EXPECT_EQ(TakeMessages(), plain.messages);
        unsigned number = 0;
        unsigned plainNumber = 0;
        EXPECT_EQ(GetPreDefinedValue(name, &number), unsigned{plain::IsPredefined(name, plainNumber)});
        EXPECT_EQ(number, plainNumber);
    }
}

/// A file name finds its first place in the list of source files, or a new one at its end.
void CompareFiles(unsigned seed) {
    for (const std::string& file : {std::string("a.zek"), std::string("dir\\c.zek"), "new" + std::to_string(seed)}) {
        const std::vector<std::string> before = CZEKObj::m_svstrIncFiles;
        const auto place = static_cast<std::size_t>(std::find(before.begin(), before.end(), file) - before.begin());
        CGESTRING object(kName, tagNOTATION{});
        object.SetFile(file);
        EXPECT_EQ(object.m_dwFile, place);
        EXPECT_EQ(CZEKObj::m_svstrIncFiles.size(), std::max(before.size(), place + 1));
    }
}

}  // namespace

TEST_P(CheckOfGeneratedSource, ReportsWhatThePlainOneReports) {
    unsigned passed = 0;
    unsigned valid = 0;
    ForEachSeed([&](unsigned seed) {
        ASSERT_TRUE(Parse());
        const FirstPass first = FirstPassAlone();
        ASSERT_TRUE(Parse());
        Messages();
        const unsigned result = gccCheck();
        const std::string messages = Messages();
        plain::SecondPass plain;
        const bool sound = plain.Model();
        EXPECT_EQ(messages, first.messages + (first.valid ? plain.messages : ""));
        EXPECT_EQ(result, unsigned{first.valid && sound});
        CompareSections();
        CompareQuestions();
        CompareFiles(seed);
        gccCompEnd();
        passed += first.valid;
        valid += result;
    });
    // The yardstick is worth something only while every sort of source is among them.
    EXPECT_GE(passed, kSeedsInShard / 4);
    EXPECT_LE(passed, kSeedsInShard * 9 / 10);
    EXPECT_GE(valid, kSeedsInShard / 10);
    RecordProperty("passed_first_pass", static_cast<int>(passed));
    RecordProperty("valid", static_cast<int>(valid));
}

INSTANTIATE_TEST_SUITE_P(Shard, CheckOfGeneratedSource, testing::Range(0U, 20U));

}  // namespace zek::test
