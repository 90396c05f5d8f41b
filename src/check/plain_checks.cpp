// The two passes of numbers, texts, lists and repeater items.
#include <iterator>

#include "check/cross_references.h"
#include "check/entry_checks.h"
#include "check/messages.h"
#include "check/vocabulary.h"
#include "model/output.h"

namespace zek {

namespace {

bool IsParentKnown(const CZEKObj& section, const std::string& parent) {
    if (section.m_dwType != kGroupSection && section.m_dwType != kSensorSection) return true;
    if (section.m_dwType == kGroupSection && parent == "0") return true;
    return References()->FirstNamed(kGroupSection, parent).section != nullptr;
}

/// Whether a text of this type is looked up among the sections.
bool Refers(unsigned type) { return type == kParent || type == kPID || type == kID; }

bool IsPIDKnown(const std::string& pid) {
    const unsigned id = NumberOr0(pid);
    return id == 0 || References()->IsTavrGroupID(id);
}

}  // namespace

}  // namespace zek

unsigned CGEDWORD::IsValid(CZEKObj* parent, unsigned flag) {
    if (const auto decided = zek::DecidedAtOnce(*this, parent, flag, zek::kNumberClass)) return *decided;
    unsigned& number = *zek::NumberOf(m_ZekEntryData);
    number = 0;
    std::string text;
    if (!zek::TakeSubString(*this, parent, flag, text)) return 0;
    if (GetPreDefinedValue(text, &number) || StringToLong(text, &number)) return 1;
    if (m_dwType == zek::kDefinition && text.empty()) return 1;
    LOG(zek::kNotANumber, WHERE(*this, *parent), text.c_str());
    return 0;
}

unsigned CGESTRING::IsValid(CZEKObj* parent, unsigned flag) {
    if (const auto decided = zek::DecidedAtOnce(*this, parent, flag, zek::kTextClass)) return *decided;
    std::string& text = *zek::TextOf(m_ZekEntryData);
    if (!zek::TakeSubString(*this, parent, flag, text)) return 0;
    const bool numeric = (m_dwType & zek::kNumericMask) == zek::kNumericText;
    if (!text.empty() && (!numeric || zek::IsNumberOrName(text))) return 1;
    if (parent->m_strName == "SYSTEM" && m_strName == "MODEL") return 1;
    if (text.empty()) {
        LOG(zek::kNoSubString, WHERE(*this, *parent));
    } else {
        LOG(zek::kNotANumber, WHERE(*this, *parent), text.c_str());
    }
    return 0;
}

unsigned CGESTRING::IsValidEx(CZEKObj* parent, unsigned) {
    if (!zek::Refers(m_dwType)) return 1;
    const std::string* text = zek::TextOf(*this);
    if (!text) return 1;
    const auto report = [&](bool known, const auto& message) {
        if (!known) LOG(message, WHERE(*this, *parent), text->c_str());
        return unsigned{known};
    };
    if (m_dwType == zek::kParent) return report(zek::IsParentKnown(*parent, *text), zek::kNoSuchParent);
    if (m_dwType == zek::kPID) return report(zek::IsPIDKnown(*text), zek::kNoSuchPID);
    if (m_dwType == zek::kID && parent->m_dwType == zek::kSensorSection) {
        return report(zek::References()->IsListedSensor(zek::NumberOr0(*text)), zek::kSensorNotListed);
    }
    return 1;
}

unsigned CGESTRINGLIST::IsValid(CZEKObj* parent, unsigned flag) {
    if (const auto decided = zek::DecidedAtOnce(*this, parent, flag, zek::kListClass)) return *decided;
    zek::CutSubStrings(*this);
    zek::TextList& list = *zek::ListOf(m_ZekEntryData);
    zek::MoveOrCopyList(*this, 0, m_vstrSubStr.size(), flag, list);
    zek::ReleaseSubStrings(*this, flag);
    if ((m_dwType & zek::kNumericMask) == zek::kNumericList) return 1;
    unsigned valid = 1;
    for (const std::string& text : list) {
        if (zek::IsNumberOrName(text)) continue;
        LOG(zek::kNotANumber, WHERE(*this, *parent), text.c_str());
        valid = 0;
    }
    return valid;
}

unsigned CGESTRINGLIST::IsValidEx(CZEKObj* parent, unsigned) {
    const zek::TextList* list = m_dwType == zek::kSensors ? zek::ListOf(m_ZekEntryData) : nullptr;
    if (!list) return 1;
    // Unknown sensors never fail the check, and none behind the first known one is looked at: hosts rely on both.
    for (const std::string& id : *list) {
        if (zek::References()->IsSensorID(zek::NumberOr0(id))) return 1;
        LOG(zek::kNoSuchSensor, WHERE(*this, *parent), id.c_str());
    }
    return 1;
}

unsigned CGEREPEATER::IsValid(CZEKObj* parent, unsigned flag) {
    if (const auto decided = zek::DecidedAtOnce(*this, parent, flag, zek::kRepeaterClass)) return *decided;
    zek::CutSubStrings(*this);
    if (m_vstrSubStr.size() < 2) {
        LOG(m_vstrSubStr.empty() ? zek::kNoSubString : zek::kFewSubStrings, WHERE(*this, *parent));
        return 0;
    }
    const zek::Payload item = zek::RepeaterOf(m_ZekEntryData);
    for (std::size_t i = 0; i < 2; ++i) zek::MoveOrCopy(m_vstrSubStr[i], flag, item.strings[i]);
    zek::TextList further;
    zek::MoveOrCopyList(*this, 2, m_vstrSubStr.size() - 2, flag, further);
    // An item that is checked again gets its further elements again: hosts rely on it.
    item.list->insert(item.list->end(), std::make_move_iterator(further.begin()),
                      std::make_move_iterator(further.end()));
    zek::ReleaseSubStrings(*this, flag);
    return 1;
}

unsigned CGEREPEATER::IsValidEx(CZEKObj* parent, unsigned flag) {
    const zek::Payload item = zek::RepeaterOf(m_ZekEntryData);
    if (!item.list) return 1;
    const std::string& count = item.strings[0];
    const std::string& action = item.strings[1];
    const auto checkNumber = [&](const std::string& text) {
        return zek::HasPrefix(text, zek::kGlobalPrefix) ? ChkGlobalName(text, parent, flag)
                                                        : ChkDigital(text, parent, flag);
    };
    unsigned valid = ChkActionName(action, parent, flag);
    valid &= checkNumber(count);
    for (const std::string& text : *item.list) {
        // An argument is taken as it stands, whatever its number: hosts rely on it.
        if (!zek::HasPrefix(text, zek::kGlobalPrefix) && zek::HasPrefix(text, zek::kArgPrefix)) continue;
        valid &= checkNumber(text);
    }
    valid &= ChkActionParamNum(action, static_cast<unsigned>(item.list->size()), parent, flag);
    return valid;
}
