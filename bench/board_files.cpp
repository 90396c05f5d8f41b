#include "board_files.h"

#include <filesystem>
#include <stdexcept>

namespace zek::bench {

std::string Program(const std::string& name) {
    return (std::filesystem::read_symlink("/proc/self/exe").parent_path() / name).string();
}

BoardFiles FilesOf(const std::string& folder, const std::string& shape, unsigned size) {
    const std::string stem = folder + '/' + shape + '-' + std::to_string(size);
    return {stem + ".zek", stem + ".zki", stem + ".zkd"};
}

void WriteBoard(const std::string& file, const std::string& shape, unsigned size, const std::string& format) {
    Must({.words = {Program("zek_board"), "--shape", shape, "--sensors", std::to_string(size), "--format", format, "-o",
                    file}});
}

BoardFiles MakeBoard(const std::string& folder, const std::string& shape, unsigned size) {
    const BoardFiles files = FilesOf(folder, shape, size);
    WriteBoard(files.source, shape, size);
    Must({.words = {Program("compile_once"), files.source, "--image", files.image, "--debug", files.debug}});
    return files;
}

Run Must(const Command& command) {
    const Run run = RunOnce(command);
    if (run.exitCode == 0) return run;
    std::string text;
    for (const std::string& word : command.words) text += word + ' ';
    throw std::runtime_error(text + "failed with exit code " + std::to_string(run.exitCode));
}

}  // namespace zek::bench
