/// What a build tool has to know of a compilation: which files were read for which outputs. Relies on the syntax that
/// Make and Ninja both read.
#pragma once

#include <string>
#include <vector>

namespace zek::tool {

/// A rule with the outputs as targets and the inputs, the main source first, as what they are made of; then, for each
/// other input, an empty rule, so that Make goes on where an included file has gone away. Throws Failure for a name
/// that cannot be written so that both read it.
std::string DependencyRules(const std::vector<std::string>& outputs, const std::vector<std::string>& inputs);

}  // namespace zek::tool
