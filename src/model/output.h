/// The way of a message to the host. Relies on nothing; the host's function is a weak reference.
#pragma once

namespace zek {

/// The level of every message.
inline constexpr unsigned kOutputLevel = 2048;

typedef void (*OutputFunction)(unsigned level, const char* format, ...) __attribute__((format(printf, 2, 3)));

/// The host's `Output`: the plain symbol, else the C++ function of that name, else one that drops what it gets.
OutputFunction HostOutput();

}  // namespace zek

/// Sends one message: a format of a room's messages.h, then its arguments, checked by the compiler.
#define LOG(...) ::zek::HostOutput()(::zek::kOutputLevel, __VA_ARGS__)
