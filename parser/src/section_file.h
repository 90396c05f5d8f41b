// A section file as the library holds it: its text, and once it is parsed, its sections and items.
// Names, keys and values are C strings that stand in the text itself, cut there while it is parsed.
#pragma once

#include <cstdint>
#include <deque>
#include <string>

#include "input_file.h"
#include "line_reader.h"

namespace zek::parser {

class SectionFile;

// The texts are offsets of 32 bits instead of pointers, so that an item takes 12 bytes next to its text.
struct Item {
    std::uint32_t key;
    std::uint32_t value;
    std::uint32_t line;
};

// A text that ends with a NUL, which its size counts.
struct SizedText {
    const char* begin;
    unsigned size;
};

// An item with its texts.
struct ItemTexts {
    SizedText key;
    SizedText value;
    unsigned line;
};

// What a section handle points to. Its items are those from `firstItem` up to and without `endItem`.
struct Section {
    SectionFile* file;
    std::uint32_t name;
    std::uint32_t line;
    std::uint32_t firstItem;
    std::uint32_t endItem;
};

// What a file handle points to.
class SectionFile {
public:
    // `path` is where the text was read; `order` rises from one opened file to the next. Finds the sections and items.
    // Throws bad_alloc.
    SectionFile(std::string path, FileIdentity identity, std::uint64_t order, Text text);

    const std::string& Path() const { return path_; }
    const FileIdentity& Identity() const { return identity_; }
    std::uint64_t Order() const { return order_; }

    // Lets the sections be asked for.
    void Show() { isShown_ = true; }

    // The index-th section, null past the last and before Show. Owned by the file.
    Section* SectionAt(unsigned index);
    // The first of that name, null when there is none and before Show.
    Section* FindSection(const std::string& name);

    // The index-th item of one of this file's sections, null past the last. Good until the next call.
    const ItemTexts* ItemAt(const Section& section, unsigned index);

    SizedText NameOf(const Section& section) const { return TextAt(section.name); }

private:
    void ParseText();
    void AddHeader(const Line& line);
    void AddItem(const Line& line);
    void AddSection(const char* name, unsigned line);
    SizedText TextAt(std::uint32_t offset) const;
    std::uint32_t OffsetOf(const char* p) const { return static_cast<std::uint32_t>(p - text_.bytes.get()); }

    std::string path_;
    FileIdentity identity_;
    std::uint64_t order_;
    Text text_;
    bool isShown_ = false;
    // Deques: they grow without copying or spare room, and the section handles stay where they are.
    std::deque<Section> sections_;
    std::deque<Item> items_;
    // The position of the item that was asked for last: most callers ask for its sizes, then for its texts.
    std::uint32_t asked_ = 0xFFFFFFFF;
    ItemTexts texts_{};
};

}  // namespace zek::parser
