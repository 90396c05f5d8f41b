/// Sources to measure with, of any size and the same on every machine. Relies on nothing.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zek::bench {

/// The sizes that every shape may have.
inline constexpr unsigned kSmallestBoard = 10;
inline constexpr unsigned kLargestBoard = 1'000'000;

/// The text of a source. `size` is the number of sensors of a "board" and of whatever else a shape has many of; the
/// text grows with it in proportion, together with the files that it includes. Every source but "errors" compiles
/// without any message. The same arguments give the same bytes. Throws std::invalid_argument for an unknown shape and
/// for a size out of the bounds above.
std::string ZekSource(std::string_view shape, unsigned size, std::uint64_t seed = 1);

/// A file that a source includes.
struct IncludedFile {
    std::string path;  ///< from the folder of the source: the shape and the size, a slash and a name
    std::string text;
};

/// The files that the source of the same arguments includes; none for most shapes. Throws as ZekSource does.
std::vector<IncludedFile> IncludedFiles(std::string_view shape, unsigned size, std::uint64_t seed = 1);

/// The names of all shapes; "board" is the first.
std::vector<std::string_view> ShapeNames();
/// The same without "board".
std::vector<std::string> LopsidedShapes();
/// Whether the sources of a shape include files. Throws std::invalid_argument for an unknown shape.
bool HasIncludedFiles(std::string_view shape);
/// What the size of a shape counts. Throws std::invalid_argument for an unknown shape.
std::string_view WhatSizeCounts(std::string_view shape);

/// A "board" in one of several formats: "zek" as above, "json", "proto" and "dts" for flatc, protoc and dtc with the
/// same content (board.fbs and board.proto are the schemas). Throws std::invalid_argument for an unknown format and for
/// a size out of bounds.
std::string BoardIn(std::string_view format, unsigned sensors, std::uint64_t seed = 1);

/// The names of all formats; "zek" is the first.
std::vector<std::string_view> FormatNames();

}  // namespace zek::bench
