// The two passes of VALUE entries.
#include "check/cross_references.h"
#include "check/entry_checks.h"
#include "check/messages.h"
#include "check/vocabulary.h"
#include "model/output.h"
#include "zekcomp/value_shapes.h"

namespace zek {

namespace {

/// The operands of a bus access, by position in its payload.
enum BusOperand : std::size_t { kBusDevice = 0, kBusRegister = 1, kBusType = 2, kBaseAddress = 3 };

constexpr char kSmbusWord[] = "BUSTYPE_SMBUS";
constexpr char kIoPortWord[] = "BUSTYPE_SIMPLEIOPORT";
constexpr char kSmbusBaseAddress[] = "0x00";

/// One VALUE entry in its section, with its value.
struct ValueCheck {
    CGEVALUE& entry;
    CZEKObj& section;
    unsigned flag;
    CGeValue& value;

    enum Outcome { kSound, kFailed, kTooFew };

    Outcome Convert(const ValueShape& shape);
    Outcome ConvertOperation(const Payload& payload);
    bool IsBaseAddressSound(const Payload& payload);
    unsigned CheckOperand(char operand, const std::string& text);
    unsigned CheckPayload(const ValueShape& shape, const Payload& payload);
    unsigned CheckOperation(const Payload& payload);
    unsigned CheckList(const ValueShape& shape, const Payload& payload);
    unsigned HighestArgument(const ValueShape& shape, const Payload& payload) const;
    void ReportSmbus(const Payload& payload);

    /// Whether the entry has enough sub-strings; too few and too many are reported.
    bool IsCountSound(std::size_t fewest, std::size_t most) {
        const std::size_t count = entry.m_vstrSubStr.size();
        const char* word = entry.m_vstrSubStr.front().c_str();
        if (count < fewest) {
            LOG(kNotEnough, WHERE(entry, section), word);
            return false;
        }
        if (count > most) LOG(kTooMuch, WHERE(entry, section), word);
        return true;
    }
};

/// How many elements of a list are kept: value type 7 takes four at most, the others all.
constexpr std::size_t MostElements(const ValueShape& shape) { return shape.type == kListOfFour ? 4 : kNoLimit; }

ValueCheck::Outcome ValueCheck::Convert(const ValueShape& shape) {
    if (!IsCountSound(shape.fewest, shape.most)) return kTooFew;
    const Payload payload = PayloadOf(value);
    if (shape.type == kOperation) return ConvertOperation(payload);
    std::size_t next = 1;  // behind the type word
    for (std::string& string : payload.strings) MoveOrCopy(entry.m_vstrSubStr[next++], flag, string);
    if (payload.list) MoveOrCopyList(entry, next, MostElements(shape), flag, *payload.list);
    return IsBusAccess(shape) && !IsBaseAddressSound(payload) ? kFailed : kSound;
}

ValueCheck::Outcome ValueCheck::ConvertOperation(const Payload& payload) {
    const std::string& operatorText = payload.strings[0] = entry.m_vstrSubStr[1];
    const unsigned code = GetOperator(operatorText);
    const std::size_t count = code < kFirstComparison ? 4 : 6;
    if (!IsCountSound(count, count)) return kTooFew;
    if (code == 0) {
        LOG(kBadOperator, WHERE(entry, section), operatorText.c_str());
        return kFailed;
    }
    for (std::size_t i = 2; i < count; ++i) MoveOrCopy(entry.m_vstrSubStr[i], flag, payload.strings[i - 1]);
    return kSound;
}

bool ValueCheck::IsBaseAddressSound(const Payload& payload) {
    if (payload.strings[kBusType] != kIoPortWord) return true;
    const std::string& address = payload.strings[kBaseAddress];
    if (unsigned number = 0; StringToLong(address, &number) && number == 0) return true;
    LOG(kBaseAddressNotZero, WHERE(entry, section), address.c_str());
    return false;
}

unsigned ValueCheck::CheckOperand(char operand, const std::string& text) {
    switch (operand) {
        case kReference: return entry.IsValidSubValue(text, &section, flag, 0);
        case kNumberOperand: return entry.ChkDigital(text, &section, flag);
        case kActionOperand: return entry.ChkActionName(text, &section, flag);
        case kTableOperand: return entry.ChkTableName(text, &section, flag);
        default: return entry.ChkValueName(text, &section, flag);
    }
}

unsigned ValueCheck::CheckOperation(const Payload& payload) {
    const std::size_t count = GetOperator(payload.strings[0]) < kFirstComparison ? 3 : 5;
    unsigned valid = 1;
    for (std::size_t i = 1; i < count; ++i) valid &= CheckOperand(kReference, payload.strings[i]);
    return valid;
}

/// The arguments that a call may name: in an action its ARGNUMBER decides, elsewhere the call has as many as it names.
unsigned ValueCheck::HighestArgument(const ValueShape& shape, const Payload& payload) const {
    if (shape.type != kCall || section.m_strName == kActionName) return 0;
    return static_cast<unsigned>(std::count_if(payload.list->begin(), payload.list->end(),
                                               [](const std::string& text) { return HasPrefix(text, kArgPrefix); }));
}

unsigned ValueCheck::CheckList(const ValueShape& shape, const Payload& payload) {
    const unsigned highest = HighestArgument(shape, payload);
    unsigned valid = 1;
    for (const std::string& text : *payload.list) valid &= entry.IsValidSubValue(text, &section, flag, highest);
    const std::size_t action = shape.operands.find(kActionOperand);
    if (action == std::string_view::npos) return valid;
    const auto count = static_cast<unsigned>(payload.list->size());
    return valid & entry.ChkActionParamNum(payload.strings[action], count, &section, flag);
}

unsigned ValueCheck::CheckPayload(const ValueShape& shape, const Payload& payload) {
    if (shape.type == kOperation) return CheckOperation(payload);
    if (shape.type == kSmbusList || shape.type == kSmbus) ReportSmbus(payload);
    // A bus access reports its references before its numbers.
    constexpr std::size_t kInOrder[] = {0, 1, 2, 3};
    constexpr std::size_t kReferencesFirst[] = {kBusDevice, kBaseAddress, kBusRegister, kBusType};
    const auto& order = IsBusAccess(shape) ? kReferencesFirst : kInOrder;
    unsigned valid = 1;
    for (std::size_t i = 0; i < shape.operands.size(); ++i) {
        valid &= CheckOperand(shape.operands[order[i]], payload.strings[order[i]]);
    }
    return shape.list ? valid & CheckList(shape, payload) : valid;
}

void ValueCheck::ReportSmbus(const Payload& payload) {
    // Both are worded as errors and fail nothing: hosts rely on it.
    if (payload.strings[kBaseAddress] != kSmbusBaseAddress) {
        LOG(kSmbusAddress, entry.GetFile(0).c_str(), entry.m_dwLine);
    }
    if (payload.strings[kBusType] != kSmbusWord) LOG(kSmbusType, entry.GetFile(0).c_str(), entry.m_dwLine);
}

}  // namespace

}  // namespace zek

unsigned CGEVALUE::IsValid(CZEKObj* parent, unsigned flag) {
    if (const auto decided = zek::DecidedAtOnce(*this, parent, flag, zek::kValueClass)) return *decided;
    zek::CutSubStrings(*this);
    if (m_vstrSubStr.empty()) {
        LOG(zek::kNoValueType, WHERE(*this, *parent));
        return 0;
    }
    using Check = zek::ValueCheck;
    Check::Outcome outcome = Check::kSound;
    unsigned type = 0;
    if (GetPreDefinedValue(m_vstrSubStr[0], &type)) {
        CGeValue& value = *zek::ValueOf(m_ZekEntryData);
        value.Destory();
        value.Create(type, m_vstrSubStr[0]);
        if (const zek::ValueShape* shape = zek::ShapeOf(type))
            outcome = Check{*this, *parent, flag, value}.Convert(*shape);
    } else {
        LOG(zek::kBadValueType, WHERE(*this, *parent), m_vstrSubStr[0].c_str());
        outcome = Check::kFailed;
    }
    // An entry with too few sub-strings keeps them.
    if (outcome != Check::kTooFew) zek::ReleaseSubStrings(*this, flag);
    return outcome == Check::kSound;
}

unsigned CGEVALUE::IsValidEx(CZEKObj* parent, unsigned flag) {
    CGeValue* value = zek::ValueOf(m_ZekEntryData);
    if (!value || !value->m_pData) return 1;
    const zek::ValueShape* shape = zek::ShapeOf(value->m_dwType);
    if (!shape) return 1;
    return zek::ValueCheck{*this, *parent, flag, *value}.CheckPayload(*shape, zek::PayloadOf(*value));
}

unsigned CGEVALUE::IsValidSubValue(const std::string& text, CZEKObj* parent, unsigned flag, unsigned maxArg) {
    if (zek::HasPrefix(text, zek::kValuePrefix)) return ChkValueName(text, parent, flag);
    if (zek::HasPrefix(text, zek::kArgPrefix)) return ChkArgName(text, parent, flag, maxArg);
    if (zek::HasPrefix(text, zek::kGlobalPrefix)) return ChkGlobalName(text, parent, flag);
    return ChkDigital(text, parent, flag);
}

unsigned CGEVALUE::ChkValueName(const std::string& name, CZEKObj* parent, unsigned) {
    if (zek::References()->HasValue(*static_cast<CZEKSection*>(parent), name)) return 1;
    LOG(zek::kNoSuchValue, WHERE(*this, *parent), name.c_str());
    return 0;
}
