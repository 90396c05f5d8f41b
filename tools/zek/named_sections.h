/// The sections of an image by kind and name, and those of them that another image lacks. Relies on described_image.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "described_image.h"

namespace zek::tool {

/// A name, and the place among the sections of a kind that have it.
using Identity = std::pair<std::string, std::size_t>;
using NameOfKind = std::pair<std::string, std::string>;  ///< the keyword first
using PlaceOfKind = std::pair<std::string, Identity>;    ///< the same

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

/// A section that the other image lacks.
struct OpenSection {
    using Naming = std::function<std::string(const NameOfKind&)>;

    PlaceOfKind place;
    const DescribedSection* section;
    std::vector<NameOfKind> references = {};  ///< to other sections
    std::uint64_t shape = 0;                  ///< a sum over all but the names
    std::uint64_t content = 0;                ///< the same with the names as far as they are known

    /// A name leads to the first section that has it.
    bool IsNamed() const { return place.second.second == 0; }
    NameOfKind Named() const { return {place.first, place.second.first}; }
    std::uint64_t SumOf(const Naming& naming) const;
};

/// Those with a name.
std::vector<OpenSection> OpenSections(const NamedSections& image, const NamedSections& other);

/// Whether all but the names is the same.
bool HaveOneShape(const DescribedSection& a, const DescribedSection& b);

/// What a name adds to the sum over a section.
std::uint64_t SumTerm(std::size_t at, const std::string& name);

/// The text of a value with something else instead of each name in it.
std::string WithNames(const DescribedValue& value,
                      const std::function<std::string(const std::string& keyword, const std::string& name)>& saying);

}  // namespace zek::tool
