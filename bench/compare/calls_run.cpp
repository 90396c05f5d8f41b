#include "compare/calls_run.h"

#include <fstream>

#include <nlohmann/json.hpp>

#include "board_files.h"

namespace zek::bench {

FiguresBySize MeasureCalls(const std::string& folder, const CallsEffort& effort) {
    const std::string results = folder + "/calls.json";
    Command command = {{Program("zek_calls"), folder}};
    for (const unsigned size : effort.sizes) command.words.push_back(std::to_string(size));
    command.words.insert(command.words.end(), {"--benchmark_min_time=" + effort.seconds, "--benchmark_out_format=json",
                                               "--benchmark_repetitions=" + std::to_string(effort.repetitions),
                                               "--benchmark_out=" + results});
    Must(command);
    std::ifstream in(results);
    FiguresBySize figures;
    for (const auto& benchmark : nlohmann::json::parse(in).at("benchmarks")) {
        if (benchmark.at("run_type") != "iteration") continue;
        const std::string name = benchmark.at("run_name");
        const std::size_t slash = name.rfind('/');
        const auto size = static_cast<unsigned>(std::stoul(name.substr(slash + 1)));
        figures[size].Add(name.substr(0, slash), "ns", benchmark.at("cpu_time"));
    }
    return figures;
}

}  // namespace zek::bench
