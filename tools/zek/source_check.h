/// What the commands share that read and check a source: compile and check.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "command.h"
#include "findings_output.h"
#include "report.h"
#include "shared_allows.h"
#include "source_reading.h"
#include "zekcomp/compiler.h"

namespace zek::tool {

/// Ends the help of both commands.
inline constexpr char kIncludeSearch[] =
    "\n"
    "An include is looked for beside the file that includes it, in the current folder, in the folders of -I in their "
    "order, then among the files that come with zek (zek/words.zek).";

/// What both commands take.
struct SourceOptions {
    std::vector<std::string> includes;
    std::vector<std::string> definitions;
    std::size_t mostFiles = kMostFilesOfASource;  ///< how many files one compilation may read
    ReportOptions report;
    bool lint = false;         ///< the rules of lint are run, too
    bool amongOthers = false;  ///< other sources are checked in the same run
    FindingsOptions findings;
};

void AddSourceOptions(Words& words, SourceOptions& options);

/// Throws Failure where --raw is asked for in a format that has no room for it.
void RequireTextForRaw(const SourceOptions& options);

/// Throws Failure with the system's reason for a main source that is not there or cannot be read.
void RequireReadable(const std::string& source);

/// A source of - is standard input.
std::string PathOfSource(const std::string& source);

/// Ends the compilation, however it goes.
struct Compilation {
    Compilation() = default;
    ~Compilation() { gccCompEnd(); }
    Compilation(const Compilation&) = delete;
    Compilation& operator=(const Compilation&) = delete;
};

struct CheckedSource {
    std::vector<SourceFile> files;
    bool valid = false;
    std::vector<SharedAllow> shared = {};
};

/// Reads and checks a source and shows what there is to tell. The model stays for the outputs. Throws Failure for a
/// source that cannot be read.
CheckedSource Check(const std::string& source, const SourceOptions& options, FindingsOutput& output);

/// What `run` gives; stores why it failed.
int GuardedWithReason(std::string& why, const std::function<int()>& run);

}  // namespace zek::tool
