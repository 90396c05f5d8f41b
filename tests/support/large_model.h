/// Makes the model large, so that it saves memory. Relies on the model.
#pragma once

#include <string>

#include "model/section.h"

namespace zek::test {

/// Adds sections without entries, which no rule looks at, as if they stood in `file`.
inline void MakeModelLarge(const std::string& file) {
    for (std::size_t i = 0; i <= kPlainModel; ++i) CZEKSection::Create(file, "PROPERTY", 1);
}

}  // namespace zek::test
