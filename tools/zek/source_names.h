/// The names that sources give, and those of the language, by what they name; so that a misspelt one finds the one that
/// was meant. Relies on the sections that were read (places.h).
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "finding.h"
#include "places.h"
#include "source_text.h"
#include "suggestion.h"

namespace zek::tool {

/// The item that a message is about.
struct NamedItem {
    std::string keyword;  ///< of its section; may be empty
    std::string key;      ///< may be empty
    Place place = {};
};

/// What puts a name into the place of a sub-string, in quotes where it needs them; nothing where no source can have it.
std::optional<Fix> NameFix(const Place& where, const std::string& name, SourceText& text);

class SourceNames {
public:
    /// `places` must outlive this; `given` are the words that the command line defines.
    SourceNames(Places& places, const std::set<std::string>& given) : places_(places), given_(given) {}

    /// What the finding of a code probably is about, where it is about a name that there is not and another is near;
    /// `written` is that name and `place` where it stands.
    std::optional<Fix> Meant(const std::string& code, const NamedItem& item, const std::string& written,
                             const Place& place, SourceText& text);

private:
    using Names = std::vector<std::string>;

    /// Of a header whose brackets are not the first and the last byte: all of it is its name.
    std::optional<Fix> HeaderMeant(const std::string& written, const Place& place);
    std::optional<std::string> Nearest(const char* kind, const NamedItem& item, const std::string& written);
    /// Names that only the items of one section may have.
    const NearNames& NamesIn(const SourceSection& section, const char* kind);
    void Read();
    void ReadItem(const std::string& keyword, const SourceItem& item, std::map<std::string, Names>& named);

    Places& places_;
    const std::set<std::string>& given_;
    std::map<std::string, NearNames> named_;                                           // by what they name
    std::map<std::pair<const SourceSection*, std::string>, NearNames> namedIn_;        // by section and what they name
    std::map<std::pair<std::string, std::string>, std::optional<std::string>> known_;  // by kind and what was written
    bool read_ = false;
    ComparisonsLeft left_;
};

}  // namespace zek::tool
