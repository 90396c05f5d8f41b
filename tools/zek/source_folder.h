/// The folder that the files of a source are written to. Relies on the operating system to stay inside it: no symbolic
/// link below it is followed.
#pragma once

#include <string>
#include <vector>

#include "temporary_files.h"
#include "written_source.h"

namespace zek::tool {

/// Files that were written and go away again unless they are kept, where a signal ends the program too.
class SourceFolder {
public:
    /// Makes the folder where it is missing and writes the files, or throws Failure and leaves what was there. A file
    /// that stands with other bytes is not replaced.
    SourceFolder(const std::string& folder, const std::vector<WrittenFile>& files);
    ~SourceFolder() { Remove(); }
    SourceFolder(const SourceFolder&) = delete;
    SourceFolder& operator=(const SourceFolder&) = delete;

    void Keep();

private:
    void Remove();
    void MakeFolder(int folder, const std::string& path, const std::string& shown);
    int OpenFolder(const std::string& folder);
    int Enter(int folder, const std::string& path, const std::string& shown);
    int MakeFile(int folder, const std::string& path, const std::string& shown);
    void Write(int root, const std::string& folder, const WrittenFile& file);

    std::vector<TemporaryFile> made_;  // in order
};

}  // namespace zek::tool
