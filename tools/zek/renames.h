/// Which sections of one image are those of another under new names. Relies on described_image.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
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
/// refer to are the same or lead to such sections, too. It takes as long as there are names referred to, however they
/// depend on each other.
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
    using Name = std::pair<std::string, std::string>;  // the keyword first
    using Place = std::pair<std::string, Identity>;    // the same
    using Naming = std::function<std::string(const Name&)>;

    /// A section that the other image lacks.
    struct Open {
        Place place;
        const DescribedSection* section;
        std::vector<Name> references = {};  ///< to other sections
        std::uint64_t shape = 0;            ///< a sum over all but the names
        std::uint64_t content = 0;          ///< the same with the names as far as they are known

        Name Named() const { return {place.first, place.second.first}; }
        std::uint64_t SumOf(const Naming& naming) const;
    };
    /// One of the references of a section that is gone.
    struct User {
        std::size_t gone;
        std::size_t at;
    };
    struct Pair {
        std::size_t gone;
        std::size_t fresh;
    };
    using Pairs = std::vector<Pair>;
    using Waiting = std::map<std::uint64_t, std::deque<std::size_t>>;  // new sections by a sum, in their order

    static std::vector<Open> OpenOf(const NamedSections& image, const NamedSections& other);
    std::string NameNow(const Name& name) const;
    bool IsOpen(std::size_t gone) const { return !renamed_.contains(gone_[gone].place); }

    /// The new section that is the same, taken from those that wait; nothing where none is.
    std::optional<Pair> Match(std::size_t gone, std::uint64_t sum, Waiting& waiting, const Naming& before,
                              const Naming& after) const;
    void FindInTurn();
    /// Stores which sections have changed by that.
    void Take(const Pair& pair, std::set<std::size_t>& changed);
    void FindTogether();
    Pairs PairsButForNames() const;
    Pairs Consistent(const Pairs& pairs) const;

    std::vector<Open> gone_;
    std::vector<Open> fresh_;
    std::map<Name, std::vector<User>> users_;
    std::map<Place, Identity> renamed_;
    std::set<Place> taken_;
    std::map<Name, std::string> names_;  // by the name before
};

}  // namespace zek::tool
