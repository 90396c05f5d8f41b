#include "view/random_model.h"

#include <algorithm>
#include <map>

#include "compile/tables.h"
#include "model/keyword_table.h"
#include "view/compiled_model.h"
#include "zekcomp/identifiers.h"

namespace zek::test {

namespace {

const std::vector<std::string> kCompiledKeywords = {"PROPERTY", "GROUP",  "SENSOR", "DEVICE",   "ACTION",
                                                    "TABLE",    "GLOBAL", "GROUP",  "REPEATER", "TAVRGROUP"};

struct NamedTable {
    unsigned classWord;
    std::map<std::string, unsigned>& names;
    unsigned& counter;
};

const std::vector<NamedTable> kNamedTables = {
    {kIdProperty, g_tblProperty, g_idxProperty}, {kIdGlobal, g_tblGlobal, g_idxGlobal},
    {kIdValue, g_tblValue, g_idxValue},          {kIdRepeater, g_tblRepeater, g_idxRepeater},
    {kIdString, g_tblString, g_idxString},       {kIdGroup, g_tblGroup, g_idxGroup},
    {kIdAction, g_tblAction, g_idxAction},       {kIdTableName, g_tblTableName, g_idxTableName}};

const std::vector<std::string> kKnownNames = {"A", "B", "0", "S", "D", "Do", "T", "X", "own", "Rep", "Maker", ""};

}  // namespace

const std::vector<RandomModel::Step> RandomModel::kSteps = {
    {"section", 60, &RandomModel::AddSection},
    {"entry", 50, &RandomModel::AddEntry},
    {"repeated entry", 20, &RandomModel::RepeatEntry},
    {"moved entry", 10, &RandomModel::MoveEntry},
    {"moved parent", 12, &RandomModel::MoveParent},
    {"lost name", 8, &RandomModel::LoseName},
    {"uncompiled section", 25, &RandomModel::AddUncompiled},
    {"moved section", 10, &RandomModel::MoveSection},
    {"filled table", 30, &RandomModel::FillTable},
    {"renumbered table", 20, &RandomModel::RenumberTable},
    {"numbers left out", 20, &RandomModel::LeaveNumbersOut},
    {"used-up table", 5, &RandomModel::UseUpTable},
};

void RandomModel::Build() {
    CZEKSection& words = *NewSection("DEFINE");
    for (const char* type : {"2", "3", "7", "10", "50", "101", "102", "103"}) {
        words.SetEntry("host", std::string("T") + type, type, line_);
    }
    // Sensors that come must be listed.
    std::string ids = "100";
    for (unsigned id = 101; id < 130; ++id) ids += "," + std::to_string(id);
    CZEKSection& listed = *NewSection("TAVRGROUP");
    for (const auto& [key, value] :
         {std::pair{"NAME", std::string("listed")}, {"ID", "2"}, {"PID", "1"}, {"SENSORS", ids}}) {
        listed.SetEntry("host", key, value, line_);
    }
    for (const Step& step : kSteps) {
        for (unsigned left = 3; left > 0 && random_.Chance(step.percent); --left) {
            story_ += std::string(step.name) + '\n';
            (this->*step.take)();
        }
    }
}

std::string RandomModel::Key(unsigned type) {
    const auto row = std::ranges::find(kKeywords, type, &tagNTMAP::dwID);
    const std::string keyword = row->pszName;
    if (type == kTableRow || type == kActionValue) return keyword + std::to_string(++last_);
    return keyword.empty() || keyword.ends_with('_') || random_.Chance(50) ? Unique(keyword + "k") : keyword;
}

std::string RandomModel::Text(unsigned type) {
    switch (type) {
        case kParent: return random_.Chance(20) ? "0" : random_.Pick(groups_);
        case kName: return random_.Chance(20) ? random_.Pick(groups_) : Unique("name");
        case kID: return std::to_string(++lastId_);
        case kPID: return random_.OneOf({"0", "1", "2"});
        case kArgNumber: return random_.OneOf({"0", "1"});
        default: return std::to_string(random_.Below(20));
    }
}

std::string RandomModel::Value(unsigned type) {
    switch (EntryClass(type)) {
        case kListClass: return random_.OneOf({"7", "7,8", "100,T1,x", "4294967295"});
        case kValueClass:
            return random_.OneOf({"T1,5", "T1,G_X", "T3,Do,4", "T2,+,1,2", "T2,==,1,G_X,3,4", "T7,1,2,3", "T10,T,3",
                                  "T50", "T101,T1", "T102,1,Do,2", "T103,4294967295"});
        case kRepeaterClass: return random_.OneOf({"2,Do,5", "T3,Do,G_X", "G_X,Do,ARG1", "4,Do,ARG4000000000"});
        default: return Text(type);
    }
}

CZEKEntry* RandomModel::Entry(unsigned type) {
    const std::string key = Key(type);
    const std::string value = Value(type);
    switch (EntryClass(type)) {
        case kNumberClass: return Made<CGEDWORD>(type, kHostNotation, key, value);
        case kTextClass: return Made<CGESTRING>(type, kHostNotation, key, value);
        case kListClass: return Made<CGESTRINGLIST>(type, kHostNotation, key, value);
        case kValueClass: return Made<CGEVALUE>(type, kHostNotation, key, value);
        default: return Made<CGEREPEATER>(type, kHostNotation, key, value);
    }
}

/// Mostly at the end, where it changes least.
void RandomModel::Insert(std::vector<CZEKEntry*>& entries, CZEKEntry* entry) {
    const std::size_t place = random_.Chance(70) ? entries.size() : random_.Below(entries.size() + 1);
    entries.insert(entries.begin() + static_cast<std::ptrdiff_t>(place), entry);
}

SectionList& RandomModel::AnyList() {
    return random_.Chance(30) ? CGSGROUP::m_sHeader : *random_.Pick(CZEKSection::m_svpHSection);
}

CZEKSection& RandomModel::AnySection() {
    while (true) {
        const SectionList& list = AnyList();
        if (!list.empty()) return *random_.Pick(list);
    }
}

CZEKSection* RandomModel::NewSection(const std::string& keyword) {
    return CZEKSection::Create("host", keyword, ++line_);
}

/// With the keys that it must have, and some of those that it may have.
void RandomModel::AddSection() {
    const std::string keyword = random_.OneOf(kCompiledKeywords);
    CZEKSection& section = *NewSection(keyword);
    const std::vector<CZEKEntry*> declared = section.m_vpEntry;
    for (const CZEKEntry* entry : declared) {
        if (!(entry->m_eNotation & kRequired) && random_.Chance(70)) continue;
        const unsigned type = entry->m_dwType;
        const std::string value = type == kName ? Unique(keyword) : Value(type);
        if (keyword == "GROUP" && type == kName) groups_.push_back(value);
        section.SetEntry("host", std::ranges::find(kKeywords, type, &tagNTMAP::dwID)->pszName, value, line_);
    }
    if (keyword == "PROPERTY") section.SetEntry("host", Unique("key"), Unique("text"), line_);
    if (keyword == "GLOBAL") section.SetEntry("host", Unique("G_"), Value(kGlobal), line_);
    if (keyword == "REPEATER") section.SetEntry("host", Unique("item"), Value(kRepeaterItem), line_);
    if (keyword == "TABLE") section.SetEntry("host", "3.200", Text(kTableRow), line_);
}

void RandomModel::AddEntry() { Insert(AnySection().m_vpEntry, Entry(kKeywords[random_.Below(kKeywords.size())].dwID)); }

void RandomModel::RepeatEntry() {
    std::vector<CZEKEntry*>& entries = AnySection().m_vpEntry;
    if (!entries.empty()) Insert(entries, Entry(random_.Pick(entries)->m_dwType));
}

void RandomModel::MoveEntry() {
    std::vector<CZEKEntry*>& entries = AnySection().m_vpEntry;
    if (!entries.empty()) std::swap(entries[random_.Below(entries.size())], entries.front());
}

/// The check of a group looks at its first two entries; those that are called PARENT and NAME are others here.
void RandomModel::MoveParent() {
    for (CZEKSection* group : CGSGROUP::m_sHeader) {
        std::vector<CZEKEntry*>& entries = group->m_vpEntry;
        if (group->m_dwType != kGroupSection || entries.empty() || random_.Chance(30)) continue;
        for (CZEKEntry* entry : entries) {
            if (entry->m_dwType == kParent) entry->m_vstrSubStr = {random_.Pick(groups_)};
        }
        entries.insert(entries.begin(), Made<CGESTRING>(kModel, kHostNotation, Unique("MODEL"), "0"));
    }
}

/// An entry without a name identifier ends its section, and the NAME stands behind it.
void RandomModel::LoseName() {
    const SectionList& groups = CGSGROUP::m_sHeader;
    std::vector<CZEKEntry*>& entries = groups[random_.Below(groups.size())]->m_vpEntry;
    const auto name = std::ranges::find(entries, kName, &CZEKEntry::m_dwType);
    entries.insert(name, Made<CGESTRING>(kDefineWord, kHostNotation, Unique("DEFINEWORD"), "T1"));
}

void RandomModel::MoveInto(SectionList& list, CZEKSection& section) {
    for (SectionList* own : CZEKSection::m_svpHSection) std::erase(*own, &section);
    list.insert(list.begin() + random_.Below(list.size() + 1), &section);
}

void RandomModel::AddUncompiled() {
    const std::string keyword = random_.OneOf({"DEFINE", "IFDEF", "INCLUDE"});
    CZEKSection& section = *NewSection(keyword);
    if (keyword == "IFDEF") section.SetEntry("host", "DEFINEWORD", "T1", line_);
    MoveInto(random_.Chance(60) ? CGSGROUP::m_sHeader : AnyList(), section);
}

void RandomModel::MoveSection() { MoveInto(AnyList(), AnySection()); }

void RandomModel::FillTable() {
    const unsigned step = random_.Chance(80) ? 1 : 2 + random_.Below(2);
    const NamedTable& table = random_.Pick(kNamedTables);
    for (unsigned left = random_.Below(5); left > 0; --left) {
        const std::string name = random_.Chance(60) ? random_.OneOf(kKnownNames) : Unique("filled");
        InsertTbl(table.names, table.counter, name, step);
        InsertTbl(g_tblDword, g_idxDword, random_.Below(200), step);
    }
}

/// As a host does that writes into the table itself: identifiers change their names, and some lose theirs.
void RandomModel::RenumberTable() {
    const NamedTable& table = random_.Pick(kNamedTables);
    std::vector<unsigned> ids;
    for (const auto& [name, id] : table.names) ids.push_back(random_.Chance(10) ? 0 : id);
    random_.Shuffle(ids);
    auto next = ids.begin();
    for (auto& [name, id] : table.names) id = *next++;
    if (random_.Chance(30)) table.names.erase(random_.OneOf(kKnownNames));
}

void RandomModel::LeaveNumbersOut() {
    random_.Pick(kNamedTables).counter += random_.Below(5);
    g_idxDword += random_.Below(5);
}

void RandomModel::UseUpTable() {
    const NamedTable& table = random_.Pick(kNamedTables);
    table.counter = table.classWord | kIdOrdinalMask;
    InsertTbl(table.names, table.counter, Unique("last"), 1);
    usedUp_ = true;
}

}  // namespace zek::test
