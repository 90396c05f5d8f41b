/// The model walked without any index: slow, and as the rules are told. Relies on the model's classes.
#pragma once

#include <string>
#include <vector>

#include "model/section.h"

namespace zek::test::plain {

/// A value or a repeater item taken apart.
struct Pieces {
    unsigned type = 0;
    std::vector<std::string> strings;
    std::vector<std::string> list;
};

/// The sections of the first registered list that begins with one of this type.
std::vector<CZEKSection*> Sections(unsigned type);
/// The sections of that list that stand before this one.
std::vector<CZEKSection*> SectionsBefore(const CZEKSection& section);
/// The first entry of a type, or null.
CZEKEntry* Entry(const CZEKSection& section, unsigned type);
bool HoldsData(const CZEKEntry* entry);
/// The text of an entry, or null when there is no entry or it holds no text.
const std::string* Text(const CZEKEntry* entry);
const std::vector<std::string>& List(const CZEKEntry& entry);
Pieces PiecesOf(CZEKEntry& entry);

/// The source file behind its last backslash.
std::string File(const CZEKObj& object);
bool IsNumber(const std::string& text, unsigned& number);
bool IsPredefined(const std::string& text, unsigned& number);
bool HasPrefix(const std::string& text, const std::string& prefix);

}  // namespace zek::test::plain
