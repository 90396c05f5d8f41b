#include "source_reading.h"

#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <cstring>

#include "known_messages.h"
#include "paths.h"

namespace zek::tool {
namespace {

/// The parser library refuses to go deeper, without asking the hook.
constexpr std::size_t kMostOpen = 256;

/// The reason why a path that stands cannot be read as a source; empty when it can.
std::string WhyUnreadable(const std::string& path, struct stat& info) {
    if (stat(path.c_str(), &info) != 0) return std::strerror(errno);
    if (S_ISDIR(info.st_mode)) return std::strerror(EISDIR);
    if (access(path.c_str(), R_OK) != 0) return std::strerror(errno);
    return {};
}

}  // namespace

std::string NameInMessages(const std::string& name) {
    const std::size_t backslash = name.rfind('\\');
    return backslash == std::string::npos ? name : name.substr(backslash + 1);
}

std::string BackslashFolder(const std::string& name) {
    return name.substr(0, name.size() - NameInMessages(name).size());
}

SourceReading::SourceReading(const ParserLibrary& library, IncludeSearch search)
    : library_(library), search_(std::move(search)) {
    if (library_.HasHook()) library_.setOpenHook(Asked, this);
    Listen(this);
}

void SourceReading::Stop() {
    if (library_.HasHook()) library_.setOpenHook(nullptr, nullptr);
    Listen(nullptr);
    open_.clear();
}

bool SourceReading::Asked(void* context, const std::string& name, const std::string& includer, std::string& path) {
    return static_cast<SourceReading*>(context)->Decide(name, includer, path);
}

bool SourceReading::Decide(const std::string& name, const std::string& includer, std::string& path) {
    refusal_.clear();
    while (!open_.empty() && Current().path != includer) open_.pop_back();
    if (open_.empty()) {
        path = MainSource(name);
    } else {
        open_.back().begun = true;
        const IncludeFound found = FindInclude(name);
        if (found.path.empty()) {
            std::string tried;
            for (const std::string& folder : found.folders) tried += (tried.empty() ? "" : ", ") + folder;
            return Refuse("was not found; looked in: " + tried);
        }
        path = found.path;
    }
    struct stat info {};
    const std::string reason = WhyUnreadable(path, info);
    if (!reason.empty()) return Refuse("cannot be read: " + path + ": " + reason);
    const std::size_t position = files_.size();
    const SourceFile file = {name, path, info.st_dev, info.st_ino, open_.empty() ? position : open_.back().position};
    const std::string chain = ChainTo(file);
    if (!chain.empty()) return Refuse("includes itself: " + chain);
    files_.push_back(file);
    open_.push_back({position});
    return true;
}

bool SourceReading::Refuse(const std::string& reason) {
    refusal_ = reason;
    return false;
}

IncludeFound SourceReading::FindInclude(const std::string& name) const {
    const SourceFile& includer = Current();
    // The compiler has put the including file's own backslash folder before the name; what was written stands behind
    // it.
    const std::string folder = BackslashFolder(includer.name);
    if (!folder.empty() && name.starts_with(folder)) {
        IncludeFound found = search_.Find(name.substr(folder.size()), includer.path);
        if (!found.path.empty()) return found;
    }
    return search_.Find(name, includer.path);
}

std::string SourceReading::ChainTo(const SourceFile& file) const {
    const auto first = std::find_if(open_.begin(), open_.end(), [&](const Open& open) {
        return files_[open.position].device == file.device && files_[open.position].inode == file.inode;
    });
    if (first == open_.end()) return {};
    std::string chain;
    for (auto open = first; open != open_.end(); ++open) chain += files_[open->position].path + " -> ";
    return chain + file.path;
}

void SourceReading::Hear(Message& message) noexcept {
    if (open_.empty()) return;
    if (message.Is(kFileNotLoaded)) message.reason = ReasonOfFailure();
    if (open_.empty()) return;
    message.path = Current().path;
    open_.back().begun = true;
    if (message.Is(kNoMoreSections)) open_.pop_back();
}

std::string SourceReading::ReasonOfFailure() {
    if (!refusal_.empty()) return std::exchange(refusal_, {});
    if (open_.size() >= kMostOpen) {
        return "is included too deep: " + std::to_string(kMostOpen) + " files are open inside one another";
    }
    if (open_.back().begun) return {};
    // Let pass, but the reading failed all the same.
    const std::string path = Current().path;
    open_.pop_back();
    files_.pop_back();
    return "cannot be read: " + path;
}

}  // namespace zek::tool
