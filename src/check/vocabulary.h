/// The small words of the language: its one number syntax, its operators and the predefined names of the current
/// source. Relies on the published records alone.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "zekcomp/api.h"
#include "zekcomp/operators.h"
#include "zekcomp/predefined.h"

/// Names and values that [DEFINE] and [IFDEF] sections have defined, or that a debug image brought. Emptied when the
/// model is destroyed.
extern ZEK_API std::map<std::string, unsigned> g_tblPreDefine;

namespace zek {

template <class Key, class Value>
class KeyTable;

/// The first code of the comparisons.
inline constexpr unsigned kFirstComparison = 101;

/// The number that a text is, 0 when it is none.
unsigned NumberOr0(const std::string& text);
/// The number that a text is, else the value of the predefined name, else 0.
unsigned NumberOrNameOr0(const std::string& text);
bool IsNumber(const std::string& text);
/// To be called by what changes g_tblPreDefine in another way than AddPredDefineValue, so that look-ups follow.
void ForgetPredefinedIndex();
/// What predefined names are looked up in, as key_table.h has it; null while that is g_tblPreDefine itself.
const KeyTable<std::string_view, unsigned>* PredefinedNames();
/// Whether the text is a number or a predefined name.
bool IsNumberOrName(const std::string& text);

}  // namespace zek
