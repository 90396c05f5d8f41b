/// Comments of files that several sources of one run include: one is unused where none of these needs it. Relies on
/// finding_review.h for what each source says of them.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "finding_review.h"
#include "renderer.h"

namespace zek::tool {

/// What one source says of the comments, for a process that reads it with `SharedAllows::Add`. The way to a file is
/// that of any of its comments.
std::string WrittenShared(const std::vector<SharedAllow>& all);

class SharedAllows {
public:
    /// `written` is what WrittenShared gave of a source.
    void Add(const std::string& written);
    /// It is not known what a source needs, so that nothing counts as unused.
    void AddUnknown() { known_ = false; }

    /// What no source needs, by file: of each the first `most`, and how many more there are.
    std::vector<SourceFindings> Unused(std::size_t most) const;

private:
    /// A file may be included under several paths.
    using Key = std::tuple<dev_t, ino_t, unsigned, unsigned>;  // line and column

    std::map<Key, SharedAllow> all_;
    std::map<std::string, std::vector<Place>> ways_;  ///< by file: of the first source that told one
    bool known_ = true;
};

}  // namespace zek::tool
