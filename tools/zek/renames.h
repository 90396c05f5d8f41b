/// Which sections of one image are those of another under new names. Relies on described_image.h.
#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "described_image.h"

namespace zek::tool {

/// A name, and the place among the sections of a kind that have it.
using Identity = std::pair<std::string, std::size_t>;

/// The sections of an image by kind and name. The image must outlive this.
class NamedSections {
public:
    explicit NamedSections(const DescribedImage& image);

    /// The kinds that there are, in the order of the image.
    const std::vector<std::string>& Keywords() const { return keywords_; }
    /// Those of a kind, in the order of the image.
    const std::vector<Identity>& Of(const std::string& keyword) const;
    /// Null for none.
    const DescribedSection* Find(const std::string& keyword, const Identity& identity) const;

private:
    struct Kind {
        std::map<std::string, std::size_t> counts = {};
        std::map<Identity, const DescribedSection*> sections = {};
        std::vector<Identity> order = {};
    };

    std::vector<std::string> keywords_;
    std::map<std::string, Kind> kinds_;
};

/// A section that is gone and one that is new are the same where all but the NAME is, and where the names that they
/// refer to are the same or lead to such sections, too.
class Renames {
public:
    Renames(const NamedSections& before, const NamedSections& after);

    /// What a section is called now; null for one that was not renamed.
    const Identity* NewOf(const std::string& keyword, const Identity& identity) const;
    /// Whether another section was renamed to this one.
    bool IsNew(const std::string& keyword, const Identity& identity) const {
        return taken_.contains({keyword, identity});
    }
    /// A value of the image before, with the names as they are now.
    std::string Applied(const DescribedValue& value) const;

private:
    using Place = std::pair<std::string, Identity>;    // the keyword first
    using Name = std::pair<std::string, std::string>;  // the same
    using Names = std::set<Name>;
    using Pair = std::pair<Place, Identity>;  // one that is gone, and one that is new

    std::vector<Place> Open(const NamedSections& image, const NamedSections& other) const;
    static Names NamesOf(const std::vector<Place>& places);
    std::string NameNow(const std::string& keyword, const std::string& name) const;
    std::string ContentBefore(const Place& place, const Names& unknown) const;
    std::string ContentAfter(const Place& place, const Names& unknown) const;
    /// Of the same content but for names that are unknown in each image.
    std::vector<Pair> Pairs(const Names& unknownBefore, const Names& unknownAfter) const;
    void Take(const Pair& pair);
    bool FindNext();
    void FindTogether();

    const NamedSections& before_;
    const NamedSections& after_;
    std::map<Place, Identity> renamed_;
    std::set<Place> taken_;
    std::map<Name, std::string> names_;  // by the name before
};

}  // namespace zek::tool
