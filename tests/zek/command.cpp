#include "zek/command.h"

#include <fcntl.h>
#include <linux/capability.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <sstream>

namespace zek::test {

namespace {

int Recording() { return memfd_create("record", MFD_CLOEXEC); }

std::string TakeRecord(int descriptor) {
    std::string text(static_cast<std::size_t>(lseek(descriptor, 0, SEEK_END)), '\0');
    const ssize_t got = pread(descriptor, text.data(), text.size(), 0);
    EXPECT_EQ(got, static_cast<ssize_t>(text.size()));
    close(descriptor);
    return text;
}

/// Adds what comes out of a terminal next; false when nobody has it open any more.
bool ReadTerminal(int descriptor, std::string& text) {
    char bytes[4096];
    const ssize_t got = read(descriptor, bytes, sizeof bytes);
    if (got > 0) text.append(bytes, static_cast<std::size_t>(got));
    return got > 0;
}

/// What the control key and a letter send.
constexpr cc_t Control(char letter) { return static_cast<cc_t>(letter & 0x1F); }

/// A terminal that changes nothing of what is written; gives its other end. The program's end stands in `end`.
int OpenTerminal(const Setting& setting, int& end) {
    int other = -1;
    termios modes{};
    cfmakeraw(&modes);
    if (setting.keyboard) {
        modes.c_lflag |= ISIG | ICANON | ECHO | ECHOCTL;
        modes.c_cc[VINTR] = Control('C');
        modes.c_cc[VEOF] = Control('D');
    }
    const winsize size = {24, setting.terminalColumns, 0, 0};
    EXPECT_EQ(openpty(&other, &end, nullptr, &modes, &size), 0);
    fcntl(other, F_SETFD, FD_CLOEXEC);
    return other;
}

void Become(int descriptor, int standard) {
    if (dup2(descriptor, standard) < 0) _exit(120);
}

void LeaveWithoutReader() {
    int ends[2];
    if (pipe(ends) != 0) _exit(121);
    close(ends[0]);
    Become(ends[1], STDOUT_FILENO);
    close(ends[1]);
}

/// In the child: what the setting asks for.
void Apply(const Setting& setting, int out, int err) {
    Become(err, STDERR_FILENO);
    Become(setting.out.empty() ? out : open(setting.out.c_str(), O_WRONLY), STDOUT_FILENO);
    // The interrupt goes to the processes of the session that has the terminal.
    if (setting.keyboard && (setsid() < 0 || ioctl(err, TIOCSCTTY, 0) != 0)) _exit(125);
    if (setting.keyboard && setting.in.empty()) Become(err, STDIN_FILENO);
    if (!setting.in.empty()) Become(open(setting.in.c_str(), O_RDONLY), STDIN_FILENO);
    if (setting.closedOut) close(STDOUT_FILENO);
    if (setting.readerGone) LeaveWithoutReader();
    if (setting.terminalColumns) {
        for (const char* wish : {"COLUMNS", "NO_COLOR"}) unsetenv(wish);
        setenv("TERM", "xterm", 1);
    }
    for (const auto& [name, value] : setting.environment) setenv(name.c_str(), value.c_str(), 1);
    std::signal(SIGPIPE, SIG_DFL);
    if (setting.fileSizeLimit) {
        const rlimit limit = {setting.fileSizeLimit, setting.fileSizeLimit};
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0) _exit(122);
    }
    // Nobody but root has the right to begin with.
    if (setting.permissionsHold && geteuid() == 0 && prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE) != 0) _exit(124);
}

}  // namespace

Program::Program(std::vector<std::string> arguments, const Setting& setting) : out_(Recording()) {
    if (setting.terminalColumns) {
        terminal_ = OpenTerminal(setting, err_);
    } else {
        err_ = Recording();
    }
    std::vector<char*> pointers;
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    process_ = fork();
    if (process_ != 0) {
        if (terminal_ >= 0) close(err_);
        return;
    }
    Apply(setting, out_, err_);
    execvp(pointers[0], pointers.data());
    _exit(123);
}

bool Program::Shows(const std::string& text) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point deadline = Clock::now() + std::chrono::seconds(30);
    pollfd waiting = {terminal_, POLLIN, 0};
    while (shown_.find(text) == std::string::npos && Clock::now() < deadline) {
        if (poll(&waiting, 1, 100) > 0 && !ReadTerminal(terminal_, shown_)) break;
    }
    return shown_.find(text) != std::string::npos;
}

void Program::Type(const std::string& keys) {
    EXPECT_EQ(write(terminal_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
}

Result Program::Finish() {
    Result result;
    int status = 0;
    if (terminal_ >= 0) {
        while (ReadTerminal(terminal_, shown_)) continue;
        close(terminal_);
        result.err = shown_;
    }
    EXPECT_EQ(waitpid(process_, &status, 0), process_);
    if (WIFEXITED(status)) result.code = WEXITSTATUS(status);
    if (WIFSIGNALED(status)) result.signal = WTERMSIG(status);
    result.out = TakeRecord(out_);
    if (terminal_ < 0) result.err = TakeRecord(err_);
    return result;
}

Result Zek(std::vector<std::string> arguments, const Setting& setting) {
    arguments.insert(arguments.begin(), ZEK_PROGRAM);
    return Program(std::move(arguments), setting).Finish();
}

std::vector<std::string> CommandNames() {
    const std::string help = Zek({"--help"}).out;
    std::istringstream lines(help.substr(std::min(help.find("\nCommands:\n"), help.size())));
    std::vector<std::string> names;
    for (std::string line; std::getline(lines, line) && line != "Example:";) {
        if (line.starts_with("  ") && line[2] != ' ') names.push_back(line.substr(2, line.find(' ', 2) - 2));
    }
    return names;
}

std::string WithoutExcerpts(const std::string& said) {
    std::string rest;
    std::istringstream lines(said);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t bar = line.find_first_not_of(" 0123456789");
        if (!(line.starts_with(' ') && bar != line.npos && line[bar] == '|')) rest += line + '\n';
    }
    return rest;
}

Setting Fault(const std::string& name) {
    Setting setting;
    // A sanitized program otherwise refuses to start behind another library.
    const char* options = std::getenv("ASAN_OPTIONS");
    setting.environment = {{"LD_PRELOAD", ZEK_FAULTS},
                           {"ZEK_FAULT", name},
                           {"ASAN_OPTIONS", (options ? std::string(options) + ':' : "") + "verify_asan_link_order=0"}};
    return setting;
}

void ZekTest::WriteSound(const std::string& file, unsigned sensors) {
    std::string text = "[DEFINE]\nVT_VALUE = 1\n[GROUP]\nPARENT = 0\nNAME = Board\nCHILDGROUP = 0\n";
    std::string list;
    for (unsigned id = 1; id <= sensors; ++id) {
        const std::string number = std::to_string(id);
        text += "[SENSOR]\nPARENT = Board\nNAME = Sensor " + number + "\nID = " + number +
                "\nTYPE = 1\nINITFLAG = 0\nCONTROLMASK = 3\nTHRESHOLD_WH = 40\nVALUE = VT_VALUE,7\n";
        list += (id == 1 ? "" : ",") + number;
    }
    Write(file, text + "[TAVRGROUP]\nNAME = All\nID = 1\nPID = 0\nSENSORS = " + list + '\n');
}

void ZekTest::Compile(const std::string& name, const std::string& text, const std::vector<std::string>& options) {
    Write(name + ".zek", text);
    std::vector<std::string> arguments = {"compile", name + ".zek"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const Result result = Zek(arguments);
    ASSERT_EQ(result.code, 0) << result.err;
}

void ZekTest::ExpectRefused(const std::vector<Refusal>& rows) {
    for (const Refusal& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        const Result result = Zek(row.arguments);
        EXPECT_EQ(result.code, row.code);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "zek: " + row.why + '\n');
    }
}

std::vector<std::string> ZekTest::Names(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace zek::test
