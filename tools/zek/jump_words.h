/// Jumps of a compiled image that go to a number: their source named a value of the section by a word that [DEFINE]
/// gave a number, and words come before names. Relies on image_view.h.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "zekcomp/image_view.h"

namespace zek::tool {

class JumpWords {
public:
    explicit JumpWords(const ImageView& view);

    /// The name of a value, such as "VALUE_1", to be defined as the number that a section jumps to, both by their place
    /// in the image and their word; nothing where no name can be.
    std::optional<std::string> WordFor(std::uint32_t section, std::uint32_t number) const;

private:
    using Jump = std::pair<std::uint32_t, std::uint32_t>;  // the section, the word of the number
    struct Choice {
        Jump jump;
        std::vector<std::uint32_t> values;  // those that the jump may name
    };

    static std::set<std::uint32_t> NamedValues(const ImageView& view);
    static std::vector<Choice> Choices(const ImageView& view);
    void Choose(const Choice& choice);

    const ImageView& view_;
    std::map<std::uint32_t, std::uint32_t> numbers_;  // of the values that are taken
    std::map<Jump, std::uint32_t> chosen_;
};

}  // namespace zek::tool
