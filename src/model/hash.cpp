#include "model/hash.h"

#include <chrono>

namespace zek {

namespace {

/// Made of where the system has put the library, and of when.
std::uint64_t NewSeed() {
    const auto place = reinterpret_cast<std::uintptr_t>(&kHashSeed);
    const auto time = std::chrono::steady_clock::now().time_since_epoch().count();
    return MixedProduct(place ^ kGoldenRatio, static_cast<std::uint64_t>(time) | 1);
}

}  // namespace

const std::uint64_t kHashSeed = NewSeed();

}  // namespace zek
