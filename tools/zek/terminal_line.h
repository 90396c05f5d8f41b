/// The one line of standard error that is written over while a command works. All processes of a run share it, so that
/// whichever of them tells something, or is ended by a signal, erases it first. Relies on POSIX.
#pragma once

#include <cstddef>
#include <string>

namespace zek::tool {

/// Makes it the line of the processes that are forked off from now on, too.
void ShareTerminalLine();

/// The line may be shown from now on; standard error must be a terminal.
void OpenTerminalLine() noexcept;

/// The columns that the terminal adds to the line when its user interrupts the command: those of ^C.
inline constexpr std::size_t kEchoColumns = 2;

/// Shows a text (printable.h) in the place of what is there; false where the line was ended.
bool ShowTerminalLine(const std::string& text);

/// Erases the line; no process shows it again before it is opened.
void EndTerminalLine() noexcept;

/// The same for the handler of a signal; where the terminal takes nothing at this moment, what is there stays.
void EndTerminalLineBySignal() noexcept;

}  // namespace zek::tool
