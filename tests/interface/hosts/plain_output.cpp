// The logging function of a host, as a plain symbol.
#include <cstdarg>
#include <cstdio>

#include "zekcomp/output.h"

extern "C" void Output(unsigned level, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::printf("plain %u: ", level);
    std::vprintf(format, arguments);
    va_end(arguments);
}
