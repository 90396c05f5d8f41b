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

    /// Each page up to its first heading of the second level, and from each of these to the next.
    static Strings SectionsOfPages() {
        const std::string head = "\n## ";
        Strings sections;
        for (const auto& entry : std::filesystem::directory_iterator(ZEK_SOURCE_DIR "/docs")) {
            if (entry.path().extension() != ".md") continue;
            const std::string page = Read(entry.path());
            for (std::size_t at = 0; at != page.npos;) {
                const std::size_t next = page.find(head, at + 1);
                sections.push_back(page.substr(at, next - at));
                at = next;
            }
        }
        return sections;
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

/// The section that is called by the command, else those that name it.
Strings SectionsOf(const std::string& command, Strings sections) {
    const auto isOwn = [&](const std::string& text) { return text.starts_with("\n## " + command + '\n'); };
    const auto own = std::find_if(sections.begin(), sections.end(), isOwn);
    if (own != sections.end()) return {*own};
    std::erase_if(sections, [&](const std::string& text) { return text.find("zek " + command) == text.npos; });
    return sections;
}

TEST_F(ZekExamples, PagesNameEveryOption) {
    const Strings pages = SectionsOfPages();
    const std::regex row("\n  (-[A-Za-z])?,?(--[a-z-]+)?[ \n]");
    for (const std::string& command : CommandNames()) {
        const std::string help = Zek({command, "--help"}).out;
        const Strings sections = SectionsOf(command, pages);
        std::size_t options = 0;
        for (std::sregex_iterator option(help.begin(), help.end(), row), end; option != end; ++option) {
            const std::string name = (*option)[1].matched ? (*option)[1] : (*option)[2];
            if (name.empty()) continue;
            ++options;
            if (name == "-h") continue;
            const std::regex written("[` ]" + name + "(?![a-z-])");
            const bool isNamed = std::any_of(sections.begin(), sections.end(), [&](const std::string& section) {
                return std::regex_search(section, written);
            });
            EXPECT_TRUE(isNamed) << command << ' ' << name;
        }
        EXPECT_GT(options, 0U) << help;
    }
}

}  // namespace

}  // namespace zek::test
