/// What only grows while a process lives, taken back, so that a fuzzer can try millions of inputs in one process and
/// each finds what a fresh process would. Relies on every room of the library: its objects are linked, not its shared
/// library.
#pragma once

namespace zek::fuzz {

/// Leaves the state that the library has when it is loaded, but for the texts of its keywords and for memory that it
/// keeps for later.
void ForgetEverything();

}  // namespace zek::fuzz
