/// What the verification says of a debug image. Relies on debug_check.h.
#pragma once

#include <string>

#include "debug_check.h"

namespace zek::tool {

/// The sentence of the failure with its place, code and offset; what was counted where there is none.
inline std::string Told(const std::string& image) {
    const DebugCheck check = CheckDebugImage(image);
    if (check.failure) {
        const DebugFinding& failure = *check.failure;
        return failure.Place() + ": " + failure.Sentence() + " (" + NameOf(failure.code) + " at " +
               std::to_string(failure.offset) + ')';
    }
    return std::to_string(check.sections) + ' ' + std::to_string(check.entries) + ' ' + std::to_string(check.notes);
}

inline std::string Replaced(std::string image, std::size_t at, const std::string& bytes) {
    return image.replace(at, bytes.size(), bytes);
}

}  // namespace zek::tool
