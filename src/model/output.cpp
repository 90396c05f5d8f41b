#include "model/output.h"

extern "C" void HostOutputPlain(unsigned, const char*, ...) __asm__("Output") __attribute__((weak));
extern "C" void HostOutputCpp(unsigned, const char*, ...) __asm__("_Z6OutputjPKcz") __attribute__((weak));

namespace zek {

namespace {

void Drop(unsigned, const char*, ...) {}

}  // namespace

OutputFunction HostOutput() {
    if (HostOutputPlain) return HostOutputPlain;
    if (HostOutputCpp) return HostOutputCpp;
    return Drop;
}

}  // namespace zek
