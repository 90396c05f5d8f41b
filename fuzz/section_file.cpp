#include <map>
#include <memory>
#include <string>

#include "harness.h"
#include "heap_watch.h"
#include "memory_file.h"
#include "plain_sections.h"
#include "zekrsparser.h"

namespace zek::fuzz {

namespace {

/// How many times its size a text takes at most: a section of two bytes is one of 24 in the library.
constexpr std::size_t kMostOfText = 16;

/// A text that the parser library gives by its size protocol, in a buffer of just that size.
class Text {
public:
    unsigned* Size() { return &size_; }
    char* Data() { return data_.get(); }
    void Allocate() {
        Require(size_ > 0, "a needed size counts the NUL");
        data_ = std::make_unique<char[]>(size_);
    }
    std::string_view Filled() const {
        const std::string_view text(data_.get());
        Require(text.size() + 1 == size_, "a text is as long as its size said");
        return text;
    }

private:
    unsigned size_ = 0;
    std::unique_ptr<char[]> data_;
};

/// A buffer that is too small by a byte is refused.
unsigned Less(unsigned size) { return size - 1; }

void HoldItem(void* section, unsigned index, const PlainItem& expected) {
    Text key;
    Text value;
    unsigned line = 0;
    Require(RSEnumItem(section, index, nullptr, key.Size(), nullptr, value.Size(), &line) == 1, "the item exists");
    key.Allocate();
    value.Allocate();
    unsigned less = Less(*value.Size());
    Require(!RSEnumItem(section, index, key.Data(), key.Size(), value.Data(), &less, &line), "too small a buffer");
    Require(RSEnumItem(section, index, key.Data(), key.Size(), value.Data(), value.Size(), &line) == 1,
            "a large enough buffer is filled");
    Require(key.Filled() == expected.key && value.Filled() == expected.value && line == expected.line,
            "an item is that of the plain reading");
}

void HoldSection(void* section, const PlainSection& expected) {
    Text name;
    unsigned line = 0;
    Require(RSGetSectInfo(section, nullptr, name.Size(), &line) == 1, "the section exists");
    name.Allocate();
    unsigned less = Less(*name.Size());
    Require(!RSGetSectInfo(section, name.Data(), &less, &line), "too small a buffer is refused");
    Require(RSGetSectInfo(section, name.Data(), name.Size(), &line) == 1, "a large enough buffer is filled");
    Require(name.Filled() == expected.name && line == expected.line, "a section is that of the plain reading");
    unsigned count = 0;
    for (const PlainItem& item : expected.items) HoldItem(section, count++, item);
    unsigned size = 0;
    Require(!RSEnumItem(section, count, nullptr, &size, nullptr, &size, &line), "no item stands behind the last");
}

}  // namespace

void SectionFile(std::string_view text) {
    MemoryFile file;
    file.Write(text);
    const HeapWatch heap;
    void* handle = RSOpenFile(file.Path());
    Require(handle && !RSEnumSection(handle, 0), "an open file has no sections before it is parsed");
    Require(RSParse(handle) == 1 && RSParse(handle) == 1, "parsing again changes nothing");
    heap.HoldTo(kMostOfText, text.size());
    std::map<std::string, void*> firsts;
    unsigned count = 0;
    for (const PlainSection& expected : PlainSections(text)) {
        void* const section = RSEnumSection(handle, count++);
        HoldSection(section, expected);
        firsts.emplace(expected.name, section);
    }
    Require(!RSEnumSection(handle, count), "no section stands behind the last");
    for (const auto& [name, section] : firsts) {
        Require(RSFindSEction(handle, name) == section, "the first section of a name is found");
    }
    Require(!RSOpenFile(file.Path()), "a file that is being enumerated is not opened again");
    Require(RSCloseFile(&handle) == 1 && !handle, "a file is closed");
}

}  // namespace zek::fuzz
