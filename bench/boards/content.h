/// What the sections of a board are made of: words, names, and patterns of values. Relies on section.h.
///
/// A pattern is the text of a value or a property with these places to fill:
///     %d a decimal number    %x a byte, hexadecimal    %p an I/O port
///     %o an operator         %m a comparison           %w a word
///     %g a global            %t a table
///     %c an action with as many arguments as it takes; %C the same, the last argument being ARG1
#pragma once

#include <span>
#include <string_view>

#include "section.h"

namespace zek::bench {

struct WordName {
    std::string_view word;
    unsigned number;
};

/// The words of the language itself.
inline constexpr WordName kLanguageWords[] = {
    {"VT_NONE", 0},
    {"VT_VALUE", 1},
    {"VT_CALC", 2},
    {"VT_CALL", 3},
    {"VT_READ", 4},
    {"VT_WRITE", 5},
    {"VT_IPMI", 6},
    {"VT_PACK", 7},
    {"VT_READ_BITS", 8},
    {"VT_WRITE_BITS", 9},
    {"VT_TABLE", 10},
    {"VT_SMBUS_SEND", 11},
    {"VT_WAIT", 101},
    {"VT_IF", 102},
    {"VT_SKIP", 103},
    {"VT_SMBUS_RECEIVE", 12},
    {"VT_JUMP", 104},
    {"BUSTYPE_SMBUS", 1},
    {"BUSTYPE_SIMPLEIOPORT", 2},
};

inline constexpr WordName kTableTypes[] = {{"TABLE_CURVE", 1}, {"TABLE_STEPS", 2}};
inline constexpr WordName kInitFlags[] = {{"INIT_NONE", 0}, {"INIT_ONCE", 1}, {"INIT_EACH", 2}};

struct SensorType {
    std::string_view word;
    unsigned number;
    std::string_view names[4];
    std::string_view unit;
    unsigned theory;  ///< what a sensor of the type reads in the middle
};

inline constexpr SensorType kSensorTypes[] = {
    {"TEMPERATURE", 1, {"Inlet Temp", "CPU Die Temperature", "DIMM Temp", "VRM Temp"}, "degC", 45},
    {"VOLTAGE", 2, {"Vcore", "P12V Rail", "P3V3 Standby", "Battery Voltage"}, "mV", 3300},
    {"FAN_SPEED", 3, {"Front Fan", "Rear Fan Tach", "PSU Fan", "Fan Wall Outer Rotor"}, "rpm", 7200},
    {"CURRENT", 4, {"Input Current", "Vcore Current", "Iout", "Riser Current"}, "mA", 1500},
    {"POWER", 5, {"Input Power", "PSU Output Power", "Socket Power", "Slot Power"}, "W", 250},
    {"PRESENCE", 6, {"PSU Presence", "Drive", "Riser Present", "Fan Module Present"}, "", 1},
};

inline constexpr std::string_view kGroupNames[] = {"Node", "Memory Bank", "Drive Cage", "Fan Wall", "PSU Shelf"};
inline constexpr std::string_view kDeviceNames[] = {"Fan Pair", "Identify LED", "Power Switch", "Lock", "Watchdog"};
inline constexpr std::string_view kActionNames[] = {"ReadLm75_", "SelectSegment", "Linear", "StepFans", "GuardRail"};
inline constexpr std::string_view kTableNames[] = {"Ntc10k_", "FanCurve", "Thermistor", "Steps"};
inline constexpr std::string_view kViewNames[] = {"All Sensors of", "Overview", "Cooling; part", "Power View"};
inline constexpr std::string_view kWordNames[] = {"ADDR_PSU", "REG_VOUT", "FAN_TRAY_", "HOTSWAP_STATUS_", "MUX"};
inline constexpr std::string_view kGlobalNames[] = {"G_Inlet", "G_Limit", "G_DutyFloor", "G_Scale_", "G_TripPoint"};
inline constexpr std::string_view kRepeaterNames[] = {"RampUp", "RampDown", "Retry_", "SweepFans"};

inline constexpr std::string_view kOperators[] = {"+", "-", "*", "/", "|", "&", "%", "^", ">>", "<<", "pow"};
inline constexpr std::string_view kComparisons[] = {"==", ">", ">=", "!=", "<", "<="};

/// An item that a section may have.
struct ItemRule {
    std::string_view key;
    unsigned percent;  ///< of the sections have it
    std::span<const std::string_view> patterns;
};

inline constexpr std::string_view kSetUps[] = {"VT_WRITE,%x,8,BUSTYPE_SMBUS,%w,%x", "VT_CALL,%c", "VT_NONE",
                                               "VT_WRITE_BITS,%p,%x,BUSTYPE_SIMPLEIOPORT,0,1"};
inline constexpr std::string_view kReads[] = {
    "VT_READ,%x,16,BUSTYPE_SMBUS,%w",          "VT_READ,%x,8,BUSTYPE_SMBUS,%x",
    "VT_READ,%w,16,BUSTYPE_SMBUS,%w",          "VT_READ,%x,8,BUSTYPE_SMBUS,%w",
    "VT_READ,%x,8,BUSTYPE_SMBUS,%w",           "VT_READ_BITS,%p,%x,BUSTYPE_SIMPLEIOPORT,0",
    "VT_SMBUS_RECEIVE,%w,8,BUSTYPE_SMBUS,0x00"};
inline constexpr std::string_view kOperations[] = {"VT_CALC,%o,%g,%d",       "VT_CALC,%o,%g,%w", "VT_CALC,%o,%w,%x",
                                                   "VT_CALC,%m,%g,%d,%x,%g", "VT_TABLE,%t,%g",   "VT_CALL,%c"};
inline constexpr std::string_view kRequests[] = {"VT_IPMI,%x,%x,%d", "VT_IPMI,%x,%x,%x,%w", "VT_IPMI,%x,%x"};
inline constexpr std::string_view kSegments[] = {"VT_CALL,%c", "VT_SMBUS_SEND,%w,8,BUSTYPE_SMBUS,0x00,%x"};
inline constexpr std::string_view kCalls[] = {"VT_CALL,%C", "VT_CALL,%c"};
inline constexpr std::string_view kBits[] = {"VT_WRITE_BITS,%p,%x,BUSTYPE_SIMPLEIOPORT,0,%x",
                                             "VT_WRITE,%x,8,BUSTYPE_SMBUS,%x,%x"};

inline constexpr ItemRule kSensorValues[] = {{"VALUE_INIT", 15, kSetUps},
                                             {"VALUE_RAW", 100, kReads},
                                             {"VALUE_PEAK", 8, kReads},
                                             {"VALUE", 100, kOperations},
                                             {"VALUE_IPMI", 8, kRequests}};
inline constexpr ItemRule kGroupValues[] = {{"VALUE_INIT", 15, kSetUps},
                                            {"VALUE_DEINIT", 10, kSetUps},
                                            {"VALUE_ENTRY", 40, kSegments},
                                            {"VALUE_EXIT", 40, kSegments}};
inline constexpr ItemRule kDeviceValues[] = {{"VALUE_INIT", 25, kSetUps}, {"VALUE_GET", 100, kReads},
                                             {"VALUE_SET", 70, kCalls},   {"VALUE_ON", 40, kBits},
                                             {"VALUE_OFF", 40, kBits},    {"VALUE_IPMI", 20, kRequests}};

inline constexpr std::string_view kPlaces[] = {"row %d, slot %d", "U%d", "bay %d; left", "tray %d"};
inline constexpr std::string_view kParts[] = {"PN-%d-%d", "SN%d%d", "7E%d rev %d"};
inline constexpr std::string_view kLabels[] = {"J%d", "Sensor %d of segment %d", "TP%d"};
inline constexpr std::string_view kNotes[] = {"calibrated at %d", "see drawing %d-%d, sheet 2", "not hot-pluggable"};
inline constexpr std::string_view kColours[] = {"blue", "amber", "green"};
inline constexpr std::string_view kFactors[] = {"1/%d", "%d", "0.%d"};

inline constexpr ItemRule kSensorProperties[] = {{"P_LOCATION", 60, kPlaces}, {"P_PART", 25, kParts},
                                                 {"P_LABEL", 45, kLabels},    {"P_NOTE", 15, kNotes},
                                                 {"P_SCALE", 35, kFactors},   {"P_SUPPLIER", 10, kParts}};
inline constexpr ItemRule kDeviceProperties[] = {{"P_COLOUR", 30, kColours}, {"P_LOCATION", 60, kPlaces}};
inline constexpr ItemRule kViewProperties[] = {{"P_LABEL", 60, kLabels}, {"P_NOTE", 20, kNotes}};
/// The names of all the others, so that they are names of properties on the smallest board too.
inline constexpr ItemRule kSystemProperties[] = {
    {"P_LOCATION", 100, kPlaces}, {"P_LABEL", 100, kLabels}, {"P_NOTE", 100, kNotes}, {"P_PART", 100, kParts}};

inline constexpr ItemRule kBoardProperties[] = {{"Vendor", 100, kParts},     {"Drawing", 100, kLabels},
                                                {"Assembly", 100, kPlaces},  {"Contact", 100, kNotes},
                                                {"Revision", 100, kFactors}, {"Colour", 100, kColours}};

/// Values of globals. The first name nothing that may stand later.
inline constexpr std::string_view kFirstGlobals[] = {"VT_VALUE,%d", "VT_READ,%x,16,BUSTYPE_SMBUS,%w"};
inline constexpr std::string_view kGlobals[] = {"VT_VALUE,%d", "VT_CALL,%c", "VT_TABLE,%t,%g", "VT_CALC,%o,%g,%d",
                                                "VT_READ,%x,16,BUSTYPE_SMBUS,%w"};

/// An action: the working values VALUE_1, VALUE_2 and so on, and what it results in.
struct ActionPattern {
    unsigned arguments;
    std::span<const std::string_view> steps;
    std::string_view result;
};

inline constexpr std::string_view kSignedByte[] = {"VT_READ,%x,16,BUSTYPE_SMBUS,ARG1", "VT_CALC,&,VALUE_1,0xFF",
                                                   "VT_CALC,-,VALUE_2,256"};
inline constexpr std::string_view kScaledPort[] = {"VT_WRITE,%p,8,BUSTYPE_SIMPLEIOPORT,0,ARG1",
                                                   "VT_READ,%p,8,BUSTYPE_SIMPLEIOPORT,0", "VT_CALC,*,VALUE_2,ARG2"};
inline constexpr std::string_view kSelect[] = {"VT_SMBUS_SEND,%w,8,BUSTYPE_SMBUS,0x00,ARG1"};
inline constexpr std::string_view kWaitWhileBusy[] = {"VT_READ_BITS,%x,0x80,BUSTYPE_SMBUS,ARG1", "VT_SKIP,VALUE_1",
                                                      "VT_JUMP,VALUE_5", "VT_WAIT,%d",
                                                      "VT_WRITE,%x,8,BUSTYPE_SMBUS,ARG1,ARG2"};
inline constexpr std::string_view kTwoBytes[] = {"VT_READ,%x,8,BUSTYPE_SMBUS,%w", "VT_READ,%x,8,BUSTYPE_SMBUS,%w",
                                                 "VT_PACK,VALUE_1,VALUE_2"};
inline constexpr std::string_view kOneByte[] = {"VT_READ,%x,8,BUSTYPE_SMBUS,ARG1"};
inline constexpr std::string_view kStep[] = {"VT_CALL,%c", "VT_CALC,+,VALUE_1,ARG1"};
inline constexpr std::string_view kGuard[] = {"VT_CALC,>,%g,%d,1,0", "VT_IF,VALUE_1,%c"};
inline constexpr std::string_view kRequest[] = {"VT_IPMI,%x,%x,ARG1"};

/// The first calls no other action.
inline constexpr ActionPattern kActions[] = {
    {1, kSignedByte, "VT_CALC,>,VALUE_2,127,VALUE_3,VALUE_2"},
    {2, kScaledPort, "VT_CALC,/,VALUE_3,%d"},
    {1, kSelect, "VT_SMBUS_RECEIVE,%w,8,BUSTYPE_SMBUS,0x00"},
    {2, kWaitWhileBusy, "VT_VALUE,ARG2"},
    {0, kTwoBytes, "VT_CALC,/,%d,VALUE_3"},
    {1, kOneByte, "VT_TABLE,%t,VALUE_1"},
    {1, kStep, "VT_CALC,>=,VALUE_2,255,255,VALUE_2"},
    {0, kGuard, "VT_VALUE,VALUE_1"},
    {1, kRequest, "VT_VALUE,ARG1"},
};

}  // namespace zek::bench
