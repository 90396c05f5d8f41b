/// Numbering the names of the source model before it is compiled. Relies on tables.h and the model.
#pragma once

#include <string_view>

#include "zekcomp/api.h"

// Each numbers the names of its kind and gives 1; InitGlobalD gives 0 when there is no [GLOBAL] section. InitTblD does
// the work of all seven and gives 1.
ZEK_API unsigned InitTblD();
ZEK_API unsigned InitPropertyD();
ZEK_API unsigned InitGlobalD();
ZEK_API unsigned InitValueD();
ZEK_API unsigned InitRepeaterD();
ZEK_API unsigned InitGroupD();
ZEK_API unsigned InitActionD();
ZEK_API unsigned InitTableDataD();

namespace zek {

/// The table and the prefix that make an entry's name of its key.
struct NameRule {
    unsigned entryType;
    unsigned classWord;
    std::size_t prefix;  ///< characters of the key that are no part of the name
};

/// The rule of an entry type; null for one that is not named by a table.
const NameRule* NameRuleOf(unsigned entryType);

/// The key without its first characters; empty when it is shorter.
std::string_view WithoutPrefix(std::string_view key, std::size_t prefix);

}  // namespace zek
