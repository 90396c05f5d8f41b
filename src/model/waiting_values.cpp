#include "model/waiting_values.h"

#include <algorithm>
#include <new>

namespace zek {

namespace {

using Size = unsigned;

}  // namespace

unsigned WaitingValues::Keep(std::string_view value) {
    const std::uint32_t place = texts_.Take(sizeof(Size) + value.size());
    std::byte* const memory = texts_.At(place);
    new (memory) Size(static_cast<Size>(value.size()));
    std::copy(value.begin(), value.end(), reinterpret_cast<char*>(memory + sizeof(Size)));
    ++waiting_;
    return place + 1;
}

std::string_view WaitingValues::At(unsigned place) const {
    const std::byte* const memory = texts_.At(place - 1);
    const Size size = *std::launder(reinterpret_cast<const Size*>(memory));
    return {reinterpret_cast<const char*>(memory + sizeof(Size)), size};
}

void WaitingValues::Drop(bool moreToCome) {
    if (--waiting_ != 0) return;
    texts_.Clear();
    if (!moreToCome) texts_ = {};
}

}  // namespace zek
