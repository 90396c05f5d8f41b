/// Copies of texts that stay where they are. Relies on the standard library.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace zek {

/// Copies of texts, each with a NUL behind it, one behind the other, so that going through many does not fetch a line
/// of memory for each.
class Texts {
public:
    std::string_view Keep(std::string_view text) {
        const std::size_t size = text.size() + 1;
        if (size > left_.size()) {
            const std::size_t room = std::max(kBlock, size);
            left_ = {blocks_.emplace_back(std::make_unique_for_overwrite<char[]>(room)).get(), room};
        }
        *std::copy(text.begin(), text.end(), left_.begin()) = 0;
        const std::string_view kept(left_.data(), text.size());
        left_ = left_.subspan(size);
        size_ += size;
        return kept;
    }
    /// The bytes of all, with their NULs.
    std::size_t Size() const { return size_; }

private:
    static constexpr std::size_t kBlock = 1 << 16;

    std::vector<std::unique_ptr<char[]>> blocks_;
    std::span<char> left_;
    std::size_t size_ = 0;
};

}  // namespace zek
