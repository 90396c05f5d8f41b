/// A file in memory, which the libraries open by its path as any other. Relies on Linux.
#pragma once

#include <string>
#include <string_view>

namespace zek::fuzz {

class MemoryFile {
public:
    MemoryFile();
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    /// Good while this lives.
    const std::string& Path() const { return path_; }
    /// Replaces what the file holds.
    void Write(std::string_view bytes);
    std::string Read() const;
    std::size_t Size() const;

private:
    int fd_;
    std::string path_;
};

}  // namespace zek::fuzz
