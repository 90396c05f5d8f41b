#include "messages.h"

#include <cstdarg>
#include <cstdio>
#include <utility>

#include "zekcomp/output.h"

namespace {

constexpr std::size_t kMostKept = std::size_t{1} << 20;

/// Made when first used: messages come before any constructor of the program has run. Never destroyed: they come after
/// the last destructor, too.
std::string& Kept() {
    static auto* text = new std::string;
    return *text;
}

}  // namespace

extern "C" void Output(unsigned, const char* format, ...) {
    static char text[1 << 16];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    if (Kept().size() < kMostKept) Kept() += text;
}

std::string zek::fuzz::TakeMessages() { return std::exchange(Kept(), std::string()); }
