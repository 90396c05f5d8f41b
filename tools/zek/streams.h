/// The three standard streams, with every call checked. Relies on the operating system alone.
#pragma once

#include <exception>
#include <new>
#include <string>
#include <string_view>

#include "failure.h"

namespace zek::tool {

/// Makes sure that descriptors 0 to 2 are taken, so that no file of ours gets one of them. Writing to a standard output
/// that was closed still fails afterwards.
void OccupyStandardStreams();

/// Writes all bytes; 0, or the errno of the call that failed.
int WriteAll(int descriptor, std::string_view bytes);

/// Text on its way to standard output. Throws Failure when it cannot be written.
class StandardOutput {
public:
    void Write(std::string_view text);
    /// Writes what is left; without it the end is lost.
    void Finish();

private:
    std::string waiting_;
};

/// Writes to standard error at once; where that fails there is nobody left to tell.
void Tell(std::string_view text);
/// Tells why the command ends early, as "zek: WHY".
void TellWhy(std::string_view why);

/// What `run` gives, or the code of the failure that ended it, which is told on standard error.
template <class Run>
int Guarded(Run&& run) {
    try {
        return run();
    } catch (const Failure& failure) {
        TellWhy(failure.what());
        return failure.Code();
    } catch (const std::bad_alloc&) {
        TellWhy("there is too little memory");
        return kUsageOrFiles;
    } catch (const std::exception& error) {
        TellWhy(error.what());
        return kUsageOrFiles;
    }
}

}  // namespace zek::tool
