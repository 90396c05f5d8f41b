/// Objects of the source model as bytes and back. Relies on the model.
#pragma once

#include "model/section.h"

namespace zek {

void PutObject(ByteWriter& out, const CZEKObj& object);
void PutEntry(ByteWriter& out, const CZEKEntry& entry);
void PutSection(ByteWriter& out, const CZEKSection& section);

// Each throws `std::out_of_range` when the bytes end early; what was read before stays in the object.
void TakeObject(ByteReader& in, CZEKObj& object);
void TakeEntry(ByteReader& in, CZEKEntry& entry);
void TakeSection(ByteReader& in, CZEKSection& section);

/// The type id of the object in a block: the first word behind the length of its first nested block.
unsigned TypeInBlock(ByteReader block);

}  // namespace zek
