#include "model/waiting_values.h"

#include <limits>

namespace zek {

unsigned WaitingValues::Keep(std::string_view value) {
    const std::size_t place = texts_.Size() + 1;
    if (place > std::numeric_limits<unsigned>::max()) return 0;
    ByteWriter out(texts_);
    out.Raw(value);
    out.Zeros(1);
    ++waiting_;
    return static_cast<unsigned>(place);
}

std::string_view WaitingValues::At(unsigned place) const {
    return reinterpret_cast<const char*>(texts_.Data() + place - 1);
}

void WaitingValues::Drop() {
    if (--waiting_ == 0) texts_ = {};
}

}  // namespace zek
