/// Follows the compiler while it reads a source: decides which file a name means, and knows which file is being read,
/// every file that was, and why one could not be loaded. Relies on the parser library's hook and on the compiler's
/// messages.
#pragma once

#include <sys/types.h>
#include <optional>
#include <string>
#include <vector>

#include "include_search.h"
#include "messages.h"
#include "parser_library.h"
#include "progress.h"
#include "source_copies.h"
#include "spellings.h"

namespace zek::tool {

/// A file that the compiler read.
struct SourceFile {
    std::string name;  ///< as the compiler asked for it, and as it calls it
    std::string path;  ///< as it was opened first
    dev_t device = 0;
    ino_t inode = 0;
    std::size_t includer = 0;  ///< the position of the including file; its own for the main source
    std::string opened = {};   ///< what the parser library got: the path, or the name of a copy
};

/// What the compiler calls a file in its messages: the part behind the last backslash of the name.
std::string NameInMessages(const std::string& name);

/// The part up to that backslash, which the compiler puts before the names that the file includes.
std::string BackslashFolder(const std::string& name);

/// Why our parser library refuses a regular file that may be read: the reason of the system, or its own limits.
std::string WhyRefused(const std::string& path);

/// So many files are read for one source where nobody says otherwise.
inline constexpr std::size_t kMostFilesOfASource = 10000;

class SourceReading : public MessageListener {
public:
    /// Takes the library's hook, where it has one, and the messages, until it is destroyed or Stop is called. At most
    /// `mostFiles` files are read, the main source and each opening of an included one counted.
    SourceReading(const ParserLibrary& library, IncludeSearch search, std::size_t mostFiles);
    ~SourceReading() override { Stop(); }
    SourceReading(const SourceReading&) = delete;
    SourceReading& operator=(const SourceReading&) = delete;

    void Stop();

    /// Counts files, and sections when a file has been read to its end; `progress` must outlive this or its Stop.
    void ShowIn(Progress& progress) { progress_ = &progress; }

    /// Every opening of a file, in order; the main source first. Empty when the parser library has no hook.
    const std::vector<SourceFile>& Files() const { return files_; }

    /// The pipes and devices among them; lives as long as this.
    const SourceCopies& Copies() const { return copies_; }
    /// Why the main source was not read; empty where that is not known from here.
    const std::string& WhyMainRefused() const { return whyMainRefused_; }

    /// Fills `path`, and `refusal` where an include could not be loaded.
    void Hear(Message& message) noexcept override;

private:
    struct Open {
        std::size_t position;  ///< in files_
        bool begun = false;    ///< something of it was read, so it was not refused after the hook had let it pass
    };

    static bool Asked(void* context, const std::string& name, const std::string& includer, std::string& path);
    bool Decide(const std::string& name, const std::string& includer, std::string& path);
    /// Fills in the path that the name means; false where there is none.
    bool FindPath(SourceFile& file);
    /// Fills in what there is, and what the parser library gets; false where it must not be read.
    bool Examine(SourceFile& file);
    bool Refuse(Refusal refusal);
    IncludeFound FindInclude(const std::string& name) const;
    std::string NearestTo(const std::string& name);
    std::string CircleOf(const SourceFile& file) const;
    void Explain(Message& failure);
    /// Enters a file that is opened, and takes the last one out again.
    void Add(SourceFile file);
    void DropLast();
    const SourceFile& Current() const { return files_[open_.back().position]; }

    ParserLibrary library_;
    IncludeSearch search_;
    std::vector<SourceFile> files_;
    Spellings spellings_;
    SourceCopies copies_;
    std::string whyMainRefused_;
    std::vector<Open> open_;  // the file being read last, behind those that include it
    std::size_t mostFiles_;
    Progress* progress_ = nullptr;
    std::optional<Refusal> refusal_;  // of the name that the hook was asked for last
};

}  // namespace zek::tool
