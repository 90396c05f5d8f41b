// Shows what a debug image holds: inspect_host DEBUG
#include <cstdarg>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "zekcomp/debug_image.h"
#include "zekcomp/output.h"

// The library says here why it refuses a file.
extern "C" void Output(unsigned, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
}

namespace {

constexpr const char* kKinds[] = {"QUORZEK", "PROPERTY",  "SYSTEM", "GROUP",    "SENSOR", "DEVICE", "ACTION",
                                  "TABLE",   "TAVRGROUP", "GLOBAL", "REPEATER", "DEFINE", "IFDEF"};

// A damaged section makes gdInit throw; what was read until then stays, and gdUnInit frees it.
bool Load(const std::string& file) {
    try {
        return gdInit(file, nullptr);
    } catch (const std::out_of_range&) {
        std::fprintf(stderr, "%s is damaged\n", file.c_str());
        return false;
    }
}

void ShowSection(const char* kind, CZEKSection* section, std::vector<char>& text) {
    std::printf("[%s]\n", kind);
    for (unsigned i = 0; CZEKEntry* entry = gdGetEntryByIndex(section, i); ++i) {
        gdGetValue(entry, text.data());
        std::printf("  %s = %s\n", gdGetEntryName(entry), text.data());
    }
}

}  // namespace

int main(int count, char** words) {
    if (count != 2) {
        std::fprintf(stderr, "usage: inspect_host DEBUG\n");
        return 2;
    }
    const bool loaded = Load(words[1]);
    if (loaded) {
        // No value of a whole image has a longer text than the image, but for a number. In a damaged one a list may run
        // on into bytes that are missing, at most 1 MiB of them.
        std::vector<char> text(std::filesystem::file_size(words[1]) + (std::size_t{1} << 20));
        unsigned kind = 1;
        for (const char* name : kKinds) {
            for (unsigned i = 0; CZEKSection* section = gdGetSectByIndex(kind, i); ++i) {
                ShowSection(name, section, text);
            }
            ++kind;
        }
    }
    gdUnInit();
    return loaded ? 0 : 1;
}
