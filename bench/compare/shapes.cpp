#include "compare/shapes.h"

#include <algorithm>

#include "boards/boards.h"
#include "compare/jobs.h"

namespace zek::bench {
namespace {

/// The most VALUE_ entries that make sense in one action.
constexpr unsigned kMostValues = 10'000;

unsigned LargestOf(const std::string& shape, unsigned largest) {
    return shape == "action" ? std::min(largest, kMostValues) : largest;
}

}  // namespace

FiguresByShape MeasureShapes(const std::string& folder, unsigned largest, unsigned runs) {
    FiguresByShape figures;
    for (const std::string_view name : ShapeNames()) {
        const std::string shape(name);
        if (shape == "board") continue;
        std::vector<Job> jobs;
        for (const unsigned part : {4U, 2U, 1U}) {
            const unsigned size = LargestOf(shape, largest) / part;
            const BoardFiles files = FilesOf(folder, shape, size);
            WriteBoard(files.source, shape, size);
            jobs.push_back(CompileJob(files, runs, figures[shape][size]));
            jobs.back().mayFail = shape == "errors";
        }
        RunInTurn(jobs);
    }
    return figures;
}

}  // namespace zek::bench
