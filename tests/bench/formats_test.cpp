#include <algorithm>
#include <cctype>
#include <map>
#include <stdexcept>
#include <string>

#include "bench/source_reader.h"
#include "boards/boards.h"
#include "boards/section.h"
#include "support/process_test.h"

namespace zek::test {
namespace {

using bench::BoardIn;
using Strings = std::vector<std::string>;

constexpr unsigned kSensors = 400;

bool HasFreeKey(const SourceItem& item) {
    const auto& names = bench::kKeyNames;
    return item.key != "SENSORS" &&
           std::none_of(names.begin(), names.end(), [&](const auto& name) { return name.keyword == item.key; });
}

bool IsText(const std::string& key) { return key == "NAME" || key == "PARENT" || key == "VERSION" || key == "MODEL"; }

/// A number as every format but the source writes it; a text that is no number as it is.
std::string Decimal(const std::string& text) {
    if (text.empty() || std::isdigit(static_cast<unsigned char>(text[0])) == 0) return text;
    return std::to_string(std::stoul(text, nullptr, text.starts_with("0x") ? 16 : 10));
}

Strings DecimalEach(Strings texts) {
    std::transform(texts.begin(), texts.end(), texts.begin(), Decimal);
    return texts;
}

/// The two ends of a range, and the value.
Strings RowOf(const SourceItem& item) {
    const std::size_t point = item.key.find('.');
    const std::string first = item.key.substr(0, point);
    return {first, point == std::string::npos ? first : item.key.substr(point + 1), item.values[0]};
}

/// Everything that an item says, in the order in which records say it.
Strings ValuesOf(const SourceSection& section, const SourceItem& item) {
    if (!HasFreeKey(item)) return IsText(item.key) ? item.values : DecimalEach(item.values);
    if (section.keyword == "TABLE") return RowOf(item);
    Strings values = section.keyword == "DEFINE" ? DecimalEach(item.values) : item.values;
    values.insert(values.begin(), item.key);
    return values;
}

void Add(Strings& to, const Strings& more) { to.insert(to.end(), more.begin(), more.end()); }

Strings ValuesOfSource() {
    Strings values;
    for (const SourceSection& section : ReadSource(BoardIn("zek", kSensors))) {
        for (const SourceItem& item : section.items) Add(values, ValuesOf(section, item));
    }
    return values;
}

bool IsOfWord(char character) { return std::isalnum(static_cast<unsigned char>(character)) || character == '_'; }

/// The texts, numbers and words of records, without the names of fields, which have a colon or a brace behind them.
Strings ValuesOfRecords(std::string_view text) {
    Strings values;
    for (std::size_t i = 0; i < text.size();) {
        const bool quoted = text[i] == '"';
        if (!quoted && !IsOfWord(text[i])) {
            ++i;
            continue;
        }
        const std::size_t begin = quoted ? i + 1 : i;
        std::size_t end = begin;
        while (quoted ? text[end] != '"' : IsOfWord(text[end])) ++end;
        i = quoted ? end + 1 : end;
        if (text[i] != ':' && text[i] != '{') values.emplace_back(text.substr(begin, end - begin));
    }
    return values;
}

TEST(BoardInJson, SaysWhatTheSourceSays) { EXPECT_EQ(ValuesOfRecords(BoardIn("json", kSensors)), ValuesOfSource()); }

TEST(BoardInProtoText, SaysWhatTheSourceSays) {
    EXPECT_EQ(ValuesOfRecords(BoardIn("proto", kSensors)), ValuesOfSource());
}

/// What nodes hold, sorted, since their order is another than that of the source.
struct Contents {
    Strings texts;
    Strings numbers;
    std::size_t nodes = 0;
    std::size_t properties = 0;
};

Contents Sorted(Contents contents) {
    std::sort(contents.texts.begin(), contents.texts.end());
    std::sort(contents.numbers.begin(), contents.numbers.end());
    return contents;
}

class SourceAsNodes {
public:
    void Add(const SourceSection& section) {
        ++contents_.nodes;
        bool rows = false;
        for (const SourceItem& item : section.items) {
            if (item.key == "PARENT") continue;
            const bool row = HasFreeKey(item) && section.keyword == "TABLE";
            if (!row || !rows) ++contents_.properties;
            rows = rows || row;
            AddItem(section, item);
        }
    }
    Contents Take() { return Sorted(std::move(contents_)); }

private:
    void AddItem(const SourceSection& section, const SourceItem& item) {
        const std::string& kind = section.keyword;
        const bool ownKeys = kind == "DEFINE" || kind == "GLOBAL" || kind == "REPEATER" || kind == "PROPERTY";
        if (ownKeys) contents_.texts.push_back(item.key);
        if (kind == "DEFINE") words_[item.key] = Decimal(item.values[0]);
        if (HasFreeKey(item) && kind == "TABLE") return test::Add(contents_.numbers, RowOf(item));
        const bool texts = HasFreeKey(item) ? kind != "DEFINE" : IsText(item.key);
        if (texts) return test::Add(contents_.texts, item.values);
        for (const std::string& value : item.values) {
            const auto word = words_.find(value);
            contents_.numbers.push_back(word == words_.end() ? Decimal(value) : word->second);
        }
    }

    Contents contents_;
    std::map<std::string, std::string> words_;
};

Contents ContentsOfNodes(std::string_view text) {
    Contents contents;
    bool cells = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '{') ++contents.nodes;
        if (text[i] == '=') ++contents.properties;
        if (text[i] == '<' || text[i] == '>') cells = text[i] == '<';
        if (text[i] == '"') {
            const std::size_t end = text.find('"', i + 1);
            contents.texts.emplace_back(text.substr(i + 1, end - i - 1));
            i = end;
        } else if (cells && IsOfWord(text[i])) {
            const std::size_t end = text.find_first_of(" >", i);
            contents.numbers.emplace_back(text.substr(i, end - i));
            i = end - 1;
        }
    }
    return Sorted(std::move(contents));
}

TEST(BoardInDts, SaysWhatTheSourceSays) {
    SourceAsNodes source;
    for (const SourceSection& section : ReadSource(BoardIn("zek", kSensors))) source.Add(section);
    const Contents expected = source.Take();
    const Contents contents = ContentsOfNodes(BoardIn("dts", kSensors));
    EXPECT_EQ(contents.texts, expected.texts);
    EXPECT_EQ(contents.numbers, expected.numbers);
    EXPECT_EQ(contents.properties, expected.properties);
    EXPECT_EQ(contents.nodes, expected.nodes + 1);  // the root
}

/// A group has at most eight groups, and sensors and the rest in proportion.
TEST(BoardInDts, HasFewChildrenBelowEachNode) {
    std::vector<unsigned> children;
    unsigned most = 0;
    const std::string text = BoardIn("dts", 10'000);
    for (const char character : text) {
        if (character == '{') {
            if (!children.empty()) most = std::max(most, ++children.back());
            children.push_back(0);
        }
        if (character == '}') children.pop_back();
    }
    EXPECT_GE(most, 8U + 10);
    EXPECT_LE(most, 40U);
}

TEST(BoardIn, IsTheSameForTheSameSeedOnly) {
    for (const std::string_view format : bench::FormatNames()) {
        SCOPED_TRACE(format);
        EXPECT_EQ(BoardIn(format, 50, 7), BoardIn(format, 50, 7));
        EXPECT_NE(BoardIn(format, 50, 7), BoardIn(format, 50, 8));
    }
}

TEST(BoardIn, CannotHaveUnknownFormatsOrSizes) {
    EXPECT_THROW(BoardIn("xml", 100), std::invalid_argument);
    EXPECT_THROW(BoardIn("json", 9), std::invalid_argument);
    EXPECT_THROW(BoardIn("dts", 1'000'001), std::invalid_argument);
}

}  // namespace
}  // namespace zek::test
