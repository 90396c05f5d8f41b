#include "reliability/damage.h"

#include <cstdio>
#include <utility>

#include "yardstick/random.h"

namespace zek::test {

namespace {

constexpr int kBytes[] = {0x00, 0x7f, 0x80, 0xff};
constexpr std::uint64_t kSeed = 20260301;

}  // namespace

Damages::Damages(std::string image, std::size_t most) : image_(std::move(image)) {
    for (std::size_t at = 0; at < image_.size(); ++at) {
        damages_.push_back({at, kCut});
        for (const int byte : kBytes) {
            if (static_cast<unsigned char>(image_[at]) != byte) damages_.push_back({at, byte});
        }
    }
    if (damages_.size() <= most) return;
    Random(kSeed).Shuffle(damages_);
    damages_.resize(most);
}

std::string Damages::Damaged(std::size_t number) const {
    const Damage& damage = damages_[number];
    if (damage.byte == kCut) return image_.substr(0, damage.at);
    std::string image = image_;
    image[damage.at] = static_cast<char>(damage.byte);
    return image;
}

std::string Damages::Name(std::size_t number) const {
    const Damage& damage = damages_[number];
    if (damage.byte == kCut) return "cut to " + std::to_string(damage.at) + " bytes";
    char hex[16];
    std::snprintf(hex, sizeof hex, "0x%02x", static_cast<unsigned>(damage.byte));
    return "byte " + std::to_string(damage.at) + " set to " + hex;
}

}  // namespace zek::test
