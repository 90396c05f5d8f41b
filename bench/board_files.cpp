#include "board_files.h"

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace zek::bench {

std::string Program(const std::string& name) {
    return (std::filesystem::read_symlink("/proc/self/exe").parent_path() / name).string();
}

BoardFiles FilesOf(const std::string& folder, const std::string& shape, unsigned size) {
    const std::string stem = folder + '/' + shape + '-' + std::to_string(size);
    // zek_board puts included files into a folder of this name.
    return {stem + ".zek", stem + ".zki", stem + ".zkd", stem};
}

void WriteBoard(const std::string& file, const std::string& shape, unsigned size, const std::string& format) {
    Must({.words = {Program("zek_board"), "--shape", shape, "--sensors", std::to_string(size), "--format", format, "-o",
                    file}},
         {file});
}

BoardFiles MakeBoard(const std::string& folder, const std::string& shape, unsigned size) {
    const BoardFiles files = FilesOf(folder, shape, size);
    WriteBoard(files.source, shape, size);
    Must({.words = {Program("compile_once"), files.source, "--image", files.image, "--debug", files.debug}},
         {files.image, files.debug});
    return files;
}

double BytesOfSource(const BoardFiles& files) {
    std::uintmax_t bytes = std::filesystem::file_size(files.source);
    if (std::filesystem::is_directory(files.included)) {
        for (const auto& file : std::filesystem::directory_iterator(files.included)) bytes += file.file_size();
    }
    return static_cast<double>(bytes);
}

Run Must(const Command& command, const std::vector<std::string>& writes, int exitCode) {
    const Run run = RunOnce(command);
    if (run.exitCode != exitCode) {
        throw std::runtime_error("exit code " + std::to_string(run.exitCode) + " instead of " +
                                 std::to_string(exitCode) + " of: " + Words(command));
    }
    for (const std::string& file : writes) {
        std::error_code missing;
        const std::uintmax_t size = std::filesystem::file_size(file, missing);
        if (missing || size == 0) throw std::runtime_error("no " + file + " from: " + Words(command));
    }
    return run;
}

std::string Words(const Command& command) {
    std::string text;
    for (const std::string& word : command.words) text.append(text.empty() ? "" : " ").append(word);
    return text;
}

}  // namespace zek::bench
