/// Words that the command line defines for a source. Relies on predefined.h.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace zek::tool {

/// Makes predefined names of texts NAME=VALUE, in their order; the last one of a name counts. VALUE is a number of the
/// language and nothing behind it, a word defined before, or nothing, which is 0. Throws Failure for anything else.
/// To be called before the source is opened.
void Define(const std::vector<std::string>& definitions);

/// The names that they give.
std::set<std::string> NamesIn(const std::vector<std::string>& definitions);

/// Why a text cannot be the NAME; empty where it can.
std::string WhyNoWord(const std::string& name);

}  // namespace zek::tool
