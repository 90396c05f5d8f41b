/// Text of any bytes in JSON, which wants UTF-8. Relies on the JSON library.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "printable.h"

namespace zek::tool {

/// The text, or an object with its bytes in hexadecimal digits where it is no UTF-8.
inline nlohmann::ordered_json JsonText(const std::string& text) {
    if (IsUtf8(text)) return text;
    return {{"bytes", Hex(text)}};
}

}  // namespace zek::tool
