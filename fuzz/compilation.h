/// Compiles a description into both images. Relies on source_files.h.
#pragma once

#include <string>
#include <string_view>

namespace zek::fuzz {

struct Compilation {
    bool accepted = false;  ///< by gccCheck
    std::string compiled;   ///< the compiled image, its time stamp zero; empty when not accepted
    std::string debug;      ///< the same of the debug image
    std::string messages;

    bool operator==(const Compilation&) const = default;
};

/// Compiles a text as SourceFiles takes it apart, as if in a fresh process; leaves the state of a fresh process.
Compilation Compile(std::string_view text);

/// The image that a call of the library writes to a path, its time stamp zero.
std::string Written(unsigned (*write)(const std::string& file));

/// The compiled image of the small description, compiled into the tables as they are; leaves them as that does.
std::string CompileGoodHere();

/// What Compile gives for a small description with a sensor kGoodSensor, whose ID is kGoodId.
const Compilation& GoodImages();
inline constexpr char kGoodSensor[] = "Lamp";
inline constexpr unsigned kGoodId = 7;

}  // namespace zek::fuzz
