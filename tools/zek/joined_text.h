/// Texts one behind the other. Relies on the standard library.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace zek::tool {

/// The texts of these things, with `between` between each two; `textOf` gives the text of one.
template <typename Things, typename TextOf = std::identity>
std::string Joined(const Things& things, std::string_view between, TextOf textOf = {}) {
    std::string all;
    std::string_view before;
    for (const auto& thing : things) {
        (all += before) += std::invoke(textOf, thing);
        before = between;
    }
    return all;
}

}  // namespace zek::tool
