#include "split.h"

#include "board.h"
#include "text.h"

namespace zek::bench {
namespace {

constexpr unsigned kFilesInSection = 16;

std::string PathOf(std::string_view folder, unsigned file) {
    std::string path(folder);
    path += '/';
    AppendNumber(path, file);
    return path += ".zek";
}

}  // namespace

void WriteIncludes(ZekText& text, std::string_view folder, unsigned files) {
    for (unsigned i = 0; i < files; ++i) {
        if (i % kFilesInSection == 0) text.Header("INCLUDE");
        text.Item("FILE", PathOf(folder, i));
    }
}

std::vector<IncludedFile> SplitBoard(std::string_view folder, unsigned files, unsigned sensors, std::uint64_t seed) {
    std::vector<IncludedFile> parts(files);
    for (unsigned i = 0; i < files; ++i) parts[i].path = PathOf(folder, i);
    const Board board(sensors, seed);
    const std::uint64_t sections = board.Sections() - board.Count(Kind::kGroup);
    std::uint64_t number = 0;
    board.ForEach([&](const Section& section) {
        ZekText(parts[number * files / sections].text, seed + number).Write(section);
        // All groups come into one file, since the parent of a group must stand on an earlier line, whatever the file.
        if (section.kind != Kind::kGroup) ++number;
    });
    return parts;
}

}  // namespace zek::bench
