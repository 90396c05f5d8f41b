/// Every number of the source model that has a meaning: type ids of sections and entries, their classes, notation bits.
/// Relies on nothing.
#pragma once

/// A bit set on every object of the model (zek::kRequired, zek::kFamily; further bits are carried and never read).
enum tagNOTATION : unsigned {};

namespace zek {

// Section kinds, numbered from 1 in the order of the keyword table.
inline constexpr unsigned kSectionClass = 0x20000000;
inline constexpr unsigned kSectionOrdinalMask = 0x00FFFFFF;
inline constexpr unsigned kQuorzekSection = 0x20000001;
inline constexpr unsigned kPropertySection = 0x20000002;
inline constexpr unsigned kSystemSection = 0x20000003;
inline constexpr unsigned kGroupSection = 0x20000004;
inline constexpr unsigned kSensorSection = 0x20000005;
inline constexpr unsigned kDeviceSection = 0x20000006;
inline constexpr unsigned kActionSection = 0x20000007;
inline constexpr unsigned kTableSection = 0x20000008;
inline constexpr unsigned kTavrGroupSection = 0x20000009;
inline constexpr unsigned kGlobalSection = 0x2000000a;
inline constexpr unsigned kRepeaterSection = 0x2000000b;
inline constexpr unsigned kDefineSection = 0x2000000c;
inline constexpr unsigned kIfdefSection = 0x2000000d;
inline constexpr unsigned kIncludeSection = 0x2000000e;

// Classes of entries: what their typed data is.
inline constexpr unsigned kEntryClassMask = 0xFFFF0000;
inline constexpr unsigned kNumberClass = 0x10010000;
inline constexpr unsigned kTextClass = 0x10020000;
inline constexpr unsigned kListClass = 0x10040000;
inline constexpr unsigned kValueClass = 0x10080000;
inline constexpr unsigned kRepeaterClass = 0x10100000;

// Keys whose text is a number, and lists of sensor ids.
inline constexpr unsigned kNumericMask = 0xFFFFF000;
inline constexpr unsigned kNumericText = 0x10028000;
inline constexpr unsigned kNumericList = 0x10048000;

// Entries.
inline constexpr unsigned kDefinition = 0x10010001;
inline constexpr unsigned kVersion = 0x10020001;
inline constexpr unsigned kTableRow = 0x10020012;
inline constexpr unsigned kModel = 0x10020013;
inline constexpr unsigned kParent = 0x10020014;
inline constexpr unsigned kName = 0x10020015;
inline constexpr unsigned kDefineWord = 0x10020016;
inline constexpr unsigned kProperty = 0x10020017;
inline constexpr unsigned kPrefixP = 0x10020018;
inline constexpr unsigned kFile = 0x10020019;
inline constexpr unsigned kType = 0x10028002;
inline constexpr unsigned kFlag = 0x10028003;
inline constexpr unsigned kSouthbridge = 0x10028004;
inline constexpr unsigned kNorthbridge = 0x10028005;
inline constexpr unsigned kZekLoop = 0x10028006;
inline constexpr unsigned kChildGroup = 0x10028007;
inline constexpr unsigned kID = 0x10028008;
inline constexpr unsigned kInitFlag = 0x10028009;
inline constexpr unsigned kControlMask = 0x1002800a;
inline constexpr unsigned kTheory = 0x1002800b;
inline constexpr unsigned kThresholdFH = 0x1002800c;
inline constexpr unsigned kThresholdWH = 0x1002800d;
inline constexpr unsigned kThresholdFL = 0x1002800e;
inline constexpr unsigned kThresholdWL = 0x1002800f;
inline constexpr unsigned kArgNumber = 0x10028010;
inline constexpr unsigned kPID = 0x10028011;
inline constexpr unsigned kSensors = 0x10048001;
inline constexpr unsigned kValue = 0x10080000;
inline constexpr unsigned kGlobal = 0x10080001;
inline constexpr unsigned kValueInit = 0x10080002;
inline constexpr unsigned kValueDeinit = 0x10080003;
inline constexpr unsigned kValueEntry = 0x10080004;
inline constexpr unsigned kValueExit = 0x10080005;
inline constexpr unsigned kValueIpmi = 0x10080006;
inline constexpr unsigned kActionValue = 0x10080007;
inline constexpr unsigned kOwnValue = 0x10080008;
inline constexpr unsigned kRepeaterItem = 0x10100001;

// Notation bits that rules test.
inline constexpr unsigned kRequired = 1;
inline constexpr unsigned kFamily = 8;

// The notation of what the source adds to the declared entries.
inline constexpr unsigned kNotationRepeated = 2;
inline constexpr unsigned kNotationFamily = 10;
inline constexpr unsigned kNotationActionValue = 14;
inline constexpr unsigned kNotationFamilyValue = 46;

/// The flag of an entry check made while the source is read: the entry keeps its sub-strings.
inline constexpr unsigned kWhileReading = 255;

constexpr unsigned EntryClass(unsigned type) { return type & kEntryClassMask; }

}  // namespace zek
