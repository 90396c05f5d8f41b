/// A sound description that is long in every direction. Relies on the standard library.
#pragma once

#include <string>

namespace zek::fuzz {

/// Of what the libraries look up there are so many, so that they do so by their indexes: up to 64 they walk.
inline constexpr unsigned kMany = 70;

/// Has kMany sections of each kind that has names, and in one section of each as many items, or elements of a list, as
/// it may have; so also as many names of every sort.
std::string LongDescription();

/// Has kMany sections, and kMany items in another, of the kind that takes the fewest bytes of an image.
std::string LongListDescription();

}  // namespace zek::fuzz
