#include "model/payload.h"

#include <algorithm>
#include <memory>
#include <new>

#include "model/state.h"

namespace zek {

namespace {

std::size_t SizeOf(PayloadShape shape) {
    const std::size_t size = shape.strings * sizeof(std::string) + (shape.list ? sizeof(TextList) : 0);
    return std::max<std::size_t>(size, 1);
}

std::string* StringsAt(void* data) { return static_cast<std::string*>(data); }

TextList* ListAt(void* data, PayloadShape shape) {
    return reinterpret_cast<TextList*>(StringsAt(data) + shape.strings);
}

}  // namespace

static_assert(5 * sizeof(std::string) + sizeof(TextList) <= Pool::kLargest, "no payload has more than five strings");

void* NewPayload(PayloadShape shape) {
    void* data = g_pool.Take(SizeOf(shape));
    std::uninitialized_value_construct_n(StringsAt(data), shape.strings);
    if (shape.list) new (ListAt(data, shape)) TextList;
    return data;
}

void FreePayload(void* data, PayloadShape shape) {
    if (!data) return;
    std::destroy_n(StringsAt(data), shape.strings);
    if (shape.list) std::destroy_at(ListAt(data, shape));
    g_pool.Give(data, SizeOf(shape));
}

Payload PayloadAt(void* data, PayloadShape shape) {
    if (!data) return {};
    return {{StringsAt(data), shape.strings}, shape.list ? ListAt(data, shape) : nullptr};
}

void PutPayload(ByteWriter& out, const Payload& payload) {
    for (const std::string& text : payload.strings) out.Str(text);
    if (payload.list) out.List(*payload.list);
}

void TakePayload(ByteReader& in, const Payload& payload) {
    for (std::string& text : payload.strings) text = in.Str();
    if (payload.list) in.List(*payload.list);
}

void CopyPayload(const Payload& from, const Payload& to) {
    std::copy(from.strings.begin(), from.strings.end(), to.strings.begin());
    if (to.list) *to.list = *from.list;
}

}  // namespace zek
