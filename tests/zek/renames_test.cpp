/// Sections of equal content that were renamed: their users tell them apart.
#include <algorithm>

#include "zek/command.h"

namespace zek::test {

namespace {

constexpr char kWords[] = "[DEFINE]\nV = 1\nC = 3\n";

std::string Group(const std::string& name, const std::string& parent = "0") {
    return "[GROUP]\nPARENT = " + parent + "\nNAME = " + name + "\nCHILDGROUP = 0\n";
}

std::string Sensor(const std::string& name, const std::string& parent, const std::string& id) {
    return "[SENSOR]\nPARENT = " + parent + "\nNAME = " + name + "\nID = " + id +
           "\nTYPE = 1\nINITFLAG = 0\nCONTROLMASK = 0\nVALUE = V," + id + '\n';
}

std::string Calling(const std::string& name, const std::string& key, const std::string& other) {
    return "[ACTION]\nNAME = " + name + "\nARGNUMBER = 0\n" + key + " = C," + other + '\n';
}

/// The sensors with the IDs from 1 on, as the compiler wants each to be in a view.
std::string View(unsigned count) {
    std::string ids = "1";
    for (unsigned id = 2; id <= count; ++id) ids += ',' + std::to_string(id);
    return "[TAVRGROUP]\nNAME = View\nID = 1\nPID = 0\nSENSORS = " + ids + '\n';
}

std::string Renamed(const std::string& keyword, const std::string& from, const std::string& to) {
    return "renamed " + keyword + '/' + from + " to " + keyword + '/' + to + '\n';
}

class ZekRenames : public ZekTest {
protected:
    /// What differs, the same in compiled and debug images.
    static std::string Shown(const std::string& before, const std::string& after, const Strings& options = {}) {
        Compile("a", kWords + before);
        Compile("b", kWords + after);
        const auto compared = [&](const std::string& ending) {
            Strings line = {"diff", "a" + ending, "b" + ending};
            line.insert(line.end(), options.begin(), options.end());
            return Zek(line).out;
        };
        const std::string shown = compared(".zki");
        EXPECT_EQ(compared(".zkd"), shown);
        return shown;
    }
};

TEST_F(ZekRenames, TellsGroupsApartByTheirSensors) {
    const std::string before =
        Group("Left") + Group("Right") + Sensor("S1", "Left", "1") + Sensor("S2", "Right", "2") + View(2);
    const std::string renamed = Renamed("GROUP", "Left", "West") + Renamed("GROUP", "Right", "East");
    EXPECT_EQ(Shown(before, Group("Top") + Group("West") + Group("East") + Sensor("S1", "West", "1") +
                                Sensor("S2", "East", "2") + View(2)),
              renamed + "added GROUP/Top\n");
    EXPECT_EQ(
        Shown(before, Group("East") + Group("West") + Sensor("N1", "West", "1") + Sensor("N2", "East", "2") + View(2)),
        renamed + Renamed("SENSOR", "S1", "N1") + Renamed("SENSOR", "S2", "N2"));
}

TEST_F(ZekRenames, TellsGroupsApartByWhatIsFarBelow) {
    const auto board = [](const std::string& a, const std::string& b, const std::string& first,
                          const std::string& second) {
        return Group(first) + Group(second) + Group(a + "Low", a) + Group(b + "Low", b) + Sensor("S1", a + "Low", "1") +
               Sensor("S2", b + "Low", "2") + View(2);
    };
    EXPECT_EQ(Shown(board("A", "B", "A", "B"), board("X", "Y", "Y", "X")),
              Renamed("GROUP", "A", "X") + Renamed("GROUP", "B", "Y") + Renamed("GROUP", "ALow", "XLow") +
                  Renamed("GROUP", "BLow", "YLow"));
}

TEST_F(ZekRenames, GoesByWhatMostSensorsSay) {
    const std::string before = Group("Left") + Group("Right") + Sensor("S1", "Left", "1") + Sensor("S2", "Left", "2") +
                               Sensor("S3", "Left", "3") + View(3);
    const std::string after = Group("East") + Group("West") + Sensor("S1", "East", "1") + Sensor("S2", "West", "2") +
                              Sensor("S3", "West", "3") + View(3);
    EXPECT_EQ(Shown(before, after), Renamed("GROUP", "Left", "West") + Renamed("GROUP", "Right", "East") +
                                        "changed SENSOR/S1/PARENT: \"Left\" to \"East\"\n");
}

TEST_F(ZekRenames, LeavesAGroupToTheOneThatItsSensorsKnow) {
    EXPECT_EQ(Shown(Group("Gone") + Group("Left") + Sensor("S1", "Left", "1") + View(1),
                    Group("West") + Sensor("S1", "West", "1") + View(1), {"--breaking"}),
              "removed GROUP/Gone\n" + Renamed("GROUP", "Left", "West"));
}

TEST_F(ZekRenames, FindsManyBaysBehindANewOne) {
    std::string before = Group("Board");
    std::string after = Group("Board") + Group("New", "Board");
    std::string shown;
    for (unsigned i = 1; i <= 20; ++i) {
        const std::string number = std::to_string(i);
        before += Group("Bay" + number, "Board");
        after += Group("Slot" + number, "Board");
        shown += Renamed("GROUP", "Bay" + number, "Slot" + number);
    }
    for (unsigned i = 1; i <= 20; ++i) {
        const std::string number = std::to_string(i);
        before += Sensor("S" + number, "Bay" + number, number);
        after += Sensor("S" + number, "Slot" + number, number);
    }
    EXPECT_EQ(Shown(before + View(20), after + View(20)), shown + "added GROUP/New\n");
}

TEST_F(ZekRenames, PairsActionsThatCallEachOtherInAnyOrder) {
    const std::string before = Calling("A1", "VALUE_7", "B1") + Calling("B1", "VALUE_8", "A1") +
                               Calling("A2", "VALUE_7", "B2") + Calling("B2", "VALUE_8", "A2");
    const std::string after = Calling("X2", "VALUE_7", "Y2") + Calling("X1", "VALUE_7", "Y1") +
                              Calling("Y1", "VALUE_8", "X1") + Calling("Y2", "VALUE_8", "X2");
    EXPECT_EQ(Shown(before, after), Renamed("ACTION", "A1", "X2") + Renamed("ACTION", "B1", "Y2") +
                                        Renamed("ACTION", "A2", "X1") + Renamed("ACTION", "B2", "Y1"));
}

TEST_F(ZekRenames, GoesByTheOrderOfWhatNobodyUses) {
    EXPECT_EQ(Shown(Group("Left") + Group("Right"), Group("West") + Group("East") + Group("Top")),
              Renamed("GROUP", "Left", "West") + Renamed("GROUP", "Right", "East") + "added GROUP/Top\n");
}

/// Ten times as much takes more, but not a million times as long.
TEST_F(ZekRenames, OfSectionsOfOneNameAreMeasured) {
    const auto measured = [](const std::string& most) {
        return Program({ZEK_DIFF_GROWTH, "-f", "files", "-n", "3000", "-r", "1", "--most", most}).Finish();
    };
    const Result fine = measured("6");
    EXPECT_EQ(fine.code, 0);
    EXPECT_EQ(fine.err, "");
    const Result failed = measured("0");
    EXPECT_EQ(failed.code, 1);
    EXPECT_EQ(failed.err,
              "above --most: pairs that call each other\nabove --most: sections and as many that call the first\n");
    // All of them are found.
    const std::string shown = Zek({"diff", "files/before.zkd", "files/after.zkd"}).out;
    EXPECT_EQ(std::count(shown.begin(), shown.end(), '\n'), 6000);
    const auto name = [](char letter) { return letter + std::string("NumberedHere0000000"); };
    EXPECT_TRUE(shown.starts_with(Renamed("ACTION", name('A'), name('D')) + Renamed("ACTION", name('A'), name('E'))))
        << shown.substr(0, 200);
    EXPECT_EQ(Program({ZEK_DIFF_GROWTH, "-n", "9"}).Finish().code, 2);
}

}  // namespace

}  // namespace zek::test
