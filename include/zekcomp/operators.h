/// The operators of the language, as values of type 2 and comparisons have them. Relies on records.h.
#pragma once

#include <array>
#include <string>

#include "zekcomp/api.h"
#include "zekcomp/records.h"

/// The operators and their codes; comparisons from 101 on.
extern ZEK_API const std::array<tagNTMAP, 17> g_NTMapOper;

/// The code of an operator, or 0.
ZEK_API unsigned GetOperator(const std::string& text);
