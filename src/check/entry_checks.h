/// What the first pass of every kind of entry has in common. Relies on the model.
#pragma once

#include <optional>
#include <string>

#include "model/entry.h"

namespace zek {

/// The steps that every kind begins with: the entry was given, its name is well-formed, it is of the kind's class. The
/// result when that decides the check, nothing when it goes on.
std::optional<unsigned> DecidedAtOnce(CZEKEntry& entry, CZEKObj* parent, unsigned flag, unsigned ownClass);

/// Lets go of the sub-strings, unless the check is made while the source is read.
void ReleaseSubStrings(CZEKEntry& entry, unsigned flag);

/// The one sub-string that a number or text takes, the first when there are more, which is a warning; nothing,
/// reported, when there is none. Lets go of the sub-strings.
std::optional<std::string> TakeSubString(CZEKEntry& entry, CZEKObj* parent, unsigned flag);

/// Whether the text is longer than the prefix and begins with it.
bool HasPrefix(const std::string& text, std::string_view prefix);

inline constexpr std::string_view kArgPrefix = "ARG";
inline constexpr std::string_view kGlobalPrefix = "G_";
inline constexpr std::string_view kValuePrefix = "VALUE_";
inline constexpr char kActionName[] = "ACTION";

}  // namespace zek
