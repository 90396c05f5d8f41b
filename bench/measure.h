/// Running a command as a process of its own and what that takes. Relies on nothing of the project.
///
/// The peak memory of a process counts from its fork, so a program that measures keeps small itself: it generates,
/// compiles and loads nothing, but has other programs do it.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace zek::bench {

/// What is run, in which folder, and where its standard input and output are. Standard error stays that of this
/// process.
struct Command {
    std::vector<std::string> words;  ///< the program, looked for in PATH unless it has a slash, and its arguments
    std::string input = {};          ///< the file that it reads; empty for nothing to read
    std::string output = {};         ///< the file that it prints to, made anew; empty for nowhere
    std::string folder = {};         ///< where it runs, and where these files are looked for; empty for here
};

/// What one run took, or the medians of several runs.
struct Run {
    double seconds = 0;     ///< from before the fork until the end is known
    double cpuSeconds = 0;  ///< of user and system together
    double peakBytes = 0;   ///< the most resident memory at any time
    double faults = 0;      ///< page faults that needed no reading
    int exitCode = 0;       ///< 128 + N for signal N; of several runs the highest
};

/// Runs a command once. Throws std::system_error when there can be no process; a program or a file that is not to be
/// had gives exit code 127.
Run RunOnce(const Command& command);

/// The middle value, or the mean of the two in the middle. `values` must not be empty.
double Median(std::vector<double> values);

/// The medians of runs, each number by itself. `runs` must not be empty.
Run Medians(const std::vector<Run>& runs);

/// The exponent by which seconds grow from a tenth of a size to all of it; nothing where they are too few to say.
std::optional<double> Exponent(double tenth, double all);

}  // namespace zek::bench
