/// The texts of the debug image. Relies on nothing.
#pragma once

namespace zek {

inline constexpr char kDebugCreateFailed[] = "ERROR: Create debug file %s failed.\n";
inline constexpr char kDebugOpenFailed[] = "ERROR: Open debug file %s failed.\n";
inline constexpr char kDebugInvalid[] = "ERROR: File %s is invalid.\n";
inline constexpr char kDebugVersion[] = "ERROR: The version of file %s is not support.\n";  // sic

}  // namespace zek
