/// The names that sources give, and those of the language, by what they name; so that a misspelt one finds the one that
/// was meant. Relies on the sections that were read (places.h).
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>

#include "finding.h"
#include "places.h"
#include "source_text.h"

namespace zek::tool {

/// The section that a message is about.
struct NamedSection {
    std::string keyword;  ///< may be empty
    Place place = {};     ///< of an item in it
};

class SourceNames {
public:
    /// `places` must outlive this.
    explicit SourceNames(Places& places) : places_(places) {}

    /// What the finding of a code probably is about, where it is about a name that there is not and another is near;
    /// `written` is that name and `place` where it stands.
    std::optional<Fix> Meant(const std::string& code, const NamedSection& section, const std::string& written,
                             const Place& place, SourceText& text);

private:
    const std::set<std::string>& Named(const std::string& kind);
    void Read();

    Places& places_;
    std::map<std::string, std::set<std::string>> named_;  // by what they name
    bool read_ = false;
    unsigned asked_ = 0;
};

}  // namespace zek::tool
