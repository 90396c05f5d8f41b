// Writes the manual pages and the completions into a folder: zek_pages DIR.
#include <filesystem>
#include <fstream>
#include <iostream>

#include "completions.h"
#include "man_page.h"

namespace {

using namespace zek::tool;

void Write(const std::filesystem::path& file, const std::string& text) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary);
    out << text;
    out.close();
    if (!out) throw std::runtime_error("cannot write " + file.string());
}

void WriteAllPages(const std::filesystem::path& folder) {
    Write(folder / "man1/zek.1", ManPage());
    for (const CommandSpec& command : Commands()) {
        Write(folder / "man1" / (std::string("zek-") + command.name + ".1"), ManPage(command));
    }
    Write(folder / "bash/zek", BashCompletion());
    Write(folder / "zsh/_zek", ZshCompletion());
    Write(folder / "fish/zek.fish", FishCompletion());
}

}  // namespace

int main(int argc, char** argv) {
    try {
        if (argc != 2) throw std::runtime_error("usage: zek_pages DIR");
        WriteAllPages(argv[1]);
    } catch (const std::exception& error) {
        std::cerr << "zek_pages: " << error.what() << '\n';
        return 1;
    }
}
