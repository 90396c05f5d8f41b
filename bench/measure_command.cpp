// Runs a command several times and prints the medians: zek_measure [-n RUNS] COMMAND [ARGUMENT]...
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "measure.h"

int main(int count, char** words) {
    using namespace zek::bench;
    int first = 1;
    int times = 5;
    if (count > 2 && std::strcmp(words[1], "-n") == 0) {
        times = std::atoi(words[2]);
        first = 3;
    }
    if (first >= count || times < 1) {
        std::fprintf(stderr, "usage: zek_measure [-n RUNS] COMMAND [ARGUMENT]...\n");
        return 2;
    }
    const Command command = {.words = {words + first, words + count}};
    std::vector<Run> runs;
    for (int i = 0; i < times; ++i) runs.push_back(RunOnce(command));
    const Run median = Medians(runs);
    std::printf("wall %.6f s, user and system %.6f s, peak %.0f KiB, %.0f faults, exit code %d\n", median.seconds,
                median.cpuSeconds, median.peakBytes / 1024, median.faults, median.exitCode);
    return median.exitCode;
}
