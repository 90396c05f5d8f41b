/// Sources in which one rule of lint has much to find, of any size. Relies on nothing.
#pragma once

#include <span>
#include <string>

namespace zek::bench {

/// A source: a beginning, so many times the same but for numbers, and an end.
struct LintShape {
    /// How much the rule finds.
    enum class Found { kEach, kAllButOne, kOne };

    const char* code;  ///< of the rule
    const char* each;  ///< what there is many of, in words
    const char* before;
    const char* unit;  ///< with # for its number, from 0
    const char* after = "";
    Found found = Found::kEach;
};

/// Every rule has at least one, by rising code.
std::span<const LintShape> LintShapes();

/// The source with so many units; @ outside of the units stands for that number.
std::string LintSource(const LintShape& shape, unsigned size);

/// What the rule finds there.
unsigned FindingsIn(const LintShape& shape, unsigned size);

}  // namespace zek::bench
