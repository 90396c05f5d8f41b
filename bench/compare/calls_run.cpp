#include "compare/calls_run.h"

#include <algorithm>
#include <fstream>

#include <nlohmann/json.hpp>

#include "board_files.h"

namespace zek::bench {

Calls MeasureCalls(const std::string& folder, const CallsEffort& effort) {
    Command command = {.words = {Program("zek_calls"), folder}, .output = folder + "/calls.json"};
    for (const unsigned size : effort.sizes) command.words.push_back(std::to_string(size));
    command.words.push_back("--benchmark_min_time=" + effort.seconds);
    command.words.push_back("--benchmark_repetitions=" + std::to_string(effort.repetitions));
    command.words.push_back("--benchmark_format=json");
    Must(command);
    std::ifstream in(command.output);
    const nlohmann::json results = nlohmann::json::parse(in);
    Calls calls;
    for (const auto& result : results.at("benchmarks")) {
        if (result.at("run_type") != "iteration") continue;
        const std::string run = result.at("run_name");
        const std::size_t slash = run.rfind('/');
        const std::string name = run.substr(0, slash);
        const auto size = static_cast<unsigned>(std::stoul(run.substr(slash + 1)));
        calls.figures[size].Add(name, "ns", result.at("cpu_time"));
        if (std::find(calls.names.begin(), calls.names.end(), name) == calls.names.end()) calls.names.push_back(name);
    }
    return calls;
}

}  // namespace zek::bench
