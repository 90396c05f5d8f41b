// The logging function of a host, as a C++ function that writes to a standard stream: the library sees to it that the
// streams are ready when it logs while it is loaded.
#include <cstdarg>
#include <cstdio>
#include <iostream>

void Output(unsigned level, const char* format, ...) __attribute__((format(printf, 2, 3)));

void Output(unsigned level, const char* format, ...) {
    char text[256];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    std::cout << "C++ " << level << ": " << text;
}
