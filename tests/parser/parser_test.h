// The fixture of the section-file parser's tests: a folder of its own, and a file's sections and items as one text.
// Relies on each case running in a process of its own where the library's process-wide state matters.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "zekrsparser.h"

// An open file that closes itself.
class OpenedFile {
public:
    explicit OpenedFile(const std::string& name) : handle_(RSOpenFile(name)) {}
    ~OpenedFile() { Close(); }
    OpenedFile(OpenedFile&& other) noexcept : handle_(other.handle_) { other.handle_ = nullptr; }
    OpenedFile& operator=(OpenedFile&&) = delete;

    explicit operator bool() const { return handle_ != nullptr; }
    void* Get() const { return handle_; }
    void* Section(unsigned index) const { return RSEnumSection(handle_, index); }
    void Close() { RSCloseFile(&handle_); }

private:
    void* handle_;
};

// The first call of the size protocol, then the second with buffers of exactly those sizes. False past the last item.
inline bool ReadItem(void* section, unsigned index, std::string& key, std::string& value, unsigned& line) {
    unsigned keySize = 0;
    unsigned valueSize = 0;
    if (!RSEnumItem(section, index, nullptr, &keySize, nullptr, &valueSize, &line)) return false;
    std::vector<char> keyBuffer(keySize);
    std::vector<char> valueBuffer(valueSize);
    const unsigned filled =
        RSEnumItem(section, index, keyBuffer.data(), &keySize, valueBuffer.data(), &valueSize, &line);
    EXPECT_EQ(filled, 1u);
    key = keyBuffer.data();
    value = valueBuffer.data();
    EXPECT_EQ(keySize, key.size() + 1);
    EXPECT_EQ(valueSize, value.size() + 1);
    return filled == 1;
}

inline bool ReadSection(void* section, std::string& name, unsigned& line) {
    unsigned size = 0;
    if (!RSGetSectInfo(section, nullptr, &size, &line)) return false;
    std::vector<char> buffer(size);
    EXPECT_EQ(RSGetSectInfo(section, buffer.data(), &size, &line), 1u);
    name = buffer.data();
    EXPECT_EQ(size, name.size() + 1);
    return true;
}

// Every section as "LINE [NAME]" and every item as "LINE <KEY> <VALUE>", each ended by a line feed.
inline std::string Dump(void* file) {
    std::string dump;
    std::string name;
    std::string key;
    std::string value;
    unsigned line = 0;
    for (unsigned i = 0; void* section = RSEnumSection(file, i); ++i) {
        EXPECT_TRUE(ReadSection(section, name, line));
        dump += std::to_string(line) + " [" + name + "]\n";
        for (unsigned j = 0; ReadItem(section, j, key, value, line); ++j) {
            dump += std::to_string(line) + " <" + key + "> <" + value + ">\n";
        }
    }
    return dump;
}

class ParserTest : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = testing::TempDir() + "zekrsparser-XXXXXX";
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        dir_ = pattern;
    }
    void TearDown() override {
        RSSetOpenHook(nullptr, nullptr);
        RSClearSearchDirs();
        std::filesystem::current_path("/");
        std::filesystem::remove_all(dir_);
    }

    std::string Path(const std::string& name) const { return (dir_ / name).string(); }

    // Writes a file, folders included, and gives its path.
    std::string Write(const std::string& name, const std::string& bytes) const {
        std::filesystem::create_directories((dir_ / name).parent_path());
        std::ofstream(dir_ / name, std::ios::binary) << bytes;
        return Path(name);
    }

    // What the file of that name holds, or "refused".
    static std::string DumpFile(const std::string& name) {
        const OpenedFile file(name);
        if (!file) return "refused";
        EXPECT_EQ(RSParse(file.Get()), 1u);
        return Dump(file.Get());
    }

    std::string DumpText(const std::string& text) const { return DumpFile(Write("text.ini", text)); }

private:
    std::filesystem::path dir_;
};
