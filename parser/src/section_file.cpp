#include "section_file.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace zek::parser {

SectionFile::SectionFile(std::string path, FileIdentity identity, std::uint64_t order, Text text)
    : path_(std::move(path)), identity_(identity), order_(order), text_(std::move(text)) {
    ParseText();
}

void SectionFile::ParseText() {
    LineReader lines(text_.bytes.get(), text_.size);
    for (Line line; lines.Next(line);) {
        if (*line.begin == '[') {
            AddHeader(line);
        } else {
            AddItem(line);
        }
    }
    text_.bytes[text_.size] = '\0';
}

void SectionFile::AddHeader(const Line& line) {
    char* begin = line.begin;
    char* end = line.end;
    // A header that does not close at its end keeps its brackets, so that its name is refused as it was written.
    if (std::memchr(begin, ']', static_cast<std::size_t>(end - begin)) == end - 1) {
        --end;
        begin = SkipBlanks(begin + 1, end);
        end = TrimEnd(begin, end);
    }
    *end = '\0';
    AddSection(begin, line.number);
}

void SectionFile::AddItem(const Line& line) {
    if (sections_.empty()) AddSection(&text_.bytes[text_.size], line.number);

    char* value = line.end;
    auto* const equals =
        static_cast<char*>(std::memchr(line.begin, '=', static_cast<std::size_t>(line.end - line.begin)));
    if (equals && equals != line.begin) {
        value = SkipBlanks(equals + 1, line.end);
        *TrimEnd(line.begin, equals) = '\0';
    }
    *line.end = '\0';
    items_.push_back({OffsetOf(line.begin), OffsetOf(value), line.number});
    ++sections_.back().endItem;
}

void SectionFile::AddSection(const char* name, unsigned line) {
    const auto firstItem = static_cast<std::uint32_t>(items_.size());
    sections_.push_back({this, OffsetOf(name), line, firstItem, firstItem});
}

Section* SectionFile::SectionAt(unsigned index) {
    return isShown_ && index < sections_.size() ? &sections_[index] : nullptr;
}

const ItemTexts* SectionFile::ItemAt(const Section& section, unsigned index) {
    if (index >= section.endItem - section.firstItem) return nullptr;
    const std::uint32_t position = section.firstItem + index;
    if (position != asked_) {
        const Item& item = items_[position];
        asked_ = position;
        texts_ = {TextAt(item.key), TextAt(item.value), item.line};
    }
    return &texts_;
}

SizedText SectionFile::TextAt(std::uint32_t offset) const {
    const char* const begin = text_.bytes.get() + offset;
    return {begin, static_cast<unsigned>(std::strlen(begin)) + 1};
}

Section* SectionFile::FindSection(const std::string& name) {
    if (!isShown_) return nullptr;
    const auto found = std::find_if(sections_.begin(), sections_.end(),
                                    [&](const Section& section) { return name == NameOf(section).begin; });
    return found != sections_.end() ? &*found : nullptr;
}

}  // namespace zek::parser
