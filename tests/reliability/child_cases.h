/// Runs many cases in child processes and counts how they end, also those that end the process. Relies on POSIX.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace zek::test {

/// How the cases of a run ended.
struct Tally {
    std::size_t tried = 0;
    std::size_t verified = 0;          ///< the case gave true
    std::size_t refused = 0;           ///< it gave false
    std::vector<std::string> crashed;  ///< it ended its process: "17: signal 11", with the number of the case

    std::string Text() const;
};

/// How the children run.
struct ChildSetting {
    std::size_t batch = 256;          ///< cases in one child; 1 gives each case a process of its own
    std::size_t spareMemory = 0;      ///< bytes of address space beyond what is in use; 0 is no limit
    unsigned secondsForOneCase = 20;  ///< a case that takes longer hangs: it counts as crashed, by SIGALRM
};

/// Runs `run` for the numbers from 0 to `cases` - 1, in order, in children forked here and now. A case crashes when it
/// ends its child, by a signal, by an exception that it lets out, by exit, or by a failed expectation; those behind it
/// go on in a new child.
Tally RunInChildren(std::size_t cases, const ChildSetting& setting, const std::function<bool(std::size_t)>& run);

}  // namespace zek::test
