/// A description in one text: the main file, then the files that it includes, each behind a line of a form feed and its
/// name. Relies on the parser library's hook and memory_file.h.
#pragma once

#include <array>
#include <map>
#include <string>
#include <string_view>

#include "memory_file.h"

namespace zek::fuzz {

/// What begins the line of an included file's name.
inline constexpr char kFileMark = '\f';

/// While it lives, the parser library finds these files and no other ones, the first by kMainFile.
class SourceFiles {
public:
    static constexpr const char* kMainFile = "main.zek";

    explicit SourceFiles(std::string_view text);
    ~SourceFiles();
    SourceFiles(const SourceFiles&) = delete;
    SourceFiles& operator=(const SourceFiles&) = delete;

    /// The bytes of the files that were opened, of one as often as it was.
    std::size_t OpenedBytes() const { return openedBytes_; }

private:
    static constexpr std::size_t kMostFiles = 16;
    /// Of opened files: a few that include each other twice would be read millions of times.
    static constexpr unsigned kMostOpens = 64;

    static bool Open(void* context, const std::string& name, const std::string& includer, std::string& path);

    std::array<MemoryFile, kMostFiles> files_;
    std::map<std::string, const MemoryFile*> byName_;
    unsigned opens_ = 0;
    std::size_t openedBytes_ = 0;
};

}  // namespace zek::fuzz
