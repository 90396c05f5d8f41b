/// The memory behind a text, a list, a repeater item or a value: some strings, then perhaps a list, one after the
/// other. Relies on bytes.h.
#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "model/bytes.h"

namespace zek {

/// How many strings a payload has and whether a list follows them.
struct PayloadShape {
    std::size_t strings = 0;
    bool list = false;
};

/// A payload as its strings and its list (null when its shape has none). Owns nothing.
struct Payload {
    std::span<std::string> strings;
    TextList* list = nullptr;
};

/// Allocates a payload: empty strings, an empty list. At least one byte, never read. The caller owns it; FreePayload
/// frees it.
void* NewPayload(PayloadShape shape);
void FreePayload(void* data, PayloadShape shape);

/// What lies behind the pointer; an empty payload for null.
Payload PayloadAt(void* data, PayloadShape shape);

void PutPayload(ByteWriter& out, const Payload& payload);
/// Fills the payload in order; what was read before a damaged field stays.
void TakePayload(ByteReader& in, const Payload& payload);
/// Copies strings and list between payloads of one shape.
void CopyPayload(const Payload& from, const Payload& to);

}  // namespace zek
