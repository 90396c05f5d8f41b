#include "compile/compile.h"

#include <algorithm>
#include <array>
#include <memory>

#include "check/vocabulary.h"
#include "compile/init_tables.h"
#include "compile/numbering.h"
#include "compile/state.h"
#include "compile/tables.h"
#include "model/look_ahead.h"
#include "model/section.h"
#include "zekcomp/value_shapes.h"

namespace zek {

namespace {

constexpr unsigned kLastCompiledSection = kRepeaterSection;
constexpr unsigned kKeywordOrdinalMask = 0xFF;

constexpr unsigned kNoEntryType = 0xFFFFFFFF;

/// The entries whose name is their keyword's own number, each at that number.
constexpr std::array<unsigned, 22> kKeywordNamed = {
    kNoEntryType, kVersion,  kType,        kFlag,   kSouthbridge, kNorthbridge, kZekLoop,     kChildGroup,
    kID,          kInitFlag, kControlMask, kTheory, kThresholdFH, kThresholdWH, kThresholdFL, kThresholdWL,
    kArgNumber,   kPID,      kNoEntryType, kModel,  kParent,      kName};

constexpr bool IsKeywordNamed(unsigned entryType) {
    const unsigned ordinal = entryType & kKeywordOrdinalMask;
    return ordinal < kKeywordNamed.size() && kKeywordNamed[ordinal] == entryType;
}
static_assert(std::count_if(kKeywordNamed.begin(), kKeywordNamed.end(), IsKeywordNamed) == 20,
              "each stands at its number; SENSORS has a number of its own");

class Words {
public:
    explicit Words(tagGCENTRY& entry) : words_(entry.vdwValues) {}

    void Push(unsigned word) { words_.push_back(word); }
    void PushNumber(unsigned number) { Push(Number(number)); }
    void PushOperand(std::string& text) { Push(GetValueVal(text)); }
    void PushList(TextList& list) {
        for (std::string& text : list) PushOperand(text);
    }

private:
    std::vector<unsigned>& words_;
};

bool MayBePredefined(const std::string& text) { return !g_numbering || g_numbering->MayBePredefined(text); }

/// The number behind the text of a numeric key.
unsigned NumericText(const std::string& text) {
    unsigned number = 0;
    if (MayBePredefined(text) && GetPreDefinedValue(text, &number)) return number;
    return StringToLong(text, &number) ? number : kIdUnresolved;
}

/// The class of the table in which a text of this entry is looked up; 0 for texts that are strings of their own.
unsigned TableOfText(unsigned sectionType, unsigned entryType) {
    if (sectionType == kActionSection && entryType == kName) return kIdAction;
    if (sectionType == kGroupSection && (entryType == kParent || entryType == kName)) return kIdGroup;
    if (sectionType == kSensorSection && entryType == kParent) return kIdGroup;
    return 0;
}

void PushText(Words words, unsigned sectionType, unsigned entryType, const std::string& text) {
    if (const unsigned table = TableOfText(sectionType, entryType)) return words.Push(LookUp(table, text));
    if ((entryType & kNumericMask) == kNumericText) return words.PushNumber(NumericText(text));
    words.Push(Number(kIdString, text));
}

void PushTexts(Words words, unsigned entryType, const TextList& list) {
    for (const std::string& text : list) {
        if ((entryType & kNumericMask) != kNumericList) {
            words.Push(Number(kIdString, text));
            continue;
        }
        unsigned number = 0;
        words.PushNumber(StringToLong(text, &number) ? number : kIdUnresolved);
    }
}

/// How many strings of a value are compiled: an arithmetic operation leaves two of its five empty.
std::size_t CompiledStrings(const CGeValue& value, const Payload& payload) {
    if (value.m_dwType != kOperation) return payload.strings.size();
    return GetOperator(payload.strings[0]) < kFirstComparison ? 3 : 5;
}

void PushValue(Words words, const CGeValue& value) {
    words.Push(kIdValueType + value.m_dwType);
    const ValueShape* shape = ShapeOf(value.m_dwType);
    if (!shape || !value.m_pData) return;
    const Payload payload = PayloadOf(value);
    const std::size_t strings = CompiledStrings(value, payload);
    for (std::size_t i = 0; i < strings; ++i) {
        std::string& text = payload.strings[i];
        switch (shape->operands[i]) {
            case kOperatorOperand: words.Push(kIdOperator + GetOperator(text)); break;
            case kActionOperand: words.Push(LookUp(kIdAction, text)); break;
            case kTableOperand: words.Push(LookUp(kIdTableName, text)); break;
            default: words.PushOperand(text); break;
        }
    }
    if (payload.list) words.PushList(*payload.list);
}

void PushRepeater(Words words, const Payload& item) {
    words.PushNumber(NumberOr0(item.strings[0]));
    words.Push(LookUp(kIdAction, item.strings[1]));
    words.PushList(*item.list);
}

/// Takes the entries up to the first without a name: that one and what stands behind it is dropped, which hosts rely
/// on.
void CompileEntries(const CZEKSection& section, tagGCENTRY& compiled, CompiledSections& out) {
    for (const CZEKEntry* entry : section.m_vpEntry) {
        const CZekEntryData& data = entry->m_ZekEntryData;
        if (!HoldsData(*entry)) continue;
        const unsigned name = GetEntryName(entry->m_dwType, entry->m_strName);
        if (name == 0) return;
        // Data of another class than its entry's stands only in a damaged debug image.
        if (EntryClass(data.m_dwType) != EntryClass(entry->m_dwType)) continue;
        compiled.dwName = name;
        compiled.vdwValues.clear();
        SetEntryValues(section.m_dwType, entry->m_dwType, data.m_pData, compiled);
        out.Entry(compiled);
    }
}

/// The size of "G_", without which a global is looked up.
constexpr std::size_t kGlobalPrefix = 2;

/// Notes the names that compiling a section looks up.
void NoteNames(const CZEKSection& section, LookAhead& ahead) {
    const Numbering& numbering = *g_numbering;
    const OperandTables tables = {LookAhead::IfLarge(PredefinedNames()), numbering.IfLarge(kIdGlobal), kGlobalPrefix,
                                  numbering.IfLarge(kIdAction), numbering.IfLarge(kIdTableName)};
    const LookAhead::Names* const strings = numbering.IfLarge(kIdString);
    if (!strings && !tables.Any()) return;
    for (const CZEKEntry* entry : section.m_vpEntry) {
        const CZekEntryData& data = entry->m_ZekEntryData;
        if (const CGeValue* value = ValueOf(data)) {
            NoteOperands(*value, tables, ahead);
        } else if (const std::string* text = TextOf(data)) {
            const unsigned table = TableOfText(section.m_dwType, entry->m_dwType);
            const bool numeric = (entry->m_dwType & kNumericMask) == kNumericText;
            ahead.Note(table ? numbering.IfLarge(table) : numeric ? nullptr : strings, *text);
        }
    }
}

constexpr bool IsCompiled(unsigned sectionType) {
    return sectionType >= kQuorzekSection && sectionType <= kLastCompiledSection;
}

constexpr unsigned IdentifierOf(unsigned sectionType) {
    return kImageSectionClass | (sectionType & kSectionOrdinalMask);
}

/// Appends to g_GCHead.
class SectionRecords : public CompiledSections {
public:
    void Section(unsigned identifier) override {
        auto section = std::make_unique<tagGCSECT>();
        section->dwSect = identifier;
        g_GCHead.push_back(section.get());
        section.release();
    }
    void Entry(const tagGCENTRY& entry) override { g_GCHead.back()->vEntries.push_back(entry); }
};

}  // namespace

void CompileModel(CompiledSections& out) {
    tagGCENTRY compiled;
    const bool looksAhead = g_numbering && LookAhead::IsWorthIt();
    for (const SectionList* list : CZEKSection::m_svpHSection) {
        VisitAhead(*list, looksAhead, NoteNames, [&](const CZEKSection& section) {
            if (!IsCompiled(section.m_dwType)) return false;
            out.Section(IdentifierOf(section.m_dwType));
            CompileEntries(section, compiled, out);
            return true;
        });
    }
}

}  // namespace zek

unsigned Compile() {
    zek::SectionRecords records;
    ++zek::g_changes;
    zek::CompileModel(records);
    return 1;
}

void CompDestory() {
    for (const tagGCSECT* section : g_GCHead) delete section;
    g_GCHead.clear();
    ++zek::g_changes;
}

tagGCSECT* CreateGCSect(unsigned sectionType) {
    if (!zek::IsCompiled(sectionType)) return nullptr;
    auto* section = new tagGCSECT;
    section->dwSect = zek::IdentifierOf(sectionType);
    ++zek::g_sectionsMade;
    return section;
}

unsigned GetEntryName(unsigned entryType, const std::string& key) {
    // SENSORS has a number of its own, not its keyword's low byte: hosts rely on it.
    if (entryType == zek::kSensors) return zek::kIdSensors;
    if (zek::IsKeywordNamed(entryType)) return zek::kIdKeyword | (entryType & zek::kKeywordOrdinalMask);
    const zek::NameRule* rule = zek::NameRuleOf(entryType);
    return rule ? zek::LookUp(rule->classWord, zek::WithoutPrefix(key, rule->prefix)) : 0;
}

void SetEntryValues(unsigned sectionType, unsigned entryType, void* data, tagGCENTRY& entry) {
    if (entryType == zek::kTableRow) return;
    zek::Words words(entry);
    const zek::Payload payload = zek::PayloadOf(data, entryType);
    switch (zek::EntryClass(entryType)) {
        case zek::kNumberClass: return words.PushNumber(*static_cast<const unsigned*>(data));
        case zek::kTextClass: return zek::PushText(words, sectionType, entryType, payload.strings[0]);
        case zek::kListClass: return zek::PushTexts(words, entryType, *payload.list);
        case zek::kValueClass: return zek::PushValue(words, *static_cast<const CGeValue*>(data));
        case zek::kRepeaterClass: return zek::PushRepeater(words, payload);
        default: return;
    }
}

unsigned GetValueVal(std::string& text) {
    unsigned number = 0;
    if (StringToLong(text, &number)) return zek::Number(number);
    if (zek::MayBePredefined(text) && GetPreDefinedValue(text, &number)) return zek::Number(number);
    if (text == "VALUE") return zek::LookUp(zek::kIdValue, "");
    if (text.starts_with("VALUE_")) return zek::LookUp(zek::kIdValue, std::string_view(text).substr(6));
    if (text.starts_with("G_")) return zek::LookUp(zek::kIdGlobal, std::string_view(text).substr(2));
    if (text.starts_with("ARG") && StringToLong(text.substr(3), &number)) return zek::kIdArgument + number;
    return zek::kIdUnresolved;
}
