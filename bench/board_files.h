/// Boards and what the library makes of them, as files. Other programs make them, found beside the running one, so that
/// this process stays as small as it is (measure.h).
#pragma once

#include <string>
#include <vector>

#include "measure.h"

namespace zek::bench {

/// The files of one board of a shape and size.
struct BoardFiles {
    std::string source;
    std::string image;     ///< the compiled image
    std::string debug;     ///< the debug image
    std::string included;  ///< the folder of the files that the source includes, where it includes any
};

/// The path of a program of this build.
std::string Program(const std::string& name);

/// The names of a board's files in a folder; nothing is made.
BoardFiles FilesOf(const std::string& folder, const std::string& shape, unsigned size);

/// Generates a board of a shape, in one of the formats that zek_board has. Throws std::runtime_error when that fails.
void WriteBoard(const std::string& file, const std::string& shape, unsigned size, const std::string& format = "zek");

/// Generates a board and compiles it. Throws std::runtime_error when that fails.
BoardFiles MakeBoard(const std::string& folder, const std::string& shape, unsigned size);

/// The sizes of a board's source and of the files that it includes, together.
double BytesOfSource(const BoardFiles& files);

/// Runs a command that must end with this exit code and write these files. Throws std::runtime_error with the command
/// where it does not, or leaves one of them empty.
Run Must(const Command& command, const std::vector<std::string>& writes = {}, int exitCode = 0);

/// The words of a command with blanks between them.
std::string Words(const Command& command);

}  // namespace zek::bench
