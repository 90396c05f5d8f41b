/// Files that are written whole or not at all. Relies on the operating system: what is written goes to a temporary file
/// in the target's folder, which then takes the target's name.
#pragma once

#include <sys/stat.h>
#include <string>
#include <string_view>
#include <vector>

namespace zek::tool {

/// Where a file is to go.
struct Target {
    std::string name;  ///< as the user gave it
    std::string path;  ///< the file to replace: a symbolic link is followed, so that the link stays; empty: see below
    bool stands = false;
    bool direct = false;  ///< a device or a pipe: written directly, never replaced
    struct stat info {};  ///< valid when it stands
};

/// Looks where a name leads; "-" is standard output, which has no path. Throws Failure for a directory, for an empty
/// name and for a folder that is missing.
Target TargetOf(const std::string& name);

/// Whether two targets are one file.
bool IsSameFile(const Target& a, const Target& b);

struct OutputFile {
    Target target;
    std::string_view bytes;
};

/// Writes all files, or throws Failure and leaves every regular file as it was: all are written, synced and closed
/// under temporary names before the first takes its place, and where a later one then fails, the earlier ones are put
/// back. Where even that fails, it tells on standard error which file is new and where the old one is. Devices and
/// pipes are opened, all of them, and then written in between, one after the other, and cannot be put back; a FIFO
/// fails from which nobody reads, and to which nobody comes within two seconds. A reader that is there is waited for
/// however slow it is. A new file has the usual mode, a replaced one keeps its own. A folder that cannot be synced once
/// all files are in their places is no failure: standard error gets a warning. At most three files at a time.
void WriteTogether(const std::vector<OutputFile>& files);

}  // namespace zek::tool
