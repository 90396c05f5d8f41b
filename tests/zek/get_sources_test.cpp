// What `get` reads in the two images of many sources: the same, however it was written.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "boards/boards.h"
#include "boards/source_files.h"
#include "joined_text.h"
#include "source_pairing.h"
#include "values_at.h"
#include "yardstick/source_generator.h"
#include "zek/command.h"

namespace zek::test {

namespace {

using tool::Image;
using tool::ShownSection;

std::string Texts(const std::vector<tool::ShownValue>& values) {
    return tool::Joined(values, ",", &tool::ShownValue::text);
}

std::string At(const Image& image, const std::string& path) {
    const tool::FoundValues found = tool::ValuesAt(image, tool::ParsePath(path));
    return found ? Texts(*found) : "nothing";
}

/// Compares first.zki and first.zkd: entry by entry, and by the paths to these. Gives how many values were compared.
class Pair {
public:
    unsigned Compare() {
        compiled_.ForEachSection([&](const ShownSection& section) {
            const tool::DebugSection* const source = pairing_.SectionOf(section);
            ASSERT_NE(source, nullptr) << section.keyword;
            CompareEntries(section, *source);
            ComparePaths(section);
        });
        return count_;
    }

private:
    void CompareEntries(const ShownSection& section, const tool::DebugSection& source) {
        const auto sources = tool::SourcePairing::EntriesOf(section, source);
        for (std::size_t i = 0; i < sources.size(); ++i) {
            const tool::ShownEntry& entry = section.entries[i];
            ASSERT_NE(sources[i], nullptr) << entry.key;
            const tool::ShownEntry written = {entry.key, 0, {}, {}, sources[i]};
            EXPECT_EQ(Texts(values_.Resolved(entry)), Texts(debugValues_.Resolved(written)))
                << '[' << section.keyword << "] " << entry.key << " at " << debug_.Source().Told(sources[i]->spot);
            ++count_;
        }
    }

    void ComparePaths(const ShownSection& section) {
        const std::string name = section.name.value_or(std::string());
        for (const tool::ShownEntry& entry : section.entries)
            ComparePath(tool::PathTo(section.keyword, name, entry.key));
        if (section.id) ComparePath(std::string(section.keyword) + "/#" + std::to_string(*section.id) + "/NAME");
        for (unsigned byte = 0; std::string_view(section.keyword) == "TABLE" && byte < 256; ++byte) {
            ComparePath(tool::PathTo("TABLE", name, std::to_string(byte)));
        }
    }

    void ComparePath(const std::string& path) {
        const std::string value = At(compiled_, path);
        EXPECT_NE(value, "nothing") << path;
        EXPECT_EQ(value, At(debug_, path)) << path;
        ++count_;
    }

    const Image compiled_{"first.zki"};
    const Image debug_{"first.zkd"};
    const tool::SourcePairing pairing_{debug_.Source()};
    const tool::Values values_{compiled_};
    const tool::Values debugValues_{debug_};
    unsigned count_ = 0;
};

/// Stands in a folder of its own, which is removed at the end.
class GetOfSources : public testing::Test {
protected:
    void SetUp() override {
        std::string folder = testing::TempDir() + "get_sources.XXXXXX";
        ASSERT_NE(mkdtemp(folder.data()), nullptr);
        std::filesystem::current_path(folder);
        std::filesystem::create_directory("dir");
    }
    void TearDown() override {
        const std::filesystem::path folder = std::filesystem::current_path();
        std::filesystem::current_path("/");
        std::filesystem::remove_all(folder);
    }

    /// Compiles main.zek into first.zki and first.zkd; false where it is not valid.
    static bool Compile() {
        return std::system(ZEK_PROGRAM " compile main.zek -o first.zki -g first.zkd >messages 2>&1") == 0;
    }

    static void Write(const std::string& name, const std::string& text) {
        std::ofstream(name, std::ios::binary) << text;
    }

    static void WriteSource(unsigned seed) {
        // Those that are included without being there.
        for (const char* name : {"main.zek", "a.zek", "b.zek", "dir/c.zek"}) Write(name, "");
        for (const auto& [name, text] : SourceGenerator(seed).Files()) {
            Write(name == "dir\\c.zek" ? "dir/c.zek" : name, text);
        }
    }
};

class GetOfGeneratedSources : public GetOfSources, public testing::WithParamInterface<unsigned> {};

TEST_P(GetOfGeneratedSources, ReadsTheSameInBothImages) {
    constexpr unsigned kSeeds = 250;
    unsigned valid = 0;
    unsigned values = 0;
    for (unsigned seed = GetParam() * kSeeds; seed < (GetParam() + 1) * kSeeds && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        WriteSource(seed);
        if (!Compile()) continue;
        ++valid;
        values += Pair().Compare();
    }
    std::cout << valid << " sources, " << values << " values\n";
    EXPECT_GE(valid, 20U);
    EXPECT_GE(values, 100 * valid);
}

INSTANTIATE_TEST_SUITE_P(Shard, GetOfGeneratedSources, testing::Range(0U, ShardsOfPrograms(4)));

TEST_F(GetOfSources, ReadsTheSameOfBoards) {
    for (const std::string_view shape : bench::ShapeNames()) {
        if (shape == "errors") continue;
        SCOPED_TRACE(shape);
        Write("main.zek", bench::ZekSource(shape, 40));
        bench::WriteIncluded(".", shape, 40);
        ASSERT_TRUE(Compile());
        EXPECT_GT(Pair().Compare(), 0U);
    }
}

}  // namespace

}  // namespace zek::test
