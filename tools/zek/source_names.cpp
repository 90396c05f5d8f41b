#include "source_names.h"

#include <algorithm>
#include <span>

#include "suggestion.h"

namespace zek::tool {
namespace {

/// Many misspelt names among many names would take long.
constexpr unsigned kMostAsked = 1000;
constexpr std::size_t kMostNames = 100'000;

constexpr const char* kOperators[] = {"+",  "-",  "*",   "/",  "%",  "|", "&",  "^", "<<",
                                      ">>", "==", "pow", "!=", ">=", ">", "<=", "<"};

/// The keys that a kind of section knows.
struct KindKeys {
    const char* keyword;
    std::initializer_list<const char*> keys;
};
const KindKeys kKindKeys[] = {
    {"QUORZEK", {"VERSION"}},
    {"SYSTEM", {"TYPE", "MODEL", "FLAG", "SOUTHBRIDGE", "NORTHBRIDGE", "ZEKLOOP"}},
    {"GROUP", {"PARENT", "NAME", "CHILDGROUP", "VALUE_INIT", "VALUE_DEINIT", "VALUE_ENTRY", "VALUE_EXIT"}},
    {"SENSOR",
     {"PARENT", "NAME", "ID", "TYPE", "INITFLAG", "CONTROLMASK", "THEORY", "THRESHOLD_FH", "THRESHOLD_WH",
      "THRESHOLD_FL", "THRESHOLD_WL", "VALUE_INIT", "VALUE_DEINIT", "VALUE_ENTRY", "VALUE_EXIT", "VALUE",
      "VALUE_IPMI"}},
    {"DEVICE", {"NAME", "ID", "INITFLAG", "CONTROLMASK"}},
    {"ACTION", {"NAME", "ARGNUMBER", "VALUE_IPMI", "VALUE"}},
    {"TABLE", {"NAME", "TYPE"}},
    {"TAVRGROUP", {"NAME", "ID", "PID", "SENSORS"}},
    {"IFDEF", {"DEFINEWORD"}},
    {"INCLUDE", {"FILE"}},
};

/// What the name that a message complains of should have named: a kind of section of which the NAME counts, or one of
/// the words behind these rows.
struct MeantRow {
    std::string_view code;
    const char* kind;
};
constexpr char kWords[] = "word";
constexpr char kKeywords[] = "section";
constexpr char kOperator[] = "operator";
constexpr char kKeys[] = "key";
constexpr char kSteps[] = "step";
constexpr MeantRow kMeant[] = {
    {"E002", kKeywords}, {"W004", kKeys},   {"W005", kWords},   {"E102", kKeys},   {"E106", kWords},   {"E108", kWords},
    {"E110", kOperator}, {"E301", "GROUP"}, {"E305", "GLOBAL"}, {"E306", "TABLE"}, {"E307", "ACTION"}, {"E309", kSteps},
};

const char* KindMeant(const std::string& code) {
    const auto* const row =
        std::find_if(std::begin(kMeant), std::end(kMeant), [&](const MeantRow& a) { return a.code == code; });
    return row == std::end(kMeant) ? nullptr : row->kind;
}

std::set<std::string> KeysOf(const std::string& keyword) {
    for (const KindKeys& kind : kKindKeys) {
        if (kind.keyword == keyword) return {kind.keys.begin(), kind.keys.end()};
    }
    return {};
}

}  // namespace

void SourceNames::Read() {
    read_ = true;
    named_[kOperator] = {std::begin(kOperators), std::end(kOperators)};
    for (const KindKeys& kind : kKindKeys) named_[kKeywords].insert(kind.keyword);
    named_[kKeywords].insert({"PROPERTY", "GLOBAL", "REPEATER", "DEFINE"});
    std::size_t count = 0;
    for (const Places::ReadSection& read : places_.SectionsRead()) {
        const std::string& keyword = read.section->name;
        for (const SourceItem& item : read.section->items) {
            if (++count > kMostNames) return;
            if (keyword == "DEFINE" || (keyword == "IFDEF" && item.key != "DEFINEWORD"))
                named_[kWords].insert(item.key);
            if (keyword == "GLOBAL") named_[keyword].insert(item.key);
            if (item.key == "NAME" && keyword != "GLOBAL") named_[keyword].insert(FirstSubString(item.value));
        }
    }
}

const std::set<std::string>& SourceNames::Named(const std::string& kind) {
    if (!read_) Read();
    return named_[kind];
}

std::optional<Fix> SourceNames::Meant(const std::string& code, const NamedSection& section, const std::string& written,
                                      const Place& place, SourceText& text) {
    const char* const kind = KindMeant(code);
    if (!kind || written.empty() || ++asked_ > kMostAsked) return std::nullopt;
    std::optional<std::string> name;
    if (kind == kKeys) {
        name = NearestName(written, KeysOf(section.keyword));
    } else if (kind == kSteps) {
        std::set<std::string> steps;
        for (const std::string& key : places_.KeysBeside(section.place)) {
            if (key.starts_with("VALUE_")) steps.insert(key);
        }
        name = NearestName(written, steps);
    } else {
        name = NearestName(written, Named(kind));
    }
    if (!name) return std::nullopt;
    Place where = place;
    // The brackets and what stands beside the name in them stay.
    const std::string_view marked = text.Line(place.path, place.line).substr(0, place.column + place.length);
    const std::size_t at = place.column ? marked.find(written, place.column - 1) : marked.npos;
    if (at != marked.npos)
        where = {place.path, place.line, static_cast<unsigned>(at + 1), static_cast<unsigned>(written.size())};
    return Fix{where, *name};
}

}  // namespace zek::tool
