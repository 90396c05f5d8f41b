/// The fixture of the yardstick: many generated sources one after the other in one process. Relies on
/// source_generator.h.
#pragma once

#include <iostream>

#include "support/process_test.h"
#include "yardstick/source_generator.h"

namespace zek::test {

/// The files of a generated source by the paths to write them at; those that it includes without having them are empty.
inline std::map<std::string, std::string> FilesToWrite(unsigned seed) {
    std::map<std::string, std::string> files = {{"main.zek", ""}, {"a.zek", ""}, {"b.zek", ""}, {"dir/c.zek", ""}};
    for (auto& [name, text] : SourceGenerator(seed).Files()) files[name == "dir\\c.zek" ? "dir/c.zek" : name] = text;
    return files;
}

/// The number of a shard; each takes the seeds from number * kSeedsInShard on.
class GeneratedSource : public ProcessTest, public testing::WithParamInterface<unsigned> {
protected:
    static constexpr unsigned kSeedsInShard = 250;

    /// Writes the source of each seed of the shard and hands the seed to `compare`, up to the first that fails.
    template <class Compare>
    void ForEachSeed(Compare&& compare) {
        std::filesystem::create_directory("dir");
        for (unsigned seed = GetParam() * kSeedsInShard; seed < (GetParam() + 1) * kSeedsInShard; ++seed) {
            SCOPED_TRACE("seed " + std::to_string(seed));
            const auto files = FilesToWrite(seed);
            for (const auto& [name, text] : files) Write(name, text);
            compare(seed);
            if (!HasFailure()) continue;
            for (const auto& [name, text] : files) std::cout << "--- " << name << " of seed " << seed << "\n" << text;
            return;
        }
    }

    /// Reads the written source; true when it could be opened.
    static bool Parse() {
        if (!gccCompStart("main.zek")) return false;
        gccParse();
        return true;
    }
};

}  // namespace zek::test
