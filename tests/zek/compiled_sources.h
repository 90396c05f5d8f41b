/// Sources that the command compiles, for what takes images of every shape. Relies on command.h, boards.h and
/// generated_source.h.
#pragma once

#include <cctype>
#include <string>
#include <vector>

#include "boards/boards.h"
#include "boards/source_files.h"
#include "yardstick/generated_source.h"
#include "zek/command.h"

namespace zek::test {

class CompiledSources : public ZekTest {
protected:
    static constexpr unsigned kSeedsInShard = 250;

    /// Compiles a source in a folder, as one who stands in it, into STEM.zki and STEM.zkd; false where it is not valid.
    static bool Compile(const std::string& folder, const std::string& source, const std::string& stem) {
        const auto before = std::filesystem::current_path();
        std::filesystem::current_path(folder);
        const Result result = Zek({"compile", source, "-o", before / (stem + ".zki"), "-g", before / (stem + ".zkd")});
        std::filesystem::current_path(before);
        return result.code == 0;
    }

    /// The main source, relative to the folder that is made of an image.
    static std::string Decompiled(const std::string& image, const std::string& folder) {
        const Result result = Zek({"decompile", image, "-o", folder});
        EXPECT_EQ(result.code, 0);
        EXPECT_EQ(result.err, "");
        EXPECT_TRUE(result.out.starts_with(folder + '/')) << result.out;
        EXPECT_TRUE(result.out.ends_with('\n')) << result.out;
        if (result.code != 0) return {};
        return result.out.substr(folder.size() + 1, result.out.size() - folder.size() - 2);
    }

    /// Writes the generated source of each seed of the shard to the folder `source` and, where it compiles, calls
    /// `use`, up to the first that fails. Gives how many compiled into first.zki and first.zkd.
    template <class Use>
    static unsigned ForEachValid(unsigned shard, const Use& use) {
        unsigned valid = 0;
        for (unsigned seed = shard * kSeedsInShard; seed < (shard + 1) * kSeedsInShard && !HasFailure(); ++seed) {
            SCOPED_TRACE("seed " + std::to_string(seed));
            std::filesystem::remove_all("source");
            std::filesystem::create_directories("source/dir");
            for (const auto& [name, text] : FilesToWrite(seed)) Write("source/" + name, text);
            if (!Compile("source", "main.zek", "first")) continue;
            ++valid;
            use();
        }
        return valid;
    }

    /// Compiles a board of that shape into first.zki and first.zkd.
    static bool CompileShape(const std::string& shape) {
        std::filesystem::create_directory("source");
        Write("source/main.zek", bench::ZekSource(shape, 40));
        bench::WriteIncluded("source", shape, 40);
        return Compile("source", "main.zek", "first");
    }
};

/// A shard of the generated sources.
class GeneratedSources : public CompiledSources, public testing::WithParamInterface<unsigned> {};

/// A shape of board.
class BoardShapes : public CompiledSources, public testing::WithParamInterface<std::string> {};

inline std::vector<std::string> SoundShapes() {
    std::vector<std::string> shapes;
    for (const std::string_view name : bench::ShapeNames()) {
        if (name != "errors") shapes.emplace_back(name);
    }
    return shapes;
}

inline std::string ShapeName(const testing::TestParamInfo<std::string>& row) {
    std::string name;
    for (const char c : row.param) name += std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
    return name;
}

}  // namespace zek::test
