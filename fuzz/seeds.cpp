#include "seeds.h"

#include <map>
#include <set>
#include <string>
#include <utility>

#include "compilation.h"
#include "files.h"
#include "harness.h"
#include "literals.h"
#include "long_description.h"
#include "source_files.h"
#include "yardstick/source_generator.h"

namespace zek::fuzz {

namespace {

namespace fs = std::filesystem;

constexpr unsigned kGenerated = 60;
/// So many bytes has an image at most that is a seed of image_structure: that harness changes an image by walking all
/// of it, and tries the fewer images, the longer they are.
constexpr std::size_t kLongestToChange = 16 << 10;

/// One file behind the other, as SourceFiles takes them apart.
std::string Joined(const std::string& main, const std::map<std::string, std::string>& included) {
    std::string text = main;
    for (const auto& [name, content] : included) text += kFileMark + name + "\n" + content;
    return text;
}

/// The example board: every file alone, and all together.
void TakeExample(const fs::path& sources, std::set<std::string>& texts) {
    const fs::path board = sources / "examples/server-board";
    std::map<std::string, std::string> included = {
        {"zek/words.zek", ReadFile(sources / "share/zek/include/zek/words.zek")}};
    for (const fs::path& file : FilesBelow(board)) {
        if (file.extension() != ".zek") continue;
        included[fs::relative(file, board).generic_string()] = ReadFile(file);
        texts.insert(ReadFile(file));
    }
    texts.insert(Joined(included.extract("server-board.zek").mapped(), included));
}

void TakePages(const fs::path& sources, std::set<std::string>& texts) {
    for (const fs::path& file : FilesBelow(sources / "docs")) {
        if (file.extension() != ".md") continue;
        for (std::string& text : DescriptionsOf(ReadFile(file))) texts.insert(std::move(text));
    }
}

/// What the tests hold in their code.
void TakeTests(const fs::path& sources, std::set<std::string>& texts) {
    for (const fs::path& file : FilesBelow(sources / "tests")) {
        if (file.extension() != ".cpp" && file.extension() != ".h") continue;
        for (std::string& literal : LiteralsOf(ReadFile(file))) {
            const bool described = literal.find('[') != std::string::npos && literal.find('\n') != std::string::npos;
            if (described) texts.insert(std::move(literal));
        }
    }
}

void TakeGenerated(std::set<std::string>& texts) {
    for (unsigned seed = 0; seed < kGenerated; ++seed) {
        auto files = test::SourceGenerator(seed).Files();
        const std::string main = files.extract(SourceFiles::kMainFile).mapped();
        texts.insert(Joined(main, files));
    }
}

}  // namespace

std::size_t MakeSeeds(const fs::path& sources, const fs::path& out) {
    std::set<std::string> texts;
    TakeExample(sources, texts);
    TakePages(sources, texts);
    TakeTests(sources, texts);
    TakeGenerated(texts);
    texts.insert(LongDescription());
    texts.insert(LongListDescription());
    // Those of an earlier run may have other names.
    for (const Harness& harness : kHarnesses) fs::remove_all(out / harness.name);
    std::size_t count = 0;
    const auto write = [&](const char* harness, const std::string& bytes) {
        WriteFile(out / harness / std::to_string(count++), bytes);
    };
    for (const std::string& text : texts) {
        write("section_file", text);
        write("compile_text", text);
        const Compilation compilation = Compile(text);
        if (!compilation.accepted) continue;
        write("compiled_image", compilation.compiled);
        write("debug_image", compilation.debug);
        for (const std::string& image : {compilation.compiled, compilation.debug}) {
            if (image.size() <= kLongestToChange) write("image_structure", image);
        }
    }
    return count;
}

}  // namespace zek::fuzz
