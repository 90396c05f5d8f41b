/// A view of a compiled image held against the queries of the same image when it is loaded. Relies on image_view.h and
/// the published queries; reports by text, so that any program can use it.
#pragma once

#include <string>

#include "zekcomp/image_view.h"

namespace zek::test {

/// The first thing in which the view differs from what `gcInit` has loaded from the same bytes, with `info` from
/// there; empty when every query has the same answer. One difference is meant: for a word that a number carried into
/// another class, of which the image has a note, a view gives no value.
std::string DifferenceFromLoaded(const ImageView& view, const tagMETAFILEINFO& info);

}  // namespace zek::test
