#include "check/vocabulary.h"

#include "support/process_test.h"

namespace zek::test {

using PredefinedNames = ProcessTest;

TEST_F(PredefinedNames, LastDefinitionWins) {
    EXPECT_EQ(Check("[DEFINE]\nA=1\n[DEFINE]\nA=2\n"), 1U);
    EXPECT_EQ(Errors(), "");
    unsigned value = 0;
    EXPECT_EQ(GetPreDefinedValue("A", &value), 1U);
    EXPECT_EQ(value, 2U);
}

}  // namespace zek::test
