#include "files.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include "harness.h"

namespace zek::fuzz {

namespace fs = std::filesystem;

std::string ReadFile(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream bytes;
    if (in.peek() != std::ifstream::traits_type::eof()) bytes << in.rdbuf();
    if (!in || in.bad()) Break(("a file can be read: " + file.string()).c_str());
    return bytes.str();
}

void WriteFile(const fs::path& file, std::string_view bytes) {
    fs::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (!out) Break(("a file can be written: " + file.string()).c_str());
}

std::vector<fs::path> FilesBelow(const fs::path& folder) {
    std::vector<fs::path> files;
    if (!fs::exists(folder)) return files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

}  // namespace zek::fuzz
