// The list of messages in docs/language.md is that of the library.
#include <filesystem>
#include <regex>
#include <set>
#include <string>

#include "docs/page.h"

#include <gtest/gtest.h>

namespace zek::test {
namespace {

namespace fs = std::filesystem;

/// What the first group of a pattern matches in a text, wherever that is.
std::multiset<std::string> Matches(const std::string& text, const char* pattern) {
    const std::regex regex(pattern, std::regex::multiline);
    std::multiset<std::string> found;
    for (auto match = std::sregex_iterator(text.begin(), text.end(), regex); match != std::sregex_iterator(); ++match) {
        found.insert((*match)[1]);
    }
    return found;
}

/// The formats in the messages.h of every room, without their line feeds.
std::multiset<std::string> MessagesOfTheLibrary() {
    std::multiset<std::string> messages;
    for (const auto& room : fs::directory_iterator(std::string(ZEK_SOURCE_DIR) + "/src")) {
        if (!fs::exists(room.path() / "messages.h")) continue;
        const std::string file = "src/" + room.path().filename().string() + "/messages.h";
        messages.merge(Matches(SourceFile(file), R"RE("([^"\n]*)\\n";)RE"));
    }
    return messages;
}

TEST(MessagesOfTheLanguagePage, AreThoseOfTheLibrary) {
    const std::string page = SourceFile("docs/language.md");
    const std::string list = page.substr(page.find("\n## Messages\n"));
    std::multiset<std::string> listed = Matches(list, "^- `([^`\n]+)`");
    listed.merge(Matches(list, "^- `[^`\n]+` and `([^`\n]+)`$"));
    EXPECT_FALSE(listed.empty());
    EXPECT_EQ(listed, MessagesOfTheLibrary());
}

}  // namespace
}  // namespace zek::test
