// What the pages link to exists.
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <regex>
#include <set>
#include <sstream>
#include <vector>

#include "docs/page.h"

#include <gtest/gtest.h>

namespace zek::test {
namespace {

namespace fs = std::filesystem;

/// Every page, from the source folder.
std::vector<std::string> Pages() {
    std::vector<std::string> pages = {"README.md"};
    for (const auto& file : fs::directory_iterator(std::string(ZEK_SOURCE_DIR) + "/docs")) {
        pages.push_back("docs/" + file.path().filename().string());
    }
    std::sort(pages.begin(), pages.end());
    return pages;
}

/// The lines of a page outside of its fenced blocks.
std::vector<std::string> Prose(const std::string& page) {
    std::vector<std::string> lines;
    std::istringstream text(SourceFile(page));
    bool fenced = false;
    for (std::string line; std::getline(text, line);) {
        if (line.starts_with("```")) {
            fenced = !fenced;
        } else if (!fenced) {
            lines.push_back(line);
        }
    }
    return lines;
}

/// The anchors that a page's headings give: lower case, blanks as hyphens, other punctuation left out.
std::set<std::string> Anchors(const std::string& page) {
    std::set<std::string> anchors;
    for (const std::string& line : Prose(page)) {
        if (!line.starts_with('#')) continue;
        std::string anchor;
        for (const char c : line.substr(line.find(' ') + 1)) {
            if (c == ' ') anchor += '-';
            const auto byte = static_cast<unsigned char>(c);
            if (std::isalnum(byte) || c == '-' || c == '_') anchor += static_cast<char>(std::tolower(byte));
        }
        anchors.insert(anchor);
    }
    return anchors;
}

/// A page as one text, so that a link may run over a line's end.
std::string Joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + '\n';
    return text;
}

/// Every match of a pattern in the prose of a page.
std::vector<std::smatch> Matches(const std::string& text, const char* pattern) {
    const std::regex regex(pattern);
    return {std::sregex_iterator(text.begin(), text.end(), regex), std::sregex_iterator()};
}

bool InSourceTree(const std::string& path) { return fs::exists(std::string(ZEK_SOURCE_DIR) + '/' + path); }

TEST(Pages, LinkToWhatExists) {
    for (const std::string& page : Pages()) {
        const std::string text = Joined(Prose(page));
        const std::vector<std::smatch> links = Matches(text, R"(\]\(([^)#]*)(#([^)]*))?\))");
        EXPECT_FALSE(links.empty()) << page;
        for (const std::smatch& link : links) {
            SCOPED_TRACE(page + " links to " + link.str());
            const fs::path target = fs::path(page).parent_path() / link[1].str();
            const std::string path = link[1].length() > 0 ? target.lexically_normal().string() : page;
            EXPECT_TRUE(InSourceTree(path));
            if (!link[3].matched) continue;
            EXPECT_TRUE(Anchors(path).contains(link[3]));
        }
    }
}

TEST(Pages, NameSourceFilesThatExist) {
    std::size_t named = 0;
    for (const std::string& page : Pages()) {
        const std::string text = Joined(Prose(page));
        const std::vector<std::smatch> names =
            Matches(text, R"(`((src|include|parser|tools|tests|examples|share|scripts|docs|cmake)/[A-Za-z0-9_./-]+)`)");
        for (const std::smatch& name : names) EXPECT_TRUE(InSourceTree(name[1])) << page << " names " << name.str();
        named += names.size();
    }
    EXPECT_GT(named, 0U);
}

}  // namespace
}  // namespace zek::test
