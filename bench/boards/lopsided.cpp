#include "lopsided.h"

#include <numeric>
#include <utility>
#include <vector>

#include "board.h"
#include "boards.h"
#include "text.h"

namespace zek::bench {
namespace {

Random RandomFor(std::uint64_t seed) { return Random(seed, kLopsided, 0); }

/// The words of the language, which every source with values needs.
void WriteLanguage(ZekText& text, std::uint64_t seed) {
    Section section;
    Board(kSmallestBoard, seed).Fill(Kind::kDefine, 0, section);
    text.Write(section);
}

void WriteGroup(ZekText& text, std::string_view name, std::string_view parent) {
    text.Header("GROUP");
    text.Item("PARENT", parent);
    text.Item("NAME", name);
    text.Item("CHILDGROUP", "0");
}

void WriteSensor(ZekText& text, std::string_view parent, std::string_view name, unsigned id, std::string_view value) {
    text.Header("SENSOR");
    text.Item("PARENT", parent);
    text.Item("NAME", name);
    text.Item("ID", Numbered("", id));
    text.Item("TYPE", "TEMPERATURE");
    text.Item("INITFLAG", "INIT_NONE");
    text.Item("CONTROLMASK", "0x03");
    text.Item("VALUE", value);
}

void WriteView(ZekText& text, unsigned id, unsigned parent, const std::vector<unsigned>& sensors) {
    Section section;
    section.Begin(Kind::kTavrGroup, 0);
    section.Text(Key::kName, Numbered("View ", id));
    section.Number(Key::kId, id);
    section.Number(Key::kPid, parent);
    section.sensors = sensors;
    text.Write(section);
}

/// An action with one argument.
void WriteSmallAction(ZekText& text, std::string_view name, std::string_view value) {
    text.Header("ACTION");
    text.Item("NAME", name);
    text.Item("ARGNUMBER", "1");
    text.Item("VALUE", value);
}

void WriteSmallTable(ZekText& text, std::string_view name, Random& random) {
    text.Header("TABLE");
    text.Item("NAME", name);
    text.Item("TYPE", "TABLE_STEPS");
    text.Item("0.255", "0");
    text.Item(Numbered("", random.Below(256)), "7");
}

/// So many items, with a header before each `inSection` of them.
template <class Item>
void WriteInSections(ZekText& text, std::string_view keyword, unsigned inSection, unsigned size, const Item& item) {
    for (unsigned i = 0; i < size; ++i) {
        if (i % inSection == 0) text.Header(keyword);
        item(i);
    }
}

void WriteProperty(ZekText& text, unsigned number, Random& random) {
    const std::string key = Numbered(random.OneIn(2) ? "Setting" : "Serial_number_of_part_", number);
    text.Item(key, Numbered("SN-", random.Below(1U << 30)));
}

std::vector<unsigned> AllFromOne(unsigned size) {
    std::vector<unsigned> ids(size);
    std::iota(ids.begin(), ids.end(), 1);
    return ids;
}

/// The key of a row: all ranges of bytes in a mixed order, then the same again with more and more zeros before the
/// numbers, so that the keys still differ.
std::string RowKey(unsigned index) {
    constexpr unsigned kRanges = 256 * 257 / 2;
    constexpr unsigned kMixed = 7919;  // has no factor in common with kRanges
    constexpr unsigned kZeros = 6;
    const unsigned range = static_cast<unsigned>(std::uint64_t{index} * kMixed % kRanges);
    const unsigned round = index / kRanges;
    // The 256 - low ranges that begin with `low` and the low + 1 that begin with 255 - low make 257 together.
    const unsigned low = range / 257;
    const unsigned place = range % 257;
    const unsigned first = place < 256 - low ? low : 255 - low;
    const unsigned last = place < 256 - low ? low + place : first + place - (256 - low);
    std::string key(round % kZeros, '0');
    AppendNumber(key, first);
    key.append(1, '.').append(round / kZeros, '0');
    AppendNumber(key, last);
    return key;
}

}  // namespace

void WriteProperties(ZekText& text, unsigned size, std::uint64_t seed) {
    Random random = RandomFor(seed);
    WriteInSections(text, "PROPERTY", size, size, [&](unsigned i) { WriteProperty(text, i, random); });
}

void WriteLongSections(ZekText& text, unsigned size, std::uint64_t seed) {
    constexpr unsigned kSections = 10;
    Random random = RandomFor(seed);
    for (unsigned section = 0; section < kSections; ++section) {
        text.Header("PROPERTY");
        const auto from = [size](std::uint64_t number) { return static_cast<unsigned>(number * size / kSections); };
        for (unsigned i = from(section); i < from(section + 1); ++i) WriteProperty(text, i, random);
    }
}

void WriteAction(ZekText& text, unsigned size, std::uint64_t seed) {
    Random random = RandomFor(seed);
    WriteLanguage(text, seed);
    WriteSmallAction(text, "Sequence", Numbered("VT_VALUE,VALUE_", size));
    text.Item("VALUE_1", "VT_READ,0x00,16,BUSTYPE_SMBUS,ARG1");
    for (unsigned i = 2; i <= size; ++i) {
        const std::string before = Numbered("VALUE_", 1 + random.Below(i - 1));
        text.Item(Numbered("VALUE_", i), random.OneIn(8) ? "VT_JUMP," + before : "VT_CALC,+,ARG1," + before);
    }
}

void WriteSensorsList(ZekText& text, unsigned size, std::uint64_t seed) {
    Random random = RandomFor(seed);
    WriteLanguage(text, seed);
    WriteGroup(text, "Board", "0");
    std::vector<unsigned> ids = AllFromOne(size);
    for (const unsigned id : ids) WriteSensor(text, "Board", Numbered("Inlet ", id), id, Numbered("VT_VALUE,", id));
    random.Shuffle(ids);
    WriteView(text, 1, 0, ids);
}

void WriteTails(ZekText& text, unsigned size, std::uint64_t seed) {
    const auto name = [](unsigned number) {
        std::string result = "Second_management_controller_of_the_left_hand_half_chassis_with_the_optional_riser_no_";
        AppendNumber(result, number, 10, 7);
        return result;
    };
    Random random = RandomFor(seed);
    WriteLanguage(text, seed);
    const unsigned some = size / 5;
    for (unsigned i = 0; i < some; ++i) WriteGroup(text, name(i), i == 0 ? "0" : name(i - 1));
    for (unsigned i = 0; i < some; ++i) WriteSmallTable(text, name(i), random);
    for (unsigned i = 0; i < some; ++i) {
        WriteSmallAction(text, name(i), "VT_TABLE," + name(random.Below(some)) + ",ARG1");
    }
    const std::vector<unsigned> ids = AllFromOne(size - 3 * some - 1);
    for (const unsigned id : ids) {
        const std::string group = name(random.Below(some));
        WriteSensor(text, group, name(id), id, "VT_CALL," + name(random.Below(some)) + ",5");
    }
    WriteView(text, 1, 0, ids);
}

void WriteGlobals(ZekText& text, unsigned size, std::uint64_t seed) {
    Random random = RandomFor(seed);
    WriteLanguage(text, seed);
    WriteInSections(text, "GLOBAL", 16, size, [&](unsigned i) {
        std::string value = i == 0 ? "VT_VALUE,1" : "VT_CALC,+";
        for (unsigned operand = 0; i > 0 && operand < 2; ++operand) value += Numbered(",G_Reading", random.Below(i));
        text.Item(Numbered("G_Reading", i), value);
    });
}

void WriteTables(ZekText& text, unsigned size, std::uint64_t seed) {
    Random random = RandomFor(seed);
    WriteLanguage(text, seed);
    for (unsigned i = 0; i < size; ++i) WriteSmallTable(text, Numbered("Curve", i), random);
    WriteInSections(text, "GLOBAL", 16, size, [&](unsigned i) {
        text.Item(Numbered("G_Reading", i), "VT_TABLE," + Numbered("Curve", random.Below(size)) + ",3");
    });
}

void WriteActions(ZekText& text, unsigned size, std::uint64_t seed) {
    Random random = RandomFor(seed);
    WriteLanguage(text, seed);
    WriteSmallAction(text, "Read0", "VT_READ,0x00,16,BUSTYPE_SMBUS,ARG1");
    for (unsigned i = 1; i < size; ++i) {
        WriteSmallAction(text, Numbered("Read", i), "VT_CALL," + Numbered("Read", random.Below(i)) + ",ARG1");
    }
}

void WriteRepeaters(ZekText& text, unsigned size, std::uint64_t seed) {
    Random random = RandomFor(seed);
    WriteActions(text, size, seed);
    WriteInSections(text, "REPEATER", 16, size, [&](unsigned i) {
        const std::string count = Numbered("", 1 + random.Below(16));
        text.Item(Numbered("Ramp", i), count + "," + Numbered("Read", random.Below(size)) + ",0x48");
    });
}

void WriteDefines(ZekText& text, unsigned size, std::uint64_t seed) {
    Random random = RandomFor(seed);
    WriteLanguage(text, seed);
    WriteInSections(text, "DEFINE", 16, size, [&](unsigned i) {
        const bool asBefore = i > 0 && random.OneIn(8);
        text.Item(Numbered("ADDRESS_", i), Numbered(asBefore ? "ADDRESS_" : "", random.Below(asBefore ? i : 128)));
    });
    WriteInSections(text, "GLOBAL", 16, size, [&](unsigned i) {
        text.Item(Numbered("G_Reading", i), Numbered("VT_VALUE,ADDRESS_", random.Below(size)));
    });
}

void WriteGroups(ZekText& text, unsigned size, std::uint64_t seed) {
    Random random = RandomFor(seed);
    WriteGroup(text, "Group 0", "0");
    for (unsigned i = 1; i < size; ++i) {
        WriteGroup(text, Numbered("Group ", i), Numbered("Group ", i < size / 2 ? i - 1 : random.Below(i)));
    }
}

void WriteViews(ZekText& text, unsigned size, std::uint64_t seed) {
    Random random = RandomFor(seed);
    WriteLanguage(text, seed);
    WriteGroup(text, "Board", "0");
    for (unsigned id = 1; id <= size; ++id) WriteSensor(text, "Board", Numbered("Inlet ", id), id, "VT_NONE");
    const unsigned empty = size / 2;
    const unsigned full = size - empty;
    for (unsigned id = 1; id <= size; ++id) {
        const unsigned sensor = size + 1 - id;
        std::vector<unsigned> sensors;
        if (id > empty) sensors.push_back(sensor);
        if (id > empty && sensor + full <= size) sensors.push_back(sensor + full);
        WriteView(text, id, id == 1 ? 0 : 1 + random.Below(id - 1), sensors);
    }
}

void WriteRows(ZekText& text, unsigned size, std::uint64_t seed) {
    Random random = RandomFor(seed);
    WriteLanguage(text, seed);
    text.Header("TABLE");
    text.Item("NAME", "Everything");
    text.Item("TYPE", "TABLE_CURVE");
    for (unsigned i = 0; i < size; ++i) text.Item(RowKey(i), Numbered("", random.Below(256)));
}

}  // namespace zek::bench
