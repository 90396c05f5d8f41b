/// Formats whose places are filled with texts. Relies on the standard library.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zek::tool {

/// The format with these in the places of its %s and %u, as far as they go.
inline std::string FilledFormat(std::string_view format, const std::vector<std::string>& texts) {
    std::string filled;
    for (const std::string& text : texts) {
        const std::size_t at = format.find('%');
        if (at == format.npos) break;
        filled.append(format.substr(0, at)).append(text);
        format.remove_prefix(at + 2);
    }
    return filled.append(format);
}

}  // namespace zek::tool
