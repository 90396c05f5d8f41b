#include "compare/calls_run.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

#include <nlohmann/json.hpp>

#include "board_files.h"

namespace zek::bench {

namespace {

/// The names that zek_calls lists, one a line.
std::vector<std::string> ListedCalls(const std::string& folder) {
    const Command command = {.words = {Program("zek_calls"), "--list"}, .output = folder + "/calls.txt"};
    Must(command);
    std::vector<std::string> names;
    std::ifstream in(command.output);
    for (std::string name; std::getline(in, name);) names.push_back(name);
    if (names.empty()) throw std::runtime_error("no calls from: " + Words(command));
    return names;
}

/// Runs zek_calls and reads the results that it prints as JSON.
nlohmann::json RunCalls(const std::string& folder, const CallsEffort& effort) {
    Command command = {.words = {Program("zek_calls"), folder}, .output = folder + "/calls.json"};
    for (const unsigned size : effort.sizes) command.words.push_back(std::to_string(size));
    command.words.push_back("--benchmark_min_time=" + effort.seconds);
    command.words.push_back("--benchmark_repetitions=" + std::to_string(effort.repetitions));
    command.words.push_back("--benchmark_format=json");
    Must(command);
    std::ifstream in(command.output);
    nlohmann::json results = nlohmann::json::parse(in, nullptr, false);
    if (results.is_discarded()) throw std::runtime_error("no results from: " + Words(command));
    return results;
}

}  // namespace

Calls MeasureCalls(const std::string& folder, const CallsEffort& effort) {
    Calls calls{ListedCalls(folder), {}};
    for (const unsigned size : effort.sizes) calls.figures[size] = {};
    const nlohmann::json results = RunCalls(folder, effort);
    for (const auto& result : results.at("benchmarks")) {
        if (result.at("run_type") != "iteration") continue;
        const std::string run = result.at("run_name");
        const std::size_t slash = run.rfind('/');
        const auto size = static_cast<unsigned>(std::stoul(run.substr(slash + 1)));
        const std::string name = run.substr(0, slash);
        if (std::find(calls.names.begin(), calls.names.end(), name) == calls.names.end()) {
            throw std::runtime_error("measured, but not listed: " + name);
        }
        calls.figures[size].Add(name, "ns", result.at("cpu_time"));
    }
    return calls;
}

}  // namespace zek::bench
