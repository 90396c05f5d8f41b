#include <stdexcept>

#include "board.h"
#include "boards.h"
#include "text.h"
#include "zek_text.h"

namespace zek::bench {
namespace {

constexpr std::size_t kBytesForSensor = 440;  ///< a little more than a sensor takes, so that the text is moved once

std::string WholeBoard(unsigned size, std::uint64_t seed) {
    std::string out;
    out.reserve(size * kBytesForSensor);
    const Board board(size, seed);
    ZekText text(out, seed);
    Section section;
    for (unsigned kind = 0; kind < kKindNames.size(); ++kind) {
        for (unsigned i = 0; i < board.Count(Kind{kind}); ++i) {
            board.Fill(Kind{kind}, i, section);
            text.Write(section);
        }
    }
    return out;
}

struct Shape {
    std::string_view name;
    std::string_view counts;
    std::string (*make)(unsigned size, std::uint64_t seed);
};

constexpr Shape kShapes[] = {
    {"board", "sensors of a board with everything in proportion", WholeBoard},
};

const Shape& Find(std::string_view name) {
    for (const Shape& shape : kShapes) {
        if (shape.name == name) return shape;
    }
    throw std::invalid_argument("there is no shape " + std::string(name));
}

}  // namespace

std::string ZekSource(std::string_view shape, unsigned size, std::uint64_t seed) {
    if (size < kSmallestBoard || size > kLargestBoard) throw std::invalid_argument("the size is out of bounds");
    return Find(shape).make(size, seed);
}

std::vector<std::string_view> ShapeNames() {
    std::vector<std::string_view> names;
    for (const Shape& shape : kShapes) names.push_back(shape.name);
    return names;
}

std::string_view WhatSizeCounts(std::string_view shape) { return Find(shape).counts; }

}  // namespace zek::bench
