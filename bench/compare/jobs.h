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
    double bytes = 0;                      ///< of the files that it works on
    std::vector<std::string> writes = {};  ///< files that it makes, removed before each run
    unsigned runs = 1;
    std::vector<std::string> tells = {};  ///< what it prints the seconds of, as JSON: itself (kSeconds), or its phases
    int exitCode = 0;                     ///< that it ends with
    Figures* figures = nullptr;           ///< where its figures go
};

/// What a job tells that has no phases.
inline const std::vector<std::string> kSeconds = {"seconds"};

/// Runs all jobs, spread evenly over the whole time: a job that has half as many runs as another one comes in every
/// second round. Each run adds "wall", "cpu" (seconds), "peak" (bytes), "faults" and "bytes" (that it works on), and
/// what the process tells: "seconds", or the seconds of each phase by its name and "work" for their sum. Throws
/// std::runtime_error when one fails, does not write what it should, or tells anything else than it should.
void RunInTurn(const std::vector<Job>& jobs);

/// How often things run.
struct Effort {
    unsigned runs = 15;      ///< of boards of up to 10,000 sensors; the larger the board the fewer
    unsigned toolRuns = 15;  ///< the same for the other tools
};

/// The work of this library on a board, with what the machine takes for the least of it.
std::vector<Job> JobsOfBoard(const BoardFiles& files, unsigned size, const Effort& effort, Figures& figures);

/// The other tools that compile boards of this size: the larger a board the fewer.
std::vector<std::string> ToolNames(unsigned size);

/// Writes the same board for the other tools; gives what compiles it there.
std::vector<Job> JobsOfTools(const std::string& folder, unsigned size, const Effort& effort, Figures& figures);

/// Loading the library, with nothing to be done afterwards: its figures are those of the job "load".
Job LoadJob(const std::string& folder, unsigned runs, Figures& figures);

/// Compiling alone: its figures are those of the job "zek".
Job CompileJob(const BoardFiles& files, unsigned runs, Figures& figures);

/// The same of a board with mistakes, which ends behind the check.
Job FaultyCompileJob(const BoardFiles& files, unsigned runs, Figures& figures);

}  // namespace zek::bench
