/// The pages of docs/ as tests read them: their fenced blocks by what stands behind the backticks. Relies on nothing.
#pragma once

#include <string>
#include <vector>

namespace zek::test {

/// A file of the source tree, whole; reports a failure when it cannot be read.
std::string SourceFile(const std::string& path);

/// The lines of the first block of a page that opens with "```" and `info` (such as "zek fan.zek"); reports a failure
/// when there is none.
std::string Block(const std::string& page, const std::string& info);

/// What stands behind the backticks of each block of a page that opens with "```" and `beginning`, without that.
std::vector<std::string> BlocksOf(const std::string& page, const std::string& beginning);

/// The bytes of a dump: each line is an offset, two blanks, bytes as hexadecimal ("00 *4" for four of one kind, ".."
/// for a byte of the time stamp, which counts as 0), then two blanks and a note. Reports a failure where an offset is
/// not that of the bytes before it.
std::string BytesOfDump(const std::string& dump);

}  // namespace zek::test
