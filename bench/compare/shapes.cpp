#include "compare/shapes.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "boards/boards.h"
#include "compare/jobs.h"

namespace zek::bench {
namespace {

/// The most that makes sense of some shapes: values in one action, and files.
constexpr std::pair<std::string_view, unsigned> kMost[] = {{"action", 10'000}, {"includes", 20'000}};

unsigned LargestOf(const std::string& shape, unsigned largest) {
    for (const auto& [name, most] : kMost) {
        if (shape == name) return std::min(largest, most);
    }
    return largest;
}

}  // namespace

FiguresByShape MeasureShapes(const std::string& folder, const std::vector<std::string>& shapes, unsigned largest,
                             unsigned runs) {
    FiguresByShape figures;
    for (const std::string& shape : shapes) {
        const auto job = shape == "errors" ? FaultyCompileJob : CompileJob;
        std::vector<Job> jobs;
        for (const unsigned part : {4U, 2U, 1U}) {
            const unsigned size = LargestOf(shape, largest) / part;
            const BoardFiles files = FilesOf(folder, shape, size);
            WriteBoard(files.source, shape, size);
            jobs.push_back(job(files, runs, figures[shape][size]));
        }
        RunInTurn(jobs);
    }
    return figures;
}

}  // namespace zek::bench
