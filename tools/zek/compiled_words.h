/// The words of a compiled image as sub-strings of a source. Relies on image_view.h.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "made_words.h"
#include "zekcomp/image_view.h"

namespace zek::tool {

/// Writes the words of one entry after the other, in the order of the image: numbers get their identifiers in the order
/// in which the compiler meets them, so where a word stands for a number that was not met yet, a text that gives the
/// same word is written for it.
class CompiledWords {
public:
    CompiledWords(const ImageView& view, MadeWords& made) : view_(view), made_(made) {}

    /// The name that a word stands for; throws Failure where it is no name of that class.
    std::string Text(std::uint32_t word, std::uint32_t wordClass) const;
    /// The number that a number word stands for; throws Failure where it is none. Counts as met.
    std::uint32_t Number(std::uint32_t word);
    /// The value type, then the operands. `values` are the identifiers of the VALUE_ entries of the section.
    std::vector<std::string> Value(const ImageView::Entry& entry, const std::set<std::uint32_t>& values);
    /// Number, action, parameters.
    std::vector<std::string> Repeater(const ImageView::Entry& entry);

    static std::uint32_t TypeOf(const ImageView::Entry& entry) { return entry.Word(0) - kIdValueType; }

private:
    std::string Operand(std::uint32_t word, const std::set<std::uint32_t>& values);
    std::string InRole(char role, std::uint32_t word, const std::set<std::uint32_t>& values);
    void NameSmBus(std::uint32_t type, const ImageView::Entry& entry, std::vector<std::string>& texts);

    const ImageView& view_;
    MadeWords& made_;
    std::uint32_t nextNumber_ = kIdNumber;  // the next identifier of a number
};

}  // namespace zek::tool
