/// The processes that are measured, run in turn so that what disturbs one disturbs the others too. Relies on
/// board_files.h and figures.h.
#pragma once

#include <string>
#include <vector>

#include "board_files.h"
#include "compare/figures.h"

namespace zek::bench {

/// One process that is measured.
struct Job {
    std::string name;  ///< what its figures go by
    Command command;
    std::string reads = {};                ///< the file that it works on
    std::vector<std::string> writes = {};  ///< files that it makes, removed before each run
    unsigned runs = 1;
    bool tells = false;          ///< whether it prints figures of its own, as JSON
    bool mayFail = false;        ///< whether exit code 1 is a result as well
    Figures* figures = nullptr;  ///< where its figures go
};

/// Runs all jobs, spread evenly over the whole time: a job that has half as many runs as another one comes in every
/// second round. Each run adds "wall", "cpu" (seconds), "peak" (bytes), "faults" and "bytes" (that it works on), and
/// what the process tells: "seconds", or the seconds of each phase by its name and "work" for their sum. Throws
/// std::runtime_error when one fails.
void RunInTurn(const std::vector<Job>& jobs);

/// How often things run.
struct Effort {
    unsigned runs = 15;      ///< of boards of up to 10,000 sensors; the larger the board the fewer
    unsigned toolRuns = 15;  ///< the same for the other tools
};

/// The work of this library on a board, with what the machine takes for the least of it.
std::vector<Job> JobsOfBoard(const BoardFiles& files, unsigned size, const Effort& effort, Figures& figures);

/// Writes the same board for the other tools; gives what compiles it there. The larger a board the fewer tools.
std::vector<Job> JobsOfTools(const std::string& folder, unsigned size, const Effort& effort, Figures& figures);

/// Loading the library, with nothing to be done afterwards: its figures are those of the job "load".
Job LoadJob(const std::string& folder, unsigned runs, Figures& figures);

/// Compiling alone: its figures are those of the job "zek".
Job CompileJob(const BoardFiles& files, unsigned runs, Figures& figures);

}  // namespace zek::bench
