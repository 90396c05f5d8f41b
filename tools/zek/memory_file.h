/// A file in memory that has a name, for functions that take a file by its name. Relies on memfd_create and on /proc.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zek::tool {

class MemoryFile {
public:
    /// Throws Failure when there is none to be had.
    MemoryFile();
    /// One that holds these bytes.
    explicit MemoryFile(std::string_view bytes);
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    /// The name, valid in this process while the object lives.
    std::string Name() const;
    /// Adds bytes behind those that are there; throws Failure.
    void Append(std::string_view bytes) const;
    /// All bytes; throws Failure.
    std::string Bytes() const;

private:
    int descriptor_;
};

/// The bytes of a file, or of standard input where the name is "-"; throws Failure. What is no regular file may give
/// 256 MiB, and where it is not standard input, keep silent for two seconds and be waited for no longer than a minute.
std::string ReadFile(const std::string& name);

/// The same of a source. Who writes it to a pipe may be slow: where somebody is there to write, or comes within two
/// seconds, it is waited for until it ends.
std::string ReadSource(const std::string& name);
/// The same; nothing, and why, when it cannot be read.
std::optional<std::string> ReadSource(const std::string& name, std::string& why);

}  // namespace zek::tool
