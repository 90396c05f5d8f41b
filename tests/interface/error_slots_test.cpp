#include <dlfcn.h>

#include "support/process_test.h"

namespace zek::test {

using ErrorSlots = ProcessTest;

TEST_F(ErrorSlots, StartAtZero) {
    EXPECT_EQ(gcGetLastError(), 0U);
    EXPECT_EQ(gdGetLastError(), 0U);
}

TEST_F(ErrorSlots, KeepApartWhatEachIsGiven) {
    gcSetLastError(7);
    EXPECT_EQ(gcGetLastError(), 7U);
    EXPECT_EQ(gdGetLastError(), 0U);
    gdSetLastError(0xFFFFFFFF);
    EXPECT_EQ(gcGetLastError(), 7U);
    EXPECT_EQ(gdGetLastError(), 0xFFFFFFFFU);
    gcSetLastError(0);
    EXPECT_EQ(gcGetLastError(), 0U);
    EXPECT_EQ(gdGetLastError(), 0xFFFFFFFFU);
}

TEST_F(ErrorSlots, AreThePublishedWords) {
    gcSetLastError(12);
    gdSetLastError(13);
    EXPECT_EQ(*static_cast<const unsigned*>(dlsym(RTLD_DEFAULT, "g_dwLastError")), 12U);
    EXPECT_EQ(*static_cast<const unsigned*>(dlsym(RTLD_DEFAULT, "g_dwLastErrorD")), 13U);
    g_dwLastError = 1;
    g_dwLastErrorD = 2;
    EXPECT_EQ(gcGetLastError(), 1U);
    EXPECT_EQ(gdGetLastError(), 2U);
}

TEST_F(ErrorSlots, AreSetThroughSymbolsThatNameTheParameterType) {
    for (const char* name : {"gcGetLastError", "gdGetLastError", "_Z14gcSetLastErrorj", "_Z14gdSetLastErrorj"}) {
        EXPECT_NE(dlsym(RTLD_DEFAULT, name), nullptr) << name;
    }
    for (const char* name : {"gcSetLastError", "gdSetLastError"}) EXPECT_EQ(dlsym(RTLD_DEFAULT, name), nullptr) << name;
}

}  // namespace zek::test
