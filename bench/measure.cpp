#include "measure.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <system_error>

namespace zek::bench {
namespace {

double Seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

/// Opens a file as a standard stream of the child; false where that cannot be.
bool Redirect(const std::string& file, int flags, int stream) {
    const int opened = open(file.empty() ? "/dev/null" : file.c_str(), flags, 0666);
    return opened >= 0 && dup2(opened, stream) == stream;
}

/// Becomes the command; comes back only where that cannot be.
void Become(const Command& command) {
    std::vector<char*> words;
    for (const std::string& word : command.words) words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    if (!command.folder.empty() && chdir(command.folder.c_str()) != 0) return;
    if (!Redirect(command.input, O_RDONLY, STDIN_FILENO)) return;
    if (!Redirect(command.output, O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO)) return;
    execvp(words[0], words.data());
}

int ExitCode(int status) { return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status); }

}  // namespace

Run RunOnce(const Command& command) {
    const auto begin = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child < 0) throw std::system_error(errno, std::generic_category(), "fork");
    if (child == 0) {
        Become(command);
        _exit(127);
    }
    int status = 0;
    rusage usage = {};
    while (wait4(child, &status, 0, &usage) < 0) {
        if (errno != EINTR) throw std::system_error(errno, std::generic_category(), "wait4");
    }
    const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - begin;
    return {wall.count(), Seconds(usage.ru_utime) + Seconds(usage.ru_stime),
            static_cast<double>(usage.ru_maxrss) * 1024, static_cast<double>(usage.ru_minflt), ExitCode(status)};
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

Run Medians(const std::vector<Run>& runs) {
    const auto of = [&runs](double Run::*number) {
        std::vector<double> values;
        for (const Run& run : runs) values.push_back(run.*number);
        return Median(values);
    };
    int exitCode = 0;
    for (const Run& run : runs) exitCode = std::max(exitCode, run.exitCode);
    return {of(&Run::seconds), of(&Run::cpuSeconds), of(&Run::peakBytes), of(&Run::faults), exitCode};
}

std::optional<double> Exponent(double tenth, double all) {
    constexpr double kTooShort = 0.003;  // seconds
    if (tenth < kTooShort || all < kTooShort) return std::nullopt;
    return std::log10(all / tenth);
}

}  // namespace zek::bench
