/// The values of entries, told alike for both images: a compiled image holds them as words, a debug image as the text
/// of the source. Relies on image.h.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "image.h"

namespace zek::tool {

/// A value, or one of several: the text to show, and the number that it stands for, where it is one.
struct ShownValue {
    std::string text;
    std::optional<unsigned> number;
    const char* names = nullptr;  ///< keyword of the kind of section that the text is a NAME of; null for none
};

/// The text of an operator; null for a code that none has.
const char* OperatorText(unsigned code);

/// A word of a compiled image as the source would write it, such as "17", "G_Trim" or "+"; "unresolved" for what the
/// compiler did not find, and the word itself in hexadecimal where it stands for nothing.
std::string SourceText(const ShownWord& word);

class Values {
public:
    explicit Values(const Image& image) : compiled_(image.Kind() == ImageKind::kCompiled), names_(image.Names()) {}

    /// The first value of the first entry of that key, as it was written in a debug image; empty where there is none.
    ShownValue First(const ShownSection& section, const char* key) const;
    /// The elements of the list that the first entry of that key is.
    std::vector<ShownValue> List(const ShownSection& section, const char* key) const;

    /// All values of an entry: of a value its type, then its operands. In a debug image predefined names and what is
    /// written as a number are their numbers wherever a number can stand, so that both images give the same.
    std::vector<ShownValue> Resolved(const ShownSection& section, const ShownEntry& entry) const;

private:
    static ShownValue OfWord(const ShownWord& word);
    ShownValue Written(const std::string& text) const;
    ShownValue ResolvedText(const std::string& text) const;

    bool compiled_;
    const std::map<std::string, unsigned>& names_;
};

/// With a comma between each two.
std::string Joined(const std::vector<ShownValue>& values);

}  // namespace zek::tool
