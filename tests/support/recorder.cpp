#include "support/recorder.h"

#include <cstdarg>
#include <cstdio>
#include <utility>
#include <vector>

#include "zekcomp/output.h"

namespace {

/// Made when first used: messages come before any constructor of the tests has run.
std::string& Recorded() {
    static auto* text = new std::string;
    return *text;
}

std::function<void()>& AtEach() {
    static auto* act = new std::function<void()>([] {});
    return *act;
}

}  // namespace

extern "C" void Output(unsigned level, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    va_list again;
    va_copy(again, arguments);
    std::vector<char> text(static_cast<std::size_t>(std::vsnprintf(nullptr, 0, format, arguments)) + 1);
    std::vsnprintf(text.data(), text.size(), format, again);
    va_end(again);
    va_end(arguments);
    if (level != 2048) Recorded() += "level " + std::to_string(level) + ": ";
    Recorded() += text.data();
    AtEach()();
}

std::string zek::test::TakeMessages() { return std::exchange(Recorded(), std::string()); }

void zek::test::AtEachMessage(std::function<void()> act) { AtEach() = std::move(act); }
