#include "model/section_kinds.h"

#include <algorithm>
#include <type_traits>

#include "model/absent_entries.h"
#include "model/state.h"

namespace zek {

namespace {

constexpr DeclaredEntry kQuorzekEntries[] = {{kVersion, 1}};
constexpr DeclaredEntry kSystemEntries[] = {{kType, 1},        {kModel, 1},       {kFlag, 1},
                                            {kSouthbridge, 2}, {kNorthbridge, 2}, {kZekLoop, 1}};
constexpr DeclaredEntry kGroupEntries[] = {{kParent, 1},      {kName, 1},       {kChildGroup, 1}, {kValueInit, 6},
                                           {kValueDeinit, 6}, {kValueEntry, 6}, {kValueExit, 6}};
constexpr DeclaredEntry kSensorEntries[] = {
    {kParent, 1},      {kName, 1},        {kID, 1},          {kType, 1},        {kInitFlag, 1},    {kControlMask, 1},
    {kTheory, 2},      {kThresholdFH, 2}, {kThresholdWH, 2}, {kThresholdFL, 2}, {kThresholdWL, 2}, {kValueInit, 6},
    {kValueDeinit, 6}, {kValueEntry, 6},  {kValueExit, 6},   {kValue, 37},      {kValueIpmi, 38}};
constexpr DeclaredEntry kDeviceEntries[] = {{kName, 1}, {kID, 1}, {kInitFlag, 1}, {kControlMask, 1}};
constexpr DeclaredEntry kActionEntries[] = {{kName, 1}, {kArgNumber, 2}, {kValueIpmi, 38}, {kValue, 38}};
constexpr DeclaredEntry kTableEntries[] = {{kName, 1}, {kType, 1}};
constexpr DeclaredEntry kTavrGroupEntries[] = {{kName, 1}, {kID, 1}, {kPID, 1}, {kSensors, 1}};
constexpr DeclaredEntry kIfdefEntries[] = {{kDefineWord, 1}};

constexpr AddedEntry kRefused = {};
constexpr AddedEntry kProperties = {kPrefixP, kNotationFamily};
constexpr AddedEntry kValuesAndProperties = {kOwnValue, kNotationFamilyValue, true};

template <class Kind>
CZEKSection* Make(const SectionKind& kind) {
    return g_pool.New<Kind>(kind.type, static_cast<tagNOTATION>(kind.notation));
}

template <class Kind>
CZEKSection* MakeToRestore() {
    return g_pool.New<Kind>();
}

template <class Kind>
constexpr SectionKind Row(const char* keyword, unsigned type, unsigned notation,
                          std::span<const DeclaredEntry> declared, AddedEntry undeclared) {
    return {keyword,
            type,
            notation,
            declared,
            undeclared,
            Make<Kind>,
            type == kIncludeSection ? nullptr : MakeToRestore<Kind>};
}

}  // namespace

constexpr std::array<SectionKind, 14> kSectionKinds = {
    // keyword, id, notation, declared entries, what an undeclared key becomes
    Row<CGSQUORZEK>("QUORZEK", kQuorzekSection, 1, kQuorzekEntries, kRefused),
    Row<CGSPROPERTY>("PROPERTY", kPropertySection, 2, {}, {kProperty, kNotationFamily}),
    Row<CGSSYSTEM>("SYSTEM", kSystemSection, 1, kSystemEntries, kProperties),
    Row<CGSGROUP>("GROUP", kGroupSection, 2, kGroupEntries, kRefused),
    Row<CGSSENSOR>("SENSOR", kSensorSection, 2, kSensorEntries, kValuesAndProperties),
    Row<CGSDEVICE>("DEVICE", kDeviceSection, 2, kDeviceEntries, kValuesAndProperties),
    Row<CGSACTION>("ACTION", kActionSection, 2, kActionEntries, {kActionValue, kNotationActionValue}),
    Row<CGSTABLE>("TABLE", kTableSection, 2, kTableEntries, {kTableRow, kNotationFamily}),
    Row<CGSTAVRGROUP>("TAVRGROUP", kTavrGroupSection, 1, kTavrGroupEntries, kProperties),
    Row<CGSGLOBAL>("GLOBAL", kGlobalSection, 2, {}, {kGlobal, kNotationFamilyValue}),
    Row<CGSREPEATER>("REPEATER", kRepeaterSection, 2, {}, {kRepeaterItem, kNotationFamily}),
    Row<CGSDEFINE>("DEFINE", kDefineSection, 2, {}, {kDefinition, kNotationFamily}),
    Row<CGSIFDEF>("IFDEF", kIfdefSection, 2, kIfdefEntries, {kDefinition, kNotationFamily}),
    Row<CGSINCLUDE>("INCLUDE", kIncludeSection, 2, {}, {kFile, kNotationRepeated}),
};

static_assert(std::all_of(kSectionKinds.begin(), kSectionKinds.end(),
                          [](const SectionKind& kind) {
                              return kind.type - kSectionClass - 1 ==
                                     static_cast<std::size_t>(&kind - kSectionKinds.data());
                          }),
              "a row stands where its type id says");
static_assert(std::all_of(kSectionKinds.begin(), kSectionKinds.end(),
                          [](const SectionKind& kind) { return kind.declared.size() <= kMostDeclared; }) &&
                  std::extent_v<decltype(SharedEntries::entries)> == kSectionKinds.size(),
              "there is a shared entry for each that a kind declares");

const SectionKind* KindOf(unsigned type) {
    const unsigned row = type - kSectionClass - 1;
    return row < kSectionKinds.size() ? &kSectionKinds[row] : nullptr;
}

CZEKEntry& AddUndeclared(CZEKSection& section, const SectionKind& kind, const std::string& file, const std::string& key,
                         const std::string& value, unsigned line) {
    const AddedEntry& added = kind.undeclared;
    const bool property = added.prefixPApart && key.starts_with("P_");
    const unsigned type = property ? kPrefixP : added.type;
    const unsigned notation = property ? kNotationFamily : added.notation;
    return AddEntry(section, type, notation, file, key, value, line);
}

namespace {

constexpr std::array<tagNTMAP, 14> Published() {
    std::array<tagNTMAP, 14> rows{};
    for (std::size_t i = 0; i < rows.size(); ++i) rows[i] = {kSectionKinds[i].keyword, kSectionKinds[i].type};
    return rows;
}

}  // namespace

}  // namespace zek

const std::array<tagNTMAP, 14> g_NTMapSect = zek::Published();
const unsigned g_dwNTMSect = static_cast<unsigned>(g_NTMapSect.size());

/// The construction, in which the kinds differ by nothing but their Init0.
#define ZEK_DEFINE_CONSTRUCTION(Kind)                                                                            \
    Kind::Kind() { Init0(); }                                                                                    \
    Kind::Kind(unsigned type, tagNOTATION notation) : CZEKSection(type, notation) { Init0(); }                   \
    /* A destroyed section stays in its list: only CZEKSection::Destory takes sections out. Hosts rely on it. */ \
    Kind::~Kind() = default;

/// A kind that differs from the others by nothing but its row.
#define ZEK_DEFINE_SECTION_KIND(Kind, sectionKind) \
    ZEK_DEFINE_CONSTRUCTION(Kind)                  \
    void Kind::Init0() { Declare(m_sHeader, *zek::KindOf(sectionKind)); }

/// The same, for kinds of which each item becomes an entry.
#define ZEK_DEFINE_FREE_SECTION_KIND(Kind, sectionKind)                                                \
    ZEK_DEFINE_SECTION_KIND(Kind, sectionKind)                                                         \
    unsigned Kind::SetEntry(const std::string& file, const std::string& key, const std::string& value, \
                            unsigned line) {                                                           \
        zek::AddUndeclared(*this, *zek::KindOf(sectionKind), file, key, value, line);                  \
        return 1;                                                                                      \
    }

/// The same, for kinds whose undeclared keys become entries.
#define ZEK_DEFINE_OPEN_SECTION_KIND(Kind, sectionKind)                                                \
    ZEK_DEFINE_SECTION_KIND(Kind, sectionKind)                                                         \
    unsigned Kind::SetEntry(const std::string& file, const std::string& key, const std::string& value, \
                            unsigned line) {                                                           \
        if (!CZEKSection::SetEntry(file, key, value, line)) {                                          \
            zek::AddUndeclared(*this, *zek::KindOf(sectionKind), file, key, value, line);              \
        }                                                                                              \
        return 1;                                                                                      \
    }

ZEK_DEFINE_SECTION_KIND(CGSQUORZEK, zek::kQuorzekSection)
ZEK_DEFINE_FREE_SECTION_KIND(CGSPROPERTY, zek::kPropertySection)
ZEK_DEFINE_OPEN_SECTION_KIND(CGSSYSTEM, zek::kSystemSection)
ZEK_DEFINE_SECTION_KIND(CGSGROUP, zek::kGroupSection)
ZEK_DEFINE_OPEN_SECTION_KIND(CGSSENSOR, zek::kSensorSection)
ZEK_DEFINE_OPEN_SECTION_KIND(CGSDEVICE, zek::kDeviceSection)
ZEK_DEFINE_OPEN_SECTION_KIND(CGSACTION, zek::kActionSection)
ZEK_DEFINE_OPEN_SECTION_KIND(CGSTABLE, zek::kTableSection)
ZEK_DEFINE_OPEN_SECTION_KIND(CGSTAVRGROUP, zek::kTavrGroupSection)
ZEK_DEFINE_FREE_SECTION_KIND(CGSGLOBAL, zek::kGlobalSection)
ZEK_DEFINE_FREE_SECTION_KIND(CGSREPEATER, zek::kRepeaterSection)
ZEK_DEFINE_SECTION_KIND(CGSDEFINE, zek::kDefineSection)
ZEK_DEFINE_SECTION_KIND(CGSINCLUDE, zek::kIncludeSection)

ZEK_DEFINE_CONSTRUCTION(CGSIFDEF)
void CGSIFDEF::Init0() {
    Declare(m_sHeader, *zek::KindOf(zek::kIfdefSection));
    m_dwSeen = 0;
    m_dwCondition = 0;
}
