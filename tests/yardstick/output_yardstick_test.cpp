// The image of generated sources that one call writes, against the one of the published steps, which number and compile
// with the maps alone.
#include "check/vocabulary.h"
#include "compile/compile.h"
#include "compile/image_file.h"
#include "compile/init_tables.h"
#include "compile/tables.h"
#include "yardstick/generated_source.h"

namespace zek::test {

namespace {

/// Every table and counter.
struct Tables {
    std::vector<NameTable> names;
    NumberTable numbers;
    std::vector<unsigned char> data;
    std::vector<unsigned> counters;

    bool operator==(const Tables&) const = default;
};

const std::vector<NameTable*> kNameTables = {&g_tblProperty, &g_tblGlobal, &g_tblValue,  &g_tblRepeater,
                                             &g_tblString,   &g_tblGroup,  &g_tblAction, &g_tblTableName};
const std::vector<unsigned*> kCounters = {&g_idxProperty, &g_idxGlobal, &g_idxValue,  &g_idxRepeater, &g_idxDword,
                                          &g_idxString,   &g_idxGroup,  &g_idxAction, &g_idxTableName};

const std::vector<unsigned> kFirstCounters = {kIdProperty, kIdGlobal, kIdValue,  kIdRepeater, kIdNumber,
                                              kIdString,   kIdGroup,  kIdAction, kIdTableName};

Tables TablesNow() {
    Tables tables{{}, g_tblDword, g_tblTableData, {}};
    for (const NameTable* names : kNameTables) tables.names.push_back(*names);
    for (const unsigned* counter : kCounters) tables.counters.push_back(*counter);
    return tables;
}

void Restore(const Tables& tables) {
    for (std::size_t i = 0; i < kNameTables.size(); ++i) *kNameTables[i] = tables.names[i];
    for (std::size_t i = 0; i < kCounters.size(); ++i) *kCounters[i] = tables.counters[i];
    g_tblDword = tables.numbers;
    g_tblTableData = tables.data;
}

/// What a host may have done: keys without an identifier, identifiers given twice or beyond the counter.
void Disturb(Random& random) {
    for (NameTable* names : kNameTables) {
        if (random.Chance(70)) continue;
        (*names)["unnumbered"];
        (*names)["own1"];
        if (names->size() > 3) names->begin()->second = names->rbegin()->second;
        (*names)["far"] = names->rbegin()->second + 5;
    }
    // No source can define a number; a host can.
    if (random.Chance(20)) AddPredDefineValue(std::to_string(random.Below(10)), random.Below(1000));
    // The word of a predefined name goes before that of a global.
    if (random.Chance(20)) AddPredDefineValue("G_" + std::to_string(random.Below(5)), random.Below(1000));
    if (random.Chance(30)) g_tblDword[random.Below(10)] = 0;
    if (random.Chance(30)) g_tblDword[random.Below(10)] = 0x11000002;
}

/// The tables do not depend on each other.
void NumberInAnyOrder(Random& random) {
    std::vector<unsigned (*)()> steps = {InitPropertyD, InitGlobalD, InitValueD,    InitRepeaterD,
                                         InitGroupD,    InitActionD, InitTableDataD};
    for (; !steps.empty(); steps.pop_back()) {
        std::swap(steps[random.Below(steps.size())], steps.back());
        steps.back()();
    }
}

/// What gccOutput does, step by step; the sections that were loaded before stay.
void OutputInSteps(const std::string& file, Random& random) {
    const std::size_t loaded = g_GCHead.size();
    NumberInAnyOrder(random);
    Compile();
    WriteMeta(file);
    for (; g_GCHead.size() > loaded; g_GCHead.pop_back()) delete g_GCHead.back();
}

}  // namespace

using OutputOfGeneratedSource = GeneratedSource;

TEST_P(OutputOfGeneratedSource, IsWhatTheStepsGive) {
    std::size_t bytes = 0;
    ForEachSeed([&](unsigned seed) {
        Random random(seed);
        ASSERT_TRUE(Parse());
        gccCheck();
        if (random.Chance(20)) Restore(Tables{std::vector<NameTable>(kNameTables.size()), {}, {}, kFirstCounters});
        if (random.Chance(50)) Disturb(random);
        const Tables before = TablesNow();
        OutputInSteps("steps", random);
        const Tables after = TablesNow();
        Restore(before);
        ASSERT_EQ(gccOutput("image"), 1U);
        EXPECT_TRUE(g_GCHead.empty());
        EXPECT_TRUE(TablesNow() == after) << "the tables";
        const std::string image = Read("image");
        EXPECT_TRUE(WithoutTime(image) == WithoutTime(Read("steps"))) << "the bytes";
        bytes += image.size();
        gccCompEnd();
        if (random.Chance(30)) gcInit("image", nullptr);
    });
    EXPECT_GE(bytes, kSeedsInShard * 1000) << "the images are worth comparing";
}

class OutputOfAModelBeyondTheCaches : public ProcessTest {
protected:
    /// Devices that refer to globals and predefined names, each elsewhere; one of them to a global that is not there.
    static std::string SourceOf(std::size_t devices, std::size_t names) {
        const auto text = [](std::size_t number) { return std::to_string(number); };
        std::string defines = "[DEFINE]\nWORD=1\n";
        std::string globals = "[GLOBAL]\n";
        std::string source;
        for (std::size_t i = 0; i < names; ++i) {
            defines += "W" + text(i) + "=" + text(i + 7) + "\n";
            globals += "G_" + text(i) + "=WORD,W" + text(i * 31 % names) + "\n";
        }
        for (std::size_t i = 0; i < devices; ++i) {
            source += "[DEVICE]\nNAME=D" + text(i) + "\nID=" + text(i) +
                      "\nINITFLAG=0\nCONTROLMASK=0\nVALUE_A=WORD,G_" +
                      (i == devices / 2 ? "NONE" : text(i * 37 % names)) + "\nVALUE_B=WORD,W" + text(i * 41 % names) +
                      "\nP_S=text " + text(i * 43 % devices) + "\n";
        }
        return defines + globals + source;
    }
};

TEST_F(OutputOfAModelBeyondTheCaches, IsWhatTheStepsGive) {
    constexpr std::size_t kDevices = 33'000;
    EXPECT_EQ(Check(SourceOf(kDevices, 7'000)), 0U);
    EXPECT_EQ(Errors(), "Error[main.zek:" + std::to_string(14'003 + 8 * (kDevices / 2) + 6) +
                            "]: [DEVICE]:VALUE_A, The GLOBAL entry with NAME G_NONE does not exist.\n");
    const Tables before = TablesNow();
    Random random(1);
    OutputInSteps("steps", random);
    const Tables after = TablesNow();
    Restore(before);
    ASSERT_EQ(gccOutput("image"), 1U);
    EXPECT_TRUE(TablesNow() == after) << "the tables";
    EXPECT_TRUE(WithoutTime(Read("image")) == WithoutTime(Read("steps"))) << "the bytes";
    EXPECT_GT(g_tblString.size(), kDevices);
}

INSTANTIATE_TEST_SUITE_P(Shard, OutputOfGeneratedSource, testing::Range(0U, 4U));

}  // namespace zek::test
