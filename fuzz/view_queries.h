/// A verified view of a compiled image held against the queries of the same image when it is loaded. Relies on
/// image_view.h.
#pragma once

#include "zekcomp/image_view.h"

namespace zek::fuzz {

/// Asks the view everything and holds each answer against that of the loaded image, which has the same bytes.
void HoldView(const ImageView& view);

}  // namespace zek::fuzz
