/// The words that a source made of a compiled image defines: those of value types and bus types, and words that stand
/// for a number where the number itself would be compared. Relies on the standard library.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace zek::tool {

class MadeWords {
public:
    /// The word of a value type.
    std::string Type(std::uint32_t type);
    /// The word of the SMBus for its number, or nothing where it stands for another number already.
    std::optional<std::string> SmBus(std::uint32_t number);
    /// A word for a number that the checks, which do not look words up there, do not take for a number.
    std::string Number(std::uint32_t number);
    /// One that they take for the number `compared`; nothing where no word can be that.
    std::optional<std::string> Number(std::uint32_t number, std::uint32_t compared);

    /// A name of a value; false where it stands for another number already.
    bool Value(const std::string& name, std::uint32_t number) { return Take(name, number); }

    /// All words with what they stand for.
    const std::map<std::string, std::uint32_t>& All() const { return words_; }

private:
    /// Whether the word stands for the number, now at the latest.
    bool Take(const std::string& word, std::uint32_t number) {
        return words_.emplace(word, number).first->second == number;
    }

    std::map<std::string, std::uint32_t> words_;
};

}  // namespace zek::tool
