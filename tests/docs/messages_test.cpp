// The page of messages has every message of the library; that it is the table of codes is held with the command.
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

TEST(MessagesPage, HasEveryMessageOfTheLibraryUnderACode) {
    const std::string page = SourceFile("docs/messages.md");
    std::set<std::string> listed;
    for (const std::string& format : Matches(page, "^### [EW][0-9]{3}\n\n`([^`\n]+)`$")) listed.insert(format);
    const std::multiset<std::string> sent = MessagesOfTheLibrary();
    EXPECT_FALSE(sent.empty());
    EXPECT_EQ(listed, std::set<std::string>(sent.begin(), sent.end()));
}

}  // namespace
}  // namespace zek::test
