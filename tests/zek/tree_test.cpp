#include "zek/command.h"

namespace zek::test {

namespace {

class ZekTree : public ZekTest {
protected:
    static std::string Shown(const std::string& image) {
        const Result result = Zek({"tree", image});
        EXPECT_EQ(result.code, 0);
        EXPECT_EQ(result.err, "");
        return result.out;
    }

    /// Puts one text in the place of another of the same length, everywhere in an image.
    static void Change(const std::string& file, const std::string& from, const std::string& to) {
        std::string image = Read(file);
        ASSERT_EQ(from.size(), to.size());
        ASSERT_NE(image.find(from), std::string::npos) << from;
        for (std::size_t at = 0; (at = image.find(from, at)) != std::string::npos;) image.replace(at, from.size(), to);
        Write(file, image);
    }

    static std::string Group(const std::string& name, const std::string& parent) {
        return "[GROUP]\nPARENT = " + parent + "\nNAME = " + name + "\nCHILDGROUP = 0\n";
    }

    static std::string Sensor(const std::string& name, const std::string& parent, const std::string& id,
                              const std::string& more = "") {
        return "[SENSOR]\nPARENT = " + parent + "\nNAME = " + name + "\nID = " + id +
               "\nTYPE = TEMP\nINITFLAG = 0\nCONTROLMASK = 0\nVALUE = VT_VALUE,1\n" + more;
    }

    static std::string View(const std::string& name, const std::string& id, const std::string& pid,
                            const std::string& sensors) {
        return "[TAVRGROUP]\nNAME = " + name + "\nID = " + id + "\nPID = " + pid + "\nSENSORS = " + sensors + '\n';
    }

    static std::string Words() { return "[DEFINE]\nVT_VALUE = 1\nTEMP = 0x11\n"; }
};

TEST_F(ZekTree, ShowsGroupsSensorsAndViewsUnderTheirParents) {
    Compile("a", Words() + Group("Board", "0") + Group("Left", "Board") + Group("Rack", "0") + Group("Inner", "Left") +
                     Sensor("Inlet", "Board", "1", "THEORY = 20\nTHRESHOLD_FH = 0x32\nTHRESHOLD_WH = 40\n") +
                     Sensor("Deep", "Inner", "0x10") +
                     Sensor("Outlet", "Board", "2", "THRESHOLD_FL = 1\nTHRESHOLD_WL = 2\n") +
                     View("All", "1", "0", "1,2,16") + View("Some", "2", "1", "16,99"));
    EXPECT_EQ(Shown("a.zki"),
              "GROUP \"Board\"\n"
              "  SENSOR \"Inlet\" ID=1 TYPE=17 THEORY=20 THRESHOLD_FH=50 THRESHOLD_WH=40\n"
              "  SENSOR \"Outlet\" ID=2 TYPE=17 THRESHOLD_FL=1 THRESHOLD_WL=2\n"
              "  GROUP \"Left\"\n"
              "    GROUP \"Inner\"\n"
              "      SENSOR \"Deep\" ID=16 TYPE=17\n"
              "GROUP \"Rack\"\n"
              "TAVRGROUP \"All\" ID=1\n"
              "  SENSOR \"Inlet\" ID=1\n"
              "  SENSOR \"Outlet\" ID=2\n"
              "  SENSOR \"Deep\" ID=16\n"
              "  TAVRGROUP \"Some\" ID=2\n"
              "    SENSOR \"Deep\" ID=16\n"
              "    SENSOR (does not exist) ID=99\n");
    EXPECT_EQ(Shown("a.zkd"),
              "GROUP \"Board\"\n"
              "  SENSOR \"Inlet\" ID=1 TYPE=TEMP THEORY=20 THRESHOLD_FH=0x32 THRESHOLD_WH=40\n"
              "  SENSOR \"Outlet\" ID=2 TYPE=TEMP THRESHOLD_FL=1 THRESHOLD_WL=2\n"
              "  GROUP \"Left\"\n"
              "    GROUP \"Inner\"\n"
              "      SENSOR \"Deep\" ID=0x10 TYPE=TEMP\n"
              "GROUP \"Rack\"\n"
              "TAVRGROUP \"All\" ID=1\n"
              "  SENSOR \"Inlet\" ID=1\n"
              "  SENSOR \"Outlet\" ID=2\n"
              "  SENSOR \"Deep\" ID=16\n"
              "  TAVRGROUP \"Some\" ID=2\n"
              "    SENSOR \"Deep\" ID=16\n"
              "    SENSOR (does not exist) ID=99\n");
}

TEST_F(ZekTree, NumberForNoneIsShownAndNamesNothing) {
    Compile("a", Words() + Group("Board", "0") + Sensor("Inlet", "Board", "1", "THRESHOLD_WL = -1\n") +
                     Sensor("Odd", "Board", "-1") + View("All", "1", "0", "1,0xFFFFFFFF"));
    EXPECT_EQ(Shown("a.zki"),
              "GROUP \"Board\"\n"
              "  SENSOR \"Inlet\" ID=1 TYPE=17 THRESHOLD_WL=4294967295\n"
              "  SENSOR \"Odd\" ID=4294967295 TYPE=17\n"
              "TAVRGROUP \"All\" ID=1\n"
              "  SENSOR \"Inlet\" ID=1\n"
              "  SENSOR (does not exist) ID=4294967295\n");
}

TEST_F(ZekTree, EmptyImageIsAnEmptyTree) {
    Compile("a", "");
    EXPECT_EQ(Shown("a.zki"), "");
    EXPECT_EQ(Shown("a.zkd"), "");
}

/// The check refuses such sources, so the debug image is changed.
TEST_F(ZekTree, OrphansAreShown) {
    Compile("a", Words() + Group("Board", "0") + Group("Child", "Board") + Sensor("One", "Board", "1") +
                     View("All", "1", "0", "1") + View("Sub", "2", "1", "1"));
    std::string image = Read("a.zkd");
    // The name of the first group, so that its child and its sensor lose their parent; then the ID of the first view.
    image.replace(image.find("Board"), 5, "Other");
    const std::size_t view = image.find("All");
    image.replace(image.find(Word(1) + "1", view), 5, Word(1) + "7");
    Write("a.zkd", image);
    EXPECT_EQ(Shown("a.zkd"),
              "GROUP \"Other\"\n"
              "GROUP \"Child\" (PARENT \"Board\", which does not exist)\n"
              "SENSOR \"One\" ID=1 TYPE=TEMP (PARENT \"Board\", which does not exist)\n"
              "TAVRGROUP \"All\" ID=7\n"
              "  SENSOR \"One\" ID=1\n"
              "TAVRGROUP \"Sub\" ID=2 (PID 1, which does not exist)\n"
              "  SENSOR \"One\" ID=1\n");
}

TEST_F(ZekTree, CirclesOfParentsAreShownOnce) {
    Compile("a", Words() + Group("Board", "0") + Group("One__", "Board") + Group("Two__", "One__") +
                     Group("Hang_", "Two__") + Sensor("Sen", "Two__", "1") + View("All", "1", "0", "1") +
                     View("Self", "2", "2", "1"));
    // One__ hangs on Two__ now.
    std::string image = Read("a.zkd");
    const std::size_t parent = image.find("Board", image.find("Board") + 1);
    Write("a.zkd", image.replace(parent, 5, "Two__"));
    EXPECT_EQ(Shown("a.zkd"),
              "GROUP \"Board\"\n"
              "GROUP \"One__\" (PARENT \"Two__\", which it is an ancestor of)\n"
              "  GROUP \"Two__\"\n"
              "    SENSOR \"Sen\" ID=1 TYPE=TEMP\n"
              "    GROUP \"Hang_\"\n"
              "TAVRGROUP \"All\" ID=1\n"
              "  SENSOR \"Sen\" ID=1\n"
              "TAVRGROUP \"Self\" ID=2 (PID 2, which it is an ancestor of)\n"
              "  SENSOR \"Sen\" ID=1\n");
}

TEST_F(ZekTree, DeepLinesGiveTheirDepth) {
    std::string text = Words() + Group("g0", "0");
    for (int i = 1; i <= 3000; ++i) text += Group("g" + std::to_string(i), "g" + std::to_string(i - 1));
    Compile("a", text);
    const std::string shown = Shown("a.zki");
    EXPECT_NE(
        shown.find('\n' + std::string(80, ' ') + "GROUP \"g40\"\n" + std::string(80, ' ') + "(41) GROUP \"g41\"\n"),
        std::string::npos);
    EXPECT_TRUE(shown.ends_with("(3000) GROUP \"g3000\"\n"));
}

}  // namespace

}  // namespace zek::test
