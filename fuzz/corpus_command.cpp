// Makes the seeds of the fuzzers, and replays inputs through their harnesses without a fuzzer:
//   fuzz_corpus seeds SOURCES OUT
//   fuzz_corpus replay HARNESS FOLDER...
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "files.h"
#include "harness.h"
#include "seeds.h"

namespace {

using zek::fuzz::Harness;

/// An input that takes longer hangs.
constexpr unsigned kMostSeconds = 120;

/// Runs one input in a process of its own; false when that ended otherwise than by returning from the harness.
bool Passes(const Harness& harness, const std::string& bytes) {
    const pid_t child = fork();
    if (child < 0) zek::fuzz::Break("the system has a process for the replay");
    if (child == 0) {
        alarm(kMostSeconds);
        harness.run(bytes);
        // Not _exit: what leaked is looked for at the end of the process.
        std::exit(0);
    }
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

int Replay(const Harness& harness, const std::vector<std::string>& folders) {
    unsigned passed = 0;
    unsigned failed = 0;
    for (const std::string& folder : folders) {
        for (const auto& file : zek::fuzz::FilesBelow(folder)) {
            const bool passes = Passes(harness, zek::fuzz::ReadFile(file));
            if (!passes) std::fprintf(stderr, "failed: %s\n", file.c_str());
            ++(passes ? passed : failed);
        }
    }
    std::printf("%u inputs pass, %u fail\n", passed, failed);
    return failed == 0 && passed > 0 ? 0 : 1;
}

int Usage() {
    std::fprintf(stderr, "usage: fuzz_corpus seeds SOURCES OUT\n       fuzz_corpus replay HARNESS FOLDER...\n");
    return 2;
}

}  // namespace

int main(int count, char** arguments) {
    const std::vector<std::string> words(arguments + 1, arguments + count);
    if (words.size() == 3 && words[0] == "seeds") {
        std::printf("%zu seeds\n", zek::fuzz::MakeSeeds(words[1], words[2]));
        return 0;
    }
    if (words.size() < 3 || words[0] != "replay") return Usage();
    for (const Harness& harness : zek::fuzz::kHarnesses) {
        if (words[1] == harness.name) return Replay(harness, {words.begin() + 2, words.end()});
    }
    return Usage();
}
