#include "compare/jobs.h"

#include <sys/mman.h>
#include <unistd.h>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <utility>

#include <nlohmann/json.hpp>

namespace zek::bench {
namespace {

/// dtc takes about a second for every ten thousand sensors.
constexpr unsigned kMostRunsOfDtc = 3;
constexpr unsigned kLargestForDtc = 100'000;

unsigned RunsAt(unsigned size, unsigned runs) {
    if (size <= 10'000) return runs;
    return std::min(runs, std::max(size <= 100'000 ? 5U : 3U, runs * 10'000 / size));
}

/// The names and seconds of what a job told, in its order; empty where that is none of what jobs tell.
std::vector<std::pair<std::string, double>> Told(const std::string& file) {
    std::ifstream in(file);
    const nlohmann::json printed = nlohmann::json::parse(in, nullptr, false);
    std::vector<std::pair<std::string, double>> told;
    if (!printed.is_object()) return told;
    if (printed.contains("seconds")) told.emplace_back("seconds", printed.at("seconds"));
    for (const auto& phase : printed.value("phases", nlohmann::json::array())) {
        told.emplace_back(phase.at("name"), phase.at("seconds"));
    }
    return told;
}

void AddTold(const Job& job) {
    std::vector<std::string> names;
    double work = 0;
    for (const auto& [name, seconds] : Told(job.command.output)) {
        job.figures->Add(job.name, name, seconds);
        names.push_back(name);
        work += seconds;
    }
    if (names != job.tells) throw std::runtime_error("not what it should tell: " + Words(job.command));
    if (job.tells != kSeconds) job.figures->Add(job.name, "work", work);
}

double SizeOf(const std::string& file) {
    return std::filesystem::exists(file) ? static_cast<double>(std::filesystem::file_size(file)) : 0;
}

/// Has the system hold as much free memory as the runs of a job took before, the first time about what a run of other
/// tools takes, and as the files do that it writes. A virtual machine gives free memory back to its host, and to get it
/// again takes far longer than to have a page cleared: that is not what is measured. Half as much more, since the
/// system may give out other pages than these.
void FetchMemory(const Job& job) {
    double bytes = job.figures->Has(job.name, "peak") ? job.figures->Get(job.name, "peak") : 4 * job.bytes;
    for (const std::string& file : job.writes) bytes += SizeOf(file);
    const double pages = static_cast<double>(sysconf(_SC_AVPHYS_PAGES));
    const double free = pages * static_cast<double>(sysconf(_SC_PAGESIZE));
    const auto size = static_cast<std::size_t>(std::min(1.5 * bytes, 0.9 * free));
    void* const memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) return;
    // It gives back what lies in large pieces, as they are in large pages.
    madvise(memory, size, MADV_HUGEPAGE);
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    for (std::size_t i = 0; i < size; i += page) static_cast<volatile char*>(memory)[i] = 'x';
    munmap(memory, size);
}

void RunJob(const Job& job) {
    FetchMemory(job);
    for (const std::string& file : job.writes) std::filesystem::remove(file);
    const Run run = Must(job.command, job.writes, job.exitCode);
    Figures& figures = *job.figures;
    figures.Add(job.name, "wall", run.seconds);
    figures.Add(job.name, "cpu", run.cpuSeconds);
    figures.Add(job.name, "peak", run.peakBytes);
    figures.Add(job.name, "faults", run.faults);
    figures.Add(job.name, "bytes", job.bytes);
    if (!job.tells.empty()) AddTold(job);
}

/// A job of a program of ours, which prints its figures, here to a file of the folder: the program, then the words up
/// to the file that it works on.
Job OwnJob(const std::string& name, std::vector<std::string> words, std::vector<std::string> tells,
           const std::string& folder, unsigned runs, Figures& figures) {
    const auto bytes = static_cast<double>(std::filesystem::file_size(words.back()));
    words.front() = Program(words.front());
    if (words.front().ends_with("compile_once")) words.push_back("--json");
    return {.name = name,
            .command = {.words = std::move(words), .output = folder + "/told.json"},
            .bytes = bytes,
            .runs = runs,
            .tells = std::move(tells),
            .figures = &figures};
}

std::string FolderOf(const BoardFiles& files) { return std::filesystem::path(files.source).parent_path(); }

}  // namespace

void RunInTurn(const std::vector<Job>& jobs) {
    unsigned rounds = 0;
    for (const Job& job : jobs) rounds = std::max(rounds, job.runs);
    for (unsigned round = 0; round < rounds; ++round) {
        for (const Job& job : jobs) {
            if ((round + 1) * job.runs / rounds > round * job.runs / rounds) RunJob(job);
        }
    }
}

Job CompileJob(const BoardFiles& files, unsigned runs, Figures& figures) {
    Job job =
        OwnJob("zek", {"compile_once", "--debug", files.debug, "--image", files.image, files.source},
               {"start", "parse", "check", "debug image", "compiled image", "end"}, FolderOf(files), runs, figures);
    job.bytes = BytesOfSource(files);
    job.writes = {files.debug, files.image};
    // The library looks for included files from there on.
    job.command.folder = FolderOf(files);
    return job;
}

Job FaultyCompileJob(const BoardFiles& files, unsigned runs, Figures& figures) {
    Job job = CompileJob(files, runs, figures);
    job.tells = {"start", "parse", "check", "end"};
    job.writes.clear();
    job.exitCode = 1;
    return job;
}

Job LoadJob(const std::string& folder, unsigned runs, Figures& figures) {
    return OwnJob("load", {"zek_floor", "load", ZEK_BUILT_LIBRARY}, kSeconds, folder, runs, figures);
}

std::vector<Job> JobsOfBoard(const BoardFiles& files, unsigned size, const Effort& effort, Figures& figures) {
    const unsigned runs = RunsAt(size, effort.runs);
    std::vector<Job> jobs = {CompileJob(files, runs, figures)};
    const auto add = [&](const std::string& name, std::vector<std::string> words, std::vector<std::string> tells) {
        jobs.push_back(OwnJob(name, std::move(words), std::move(tells), FolderOf(files), runs, figures));
    };
    add("gcInit", {"compile_once", "--load-image", files.image}, {"gcInit"});
    add("ImageView", {"compile_once", "--view-image", files.image}, {"ImageView"});
    add("gdInit", {"compile_once", "--load-debug", files.debug}, {"gdInit"});
    add("read image", {"zek_floor", "read", files.image}, kSeconds);
    add("read", {"zek_floor", "read", files.source}, kSeconds);
    add("copy", {"zek_floor", "copy", files.source}, kSeconds);
    add("touch", {"zek_floor", "touch", files.source}, kSeconds);
    add("chase", {"zek_floor", "chase", files.source}, kSeconds);
    add("scan", {"zek_floor", "scan", files.source}, kSeconds);
    add("enumerate", {"zek_floor", "enumerate", files.source}, kSeconds);
    return jobs;
}

std::vector<std::string> ToolNames(unsigned size) {
    if (size > kLargestForDtc) return {"flatc", "protoc"};
    return {"flatc", "protoc", "dtc"};
}

std::vector<Job> JobsOfTools(const std::string& folder, unsigned size, const Effort& effort, Figures& figures) {
    const unsigned runs = size > kLargestForDtc ? 1 : RunsAt(size, effort.toolRuns);
    const std::string schemas = ZEK_BENCH_SCHEMAS;
    const std::string stem = folder + "/tool-" + std::to_string(size);
    std::vector<Job> jobs;
    const auto add = [&](const std::string& name, const std::string& format, const std::string& input,
                         const std::string& output, Command command) {
        WriteBoard(input, "board", size, format);
        jobs.push_back({.name = name,
                        .command = std::move(command),
                        .bytes = static_cast<double>(std::filesystem::file_size(input)),
                        .writes = {output},
                        .runs = runs,
                        .figures = &figures});
    };
    const std::string json = stem + ".json";
    add("flatc", "json", json, stem + ".bin", {{"flatc", "--binary", "-o", folder, schemas + "/board.fbs", json}});
    const std::string text = stem + ".txt";
    const std::string encoded = stem + ".pb";
    add("protoc", "proto", text, encoded,
        {{"protoc", "--encode=zek.bench.Board", "-I", schemas, schemas + "/board.proto"}, text, encoded});
    if (size > kLargestForDtc) return jobs;
    const std::string tree = stem + ".dts";
    const std::string blob = stem + ".dtb";
    add("dtc", "dts", tree, blob, {{"dtc", "-q", "-I", "dts", "-O", "dtb", "-o", blob, tree}});
    jobs.back().runs = std::min(runs, kMostRunsOfDtc);
    return jobs;
}

}  // namespace zek::bench
