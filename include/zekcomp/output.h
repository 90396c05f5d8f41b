/// The logging function that a host supplies. Relies on nothing.
///
/// The library refers to it weakly: a host defines either this plain symbol or a C++ function of the same signature;
/// the plain one wins, and with neither every message is dropped. The library already logs while it is being loaded, so
/// the function must not need anything that a constructor of the host sets up; the standard streams are ready by then.
/// It must be visible outside of the host, which this declaration sees to, also where the host hides its symbols by
/// default.
#pragma once

/// Receives every message of the library. `level` is 2048 for all of them; `format` is a printf format whose arguments
/// follow and which ends in a line feed.
extern "C" void Output(unsigned level, const char* format, ...)
    __attribute__((visibility("default"), format(printf, 2, 3)));
