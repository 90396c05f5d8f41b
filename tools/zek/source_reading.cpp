#include "source_reading.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <cstring>

#include "joined_text.h"
#include "known_messages.h"
#include "paths.h"

namespace zek::tool {
namespace {

/// The parser library refuses to go deeper, without asking the hook.
constexpr std::size_t kMostOpen = 256;
constexpr off_t kLongestFile = 0xFFFFFFFE;

/// The reason why a path that stands cannot be read as a source; empty when it can.
std::string WhyUnreadable(const std::string& path, struct stat& info) {
    if (stat(path.c_str(), &info) != 0) return std::strerror(errno);
    if (S_ISDIR(info.st_mode)) return std::strerror(EISDIR);
    if (access(path.c_str(), R_OK) != 0) return std::strerror(errno);
    return {};
}

/// What a search that found nothing has to say.
Refusal NotFound(const std::string& name, const IncludeFound& found, std::string meant) {
    if (found.folders.empty()) return {NoteText::kAbsent, name, {}, std::move(meant)};
    return {NoteText::kNotFound, name, {Joined(found.folders, ", ")}, std::move(meant)};
}

}  // namespace

std::string NameInMessages(const std::string& name) {
    const std::size_t backslash = name.rfind('\\');
    return backslash == std::string::npos ? name : name.substr(backslash + 1);
}

std::string BackslashFolder(const std::string& name) {
    return name.substr(0, name.size() - NameInMessages(name).size());
}

std::string WhyRefused(const std::string& path) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0) return std::strerror(errno);
    struct stat info {};
    const bool known = fstat(descriptor, &info) == 0;
    close(descriptor);
    return known && info.st_size > kLongestFile ? "it is longer than 4 GiB - 2 bytes" : "the parser library refuses it";
}

SourceReading::SourceReading(const ParserLibrary& library, IncludeSearch search, std::size_t mostFiles)
    : library_(library), search_(std::move(search)), mostFiles_(mostFiles) {
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
    refusal_.reset();
    while (!open_.empty() && Current().opened != includer) open_.pop_back();
    const std::size_t position = files_.size();
    SourceFile file = {.name = name, .path = {}, .includer = open_.empty() ? position : open_.back().position};
    if (!FindPath(file) || !Examine(file)) return false;
    path = file.opened;
    Add(std::move(file));
    open_.push_back({position});
    if (progress_) progress_->AddFile();
    return true;
}

bool SourceReading::FindPath(SourceFile& file) {
    if (open_.empty()) {
        file.path = MainSource(file.name);
        return true;
    }
    open_.back().begun = true;
    if (files_.size() >= mostFiles_) {
        return Refuse({NoteText::kPastMost, file.name, {std::to_string(files_.size())}});
    }
    const IncludeFound found = FindInclude(file.name);
    file.path = found.path;
    return !file.path.empty() || Refuse(NotFound(file.name, found, NearestTo(file.name)));
}

bool SourceReading::Examine(SourceFile& file) {
    struct stat info {};
    std::string reason = WhyUnreadable(file.path, info);
    if (!reason.empty()) return Refuse({NoteText::kUnreadable, file.name, {file.path, reason}});
    file.device = info.st_dev;
    file.inode = info.st_ino;
    const std::string circle = CircleOf(file);
    if (!circle.empty()) return Refuse({NoteText::kCircle, file.name, {circle}});
    file.path = file.opened = spellings_.First({file.device, file.inode}, file.path);
    if (!S_ISREG(info.st_mode)) file.opened = copies_.Take(file.path, !S_ISFIFO(info.st_mode), reason);
    if (open_.empty()) whyMainRefused_ = reason;
    return reason.empty() || Refuse({NoteText::kUnreadable, file.name, {file.path, reason}});
}

bool SourceReading::Refuse(Refusal refusal) {
    refusal_ = std::move(refusal);
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

/// A file of a name near to what was written; empty where there is none.
std::string SourceReading::NearestTo(const std::string& name) {
    const SourceFile& includer = Current();
    const std::string folder = BackslashFolder(includer.name);
    const std::string written = name.starts_with(folder) ? name.substr(folder.size()) : name;
    const std::optional<IncludeSearch::Near> near = search_.Nearest(written, includer.path);
    struct stat info {};
    if (!near || stat(near->path.c_str(), &info) != 0) return {};
    // One that is being read would include itself.
    return CircleOf({near->name, near->path, info.st_dev, info.st_ino}).empty() ? near->name : std::string();
}

std::string SourceReading::CircleOf(const SourceFile& file) const {
    const auto first = std::find_if(open_.begin(), open_.end(), [&](const Open& open) {
        return files_[open.position].device == file.device && files_[open.position].inode == file.inode;
    });
    if (first == open_.end()) return {};
    std::string circle;
    for (auto open = first; open != open_.end(); ++open) circle += files_[open->position].path + " -> ";
    return circle + file.path;
}

void SourceReading::Add(SourceFile file) {
    spellings_.Add({file.device, file.inode}, file.path);
    files_.push_back(std::move(file));
}

void SourceReading::DropLast() {
    const SourceFile& last = files_.back();
    spellings_.Drop({last.device, last.inode}, last.path);
    files_.pop_back();
}

void SourceReading::Hear(Message& message) noexcept {
    if (open_.empty()) return;
    if (message.Is(kFileNotLoaded)) Explain(message);
    if (open_.empty()) return;
    message.path = Lasting(Current().path);
    open_.back().begun = true;
    if (!message.Is(kNoMoreSections)) return;
    if (progress_) progress_->AddSections(message.Number(0));
    open_.pop_back();
}

void SourceReading::Explain(Message& failure) {
    if (refusal_) {
        failure.refusal = std::make_unique<Refusal>(std::move(*refusal_));
        refusal_.reset();
    } else if (open_.size() >= kMostOpen) {
        failure.refusal = std::make_unique<Refusal>(Refusal{NoteText::kTooDeep, {}, {std::to_string(kMostOpen)}});
    } else if (!open_.back().begun) {
        // Let pass, but the reading failed all the same.
        failure.refusal = std::make_unique<Refusal>(
            Refusal{NoteText::kUnreadable, Current().name, {Current().path, WhyRefused(Current().path)}});
        open_.pop_back();
        DropLast();
    }
}

}  // namespace zek::tool
