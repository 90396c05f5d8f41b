#include "time_stamp.h"

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

std::optional<unsigned> WantedTimeStamp(const std::string& option) {
    if (!option.empty()) return SecondsOf("--timestamp", option);
    if (const char* variable = std::getenv(kVariable)) return SecondsOf(kVariable, variable);
    return std::nullopt;
}

void SetTimeStamp(std::string& image, unsigned seconds) {
    for (std::size_t i = 0; i < 4; ++i) image[kTimeStamp + i] = static_cast<char>(seconds >> 8 * i);
}

}  // namespace zek::tool
