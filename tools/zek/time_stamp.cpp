#include "time_stamp.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdlib>

#include "failure.h"

namespace zek::tool {
namespace {

constexpr std::size_t kTimeStamp = 20;
constexpr char kVariable[] = "SOURCE_DATE_EPOCH";

unsigned SecondsOf(const std::string& from, const std::string& text) {
    std::uint64_t seconds = 0;
    const char* const end = text.data() + text.size();
    const auto [behind, error] = std::from_chars(text.data(), end, seconds);
    if (error != std::errc() || behind != end) {
        throw Failure(kUsageOrFiles, from + ": " + (text.empty() ? "nothing" : text) + " is no number of seconds");
    }
    return static_cast<unsigned>(seconds);
}

}  // namespace

std::optional<unsigned> WantedTimeStamp(const std::optional<std::string>& option) {
    if (option) return SecondsOf("--timestamp", *option);
    if (const char* variable = std::getenv(kVariable)) return SecondsOf(kVariable, variable);
    return std::nullopt;
}

void SetTimeStamp(std::string& image, unsigned seconds) {
    for (std::size_t i = 0; i < 4; ++i) image[kTimeStamp + i] = static_cast<char>(seconds >> 8 * i);
}

std::optional<std::size_t> FirstDifference(std::string image, std::string other) {
    SetTimeStamp(image, 0);
    SetTimeStamp(other, 0);
    if (image == other) return std::nullopt;
    const auto [at, behind] = std::mismatch(image.begin(), image.end(), other.begin(), other.end());
    return static_cast<std::size_t>(at - image.begin());
}

}  // namespace zek::tool
