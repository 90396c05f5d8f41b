#include "source_files.h"

#include "zekrsparser.h"

namespace zek::fuzz {

SourceFiles::SourceFiles(std::string_view text) {
    std::string name = kMainFile;
    for (MemoryFile& file : files_) {
        const std::size_t end = text.find(kFileMark);
        file.Write(text.substr(0, end));
        byName_.emplace(name, &file);
        if (end == std::string_view::npos) break;
        text.remove_prefix(end + 1);
        const std::size_t line = text.find('\n');
        name = text.substr(0, line);
        text.remove_prefix(line == std::string_view::npos ? text.size() : line + 1);
    }
    RSSetOpenHook(Open, this);
}

SourceFiles::~SourceFiles() { RSSetOpenHook(nullptr, nullptr); }

bool SourceFiles::Open(void* context, const std::string& name, const std::string&, std::string& path) {
    SourceFiles& files = *static_cast<SourceFiles*>(context);
    const auto file = files.byName_.find(name);
    if (file == files.byName_.end() || ++files.opens_ > kMostOpens) return false;
    path = file->second->Path();
    files.openedBytes_ += file->second->Size();
    return true;
}

}  // namespace zek::fuzz
