/// Predefined names: the words that [DEFINE] and [IFDEF] sections give to numbers, as a host may define them before the
/// source is read. Relies on api.h. Process-wide and unguarded, as the compiler calls are.
#pragma once

#include <string>

#include "zekcomp/api.h"

/// Whether the text is a number: "0x" or "0X" and hexadecimal digits, else decimal with an optional sign; at most 10
/// characters; what follows the digits is ignored. Stores the low 32 bits, also when they are 0 and the text fails for
/// not beginning with a written 0; a text that is too long stores nothing.
ZEK_API unsigned StringToLong(const std::string& text, unsigned int* value);

/// Defines a name; the last definition wins, so one in the source comes before a host's that was made before
/// `gccCompStart`. `gccCompEnd` and `gdUnInit` take all definitions away.
ZEK_API void AddPredDefineValue(const std::string& name, unsigned int value);

/// Stores the value of a predefined name and gives 1; else gives 0 and leaves `value` as it was.
ZEK_API unsigned GetPreDefinedValue(const std::string& name, unsigned int* value);
