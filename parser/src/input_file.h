// A file on disk, opened to be told apart from others and to be read whole.
// Relies on the operating system's files; never waits long for one that does not answer.
#pragma once

#include <sys/stat.h>

#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

namespace zek::parser {

// The longest file: offsets into the text, line numbers and the size of any text with its NUL fit 32 bits.
constexpr std::size_t kLongestFile = 0xFFFFFFFE;
// The most that a pipe or a device may deliver, or a file whose length is not known beforehand.
constexpr std::size_t kLongestStream = 256U << 20;
// How long a pipe or a device may keep silent.
constexpr std::chrono::seconds kLongestSilence{2};
// How long it is waited for at all, so that one that drips holds nobody for ever. What it has ready is read even then.
constexpr std::chrono::seconds kLongestWait{60};

struct FreeBytes {
    void operator()(char* bytes) const { std::free(bytes); }
};

// The bytes of a file; one byte more is allocated behind them.
struct Text {
    std::unique_ptr<char[], FreeBytes> bytes;
    std::size_t size = 0;
};

// Tells whether two paths lead to the same file.
struct FileIdentity {
    dev_t device = 0;
    ino_t inode = 0;
    bool operator==(const FileIdentity&) const = default;
};

class InputFile {
public:
    // Opens the file for reading, without waiting for a writer where it is a FIFO.
    explicit InputFile(const std::string& path);
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    // Whether it was opened and is something to read, so no directory. The others may be called only then.
    bool IsReadable() const { return readable_; }
    FileIdentity Identity() const { return {info_.st_dev, info_.st_ino}; }

    // All bytes from here to the end of the file; nothing when it cannot be read or is too long. Throws bad_alloc.
    std::optional<Text> ReadWhole();

private:
    using Clock = std::chrono::steady_clock;

    // The number of bytes read, 0 at the end of the file, -1 on an error or a silence too long.
    long ReadSome(char* to, std::size_t room);
    // False when nothing has come by then, or it cannot be waited for.
    bool WaitUntil(Clock::time_point deadline) const;
    std::size_t Limit() const;

    int descriptor_;
    bool readable_ = false;
    struct stat info_ {};
    Clock::time_point lastWait_ = Clock::now() + kLongestWait;
};

}  // namespace zek::parser
