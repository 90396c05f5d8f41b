// How many findings a review keeps.
#include <gtest/gtest.h>

#include <string>

#include "finding_review.h"
#include "memory_file.h"

namespace zek::tool {

namespace {

Finding At(const char* code, unsigned line) {
    Finding finding;
    finding.code = code;
    finding.place = {"a", line};
    return finding;
}

std::string Told(const std::vector<Finding>& findings) {
    std::string told;
    for (const Finding& finding : findings) {
        told += (told.empty() ? "" : " ") + finding.code + ':' + std::to_string(finding.place.line);
    }
    return told;
}

class LimitedReview : public testing::Test {
protected:
    Levels levels_;
    SourceText text_;
};

TEST_F(LimitedReview, KeepsTheFirstOfEachSeverityAndCountsTheRest) {
    Review review(levels_, {}, text_, 2);
    for (unsigned line = 1; line <= 5; ++line) review.Add(At("W101", line));
    for (unsigned line = 1; line <= 3; ++line) review.Add(At("E101", line));
    review.Add(At("W002", 1));  // hidden
    EXPECT_EQ(Told(review.Kept()), "W101:1 W101:2 E101:1 E101:2");
    EXPECT_EQ(review.CountLeft(), (SeverityCounts{0, 3, 1}));
}

TEST_F(LimitedReview, KeepsErrorsBesideWhatIsRaisedToThem) {
    levels_.RaiseWarnings();
    Review review(levels_, {}, text_, 2);
    for (unsigned line = 1; line <= 5; ++line) review.Add(At("W101", line));
    for (unsigned line = 1; line <= 3; ++line) review.Add(At("E101", line));
    EXPECT_EQ(Told(review.Kept()), "W101:1 W101:2 E101:1 E101:2");
    EXPECT_EQ(review.CountLeft(), (SeverityCounts{0, 0, 4}));
}

TEST_F(LimitedReview, KeepsTheFirstInTheOrderThatIsWanted) {
    Review review(levels_, {}, text_, 3);
    review.Add(At("W101", 90));
    review.Sort([](const Finding& a, const Finding& b) { return a.place.line < b.place.line; });
    for (unsigned line = 80; line > 0; --line) review.Add(At("L103", line));
    review.Add(At("L104", 1));
    review.SortNone();
    review.Add(At("W101", 1));
    EXPECT_EQ(Told(review.Kept()), "W101:90 L103:1 L104:1");
    EXPECT_EQ(review.CountLeft(), (SeverityCounts{0, 80, 0}));
}

/// What need not be made is counted as if it had been.
TEST_F(LimitedReview, CountsWhatItWouldNotKeep) {
    levels_.Raise("W301");
    const MemoryFile commented("A = 1 ; zek: allow W102\n");
    Review review(levels_, {commented.Name()}, text_, 2);
    EXPECT_TRUE(review.CountOnly("W002"));  // hidden
    for (const char* code : {"W101", "W102", "E101", "W301"}) {
        SCOPED_TRACE(code);
        EXPECT_FALSE(review.CountOnly(code));
        for (unsigned line = 2; line <= 3; ++line) review.Add(At(code, line));
        EXPECT_EQ(review.CountOnly(code), std::string(code) != "W102");
    }
    review.Sort([](const Finding& a, const Finding& b) { return a.place.line < b.place.line; });
    EXPECT_FALSE(review.CountOnly("W101"));
    review.SortNone();
    EXPECT_EQ(Told(review.Kept()), "W101:2 W101:3 E101:2 E101:3 W301:2 W301:3");
    EXPECT_EQ(review.CountLeft(), (SeverityCounts{0, 3, 2}));
}

TEST_F(LimitedReview, NeverKeepsMuchMore) {
    Review review(levels_, {}, text_, 10);
    review.Sort([](const Finding& a, const Finding& b) { return a.place.line < b.place.line; });
    for (unsigned line = 10'000; line > 0; --line) {
        review.Add(At("L103", line));
        ASSERT_LE(review.Kept().size(), 20U);
    }
    review.SortNone();
    EXPECT_EQ(Told(review.Kept()), "L103:1 L103:2 L103:3 L103:4 L103:5 L103:6 L103:7 L103:8 L103:9 L103:10");
    EXPECT_EQ(review.CountLeft(), (SeverityCounts{0, 9'990, 0}));
}

}  // namespace

}  // namespace zek::tool
