#include "entry_roles.h"

#include <algorithm>

#include "debug_layout.h"
#include "zekcomp/identifiers.h"
#include "zekcomp/predefined.h"
#include "zekcomp/value_shapes.h"

namespace zek::tool {
namespace {

constexpr unsigned kParent = TextKey(0x14);

/// The class of lists, which SENSORS alone is.
constexpr unsigned kListClass = 0x1004;

/// The class of an entry's data.
constexpr unsigned ClassOf(unsigned type) { return type >> 16; }

Role RoleOfOperand(unsigned valueType, std::size_t at) {
    const ValueShape* const shape = ShapeOf(valueType);
    if (!shape || at >= shape->operands.size()) return Role::kReference;
    switch (shape->operands[at]) {
        case kOperatorOperand: return Role::kOperator;
        case kActionOperand: return Role::kAction;
        case kTableOperand: return Role::kTable;
        default: return Role::kReference;
    }
}

Role RoleOfText(unsigned type) {
    if (type == kParent) return Role::kGroup;
    if (type == kRowKey) return Role::kPlainNumber;
    constexpr unsigned kOrdinal = 0xFFF;
    return (type & ~kOrdinal) == NumericKey(0) ? Role::kWord : Role::kText;
}

}  // namespace

Role RoleOf(const DebugEntry& entry, std::size_t at) {
    constexpr Role kRepeaterRoles[] = {Role::kPlainNumber, Role::kAction, Role::kReference};
    switch (ClassOf(entry.type)) {
        case ClassOf(ValueKey(0)): return at == 0 ? Role::kValueType : RoleOfOperand(entry.number, at - 1);
        case ClassOf(kRepeaterKey): return kRepeaterRoles[std::min<std::size_t>(at, 2)];
        case kListClass: return Role::kPlainNumber;
        default: return RoleOfText(entry.type);
    }
}

bool IsValue(const DebugEntry& entry) { return ClassOf(entry.type) == ClassOf(ValueKey(0)); }

bool IsTableRow(const DebugEntry& entry) { return entry.type == kRowKey; }

bool IsList(const DebugEntry& entry) { return ClassOf(entry.type) == kListClass; }

std::optional<unsigned> PlainNumber(std::string_view text) {
    unsigned number = 0;
    return StringToLong(std::string(text), &number) ? std::optional(number) : std::nullopt;
}

std::optional<unsigned> NumberOf(Role role, std::string_view text, const std::map<std::string, unsigned>& names) {
    // A predefined name may begin with digits, and so be a number, too.
    const auto name = role == Role::kPlainNumber ? names.end() : names.find(std::string(text));
    const bool nameCounts = name != names.end() && role != Role::kReference;
    if (nameCounts) return name->second;
    if (const auto number = PlainNumber(text)) return number;
    return name == names.end() ? std::nullopt : std::optional(name->second);
}

std::optional<unsigned> IdOf(const DebugSection& section, const std::map<std::string, unsigned>& names) {
    const DebugEntry* const entry = section.Entry("ID");
    if (!entry || entry->texts.empty()) return {};
    const auto id = NumberOf(Role::kWord, entry->texts[0], names);
    return id == kIdUnresolved ? std::nullopt : id;
}

}  // namespace zek::tool
