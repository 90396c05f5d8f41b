/// How the command ends: its exit codes, and the failure that ends it early. Relies on the standard library.
#pragma once

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string>

namespace zek::tool {

/// The exit codes of every command. Where several sources are checked, the highest one counts.
enum ExitCode : int {
    kFine = 0,
    kSourceHasErrors = 1,
    kUsageOrFiles = 2,  ///< a wrong command line, or a file that cannot be read or written
    kNoImage = 3,       ///< a file that is not a valid image
};

/// Ends the command: `what()` goes to standard error, the code to the caller of the program.
class Failure : public std::runtime_error {
public:
    Failure(ExitCode code, const std::string& text) : std::runtime_error(text), code_(code) {}
    ExitCode Code() const { return code_; }

private:
    ExitCode code_;
};

/// A failed call of the operating system, with its reason; `error` is an errno.
inline Failure SystemFailure(const std::string& what, int error = errno) {
    return Failure(kUsageOrFiles, what + ": " + std::strerror(error));
}

}  // namespace zek::tool
