#include "docs/page.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace zek::test {

namespace {

/// Appends what one word of a dump stands for: a byte, a byte of the time stamp, or how often the byte before it comes.
void Append(std::string& bytes, const std::string& word) {
    if (word.front() == '*') {
        bytes.append(std::stoul(word.substr(1)) - 1, bytes.back());
    } else {
        bytes += word == ".." ? '\0' : static_cast<char>(std::stoi(word, nullptr, 16));
    }
}

}  // namespace

std::string SourceFile(const std::string& path) {
    std::ifstream in(std::string(ZEK_SOURCE_DIR) + '/' + path, std::ios::binary);
    EXPECT_TRUE(in.good()) << path;
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::string Block(const std::string& page, const std::string& info) {
    const std::string opening = "\n```" + info + '\n';
    const std::string text = SourceFile(page);
    const std::size_t start = text.find(opening);
    EXPECT_NE(start, std::string::npos) << page << " has no block " << info;
    if (start == std::string::npos) return {};
    const std::size_t first = start + opening.size();
    return text.substr(first, text.find("```\n", first) - first);
}

std::vector<std::string> BlocksOf(const std::string& page, const std::string& beginning) {
    std::vector<std::string> blocks;
    std::istringstream lines(SourceFile(page));
    const std::string opening = "```" + beginning;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(opening)) blocks.push_back(line.substr(opening.size()));
    }
    return blocks;
}

std::string BytesOfDump(const std::string& dump) {
    std::string bytes;
    std::istringstream lines(dump);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t offset = line.find("  ");
        EXPECT_EQ(std::stoul(line.substr(0, offset), nullptr, 16), bytes.size()) << line;
        std::istringstream words(line.substr(offset + 2, line.find("  ", offset + 2) - offset - 2));
        for (std::string word; words >> word;) Append(bytes, word);
    }
    return bytes;
}

}  // namespace zek::test
