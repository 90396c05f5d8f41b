/// Changes an image and keeps to its structure. Relies on image_structure.h.
#pragma once

#include <string>
#include <string_view>

#include "image_structure.h"
#include "yardstick/random.h"

namespace zek::fuzz {

class StructureMutator {
public:
    StructureMutator(std::string_view image, unsigned seed);

    /// The image changed in one to four places; unchanged when it is no image.
    std::string Mutated();

private:
    /// One change; false when the image offers nothing that it applies to.
    bool Change();
    bool SetField();
    bool SwapFields();
    bool RemovePart();
    bool DoublePart();
    bool ResizeCover();
    bool Cut();

    unsigned NewValue(const Field& field);
    /// The word of another field, perhaps with its class or its ordinal alone.
    unsigned MixedWord(unsigned old);
    /// Replaces bytes. The lengths that cover them, and offsets that lead behind them, are mostly put right.
    void Replace(std::size_t at, std::size_t removed, std::string_view inserted);
    void AddToCount(const Part& part, unsigned step);
    void SetWord(std::size_t at, unsigned word);

    std::string image_;
    Structure structure_;
    test::Random random_;
};

}  // namespace zek::fuzz
