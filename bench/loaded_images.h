/// Images of boards as a host has loaded them, and what it can ask about. Relies on the published interface and
/// boards/random.h.
#pragma once

#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "boards/random.h"
#include "zekcomp/debug_image.h"
#include "zekcomp/identifiers.h"
#include "zekcomp/image.h"
#include "zekcomp/image_view.h"

namespace zek::bench {

inline constexpr unsigned kBaseField = 0xb0000;
inline constexpr unsigned kDebugSensor = 0x20000005;

/// What a host can ask about that has loaded the compiled image of a board.
struct ImageHandles {
    std::vector<tagGCSECT*> sensors;
    std::vector<tagGCENTRY*> entries;
    std::vector<tagGCENTRY*> reads;  ///< those entries that are values with a base, such as read from a bus
    std::vector<unsigned> ids;
    std::vector<std::string> names;
    std::vector<std::string> absent;
    std::unordered_map<std::string, unsigned> table;  ///< the names again, as a host's own look-up
    std::vector<unsigned char> bytes;
    std::optional<ImageView> view;  ///< of the same image
};

/// What a host can ask about that has loaded the debug image of a board.
struct DebugHandles {
    std::vector<CZEKSection*> sensors;
    std::vector<CZEKEntry*> entries;
};

/// The keys of two long sections in random order, one of the first and one of the second in turn.
struct LongHandles {
    struct Key {
        tagGCSECT* section;
        unsigned identifier;
        std::string name;
    };
    std::vector<Key> keys;
};

/// The places of their entries in a debug image, in the same order.
struct LongDebugHandles {
    std::vector<std::pair<CZEKSection*, unsigned>> places;
};

// Each loads an image from its file, unless that one is loaded, and gives what there is in it; good until another image
// is loaded. Throws std::runtime_error when it cannot be loaded or has nothing to ask about.

const ImageHandles& LoadedBoard(const std::string& image);
const DebugHandles& LoadedDebugBoard(const std::string& debug);
/// Of the first two [PROPERTY] sections.
const LongHandles& LoadedLongSections(const std::string& image);
const LongDebugHandles& LoadedLongDebugSections(const std::string& debug);

/// The numbers from 0 up to, but not including, `count`.
std::vector<unsigned> Indexes(std::size_t count);

/// In an order that is random, but always the same.
template <class T>
std::vector<T> Shuffled(std::vector<T> values) {
    Random(1, 0, 0).Shuffle(values);
    return values;
}

}  // namespace zek::bench
