/// The comments of sources that allow findings. Relies on source_text.h.
#pragma once

#include <map>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "finding.h"
#include "source_text.h"

namespace zek::tool {

/// One code of such a comment.
struct Allowed {
    std::string code;  ///< empty for a comment that has none
    Place place;       ///< of the code, or of the words that it should follow
    bool used = false;
};

class AllowComments {
public:
    /// Reads the comments of these files; one that is there several times is read once.
    AllowComments(const std::vector<std::string>& paths, SourceText& text);

    /// Whether a comment allows this finding, and marks it as used then. A finding about a part of joined lines is
    /// about the first of them, too.
    bool Allow(const Finding& finding);
    /// Whether any comment allows the code.
    bool Name(const std::string& code) const { return codes_.contains(code); }

    /// By file, then as they stand there.
    const std::vector<Allowed>& All() const { return all_; }

private:
    void Read(const std::string& path);
    void Add(const std::string& path, const Comment& comment);
    bool AllowAt(const Place& place, const std::string& code);
    bool AllowOn(const std::string& path, unsigned line, const std::string& code);

    SourceText& text_;
    std::vector<Allowed> all_;
    std::map<std::tuple<std::string, unsigned, std::string>, std::vector<std::size_t>>
        byLine_;  // in all_, by the line they are about and the code
    std::set<std::string> codes_;
    std::string abovePath_;   // of the comment that was read last
    unsigned aboveLine_ = 0;  // the line that it stands above; 0 when that is not known
};

}  // namespace zek::tool
