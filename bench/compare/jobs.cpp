#include "compare/jobs.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

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

void AddPrinted(const Job& job) {
    Figures& figures = *job.figures;
    std::ifstream in(job.command.output);
    const nlohmann::json printed = nlohmann::json::parse(in);
    if (printed.contains("seconds")) return figures.Add(job.name, "seconds", printed.at("seconds"));
    double work = 0;
    for (const auto& phase : printed.at("phases")) {
        const double seconds = phase.at("seconds");
        figures.Add(job.name, phase.at("name"), seconds);
        work += seconds;
    }
    figures.Add(job.name, "work", work);
}

void RunJob(const Job& job) {
    for (const std::string& file : job.writes) std::filesystem::remove(file);
    const Run run = job.mayFail ? RunOnce(job.command) : Must(job.command);
    if (run.exitCode > 1) throw std::runtime_error(job.name + " ended with exit code " + std::to_string(run.exitCode));
    Figures& figures = *job.figures;
    figures.Add(job.name, "wall", run.seconds);
    figures.Add(job.name, "cpu", run.cpuSeconds);
    figures.Add(job.name, "peak", run.peakBytes);
    figures.Add(job.name, "faults", run.faults);
    figures.Add(job.name, "bytes", static_cast<double>(std::filesystem::file_size(job.reads)));
    if (job.tells) AddPrinted(job);
}

/// A job of a program of ours, which prints its figures, here to a file of the folder: the program, then the words up
/// to the file that it works on.
Job OwnJob(const std::string& name, std::vector<std::string> words, const std::string& folder, unsigned runs,
           Figures& figures) {
    const std::string file = words.back();
    words.front() = Program(words.front());
    if (words.front().ends_with("compile_once")) words.push_back("--json");
    return {.name = name,
            .command = {.words = std::move(words), .output = folder + "/told.json"},
            .reads = file,
            .runs = runs,
            .tells = true,
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
    Job job = OwnJob("zek", {"compile_once", "--debug", files.debug, "--image", files.image, files.source},
                     FolderOf(files), runs, figures);
    job.writes = {files.debug, files.image};
    return job;
}

Job LoadJob(const std::string& folder, unsigned runs, Figures& figures) {
    return OwnJob("load", {"zek_floor", "load", ZEK_BUILT_LIBRARY}, folder, runs, figures);
}

std::vector<Job> JobsOfBoard(const BoardFiles& files, unsigned size, const Effort& effort, Figures& figures) {
    const unsigned runs = RunsAt(size, effort.runs);
    const auto job = [&](const std::string& name, std::vector<std::string> words) {
        return OwnJob(name, std::move(words), FolderOf(files), runs, figures);
    };
    return {
        CompileJob(files, runs, figures),
        job("gcInit", {"compile_once", "--load-image", files.image}),
        job("ImageView", {"compile_once", "--view-image", files.image}),
        job("gdInit", {"compile_once", "--load-debug", files.debug}),
        job("read image", {"zek_floor", "read", files.image}),
        job("read", {"zek_floor", "read", files.source}),
        job("copy", {"zek_floor", "copy", files.source}),
        job("touch", {"zek_floor", "touch", files.source}),
        job("scan", {"zek_floor", "scan", files.source}),
        job("enumerate", {"zek_floor", "enumerate", files.source}),
    };
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
                        .reads = input,
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
