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
/// compiler did not find and for what stands for nothing. Never an identifier: these change with every name before.
std::string SourceText(const ShownWord& word);

class Values {
public:
    /// The image must outlive this.
    explicit Values(const Image& image) : names_(image.Names()) {}

    /// The first value of the first entry of that key; empty where there is none. Of a debug image the text as it was
    /// written, with the number that it is.
    ShownValue First(const ShownSection& section, const char* key) const;
    /// All of them.
    std::vector<ShownValue> List(const ShownSection& section, const char* key) const;

    /// All values of an entry: of a value its type, then its operands. The texts of a debug image are what the compiler
    /// makes of them, so that both images give the same.
    std::vector<ShownValue> Resolved(const ShownEntry& entry) const;

private:
    static std::vector<ShownValue> OfWords(const ShownEntry& entry);
    ShownValue OfText(const DebugEntry& entry, std::size_t at) const;

    const std::map<std::string, unsigned>& names_;
};

}  // namespace zek::tool
