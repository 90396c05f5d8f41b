/// Runs the built `zek` as a program. Relies on its path, which the build gives.
#pragma once

#include <sys/types.h>

#include <string>
#include <utility>
#include <vector>

#include "support/process_test.h"

namespace zek::test {

struct Result {
    int code = -1;   ///< the exit code; -1 when a signal ended it
    int signal = 0;  ///< the signal that ended it
    std::string out;
    std::string err;
};

/// How a program is run; everything else is as in this process.
struct Setting {
    std::string in = {};   ///< the file that standard input comes from; empty: as in this process
    std::string out = {};  ///< where standard output goes; empty: it is recorded
    bool closedOut = false;
    /// Standard error is a terminal with so many columns, one with colours and without wishes in the environment,
    /// unless that says otherwise; 0 is none.
    unsigned short terminalColumns = 0;
    /// Somebody sits at that terminal: it shows what is typed (Program::Type), its keys end the input and interrupt,
    /// and standard input is that terminal, too, unless it comes from a file.
    bool keyboard = false;
    bool readerGone = false;          ///< standard output is a pipe that nobody reads
    unsigned long fileSizeLimit = 0;  ///< bytes; 0 is none
    bool permissionsHold = false;     ///< what a file's mode forbids is forbidden, to root too
    std::vector<std::pair<std::string, std::string>> environment = {};
};

/// A program under way.
class Program {
public:
    explicit Program(std::vector<std::string> arguments, const Setting& setting = {});
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    pid_t Process() const { return process_; }
    /// Waits until the terminal that standard error is was sent this; false after half a minute.
    bool Shows(const std::string& text);
    /// What a keyboard sends.
    void Type(const std::string& keys);
    /// Waits for its end; call it once.
    Result Finish();

private:
    pid_t process_ = -1;
    int out_ = -1;
    int err_ = -1;
    int terminal_ = -1;  ///< its other end, where standard error is one
    std::string shown_;  ///< what came there so far
};

/// Runs `zek` with these arguments to its end.
Result Zek(std::vector<std::string> arguments, const Setting& setting = {});

/// Options that leave out what lint finds of things that nothing uses, for sources in which nothing does.
inline const std::vector<std::string> kUnusedAside = {"--no-warn", "L133", "--no-warn", "L135"};

/// The commands that the help names, in its order.
std::vector<std::string> CommandNames();

/// What was said without the lines that show the source.
std::string WithoutExcerpts(const std::string& said);

/// A setting in which a call fails; the names are told in faults.cpp.
Setting Fault(const std::string& name);

/// How many shards a test has that starts programs all the time. Under AddressSanitizer these take long to start, so a
/// quarter of the shards is enough there.
constexpr unsigned ShardsOfPrograms(unsigned shards) {
#if defined(__SANITIZE_ADDRESS__)
    return (shards + 3) / 4;
#else
    return shards;
#endif
}

/// Runs in a folder of its own, which is the current one.
class ZekTest : public ProcessTest {
protected:
    /// Writes a source that is valid: a group and, in it, sensors with the IDs 1 to `sensors`, listed in a TAVRGROUP.
    static void WriteSound(const std::string& file, unsigned sensors = 1);

    /// Writes NAME.zek and compiles it into NAME.zki and NAME.zkd.
    static void Compile(const std::string& name, const std::string& text, const std::vector<std::string>& options = {});

    /// Expects that each command line ends with that code, shows nothing and says why.
    struct Refusal {
        std::vector<std::string> arguments;
        int code;
        std::string why;  ///< without "zek: " before it
    };
    static void ExpectRefused(const std::vector<Refusal>& rows);

    /// The names in a folder, sorted.
    static std::vector<std::string> Names(const std::string& folder = ".");
};

using Strings = std::vector<std::string>;

}  // namespace zek::test
