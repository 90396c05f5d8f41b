/// The clock of the parts of a process. Relies on nothing.
#pragma once

#include <ctime>

namespace zek::bench {

/// The processor time of this process, user and system together, since the watch was made: what else the machine does
/// meanwhile hardly shows in it.
class Watch {
public:
    double Seconds() const { return Now() - begin_; }

private:
    static double Now() {
        timespec now = {};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
        return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
    }

    double begin_ = Now();
};

}  // namespace zek::bench
