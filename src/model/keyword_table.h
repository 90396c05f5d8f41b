/// The published table of entry keywords. Relies on type_ids.h.
#pragma once

#include <array>
#include <string_view>

#include "model/type_ids.h"
#include "zekcomp/api.h"
#include "zekcomp/records.h"

namespace zek {

/// Keyword and type id of every entry; free-named entries stand with the empty keyword.
inline constexpr std::array<tagNTMAP, 37> kKeywords = {{
    {"VERSION", kVersion},
    {"TYPE", kType},
    {"FLAG", kFlag},
    {"SOUTHBRIDGE", kSouthbridge},
    {"NORTHBRIDGE", kNorthbridge},
    {"ZEKLOOP", kZekLoop},
    {"CHILDGROUP", kChildGroup},
    {"ID", kID},
    {"INITFLAG", kInitFlag},
    {"CONTROLMASK", kControlMask},
    {"THEORY", kTheory},
    {"THRESHOLD_FH", kThresholdFH},
    {"THRESHOLD_WH", kThresholdWH},
    {"THRESHOLD_FL", kThresholdFL},
    {"THRESHOLD_WL", kThresholdWL},
    {"ARGNUMBER", kArgNumber},
    {"PID", kPID},
    {"", kTableRow},
    {"", kDefinition},
    {"MODEL", kModel},
    {"PARENT", kParent},
    {"NAME", kName},
    {"DEFINEWORD", kDefineWord},
    {"", kProperty},
    {"P_", kPrefixP},
    {"FILE", kFile},
    {"VALUE", kValue},
    {"G_", kGlobal},
    {"VALUE_INIT", kValueInit},
    {"VALUE_DEINIT", kValueDeinit},
    {"VALUE_ENTRY", kValueEntry},
    {"VALUE_EXIT", kValueExit},
    {"VALUE_IPMI", kValueIpmi},
    {"VALUE_", kActionValue},
    {"VALUE_", kOwnValue},
    {"SENSORS", kSensors},
    {"", kRepeaterItem},
}};
static_assert(kKeywords.back().dwID == kRepeaterItem, "every row is filled");

/// The first row of a keyword, or null. The empty keyword is that of the free-named entries.
const tagNTMAP* RowOfKeyword(std::string_view keyword);

/// The first row of a type id, or null.
const tagNTMAP* KeywordOf(unsigned type);
/// The keyword of a row of the table.
std::string_view TextOf(const tagNTMAP& row);

}  // namespace zek

/// The table as published.
extern ZEK_API const std::array<tagNTMAP, 37> g_NTMapEntry;
extern ZEK_API const unsigned g_dwNTMEntry;
