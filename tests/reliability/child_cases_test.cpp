// That the counting of the damage test notices every way to end.
#include "reliability/child_cases.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <stdexcept>

#include "reliability/damage.h"

namespace zek::test {

namespace {

using Strings = std::vector<std::string>;

/// Case 5 ends its process in one way or another; odd numbers are refused.
Tally CountsOf(std::size_t batch, const std::function<void()>& end) {
    return RunInChildren(9, {.batch = batch, .secondsForOneCase = 1}, [&](std::size_t number) {
        if (number == 5) end();
        return number % 2 == 0;
    });
}

TEST(ChildCases, NameTheOneThatEndsItsProcessAndGoOnBehindIt) {
    const struct {
        std::function<void()> end;
        std::string how;
    } rows[] = {{[] { raise(SIGKILL); }, "5: signal 9"},
                {[] { _exit(0); }, "5: exit code 0"},
                {[] { _exit(7); }, "5: exit code 7"},
                {[] { pause(); }, "5: signal 14"},
                {[] { throw std::runtime_error("thrown by the test"); }, "5: signal 6"},
                {[] { ADD_FAILURE() << "made by the test"; }, "5: exit code 1"}};
    for (const auto& row : rows) {
        for (const std::size_t batch : {1u, 4u}) {
            SCOPED_TRACE(row.how);
            const Tally tally = CountsOf(batch, row.end);
            EXPECT_EQ(tally.Text(), "9 tried, 5 verified, 3 refused, 1 crashed");
            EXPECT_EQ(tally.crashed, Strings{row.how});
        }
    }
}

TEST(ChildCases, OfABatchShareAProcess) {
    int before = 0;
    const auto isFirst = [&](std::size_t) { return before++ == 0; };
    EXPECT_EQ(RunInChildren(10, {.batch = 4}, isFirst).verified, 3U);
    EXPECT_EQ(RunInChildren(10, {.batch = 1}, isFirst).verified, 10U);
}

#if !defined(__SANITIZE_ADDRESS__)
TEST(ChildCases, EndWhereTheirMemoryEnds) {
    const auto take = [](std::size_t number) {
        const std::string bytes((number + 1) << 24, 'x');
        return bytes.size() > number;
    };
    const Tally tally = RunInChildren(2, {.spareMemory = 24 << 20}, take);
    EXPECT_EQ(tally.Text(), "2 tried, 1 verified, 0 refused, 1 crashed");
    EXPECT_EQ(tally.crashed, Strings{"1: signal 6"});
}
#endif

TEST(Damages, AreACutAtEveryLengthAndFourValuesOfEveryByte) {
    const Damages damages(std::string("\x80\x12", 2), 100);
    std::vector<std::pair<std::string, std::string>> all;
    for (std::size_t i = 0; i < damages.Count(); ++i) all.emplace_back(damages.Name(i), damages.Damaged(i));
    const std::vector<std::pair<std::string, std::string>> expected = {{"cut to 0 bytes", ""},
                                                                       {"byte 0 set to 0x00", std::string("\0\x12", 2)},
                                                                       {"byte 0 set to 0x7f", "\x7f\x12"},
                                                                       {"byte 0 set to 0xff", "\xff\x12"},
                                                                       {"cut to 1 bytes", "\x80"},
                                                                       {"byte 1 set to 0x00", std::string("\x80\0", 2)},
                                                                       {"byte 1 set to 0x7f", "\x80\x7f"},
                                                                       {"byte 1 set to 0x80", "\x80\x80"},
                                                                       {"byte 1 set to 0xff", "\x80\xff"}};
    EXPECT_EQ(all, expected);
}

TEST(Damages, OfALargeImageAreTheSameSampleEveryTime) {
    const std::string image(1000, 'x');
    const Damages one(image, 50);
    const Damages other(image, 50);
    ASSERT_EQ(one.Count(), 50U);
    for (std::size_t i = 0; i < 50; ++i) EXPECT_EQ(one.Name(i), other.Name(i));
}

}  // namespace

}  // namespace zek::test
