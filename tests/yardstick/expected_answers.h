/// Holds what the queries of the compiled image give against the plain ones. Relies on plain_queries.h.
#pragma once

#include <gtest/gtest.h>

#include "yardstick/plain_queries.h"
#include "zekcomp/errors.h"
#include "zekcomp/image.h"

namespace zek::test {

/// What a query gives, with the code that it left.
template <class Result>
void Expect(Result result, const plain::Answer<Result>& expected) {
    EXPECT_EQ(result, expected.result);
    EXPECT_EQ(gcGetLastError(), expected.code);
}

inline void ExpectValue(const tagGCVALUE& value, const tagGCVALUE& expected) {
    EXPECT_EQ(value.dwKind, expected.dwKind);
    EXPECT_EQ(value.dwID, expected.dwID);
    if (value.dwKind == 2 && expected.dwKind == 2) {
        EXPECT_STREQ(value.pszName, expected.pszName);
    } else {
        EXPECT_EQ(value.qwNumber, expected.qwNumber);
    }
}

inline void ExpectValue(const tagGCVALUE& value, const plain::Answer<tagGCVALUE>& expected) {
    EXPECT_EQ(gcGetLastError(), expected.code);
    ExpectValue(value, expected.result);
}

}  // namespace zek::test
