// The examples in the help of the commands, run as they stand, and the pages that tell of their options.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <regex>
#include <sstream>

#include "zek/board_source.h"
#include "zek/command.h"

namespace zek::test {

namespace {

class ZekExamples : public ZekTest {
protected:
    /// The lines of the example in a help, each without what is said of it.
    static Strings ExamplesOf(const std::string& help) {
        const std::string head = "\nExample:\n";
        std::istringstream lines(help.substr(help.find(head) + head.size()));
        Strings examples;
        for (std::string line; std::getline(lines, line) && line.starts_with("  zek ");) {
            examples.push_back(line.substr(2, line.find("  ", 2) - 2));
        }
        return examples;
    }

    /// What the examples take to be there.
    static void WriteFiles() {
        for (const char* folder : {"boards", "common", "out"}) std::filesystem::create_directory(folder);
        WriteSound("boards/a.zek");
        WriteSound("boards/b.zek");
        Write("words.zek", kBoardWords);
        Compile("board", std::regex_replace(kBoard, std::regex("Inlet"), "CPU0_TEMP"));
        Compile("old", kBoard);
        Compile("new", std::regex_replace(kBoard, std::regex("= 40"), "= 45"));
    }

    static Result InShell(const std::string& line) {
        const std::string folder = std::filesystem::path(ZEK_PROGRAM).parent_path();
        const char* const path = std::getenv("PATH");
        const Setting setting = {.environment = {{"PATH", folder + ':' + (path ? path : "")}}};
        return Program({"sh", "-c", line}, setting).Finish();
    }
};

TEST_F(ZekExamples, OfTheHelpRunAsTheyStand) {
    WriteFiles();
    Strings helps = {Zek({"--help"}).out};
    for (const std::string& command : CommandNames()) helps.push_back(Zek({command, "--help"}).out);
    for (const std::string& help : helps) {
        const Strings examples = ExamplesOf(help);
        EXPECT_FALSE(examples.empty()) << help;
        for (const std::string& example : examples) {
            SCOPED_TRACE(example);
            const Result result = InShell(example);
            // The images differ, which is an answer as well.
            EXPECT_EQ(result.code, example.starts_with("zek diff ") ? 1 : 0) << result.err;
            EXPECT_EQ(result.err.find("zek: "), std::string::npos) << result.err;
        }
    }
}

TEST_F(ZekExamples, PagesNameEveryOption) {
    Strings pages;
    for (const auto& entry : std::filesystem::directory_iterator(ZEK_SOURCE_DIR "/docs")) {
        if (entry.path().extension() == ".md") pages.push_back(Read(entry.path()));
    }
    const std::regex row("\n  (-[A-Za-z])?,?(--[a-z-]+)?[ \n]");
    for (const std::string& command : CommandNames()) {
        const std::string help = Zek({command, "--help"}).out;
        for (std::sregex_iterator option(help.begin(), help.end(), row), end; option != end; ++option) {
            const std::string name = (*option)[1].matched ? (*option)[1] : (*option)[2];
            if (name.empty() || name == "-h") continue;
            const bool isNamed = std::any_of(pages.begin(), pages.end(), [&](const std::string& page) {
                return page.find("zek " + command) != page.npos &&
                       (page.find('`' + name) != page.npos || page.find(' ' + name) != page.npos);
            });
            EXPECT_TRUE(isNamed) << command << ' ' << name;
        }
    }
}

}  // namespace

}  // namespace zek::test
