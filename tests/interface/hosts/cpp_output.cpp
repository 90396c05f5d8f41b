// The logging function of a host, as a C++ function.
#include <cstdarg>
#include <cstdio>

void Output(unsigned level, const char* format, ...) __attribute__((format(printf, 2, 3)));

void Output(unsigned level, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::printf("C++ %u: ", level);
    std::vprintf(format, arguments);
    va_end(arguments);
}
