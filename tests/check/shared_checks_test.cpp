// The checks that every kind of entry may ask for.
#include "check/check_test.h"
#include "check/vocabulary.h"

namespace zek::test {

/// Asks an entry of a [DEVICE] section, P_X on line 7, in a model that the check has gone over.
class SharedCheck : public CheckTest {
protected:
    void Model(const std::string& others) {
        ASSERT_EQ(Check("\n" + Device("D", "1") + "P_X=1\n" + others), 1U);
        ASSERT_EQ(Errors(), "");
        section_ = &SectionOf(kDeviceSection);
        entry_ = &EntryOf(*section_, "P_X");
    }
    /// What a check gives for a text, and what it says.
    void Expect(unsigned (CZEKEntry::*check)(const std::string&, CZEKObj*, unsigned), const std::string& text,
                const std::string& message) {
        SCOPED_TRACE("text '" + text + "'");
        EXPECT_EQ((entry_->*check)(text, section_, 0), message.empty() ? 1U : 0U);
        EXPECT_EQ(Messages(), message.empty() ? "" : "Error[main.zek:7]: [DEVICE]:P_X, " + message + "\n");
    }
    CZEKSection* section_ = nullptr;
    CZEKEntry* entry_ = nullptr;
};

TEST_F(SharedCheck, OfDigitsTakesANumberOrAPredefinedName) {
    Model("[DEFINE]\nNAME=1\n");
    Expect(&CZEKEntry::ChkDigital, "0x10", "");
    Expect(&CZEKEntry::ChkDigital, "NAME", "");
    Expect(&CZEKEntry::ChkDigital, "Name", "Name has not been defined and is not a valid number.");
    Expect(&CZEKEntry::ChkDigital, "12345678901", "12345678901 has not been defined and is not a valid number.");
    Expect(&CZEKEntry::ChkDigital, "", " has not been defined and is not a valid number.");
}

TEST_F(SharedCheck, OfAGlobalLooksForTheKeyInEverySection) {
    Model(std::string("[GLOBAL]\nG_A=T0\n[GLOBAL]\nG_B=T0\n") + kWords);
    Expect(&CZEKEntry::ChkGlobalName, "G_A", "");
    Expect(&CZEKEntry::ChkGlobalName, "G_B", "");
    Expect(&CZEKEntry::ChkGlobalName, "A", "The GLOBAL entry with NAME A does not exist.");
    Expect(&CZEKEntry::ChkGlobalName, "G_a", "The GLOBAL entry with NAME G_a does not exist.");
    EntryOf(SectionOf(kGlobalSection), "G_A").m_dwType = kOwnValue;
    Expect(&CZEKEntry::ChkGlobalName, "G_A", "The GLOBAL entry with NAME G_A does not exist.");
}

TEST_F(SharedCheck, OfATableLooksForTheNameInEverySection) {
    Model("[TABLE]\nNAME=A\nTYPE=1\n[TABLE]\nNAME=B\nTYPE=1\n[ACTION]\nNAME=C\n");
    Expect(&CZEKEntry::ChkTableName, "A", "");
    Expect(&CZEKEntry::ChkTableName, "B", "");
    Expect(&CZEKEntry::ChkTableName, "b", "The TABLE with NAME b does not exist.");
    Expect(&CZEKEntry::ChkTableName, "C", "The TABLE with NAME C does not exist.");
}

TEST_F(SharedCheck, OfAnActionLooksForTheNameInEverySection) {
    Model("[TABLE]\nNAME=T\nTYPE=1\n[ACTION]\nNAME=A\n[ACTION]\nNAME=B\n");
    Expect(&CZEKEntry::ChkActionName, "A", "");
    Expect(&CZEKEntry::ChkActionName, "B", "");
    Expect(&CZEKEntry::ChkActionName, "A ", "The ACTION with NAME A  does not exist.");
    Expect(&CZEKEntry::ChkActionName, "T", "The ACTION with NAME T does not exist.");
}

TEST_F(SharedCheck, KnowsASectionByItsFirstNameAlone) {
    Model("[TABLE]\nNAME=A\nTYPE=1\n[ACTION]\nNAME=C\n");
    for (const auto& [type, keyword] : {std::pair(kTableSection, "B"), std::pair(kActionSection, "D")}) {
        CZEKSection& section = SectionOf(type);
        section.SetEntry("main.zek", "NAME", keyword, 20);
        section.m_vpEntry.back()->IsValid(&section, 0);
    }
    Expect(&CZEKEntry::ChkTableName, "A", "");
    Expect(&CZEKEntry::ChkTableName, "B", "The TABLE with NAME B does not exist.");
    Expect(&CZEKEntry::ChkActionName, "C", "");
    Expect(&CZEKEntry::ChkActionName, "D", "The ACTION with NAME D does not exist.");
}

TEST_F(SharedCheck, FindsNothingWhereThereAreNoSections) {
    Model("");
    Expect(&CZEKEntry::ChkGlobalName, "G_A", "The GLOBAL entry with NAME G_A does not exist.");
    Expect(&CZEKEntry::ChkTableName, "A", "The TABLE with NAME A does not exist.");
    Expect(&CZEKEntry::ChkActionName, "A", "The ACTION with NAME A does not exist.");
}

TEST_F(SharedCheck, OfParametersComparesTheirNumberWithTheAction) {
    Model(
        "[ACTION]\nNAME=TWO\nARGNUMBER=0x2\n[ACTION]\nNAME=NONE\n[ACTION]\nNAME=WORD\nARGNUMBER=SEVEN\n[DEFINE]\nSEVEN="
        "7\n");
    const auto expect = [this](const std::string& action, unsigned count, unsigned result, const std::string& message) {
        SCOPED_TRACE(action + " with " + std::to_string(count));
        EXPECT_EQ(entry_->ChkActionParamNum(action, count, section_, 0), result);
        EXPECT_EQ(Messages(), message);
    };
    expect("TWO", 2, 1, "");
    expect("TWO", 3, 0, "Error[main.zek:7]: [DEVICE]:P_X The ACTION TWO needs 2 PARAMS, but total 3 PARAMS here.\n");
    expect("TWO", 0, 0, "Error[main.zek:7]: [DEVICE]:P_X The ACTION TWO needs 2 PARAMS, but total 0 PARAMS here.\n");
    expect("NONE", 0, 1, "");
    expect("NONE", 1, 0, "Error[main.zek:7]: [DEVICE]:P_X The ACTION NONE needs 0 PARAMS, but total 1 PARAMS here.\n");
    // Only a number counts, not a predefined name.
    expect("WORD", 0, 1, "");
    expect("WORD", 7, 0, "Error[main.zek:7]: [DEVICE]:P_X The ACTION WORD needs 0 PARAMS, but total 7 PARAMS here.\n");
    // That it does not exist is told by the check of its name.
    expect("NOSUCH", 0, 0, "");
}

TEST_F(SharedCheck, OfParametersTakesTheFirstActionOfTheName) {
    Source(Device("D", "1") + "P_X=1\n[ACTION]\nNAME=A\nARGNUMBER=1\n[ACTION]\nNAME=A\nARGNUMBER=2\n");
    EXPECT_EQ(gccCheck(), 0U);
    CZEKSection& section = SectionOf(kDeviceSection);
    EXPECT_EQ(EntryOf(section, "P_X").ChkActionParamNum("A", 1, &section, 0), 1U);
}

/// Which arguments a section of ARG names takes.
class ArgumentName : public CheckTest {
protected:
    void Expect(const std::string& name, unsigned maxArg, bool valid) {
        SCOPED_TRACE(name + " of " + std::to_string(maxArg));
        EXPECT_EQ(entry_->ChkArgName(name, section_, 0, maxArg), unsigned{valid});
        EXPECT_EQ(Messages(), valid ? ""
                                    : "Error[main.zek:3]: [" + section_->m_strName + "]:NAME, The ARG name " + name +
                                          " is invalid.\n");
    }
    void Section(const std::string& text) {
        ASSERT_EQ(Check(text), 1U);
        ASSERT_EQ(Errors(), "");
        section_ = CZEKSection::m_svpHSection.front()->front();
        entry_ = &EntryOf(*section_, "NAME");
    }
    CZEKSection* section_ = nullptr;
    CZEKEntry* entry_ = nullptr;
};

TEST_F(ArgumentName, GoesUpToTheArgNumberOfItsAction) {
    Section("\n[ACTION]\nNAME=A\nARGNUMBER=2\n");
    for (const char* name : {"ARG0", "ARG1", "ARG2", "ARG0x2", "ARG1x", "XYZ1"}) Expect(name, 0, true);
    for (const char* name : {"ARG3", "ARG-1", "ARG", "ARGx", "ARG00000000001"}) Expect(name, 9, false);
}

TEST_F(ArgumentName, IsArg0AloneInAnActionWithoutArgNumber) {
    Section("\n[ACTION]\nNAME=A\n");
    Expect("ARG0", 0, true);
    Expect("ARG1", 9, false);
}

TEST_F(ArgumentName, FailsAtOnceWhereTheArgNumberIsAPredefinedName) {
    Section("\n[ACTION]\nNAME=A\nARGNUMBER=SEVEN\n[DEFINE]\nSEVEN=7\n");
    Expect("ARG0", 0, false);
    Expect("AR", 0, false);
}

TEST_F(ArgumentName, GoesUpToTheCallersBoundElsewhere) {
    Section("\n[TABLE]\nNAME=T\nTYPE=1\n");
    Expect("ARG0", 0, true);
    Expect("ARG1", 0, false);
    Expect("ARG2", 2, true);
    Expect("ARG3", 2, false);
    Expect("ARG-1", 0xFFFFFFFE, false);
    Expect("ARG-1", 0xFFFFFFFF, true);
}

TEST_F(ArgumentName, HasThreeCharactersAtLeast) {
    Section("\n[TABLE]\nNAME=T\nTYPE=1\n");
    try {
        entry_->ChkArgName("AR", section_, 0, 9);
        FAIL() << "nothing thrown";
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "basic_string::substr");
    }
    EXPECT_EQ(Messages(), "");
}

using EntryExistence = CheckTest;

TEST_F(EntryExistence, IsAskedOfRequiredEntriesWithoutData) {
    CZEKSection& section = *CZEKSection::Create("main.zek", "DEVICE", 4);
    CGESTRING required(kName, tagNOTATION{kRequired});
    EXPECT_EQ(required.ChkEntryExist(&section, 0), 0U);
    EXPECT_EQ(Messages(), "Error[main.zek:0]: [DEVICE]:NAME, This ENTRY does not exist.\n");
    EXPECT_EQ(required.m_strName, "");
    CGEVALUE among(kValue, tagNOTATION{37});
    EXPECT_EQ(among.ChkEntryExist(&section, 0), 0U);
    EXPECT_EQ(Messages(), "Error[main.zek:0]: [DEVICE]:VALUE, This ENTRY does not exist.\n");
    for (const unsigned notation : {0U, 2U, 6U, 10U, 38U, 46U}) {
        CGESTRING optional(kName, tagNOTATION{notation});
        EXPECT_EQ(optional.ChkEntryExist(&section, 0), 1U) << notation;
    }
    required.Init("main.zek", "NAME", "", 5);
    EXPECT_EQ(required.ChkEntryExist(&section, 0), 1U) << "it holds data, though it has no sub-string";
    EXPECT_EQ(Messages(), "");
}

struct MissingRow {
    const char* name;  ///< the section's keyword
    std::vector<std::string> required;
};

class EmptySection : public CheckTest, public testing::WithParamInterface<MissingRow> {};

TEST_P(EmptySection, MissesItsRequiredEntries) {
    const auto& [keyword, required] = GetParam();
    std::string expected;
    // An entry that was not given has no line, and the file is the first of all.
    for (const std::string& key : required) {
        expected += "Error[main.zek:0]: [" + std::string(keyword) + "]:" + key + ", This ENTRY does not exist.\n";
    }
    EXPECT_EQ(Check("[" + std::string(keyword) + "]\n"), required.empty() ? 1U : 0U);
    EXPECT_EQ(Errors(), expected);
}

INSTANTIATE_TEST_SUITE_P(
    Kind, EmptySection,
    testing::Values(MissingRow{"QUORZEK", {"VERSION"}}, MissingRow{"PROPERTY", {}},
                    MissingRow{"SYSTEM", {"TYPE", "MODEL", "FLAG", "ZEKLOOP"}},
                    MissingRow{"GROUP", {"PARENT", "NAME", "CHILDGROUP"}},
                    MissingRow{"SENSOR", {"PARENT", "NAME", "ID", "TYPE", "INITFLAG", "CONTROLMASK", "VALUE"}},
                    MissingRow{"DEVICE", {"NAME", "ID", "INITFLAG", "CONTROLMASK"}}, MissingRow{"ACTION", {"NAME"}},
                    MissingRow{"TABLE", {"NAME", "TYPE"}}, MissingRow{"TAVRGROUP", {"NAME", "ID", "PID", "SENSORS"}},
                    MissingRow{"GLOBAL", {}}, MissingRow{"REPEATER", {}}, MissingRow{"DEFINE", {}},
                    MissingRow{"IFDEF", {"DEFINEWORD"}}, MissingRow{"INCLUDE", {}}),
    RowName());

}  // namespace zek::test
