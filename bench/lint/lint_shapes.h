/// Sources in which zek finds one thing many times, of any size: for each rule of lint, and for what else has to be
/// told once for each of many. Relies on nothing.
#pragma once

#include <span>
#include <string>

namespace zek::bench {

/// A source: a beginning, so many times the same but for numbers, and an end.
struct LintShape {
    /// How much is found.
    enum class Found { kEach, kAllButOne, kOne };

    const char* code;  ///< of what is found
    const char* each;  ///< what there is many of, in words
    const char* before;
    const char* unit;  ///< with # for its number, from 0
    const char* after = "";
    Found found = Found::kEach;
    const char* file =
        "";  ///< the name of a file that a unit includes, with # for its number; empty where there is none
    const char* text = "";  ///< what stands there, with # too
    unsigned share = 1;     ///< of so many units that are asked for, one is made
};

/// Every rule has at least one, by rising code.
std::span<const LintShape> LintShapes();

/// How many units there are for a size.
unsigned UnitsIn(const LintShape& shape, unsigned size);

/// The source; @ outside of the units stands for their number.
std::string LintSource(const LintShape& shape, unsigned size);

/// Writes it, and the files that it includes, to a folder that stands; gives its path. Throws std::runtime_error where
/// that fails.
std::string WriteLintSource(const std::string& folder, const LintShape& shape, unsigned size);

/// How often the code is found there.
unsigned FindingsIn(const LintShape& shape, unsigned size);

}  // namespace zek::bench
