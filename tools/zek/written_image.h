/// What the output calls of the library write, as bytes. Relies on memory_file.h and debug_view.h.
#pragma once

#include <string>
#include <string_view>

namespace zek::tool {

/// What `output` writes, such as `gccOutput`. It does not examine its own write errors, so the bytes are examined here
/// by `isWhole`, such as IsWholeCompiledImage. Throws Failure where they are not whole.
std::string WrittenImage(unsigned (*output)(const std::string&), bool (*isWhole)(std::string_view));

/// The compiled image of the model of a debug image, which was verified; `lacksFileList` is what the verification says.
/// To be called once in a process: the numbers of names go on from one compilation to the next. Throws Failure.
std::string CompiledDebugImage(std::string_view debugImage, bool lacksFileList);

}  // namespace zek::tool
