#include "board.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "content.h"
#include "text.h"

namespace zek::bench {
namespace {

constexpr unsigned kChildren = 8;  ///< the most groups below one
constexpr unsigned kWordsInSection = 8;
constexpr unsigned kGlobalsInSection = 6;
constexpr unsigned kRepeatersInSection = 4;

unsigned InProportion(unsigned index, unsigned count, unsigned of) {
    return static_cast<unsigned>(std::uint64_t{index} * of / count);
}

}  // namespace

constexpr Board::KindRow Board::kKinds[] = {
    {0, &Board::FillQuorzek}, {32, &Board::FillDefine}, {0, &Board::FillSystem},  {160, &Board::FillProperty},
    {48, &Board::FillTable},  {20, &Board::FillAction}, {48, &Board::FillGlobal}, {80, &Board::FillRepeater},
    {10, &Board::FillGroup},  {1, &Board::FillSensor},  {18, &Board::FillDevice}, {14, &Board::FillView},
};

const Board::KindRow& Board::RowOf(Kind kind) {
    static_assert(std::size(kKinds) == kKindNames.size(), "a row for each kind");
    return kKinds[static_cast<unsigned>(kind)];
}

unsigned Board::Count(Kind kind) const {
    const unsigned sensorsForOne = RowOf(kind).sensorsForOne;
    const unsigned count = sensorsForOne ? std::max(1U, sensors_ / sensorsForOne) : 1;
    return kind == Kind::kDefine ? count + 1 : count;  // the first defines the words of the language
}

unsigned Board::Sections() const {
    unsigned sections = 0;
    for (unsigned kind = 0; kind < kKindNames.size(); ++kind) sections += Count(Kind{kind});
    return sections;
}

void Board::Fill(Kind kind, unsigned index, Section& section) const {
    Random random(seed_, kContents + static_cast<unsigned>(kind), index);
    section.Begin(kind, index);
    (this->*RowOf(kind).fill)(section, random);
}

unsigned Board::FirstChildOf(unsigned group) const { return group * kChildren + 1; }

unsigned Board::ChildrenOf(unsigned group) const {
    const unsigned first = FirstChildOf(group);
    const unsigned count = Count(Kind::kGroup);
    return first < count ? std::min(kChildren, count - first) : 0;
}

unsigned Board::FirstOfGroup(Kind kind, unsigned group) const {
    const unsigned groups = Count(Kind::kGroup);
    return static_cast<unsigned>((std::uint64_t{group} * Count(kind) + groups - 1) / groups);
}

void Board::FillQuorzek(Section& section, Random& /*random*/) const { section.Text(Key::kVersion, "1.0"); }

void Board::FillDefine(Section& section, Random& random) const {
    if (section.index > 0) {
        const unsigned first = (section.index - 1) * kWordsInSection;
        for (unsigned i = 0; i < kWordsInSection; ++i) section.words.push_back({WordOf(first + i), random.Below(128)});
        return;
    }
    const auto add = [&section](const auto& names) {
        for (const auto& name : names) section.words.push_back({std::string(name.word), name.number});
    };
    add(kLanguageWords);
    add(kSensorTypes);
    add(kTableTypes);
    add(kInitFlags);
}

void Board::FillSystem(Section& section, Random& random) const {
    section.Number(Key::kType, 1);
    section.Text(Key::kModel, Numbered("Board of sensors, size ", sensors_));
    section.Number(Key::kFlag, 1, Form::kHex);
    section.Number(Key::kSouthbridge, 0x0A20, Form::kHex);
    section.Number(Key::kNorthbridge, 0x0A10, Form::kHex);
    section.Number(Key::kZekLoop, 1000);
    AddProperties(section, kSystemProperties, random);
}

void Board::FillProperty(Section& section, Random& random) const {
    AddProperties(section, kBoardProperties, random);
    for (Property& property : section.properties) AppendNumber(property.key, section.index);
}

void Board::FillTable(Section& section, Random& random) const {
    section.Text(Key::kName, TableName(section.index));
    const WordName& type = random.Pick<WordName>(kTableTypes);
    section.WordFor(Key::kType, type.word, type.number);
    section.rows.push_back({0, 255, random.Below(256)});
    unsigned first = random.Below(32);
    while (first < 256) {
        const unsigned last = std::min(255U, first + random.Below(48));
        section.rows.push_back({first, last, random.Below(256)});
        first = last + 1 + random.Below(8);
    }
}

void Board::FillAction(Section& section, Random& random) const {
    const ActionPattern& pattern = PatternOfAction(section.index);
    const Scope scope = {section.index, Everything().globals};
    section.Text(Key::kName, ActionName(section.index));
    if (pattern.arguments) section.Number(Key::kArgNumber, pattern.arguments);
    unsigned step = 0;
    for (const std::string_view value : pattern.steps)
        AddValue(section, Numbered("VALUE_", ++step), value, scope, random);
    AddValue(section, "VALUE", pattern.result, scope, random);
}

void Board::FillGlobal(Section& section, Random& random) const {
    const unsigned first = section.index * kGlobalsInSection;
    std::span<const std::string_view> patterns = kGlobals;
    if (first == 0) patterns = kFirstGlobals;
    const Scope scope = {Everything().actions, first};
    for (unsigned i = 0; i < kGlobalsInSection; ++i) {
        AddValue(section, GlobalOf(first + i), random.Pick(patterns), scope, random);
    }
}

void Board::FillRepeater(Section& section, Random& random) const {
    const unsigned first = section.index * kRepeatersInSection;
    for (unsigned i = 0; i < kRepeatersInSection; ++i) {
        Repeated repeated = {NameOfSection(Kind::kRepeater, first + i, kRepeaterNames), 1 + random.Below(16), {}};
        ExpandCall(false, Everything(), random, repeated.call);
        section.repeated.push_back(std::move(repeated));
    }
}

void Board::FillGroup(Section& section, Random& random) const {
    section.Text(Key::kParent, section.index == 0 ? "0" : GroupName((section.index - 1) / kChildren));
    section.Text(Key::kName, GroupName(section.index));
    section.Number(Key::kChildGroup, ChildrenOf(section.index));
    AddValues(section, kGroupValues, random);
}

void Board::FillSensor(Section& section, Random& random) const {
    const SensorType& type = random.Pick<SensorType>(kSensorTypes);
    section.Text(Key::kParent, GroupName(GroupOfSensor(section.index)));
    section.Text(Key::kName, NameOfSection(Kind::kSensor, section.index, type.names));
    section.Number(Key::kId, IdOfSensor(section.index), random.OneIn(5) ? Form::kHex : Form::kDecimal);
    section.WordFor(Key::kType, type.word, type.number);
    const WordName& flag = random.Pick<WordName>(kInitFlags);
    section.WordFor(Key::kInitFlag, flag.word, flag.number);
    section.Number(Key::kControlMask, 1 + random.Below(15), Form::kHex);

    const unsigned theory = type.theory + random.Below(type.theory);
    const std::pair<Key, unsigned> readings[] = {{Key::kTheory, theory},
                                                 {Key::kThresholdFH, theory + theory / 2 + 2},
                                                 {Key::kThresholdWH, theory + theory / 4 + 1},
                                                 {Key::kThresholdFL, theory / 2},
                                                 {Key::kThresholdWL, theory - theory / 4}};
    const Form form = random.OneIn(6) ? Form::kHex : Form::kDecimal;
    for (const auto& [key, reading] : readings) {
        if (random.Percent(key == Key::kTheory ? 40 : 80)) section.Number(key, reading, form);
    }
    AddValues(section, kSensorValues, random);
    if (!type.unit.empty()) section.properties.push_back({"P_UNIT", std::string(type.unit)});
    AddProperties(section, kSensorProperties, random);
}

void Board::FillDevice(Section& section, Random& random) const {
    section.Text(Key::kName, NameOfSection(Kind::kDevice, section.index, kDeviceNames));
    section.Number(Key::kId, section.index + 1);
    const WordName& flag = random.Pick<WordName>(kInitFlags);
    section.WordFor(Key::kInitFlag, flag.word, flag.number);
    section.Number(Key::kControlMask, random.Below(16), Form::kHex);
    AddValues(section, kDeviceValues, random);
    AddProperties(section, kDeviceProperties, random);
}

void Board::FillView(Section& section, Random& random) const {
    const unsigned views = Count(Kind::kTavrGroup);
    section.Text(Key::kName, NameOfSection(Kind::kTavrGroup, section.index, kViewNames));
    section.Number(Key::kId, section.index + 1);
    section.Number(Key::kPid, (section.index + kChildren - 1) / kChildren);
    // Each sensor is in one view by its place, and some are in another one too.
    const unsigned end = InProportion(section.index + 1, views, sensors_);
    for (unsigned i = InProportion(section.index, views, sensors_); i < end; ++i) {
        section.sensors.push_back(IdOfSensor(i));
        if (random.OneIn(8)) section.sensors.push_back(IdOfSensor(random.Below(sensors_)));
    }
    AddProperties(section, kViewProperties, random);
}

Board::Scope Board::Everything() const { return {Count(Kind::kAction), Count(Kind::kGlobal) * kGlobalsInSection}; }

void Board::AddValues(Section& section, std::span<const ItemRule> rules, Random& random) const {
    for (const ItemRule& rule : rules) {
        if (!random.Percent(rule.percent)) continue;
        AddValue(section, std::string(rule.key), random.Pick(rule.patterns), Everything(), random);
    }
}

void Board::AddProperties(Section& section, std::span<const ItemRule> rules, Random& random) const {
    for (const ItemRule& rule : rules) {
        if (!random.Percent(rule.percent)) continue;
        Property& property = section.properties.emplace_back(Property{std::string(rule.key), {}});
        Expand(random.Pick(rule.patterns), Everything(), random, property.text);
    }
}

void Board::AddValue(Section& section, std::string key, std::string_view pattern, Scope scope, Random& random) const {
    const std::size_t comma = std::min(pattern.find(','), pattern.size());
    Value& value = section.values.emplace_back(Value{std::move(key), pattern.substr(0, comma), {}});
    if (comma < pattern.size()) Expand(pattern.substr(comma + 1), scope, random, value.operands);
}

void Board::Expand(std::string_view pattern, Scope scope, Random& random, std::string& out) const {
    std::size_t begin = 0;
    for (std::size_t place = pattern.find('%'); place != std::string_view::npos; place = pattern.find('%', begin)) {
        out += pattern.substr(begin, place - begin);
        ExpandPlace(pattern[place + 1], scope, random, out);
        begin = place + 2;
    }
    out += pattern.substr(begin);
}

void Board::ExpandPlace(char place, Scope scope, Random& random, std::string& out) const {
    switch (place) {
        case 'x': return AppendHex(out, random.Below(256));
        case 'p': return AppendHex(out, 0x0A00 + random.Below(0x100));
        case 'o': return Append(out, random.Pick<std::string_view>(kOperators));
        case 'm': return Append(out, random.Pick<std::string_view>(kComparisons));
        case 'w': return Append(out, WordOf(random.Below((Count(Kind::kDefine) - 1) * kWordsInSection)));
        case 'g': return Append(out, GlobalOf(random.Below(scope.globals)));
        case 't': return Append(out, TableName(random.Below(Count(Kind::kTable))));
        case 'c': return ExpandCall(false, scope, random, out);
        case 'C': return ExpandCall(true, scope, random, out);
        default: return AppendNumber(out, 1 + random.Below(999));
    }
}

void Board::ExpandCall(bool passArgument, Scope scope, Random& random, std::string& out) const {
    const unsigned action = random.Below(scope.actions);
    out += ActionName(action);
    for (unsigned left = PatternOfAction(action).arguments; left > 0; --left) {
        const bool passed = passArgument && left == 1;
        Expand(passed ? ",ARG1" : random.OneIn(2) ? ",%x" : ",%w", scope, random, out);
    }
}

std::string Board::NameOfSection(Kind kind, unsigned index, std::span<const std::string_view> names) const {
    Random random(seed_, kNames + static_cast<unsigned>(kind), index);
    std::string name(random.Pick(names));
    // Names for people have a blank before the number, names that values use have none.
    if (kind >= Kind::kGroup) name += ' ';
    AppendNumber(name, index);
    return name;
}

std::string Board::GroupName(unsigned index) const { return NameOfSection(Kind::kGroup, index, kGroupNames); }
std::string Board::WordOf(unsigned index) const { return NameOfSection(Kind::kDefine, index, kWordNames); }
std::string Board::GlobalOf(unsigned index) const { return NameOfSection(Kind::kGlobal, index, kGlobalNames); }
std::string Board::TableName(unsigned index) const { return NameOfSection(Kind::kTable, index, kTableNames); }
std::string Board::ActionName(unsigned index) const { return NameOfSection(Kind::kAction, index, kActionNames); }

const ActionPattern& Board::PatternOfAction(unsigned index) const {
    return index == 0 ? kActions[0] : Random(seed_, kPatterns, index).Pick<ActionPattern>(kActions);
}

unsigned Board::GroupOfSensor(unsigned index) const { return InProportion(index, sensors_, Count(Kind::kGroup)); }

/// Numbers rise with gaps, as where each group has some to spare.
unsigned Board::IdOfSensor(unsigned index) const { return index + 1 + GroupOfSensor(index) * 6; }

}  // namespace zek::bench
