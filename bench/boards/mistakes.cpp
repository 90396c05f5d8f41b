#include "mistakes.h"

#include <iterator>

namespace zek::bench {
namespace {

struct WrongValue {
    std::string_view type;
    std::string_view operands;
};

constexpr WrongValue kWrongValues[] = {{"VT_CALC", "+,G_Missing,1"},   {"VT_CALL", "MissingAction,1"},
                                       {"VT_TABLE", "MissingTable,1"}, {"VT_VALUE", "MISSING_WORD"},
                                       {"VT_VALUE", "ARG7"},           {"VT_JUMP", "VALUE_99"},
                                       {"VT_WAIT", "5,too,many,more"}};

void SpoilValue(Value& value, unsigned turn) {
    const WrongValue& wrong = kWrongValues[turn % std::size(kWrongValues)];
    value.type = wrong.type;
    value.operands = wrong.operands;
}

void SpoilParent(Section& section) {
    for (Field& field : section.fields) {
        if (field.key == Key::kParent) field.text = "Missing Group";
        if (field.key == Key::kPid) field.number = 0x7FFFFFFF;
    }
}

template <class Item>
void RepeatFirst(std::vector<Item>& items) {
    items.push_back(Item(items.front()));
}

}  // namespace

void AddMistake(Section& section, unsigned turn) {
    const bool parent = section.kind == Kind::kSensor || section.kind == Kind::kGroup;
    if (section.kind == Kind::kTavrGroup || (parent && turn % 4 == 0)) return SpoilParent(section);
    if (!section.properties.empty() && turn % 4 == 1) return RepeatFirst(section.properties);
    if (!section.values.empty()) return SpoilValue(section.values.back(), turn);
    if (!section.repeated.empty()) {
        section.repeated.back().call = "MissingAction,1";
        return;
    }
    if (!section.rows.empty()) return RepeatFirst(section.rows);
    if (!section.words.empty()) return RepeatFirst(section.words);
    if (!section.properties.empty()) return RepeatFirst(section.properties);
    SpoilParent(section);
}

}  // namespace zek::bench
