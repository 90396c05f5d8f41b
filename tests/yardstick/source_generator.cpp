#include "yardstick/source_generator.h"

#include <cstdio>

namespace zek::test {

namespace {

const std::vector<std::string> kSharedNames = {"A", "B", "C", "a", "0"};
const std::vector<std::string> kNumberWords = {"W0", "W1", "W2", "W300", "+5", "-1"};
const std::vector<unsigned> kTypes = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 50, 101, 102, 103, 104, 105};

}  // namespace

SourceGenerator::SourceGenerator(unsigned seed)
    : random_(seed),
      crowded_(seed % kCrowdedEvery == kCrowdedEvery - 1),
      wrong_(random_.Pick<unsigned>({0, 0, 1, 1, 3, 10, 30})),
      malformed_(random_.Pick<unsigned>({0, 0, 0, 0, 0, 1, 5})) {
    NameSections();
}

unsigned SourceGenerator::Count(unsigned most, unsigned crowded) {
    return crowded_ && random_.Chance(crowded) ? 70 + random_.Below(30) : random_.Below(most + 1);
}

std::vector<std::string> SourceGenerator::Names(const std::string& prefix, unsigned most) {
    std::vector<std::string> names;
    for (const unsigned count = Count(most, 50); names.size() < count;) {
        names.push_back(Wrong() ? random_.OneOf(kSharedNames) : prefix + std::to_string(names.size()));
    }
    return names;
}

void SourceGenerator::NameSections() {
    groups_ = Names("Group", 5);
    sensors_ = Names("Sensor", 5);
    devices_ = Names("Device", 5);
    tables_ = Names("Table", 3);
    tavrGroups_ = Names("Tavr", 3);
    if (tavrGroups_.empty() && !Wrong()) tavrGroups_ = {"Tavr"};
    if (groups_.empty() && !Wrong()) groups_ = {"Group"};
    globals_ = Names("G_", 5);
    for (const std::string& name : Names("Action", 5)) {
        Action action{name, random_.Below(4), {}};
        for (unsigned i = Count(3, 5); i > 0; --i) action.values.push_back("VALUE_" + std::to_string(i));
        actions_.push_back(action);
    }
}

std::string SourceGenerator::Spelled(unsigned number) {
    char text[32];
    const std::vector<const char*> formats = {"%u", "%u", "0x%x", "0X%02X", "%03u", "%u.", "0x%04xg"};
    std::snprintf(text, sizeof text, random_.Pick(formats), number);
    if (number > 0 && random_.Chance(5)) return std::to_string(4294967296U + std::uint64_t{number});
    return text;
}

std::string SourceGenerator::Number() {
    if (Malformed()) return random_.OneOf({"junk", "", "0x", "12345678901", "4294967296"});
    return random_.Chance(30) ? random_.OneOf(kNumberWords) : Spelled(random_.Below(20));
}

std::string SourceGenerator::Operand(Owner owner) {
    if (Wrong())
        return random_.OneOf(
            {"nothing", "G_none", "ARG1", "ARG9", "VALUE_own1", "ARG", "ARGx", "VALUE_9", "VALUE_", "G_", "", "g_0"});
    const unsigned choice = random_.Below(4);
    if (choice == 1 && !globals_.empty()) return random_.OneOf(globals_);
    if (choice == 2) return "ARG" + std::to_string(owner ? random_.Below(owner->arguments + 1) : 0);
    if (choice == 3 && owner && !owner->values.empty()) return random_.OneOf(owner->values);
    return random_.Chance(30) ? random_.OneOf(kNumberWords) : Spelled(random_.Below(20));
}

std::string SourceGenerator::Operands(Owner owner, unsigned count) {
    std::string text;
    while (count-- > 0) text += "," + Operand(owner);
    return text;
}

std::string SourceGenerator::Call(Owner owner) {
    const Action& action = random_.Pick(actions_);
    const std::string name = Wrong() ? random_.OneOf(kSharedNames) : action.name;
    return "," + name + Operands(owner, Wrong() ? random_.Below(4) : action.arguments);
}

std::string SourceGenerator::Bus(Owner owner, bool smbus) {
    const std::string number = Wrong() ? Operand(owner) : Spelled(random_.Below(20));
    const bool port = !smbus && random_.Chance(40);
    const std::string type = Wrong() ? Operand(owner) : port ? "BUSTYPE_SIMPLEIOPORT" : "BUSTYPE_SMBUS";
    return "," + Operand(owner) + "," + number + "," + type + "," + (port ? "0" : smbus ? "0x00" : Operand(owner));
}

std::string SourceGenerator::Payload(unsigned type, Owner owner) {
    switch (type) {
        case 0: return "";
        case 1:
        case 101:
        case 103: return Operands(owner, 1);
        case 2: {
            const bool comparison = random_.Chance(50);
            const std::string code = comparison ? random_.OneOf({"==", ">", ">=", "!=", "<", "<="})
                                                : random_.OneOf({"+", "-", "*", "|", "&", "^", ">>", "pow"});
            return "," + (Malformed() ? std::string("=") : code) + Operands(owner, comparison ? 4 : 2);
        }
        case 3: return Call(owner);
        case 4:
        case 8: return Bus(owner, false);
        case 12: return Bus(owner, random_.Chance(80));
        case 5:
        case 9: return Bus(owner, false) + Operands(owner, 1 + random_.Below(3));
        case 11: return Bus(owner, random_.Chance(80)) + Operands(owner, 1 + random_.Below(3));
        case 6: return "," + Spelled(3) + ",W1" + Operands(owner, 1 + random_.Below(3));
        case 7: return Operands(owner, random_.Below(6));
        case 10: return "," + (Wrong() ? random_.OneOf(kSharedNames) : random_.OneOf(tables_)) + Operands(owner, 1);
        case 102: return "," + Operand(owner) + Call(owner);
        case 104: return "," + (Wrong() ? std::string("VALUE_9") : random_.OneOf(owner->values));
        default: return Operands(owner, random_.Below(3));
    }
}

std::string SourceGenerator::Value(Owner owner) {
    if (Malformed()) return random_.OneOf({"T1", "T2,+,1", "none,1", "1,1", "T4,1,2,3", "T0,1", "T104", "T3", ""});
    unsigned type = random_.Pick(kTypes);
    const bool call = type == 3 || type == 102;
    const bool possible = !(call && actions_.empty()) && !(type == 10 && tables_.empty()) &&
                          !(type == 104 && (!owner || owner->values.empty()));
    if (!possible) type = 1;
    return "T" + std::to_string(type) + Payload(type, owner);
}

void SourceGenerator::Spoil(Items& items) {
    if (random_.Chance(30)) random_.Shuffle(items);
    while (!items.empty() && Wrong()) items.emplace_back(random_.Pick(items).first, random_.Pick(items).second);
    if (!items.empty() && Malformed()) items.erase(items.begin() + random_.Below(items.size()));
    if (Malformed()) items.emplace_back(random_.OneOf({"1x", "Other", "P_x", "VALUE_7", "VALUE_t", "9.3"}), Number());
}

std::string SourceGenerator::Text(const std::string& keyword, Items items) {
    Spoil(items);
    std::string text = "[" + keyword + "]\n";
    for (const auto& [key, value] : items) {
        if (random_.Chance(5)) text += "\n";
        text += key + "=" + value + "\n";
    }
    return text;
}

std::string SourceGenerator::QuorzekOrSystem() {
    if (random_.Chance(50)) return Text("QUORZEK", {{"VERSION", "1.0"}});
    return Text("SYSTEM",
                {{"TYPE", Number()}, {"MODEL", "M"}, {"FLAG", Number()}, {"ZEKLOOP", Number()}, {"P_s", "text"}});
}

std::string SourceGenerator::FreeKeys(const std::string& keyword) {
    Items items;
    for (unsigned i = Count(4, 60); i > 0; --i) {
        const std::string name = Wrong() ? random_.OneOf(kSharedNames) : "k" + std::to_string(freeKeys_++);
        if (keyword == "PROPERTY") items.emplace_back(name, "text");
        if (keyword != "REPEATER" || actions_.empty()) continue;
        items.emplace_back(name, (Wrong() ? Operand(nullptr) : Number()) + Call(nullptr));
    }
    if (keyword == "GLOBAL") {
        for (const std::string& name : globals_) {
            if (random_.Chance(Wrong() ? 50 : 100)) items.emplace_back(name, Value(nullptr));
        }
    }
    return Text(keyword, items);
}

std::string SourceGenerator::Group(unsigned index) {
    std::string parent = index == 0 || random_.Chance(40) ? "0" : groups_[random_.Below(index)];
    if (Wrong()) parent = random_.OneOf(random_.Chance(50) ? groups_ : kSharedNames);
    Items items = {{"PARENT", parent}, {"NAME", groups_[index]}, {"CHILDGROUP", Number()}};
    for (const char* key : {"VALUE_INIT", "VALUE_DEINIT", "VALUE_ENTRY", "VALUE_EXIT"}) {
        if (random_.Chance(20)) items.emplace_back(key, Value(nullptr));
    }
    return Text("GROUP", items);
}

std::string SourceGenerator::Sensor(unsigned index) {
    const std::string parent = Wrong() || groups_.empty() ? random_.OneOf(kSharedNames) : random_.OneOf(groups_);
    const std::string id = Wrong() ? random_.OneOf({"W1", "W2", "1", "0"}) : Spelled(index);
    Items items = {{"PARENT", parent},       {"NAME", sensors_[index]}, {"ID", id},
                   {"TYPE", Number()},       {"INITFLAG", Number()},    {"CONTROLMASK", Number()},
                   {"VALUE", Value(nullptr)}};
    if (random_.Chance(30)) items.emplace_back("VALUE_own" + std::to_string(random_.Below(3)), Value(nullptr));
    if (random_.Chance(30)) items.emplace_back("P_" + random_.OneOf(kSharedNames), "text");
    if (random_.Chance(30)) items.emplace_back("THRESHOLD_FH", Number());
    return Text("SENSOR", items);
}

std::string SourceGenerator::Device(unsigned index) {
    const std::string id = Wrong() ? random_.OneOf({"W1", "W2", "1", "0"}) : Spelled(index);
    Items items = {{"NAME", devices_[index]}, {"ID", id}, {"INITFLAG", Number()}, {"CONTROLMASK", Number()}};
    for (unsigned i = Count(3, 5); i > 0; --i) items.emplace_back("VALUE_own" + std::to_string(i), Value(nullptr));
    return Text("DEVICE", items);
}

std::string SourceGenerator::ActionText(const Action& action) {
    Items items = {{"NAME", action.name}};
    if (action.arguments > 0 || random_.Chance(50)) {
        items.emplace_back("ARGNUMBER", Wrong() ? random_.OneOf({"W1", "W2", "9"}) : Spelled(action.arguments));
    }
    if (random_.Chance(50)) items.emplace_back("VALUE", Value(&action));
    if (random_.Chance(20)) items.emplace_back("VALUE_IPMI", Value(&action));
    for (const std::string& key : action.values) items.emplace_back(key, Value(&action));
    return Text("ACTION", items);
}

std::string SourceGenerator::Table(const std::string& name) {
    Items items = {{"NAME", name}, {"TYPE", Number()}};
    for (unsigned i = Count(3, 5); i > 0; --i) {
        const unsigned low = random_.Below(200);
        items.emplace_back(Spelled(low) == std::to_string(low) ? std::to_string(low) : std::to_string(low) + ".200",
                           Number());
    }
    return Text("TABLE", items);
}

std::string SourceGenerator::TavrGroup(unsigned index) {
    std::string sensors;
    for (unsigned i = 0; i < sensors_.size(); ++i) {
        if (i % tavrGroups_.size() == index && !Wrong()) sensors += "," + Spelled(i);
    }
    if (Wrong()) sensors += "," + random_.OneOf({"77", "W1", "W2", "junk", ""});
    if (Wrong() || random_.Chance(5)) sensors = ",78" + sensors;
    if (!sensors.empty()) sensors.erase(0, 1);
    const std::string id = Wrong() ? random_.OneOf({"W1", "W2", "1"}) : Spelled(index + 1);
    const std::string pid =
        Wrong() ? random_.OneOf({"W1", "9", "junk"}) : Spelled(random_.Below(tavrGroups_.size() + 1));
    return Text("TAVRGROUP", {{"NAME", tavrGroups_[index]}, {"ID", id}, {"PID", pid}, {"SENSORS", sensors}});
}

std::string SourceGenerator::Words(const std::string& keyword) {
    Items items;
    if (keyword == "IFDEF") items.emplace_back("DEFINEWORD", random_.OneOf({"T1", "none"}));
    for (unsigned i = random_.Below(3); i > 0; --i) items.emplace_back("w" + std::to_string(i), Number());
    return Text(keyword, items);
}

std::vector<std::string> SourceGenerator::Sections() {
    std::vector<std::string> texts;
    for (unsigned i = Wrong() ? 3 : random_.Below(2); i > 0; --i) texts.push_back(QuorzekOrSystem());
    for (const char* keyword : {"PROPERTY", "REPEATER"}) {
        for (unsigned i = random_.Below(4); i > 0; --i) texts.push_back(FreeKeys(keyword));
    }
    texts.push_back(FreeKeys("GLOBAL"));
    if (Wrong()) texts.push_back(FreeKeys("GLOBAL"));
    for (unsigned i = 0; i < sensors_.size(); ++i) texts.push_back(Sensor(i));
    for (unsigned i = 0; i < devices_.size(); ++i) texts.push_back(Device(i));
    for (const Action& action : actions_) texts.push_back(ActionText(action));
    for (const std::string& name : tables_) texts.push_back(Table(name));
    for (unsigned i = 0; i < tavrGroups_.size(); ++i) texts.push_back(TavrGroup(i));
    for (const char* keyword : {"DEFINE", "IFDEF"}) {
        for (unsigned i = random_.Below(3); i > 0; --i) texts.push_back(Words(keyword));
    }
    return texts;
}

std::string SourceGenerator::TypeWords() {
    std::string words = "[DEFINE]\nBUSTYPE_SMBUS=1\nBUSTYPE_SIMPLEIOPORT=2\nW0=0\nW1=1\nW2=2\nW300=300\n+5=9\n-1=3\n";
    for (const unsigned type : kTypes) words += "T" + std::to_string(type) + "=" + std::to_string(type) + "\n";
    // So many that the table of words is no longer asked itself.
    if (random_.Chance(25)) {
        for (unsigned i = 0; i < 80; ++i) words += "MORE" + std::to_string(i) + "=" + std::to_string(i) + "\n";
    }
    return words;
}

std::map<std::string, std::string> SourceGenerator::Files() {
    const std::vector<std::string> names = {"main.zek", "a.zek", "b.zek", "dir\\c.zek"};
    const std::size_t used = 1 + random_.Below(names.size());
    std::map<std::string, std::string> files;
    std::vector<std::string> texts = Sections();
    texts.push_back(TypeWords());
    // In one file and in their order, groups stand below their parents; among the other sections anything may happen.
    const bool orderly = random_.Chance(70);
    for (unsigned i = 0; i < groups_.size(); ++i) (orderly ? files[names[0]] : texts.emplace_back()) += Group(i);
    if (random_.Chance(60)) random_.Shuffle(texts);
    for (const std::string& text : texts) files[names[random_.Below(used)]] += text;
    for (std::size_t i = 1; i < used; ++i) {
        // Each is included by one before it; a mistaken name includes the file again, or itself.
        std::string& includer = files[names[random_.Below(i)]];
        const std::string text = Text("INCLUDE", {{"FILE", Wrong() ? random_.OneOf(names) : names[i]}});
        includer = random_.Chance(50) ? text + includer : includer + text;
    }
    return files;
}

}  // namespace zek::test
