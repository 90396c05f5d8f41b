// A large model saves memory (absent_entries.h, waiting_values.h); a small one is kept plain and serves as yardstick.
#include "support/large_model.h"
#include "yardstick/generated_source.h"

namespace zek::test {

using LargeModelOfGeneratedSource = GeneratedSource;

namespace {

/// What reading and checking a source leaves.
struct Outcome {
    unsigned valid = 0;
    std::string messages;
    std::string sections;  ///< the bytes of each, and the sub-strings that its entries keep

    bool operator==(const Outcome&) const = default;
};

bool IsOfHost(CZEKSection& section) { return section.GetFile(0) == "host.zek"; }

std::string Dumped(CZEKSection& section) {
    std::vector<unsigned char> bytes;
    section.GetBuffer(bytes);
    std::string dump(bytes.begin(), bytes.end());
    for (const CZEKEntry* entry : section.m_vpEntry) {
        dump += '\n';
        for (const std::string& text : entry->m_vstrSubStr) dump += "[" + text + "]";
    }
    return dump;
}

/// Checks what was read and destroys it.
Outcome OutcomeOfCheck() {
    Outcome outcome;
    outcome.valid = gccCheck();
    outcome.messages = TakeMessages();
    for (const auto* list : CZEKSection::m_svpHSection) {
        for (CZEKSection* section : *list) {
            if (!IsOfHost(*section)) outcome.sections += Dumped(*section);
        }
    }
    gccCompEnd();
    return outcome;
}

}  // namespace

TEST_P(LargeModelOfGeneratedSource, IsCheckedAsAPlainOneIs) {
    std::vector<unsigned char> withFiles;
    CZEKObj().GetBuffer(withFiles);  // the first object that is written brings the list of files
    ForEachSeed([](unsigned) {
        if (!Parse()) return;
        const Outcome plain = OutcomeOfCheck();
        MakeModelLarge("host.zek");
        ASSERT_TRUE(Parse());
        EXPECT_EQ(OutcomeOfCheck(), plain);
    });
}

INSTANTIATE_TEST_SUITE_P(Shard, LargeModelOfGeneratedSource, testing::Range(0U, 4U));

std::string Text(const CZEKEntry& entry) { return *static_cast<std::string*>(entry.m_ZekEntryData.GetData()); }

/// One section that is read into a large model, and its entry of the key KEY.
class WaitingValue : public ProcessTest {
protected:
    CZEKEntry& Read(const std::string& value, const std::string& section = "SYSTEM", const std::string& key = "MODEL") {
        MakeModelLarge("host.zek");
        Source("[" + section + "]\n" + key + "=" + value + "\n");
        for (const auto* list : CZEKSection::m_svpHSection) {
            for (CZEKSection* candidate : *list) {
                if (IsOfHost(*candidate)) continue;
                for (CZEKEntry* entry : candidate->m_vpEntry) {
                    if (entry->m_strName == key) return *entry;
                }
            }
        }
        throw std::logic_error("no such entry");
    }
};

TEST_F(WaitingValue, IsCutWhenTheEntryIsChecked) {
    CZEKEntry& entry = Read("a, b,\"c,d\"");
    EXPECT_EQ(entry.m_vstrSubStr, TextList());
    EXPECT_EQ(entry.IsValid(CGSSYSTEM::m_sHeader.front(), 255), 1U);
    EXPECT_EQ(entry.m_vstrSubStr, (TextList{"a", " b", "c,d"}));
    EXPECT_EQ(Text(entry), "a");
}

TEST_F(WaitingValue, IsLetGoOfWithTheSubStrings) {
    CZEKEntry& entry = Read("one");
    EXPECT_EQ(entry.IsValid(CGSSYSTEM::m_sHeader.front(), 0), 1U);
    EXPECT_EQ(entry.m_vstrSubStr, TextList());
    EXPECT_EQ(Text(entry), "one");
    EXPECT_EQ(entry.IsValid(CGSSYSTEM::m_sHeader.front(), 0), 0U) << "nothing is left";
    EXPECT_EQ(Errors(), "Error[main.zek:2]: [SYSTEM]:MODEL, No sub-string.\n");
}

TEST_F(WaitingValue, IsCutWhenAHostStoresAnother) {
    CZEKEntry& entry = Read("one");
    entry.m_ZekEntryData.Destory();
    entry.Init("host.zek", "MODEL", "two", 9);
    EXPECT_EQ(entry.m_vstrSubStr, (TextList{"one", "two"}));
    EXPECT_EQ(entry.IsValid(CGSSYSTEM::m_sHeader.front(), 0), 1U);
    EXPECT_EQ(Text(entry), "one");
}

TEST_F(WaitingValue, GivesWayToThePiecesThatAHostStores) {
    for (const TextList& pieces : {TextList{"9"}, TextList{"9", "8"}}) {
        CZEKEntry& entry = Read("one");
        entry.m_vstrSubStr = pieces;
        EXPECT_EQ(entry.IsValid(CGSSYSTEM::m_sHeader.front(), 0), 1U);
        EXPECT_EQ(Text(entry), "9");
        EXPECT_TRUE(entry.m_vstrSubStr.empty());
        gccCompEnd();
    }
}

TEST_F(WaitingValue, IsCutAtOnceInADefinition) {
    EXPECT_EQ(Read("7,8", "DEFINE", "WORD").m_vstrSubStr, (TextList{"7", "8"}));
}

TEST_F(WaitingValue, MayBeEmpty) {
    EXPECT_EQ(Read("").m_vstrSubStr, TextList());
    EXPECT_EQ(gccCheck(), 0U);
    EXPECT_NE(Errors().find("Error[main.zek:2]: [SYSTEM]:MODEL, No sub-string.\n"), std::string::npos);
}

TEST_F(WaitingValue, DoesNotWaitInWhatAHostAdds) {
    CZEKEntry& entry = Read("one");
    CGSSYSTEM::m_sHeader.front()->SetEntry("host.zek", "MODEL", "two", 9);
    EXPECT_EQ(CGSSYSTEM::m_sHeader.front()->m_vpEntry.back()->m_vstrSubStr, TextList{"two"});
    EXPECT_EQ(entry.m_vstrSubStr, TextList());
}

}  // namespace zek::test
