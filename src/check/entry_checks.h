/// What the first pass of every kind of entry has in common. Relies on the model.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "model/entry.h"

namespace zek {

/// The steps that every kind begins with: the entry was given, its name is well-formed, it is of the kind's class. The
/// result when that decides the check, nothing when it goes on.
std::optional<unsigned> DecidedAtOnce(CZEKEntry& entry, CZEKObj* parent, unsigned flag, unsigned ownClass);

/// Lets go of the sub-strings, unless the check is made while the source is read.
void ReleaseSubStrings(CZEKEntry& entry, unsigned flag);

/// Puts a sub-string where the typed data has its text: the string itself when the sub-strings are let go of
/// afterwards, which spares the copy, else a copy.
inline void MoveOrCopy(std::string& subString, unsigned flag, std::string& text) {
    if (flag == 0) {
        text = std::move(subString);
    } else {
        text = subString;
    }
}

/// The same for the rest of the sub-strings, from the one at `first` on, as many as `count` at most. None of the others
/// is left when they are let go of afterwards: the list takes over their memory.
void MoveOrCopyList(CZEKEntry& entry, std::size_t first, std::size_t count, unsigned flag, TextList& list);

/// Takes the one sub-string that a number or text takes, the first when there are more, which is a warning; false,
/// reported, when there is none. Lets go of the sub-strings.
bool TakeSubString(CZEKEntry& entry, CZEKObj* parent, unsigned flag, std::string& text);

/// Whether the text is longer than the prefix and begins with it.
inline bool HasPrefix(const std::string& text, std::string_view prefix) {
    return text.size() > prefix.size() && text.starts_with(prefix);
}

inline constexpr std::string_view kArgPrefix = "ARG";
inline constexpr std::string_view kGlobalPrefix = "G_";
inline constexpr std::string_view kValuePrefix = "VALUE_";
inline constexpr char kActionName[] = "ACTION";

}  // namespace zek
