/// The texts of the checks. Relies on nothing.
#pragma once

namespace zek {

// Sections.
inline constexpr char kBadSectionType[] = "Error[%s:%u]: [%s], section type is invalid.\n";
inline constexpr char kBadSectionName[] = "Error[%s:%u]: Section name %s is invalid.\n";
inline constexpr char kSectionRedefined[] = "Error[%s:%u]: SECTION %s is redefined. The MAX number of %s is one.\n";
inline constexpr char kEntryDefinedBefore[] =
    "Error[%s:%u]: [%s], Entry %s is redefined.It has been defined in Line[%s:%u].\n";  // sic: no blank
inline constexpr char kParentNotDefined[] = "Error[%s:%u]: Parent of this group hasn't been defined.\n";
inline constexpr char kNameRedefined[] =
    "Error[%s:%u]: [%s], NAME %s is redefined.It has been defined in Line[%s:%u].\n";  // sic: no blank
inline constexpr char kIDRedefined[] =
    "Error[%s:%u]: [%s], ID %s is redefined.It has been defined in Line[%s:%u].\n";  // sic: no blank
inline constexpr char kEntryRedefined[] = "Error[%s:%u]: [%s], Entry %s is redefined.\n";

// Entries: the leading four are WHERE.
inline constexpr char kEntryMissing[] = "Error[%s:%u]: [%s]:%s, This ENTRY does not exist.\n";
inline constexpr char kBadEntryName[] = "Error[%s:%u]: [%s]:%s, Entry name is invalid.\n";
inline constexpr char kBadEntryClass[] = "Error[%s:%u]: [%s]:%s, Entry value type is invalid.\n";
inline constexpr char kNoSubString[] = "Error[%s:%u]: [%s]:%s, No sub-string.\n";
inline constexpr char kMoreSubStrings[] =
    "Warning[%s:%u]: [%s]:%s, More than one sub-string and get the first one as sub-string.\n";
inline constexpr char kFewSubStrings[] = "Error[%s:%u]: [%s]:%s, not enough sub-strings.\n";
inline constexpr char kNotANumber[] = "Error[%s:%u]: [%s]:%s, %s has not been defined and is not a valid number.\n";
inline constexpr char kBadArgName[] = "Error[%s:%u]: [%s]:%s, The ARG name %s is invalid.\n";
inline constexpr char kNoSuchGlobal[] = "Error[%s:%u]: [%s]:%s, The GLOBAL entry with NAME %s does not exist.\n";
inline constexpr char kNoSuchTable[] = "Error[%s:%u]: [%s]:%s, The TABLE with NAME %s does not exist.\n";
inline constexpr char kNoSuchAction[] = "Error[%s:%u]: [%s]:%s, The ACTION with NAME %s does not exist.\n";
inline constexpr char kParamCount[] =
    "Error[%s:%u]: [%s]:%s The ACTION %s needs %u PARAMS, but total %u PARAMS here.\n";  // sic: no comma
inline constexpr char kNoSuchParent[] = "Error[%s:%u]: [%s]:%s, Parent GROUP %s does not exist.\n";
inline constexpr char kNoSuchPID[] = "Error[%s:%u]: [%s]:%s, Parent TAVRGROUP with ID %s does not exist.\n";
inline constexpr char kSensorNotListed[] =
    "Error[%s:%u]: [%s]:%s, The parent TAVRGROUP of SENSOR with ID %s does not exist.\n";
inline constexpr char kNoSuchSensor[] = "Error[%s:%u]: [%s]:%s, The SENSOR with ID %s does not exist.\n";

// Values.
inline constexpr char kNoValueType[] = "Error[%s:%u]: [%s]:%s, No value type sub-string.\n";
inline constexpr char kBadValueType[] = "Error[%s:%u]: [%s]:%s, Value operator type(%s) is invalid.\n";  // sic
inline constexpr char kNotEnough[] = "Error[%s:%u]: [%s]:%s, Not enough sub-strings for value type %s.\n";
inline constexpr char kTooMuch[] = "Warning[%s:%u]: [%s]:%s, Too much sub-strings for value type %s.\n";  // sic
inline constexpr char kBadOperator[] = "Error[%s:%u]: [%s]:%s, Value:OPERATOR %s is invalid.\n";          // sic
inline constexpr char kBaseAddressNotZero[] =
    "Error[%s:%u]: [%s]:%s, The BaseAddress %s of BUSTYPE_SIMPLEIOPORT must be 0.\n";
inline constexpr char kSmbusAddress[] = "Error[%s:%u]:SMBUS address field is wrong!\n";  // sic: no blank
inline constexpr char kSmbusType[] = "Error[%s:%u]: SMBUS type is wrong!\n";
inline constexpr char kNoSuchValue[] = "Error[%s:%u]: [%s]:%s, The VALUE name %s is not valid in this section.\n";

}  // namespace zek

/// The four arguments that begin an entry's message: file, line, section name, key.
#define WHERE(entry, section) \
    (entry).GetFile(0).c_str(), (entry).m_dwLine, (section).m_strName.c_str(), (entry).m_strName.c_str()
