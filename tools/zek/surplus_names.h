/// Names that the length of a table counts though none of them was written: the compiler looked them up without giving
/// them an identifier. Relies on docs/compiled-image.md and on image_view.h.
#pragma once

#include <optional>
#include <string>

#include "zekcomp/image_view.h"

namespace zek::tool {

/// One property name that makes up for all that the table of properties counts too much, and that has no identifier;
/// nothing where the table counts what it has. Throws Failure where no name can be that.
std::optional<std::string> UnnumberedProperty(const ImageView& view);

}  // namespace zek::tool
