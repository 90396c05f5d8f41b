/// The three standard streams, with every call checked. Relies on the operating system alone.
#pragma once

#include <exception>
#include <new>
#include <string>
#include <string_view>

#include "failure.h"

namespace zek::tool {

/// Makes sure that descriptors 0 to 2 are taken, so that no file of ours gets one of them. Reading from a standard
/// input and writing to a standard output that were closed still fail afterwards.
void OccupyStandardStreams();

/// Writes all bytes; 0, or the errno of the call that failed.
int WriteAll(int descriptor, std::string_view bytes);

/// Standard output cannot be written, so there is nobody to go on for.
class OutputFailure : public Failure {
public:
    explicit OutputFailure(const Failure& failure) : Failure(failure) {}
};

/// Text on its way to standard output. Throws OutputFailure when it cannot be written. Where that is no regular file,
/// it comes in the place of what a terminal shows of the work, as what Tell writes does: both may be one terminal.
class StandardOutput {
public:
    void Write(std::string_view text);
    /// Writes what is left; without it the end is lost.
    void Finish();

private:
    std::string waiting_;
};

/// Writes to standard error at once, in the place of what a terminal shows of the work (terminal_line.h); where that
/// fails there is nobody left to tell.
void Tell(std::string_view text);
/// Tells why the command ends early, as "zek: WHY".
void TellWhy(std::string_view why);

/// Why an exception ends the command.
inline std::string WhyEnded(const std::exception& error) {
    return dynamic_cast<const std::bad_alloc*>(&error) ? "there is too little memory" : error.what();
}

/// What `run` gives, or the code of the failure that ended it, which is told on standard error.
template <class Run>
int Guarded(Run&& run) {
    try {
        return run();
    } catch (const Failure& failure) {
        TellWhy(failure.what());
        return failure.Code();
    } catch (const std::exception& error) {
        TellWhy(WhyEnded(error));
        return kUsageOrFiles;
    }
}

/// The same for one file of several, behind which the others come: what ends the command for all of them, an
/// OutputFailure, is thrown on.
template <class Run>
int GuardedEach(Run&& run) {
    std::exception_ptr ending;
    const int code = Guarded([&]() -> int {
        try {
            return run();
        } catch (const OutputFailure&) {
            ending = std::current_exception();
            return kUsageOrFiles;
        }
    });
    if (ending) std::rethrow_exception(ending);
    return code;
}

}  // namespace zek::tool
