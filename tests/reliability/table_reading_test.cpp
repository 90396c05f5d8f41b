// How often a table is read whole for look-ups between keys that are added: told by the memory that this takes, since a
// reading takes some for every key of the table.
#include "compile/compile.h"
#include "compile/tables.h"
#include "model/type_ids.h"
#include "reliability/failing_heap.h"
#include "support/process_test.h"

namespace zek::test {

namespace {

constexpr unsigned kKeys = 4000;
/// A reading of kKeys takes 8 bytes for each of them at least, but is worth it only every so often.
constexpr std::size_t kMostBytesOfRound = 4000;
static_assert(kMostBytesOfRound * 8 <= kKeys * std::size_t{8});

std::string NameOf(unsigned round) { return "x" + std::to_string(round); }

/// Keys that are added one by one to a table that has kKeys.
struct AddedKeys {
    const char* name;
    void (*begin)();
    void (*round)(unsigned round);
};

void ExpectText(unsigned id, const std::string& text) {
    const tagGCVALUE value = GetTblData(id);
    ASSERT_EQ(value.dwKind, 2U) << id;
    ASSERT_EQ(value.pszName, text);
}

/// Adds a name, and looks up its identifier, which is new unless the step before was 0.
void InsertAndLookUp(unsigned round, unsigned step, const std::string& expected) {
    ExpectText(InsertTbl(g_tblString, g_idxString, NameOf(round), step), expected);
}

class LookUpsBetweenKeys : public ProcessTest, public testing::WithParamInterface<AddedKeys> {};

}  // namespace

TEST_P(LookUpsBetweenKeys, SeldomReadTheTable) {
    for (unsigned i = 0; i < kKeys; ++i) {
        InsertTbl(g_tblString, g_idxString, "u" + std::to_string(i), 1);
        InsertTbl(g_tblProperty, g_idxProperty, "u" + std::to_string(i), 1);
        InsertTbl(g_tblDword, g_idxDword, i, 1);
    }
    GetParam().begin();
    const std::size_t before = TakenBytes();
    for (unsigned round = 0; round < kKeys && !HasFatalFailure(); ++round) GetParam().round(round);
    const std::size_t ofRound = (TakenBytes() - before) / kKeys;
    std::printf("%zu bytes a round\n", ofRound);
    EXPECT_GT(ofRound, 0U);
    EXPECT_LE(ofRound, kMostBytesOfRound);
}

INSTANTIATE_TEST_SUITE_P(
    Added, LookUpsBetweenKeys,
    testing::Values(AddedKeys{"InTurn", [] {}, [](unsigned round) { InsertAndLookUp(round, 1, NameOf(round)); }},
                    AddedKeys{"ThatWereUnnumbered",
                              [] {
                                  for (unsigned round = 0; round < kKeys; ++round) g_tblString[NameOf(round)];
                              },
                              [](unsigned round) { InsertAndLookUp(round, 1, NameOf(round)); }},
                    AddedKeys{"ThatStayUnnumbered", [] {},
                              [](unsigned round) {
                                  ASSERT_EQ(GetEntryName(kPrefixP, "P_" + NameOf(round)), 0U);
                                  ExpectText(0x03000000 + round, "u" + std::to_string(round));
                              }},
                    AddedKeys{"BehindAGap", [] { g_idxString += 2; },
                              [](unsigned round) { InsertAndLookUp(round, 1, NameOf(round)); }},
                    AddedKeys{"WithASpace", [] {}, [](unsigned round) { InsertAndLookUp(round, 3, NameOf(round)); }},
                    AddedKeys{"WithOneIdentifier", [] {}, [](unsigned round) { InsertAndLookUp(round, 0, NameOf(0)); }},
                    AddedKeys{"BeforeOneThatIsAbsent", [] {},
                              [](unsigned round) {
                                  InsertTbl(g_tblString, g_idxString, NameOf(round), 1);
                                  ASSERT_EQ(GetTblData(g_idxString).dwKind, 0U);
                              }},
                    AddedKeys{"NumbersBehindAGap", [] { g_idxDword += 2; },
                              [](unsigned round) {
                                  const unsigned id = InsertTbl(g_tblDword, g_idxDword, kKeys + round, 1);
                                  ASSERT_EQ(GetTblData(id).qwNumber, kKeys + round);
                              }}),
    RowName());

}  // namespace zek::test
