#include "source_names.h"

#include <algorithm>
#include <iterator>
#include <span>

#include "debug_layout.h"
#include "lint_text.h"
#include "source_line.h"
#include "zekcomp/operators.h"
#include "zekcomp/predefined.h"

namespace zek::tool {
namespace {

constexpr std::size_t kMostNames = 1'000'000;
constexpr unsigned kMostArguments = 100;

/// What other languages call some of them.
struct OperatorSlip {
    std::string_view written;
    const char* meant;
};
constexpr OperatorSlip kOperatorSlips[] = {{"=", "=="}, {"<>", "!="}, {"=<", "<="}, {"=>", ">="}, {"**", "pow"}};

const char* OperatorMeant(std::string_view written) {
    const auto* const row = std::find_if(std::begin(kOperatorSlips), std::end(kOperatorSlips),
                                         [&](const OperatorSlip& slip) { return slip.written == written; });
    return row == std::end(kOperatorSlips) ? nullptr : row->meant;
}

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
constexpr char kOperands[] = "operand";
constexpr char kArguments[] = "argument";
constexpr char kViews[] = "view";
constexpr char kSensors[] = "sensor";
constexpr char kListed[] = "listed sensor";
constexpr char kGlobals[] = "GLOBAL";
constexpr MeantRow kMeant[] = {
    {"E002", kKeywords}, {"W004", kKeys},    {"W005", kWords},     {"E102", kKeys},
    {"E106", kOperands}, {"E108", kWords},   {"E110", kOperator},  {"E301", "GROUP"},
    {"E302", kViews},    {"E303", kListed},  {"E304", kArguments}, {"E305", kGlobals},
    {"E306", "TABLE"},   {"E307", "ACTION"}, {"E309", kSteps},     {"W301", kSensors},
};

const char* KindMeant(const std::string& code) {
    const auto* const row =
        std::find_if(std::begin(kMeant), std::end(kMeant), [&](const MeantRow& a) { return a.code == code; });
    return row == std::end(kMeant) ? nullptr : row->kind;
}

/// The keys that a kind of section knows.
std::vector<std::string> KeysOf(const std::string& keyword) {
    // Where any key names a file.
    if (keyword == "INCLUDE") return {"FILE"};
    std::vector<std::string> keys;
    const DebugKind* const kind = DebugKindOf(keyword);
    for (const DebugKey& key : kind ? kind->declared : std::span<const DebugKey>()) keys.push_back(key.name);
    return keys;
}

/// What a line without = probably should be, which is a key as a whole: a key that the section knows, and a value.
std::optional<std::string> WithEquals(const std::string& keyword, const std::string& written) {
    constexpr char kBetween[] = " \t:";
    const std::size_t end = written.find_first_of(kBetween);
    const std::size_t value = end == written.npos ? end : written.find_first_not_of(kBetween, end);
    const std::vector<std::string> keys = KeysOf(keyword);
    const std::string key = written.substr(0, end);
    if (value == written.npos || std::find(keys.begin(), keys.end(), key) == keys.end()) return std::nullopt;
    return key + " = " + written.substr(value);
}

/// All kinds of sections.
std::vector<std::string> Keywords() {
    std::vector<std::string> keywords;
    for (const DebugKind& kind : kDebugKinds) keywords.push_back(kind.keyword);
    return keywords;
}

/// Whether operands stand in an item, and not just a number or a word.
bool HasOperands(const NamedItem& item) {
    return item.keyword == kGlobals || item.keyword == "REPEATER" || item.key.starts_with("VALUE");
}

/// Those of the first that are none of the second.
std::vector<std::string> Without(std::vector<std::string> names, const std::set<std::string>& others) {
    std::erase_if(names, [&](const std::string& name) { return others.contains(name); });
    return names;
}

/// The arguments of an action.
std::vector<std::string> ArgumentsOf(const SourceSection& section) {
    std::vector<std::string> arguments;
    if (section.name != "ACTION") return arguments;
    unsigned last = 0;
    for (const SourceItem& item : section.items) {
        const std::string text = item.key == "ARGNUMBER" ? FirstSubString(item.value) : std::string();
        if (!text.empty() && !StringToLong(text, &last)) last = 0;
    }
    for (unsigned i = 1; i <= std::min(last, kMostArguments); ++i) arguments.push_back("ARG" + std::to_string(i));
    return arguments;
}

/// The working values of an action.
std::vector<std::string> StepsOf(const SourceSection& section) {
    std::vector<std::string> steps;
    for (const SourceItem& item : section.items) {
        if (section.name == "ACTION" && item.key.starts_with("VALUE_")) steps.push_back(item.key);
    }
    return steps;
}

bool IsKeyAsAWhole(std::string_view line) {
    const LineParts parts = PartsOf(line);
    return parts.KeyEnd() == std::string_view::npos && !parts.continues;
}

}  // namespace

void SourceNames::Read() {
    read_ = true;
    std::map<std::string, Names> named;
    for (const tagNTMAP& row : g_NTMapOper) named[kOperator].push_back(row.pszName);
    named[kKeywords] = Keywords();
    named[kWords] = {given_.begin(), given_.end()};
    std::size_t count = 0;
    for (const Places::ReadSection& read : places_.SectionsRead()) {
        for (const SourceItem& item : read.section->items) {
            if (count < kMostNames) ReadItem(read.section->name, item, named);
        }
        count += read.section->items.size();
    }
    const std::set<std::string> sensors(named[kSensors].begin(), named[kSensors].end());
    const std::set<std::string> listed(named[kListed].begin(), named[kListed].end());
    named[kSensors] = Without(std::move(named[kSensors]), listed);
    named[kListed] = Without(std::move(named[kListed]), sensors);
    for (auto& [kind, names] : named) named_.emplace(kind, NearNames(std::move(names)));
}

void SourceNames::ReadItem(const std::string& keyword, const SourceItem& item, std::map<std::string, Names>& named) {
    const bool isWord = keyword == "DEFINE" || (keyword == "IFDEF" && item.key != "DEFINEWORD");
    if (isWord) named[kWords].push_back(item.key);
    if (keyword == kGlobals) named[kGlobals].push_back(item.key);
    const bool isName = item.key == "NAME" && keyword != kGlobals;
    if (isName) named[keyword].push_back(FirstSubString(item.value));
    if (item.key == "ID" && keyword == "TAVRGROUP") named[kViews].push_back(FirstSubString(item.value));
    if (item.key == "ID" && keyword == "SENSOR") named[kSensors].push_back(FirstSubString(item.value));
    if (item.key != "SENSORS" || keyword != "TAVRGROUP") return;
    for (const CutText& part : CutValue(item.value)) named[kListed].emplace_back(part.text);
}

const NearNames& SourceNames::NamesIn(const SourceSection& section, const char* kind) {
    const auto known = namedIn_.find({&section, kind});
    if (known != namedIn_.end()) return known->second;
    Names names = kind == kArguments ? ArgumentsOf(section) : StepsOf(section);
    return namedIn_.emplace(std::pair(&section, kind), NearNames(std::move(names))).first->second;
}

std::optional<std::string> SourceNames::Nearest(const char* kind, const NamedItem& item, const std::string& written) {
    if (kind == kOperands) {
        std::optional<std::string> name = Nearest(kWords, item, written);
        for (const char* const other : {kGlobals, kSteps, kArguments}) {
            if (!name && HasOperands(item)) name = Nearest(other, item, written);
        }
        return name;
    }
    if (kind == kOperator) {
        if (const char* const slip = OperatorMeant(written)) return slip;
    }
    if (kind == kKeys) return NearNames(KeysOf(item.keyword)).Nearest(written, left_);
    if (kind == kArguments || kind == kSteps) {
        const SourceSection* const section = places_.SectionOf(item.place);
        return section ? NamesIn(*section, kind).Nearest(written, left_) : std::nullopt;
    }
    const auto [known, isNew] = known_.try_emplace({kind, written});
    if (isNew) {
        if (!read_) Read();
        const auto names = named_.find(kind);
        if (names != named_.end()) known->second = names->second.Nearest(written, left_);
    }
    return known->second;
}

std::optional<Fix> NameFix(const Place& where, const std::string& name, SourceText& text) {
    if (name.find('"') != name.npos) return std::nullopt;
    const auto isBlank = [](char byte) { return byte == ' ' || byte == '\t'; };
    const bool isCut = name.find_first_of(",;#") != name.npos || name.ends_with('\\') ||
                       (!name.empty() && (isBlank(name.front()) || isBlank(name.back())));
    const std::string_view line = text.Line(where.path, where.line);
    const bool inQuotes = where.column > 1 && where.column - 2 < line.size() && line[where.column - 2] == '"';
    return Fix{where, isCut && !inQuotes ? '"' + name + '"' : name};
}

std::optional<Fix> SourceNames::HeaderMeant(const std::string& written, const Place& place) {
    const std::string bare = written.substr(1, written.find(']') - 1);
    const std::vector<std::string> keywords = Keywords();
    const bool isKeyword = std::find(keywords.begin(), keywords.end(), bare) != keywords.end();
    const std::optional<std::string> name = isKeyword ? bare : Nearest(kKeywords, {}, bare);
    return name ? std::optional(Fix{place, '[' + *name + ']'}) : std::nullopt;
}

std::optional<Fix> SourceNames::Meant(const std::string& code, const NamedItem& item, const std::string& written,
                                      const Place& place, SourceText& text) {
    const char* const kind = KindMeant(code);
    if (!kind || written.empty()) return std::nullopt;
    if (kind == kKeywords && written.starts_with('[')) return HeaderMeant(written, place);
    const std::string_view line = text.Line(place.path, place.line);
    if (kind == kKeys && place.length == written.size() && IsKeyAsAWhole(line)) {
        if (std::optional<std::string> whole = WithEquals(item.keyword, written)) return Fix{place, *whole};
    }
    const std::optional<std::string> name = Nearest(kind, item, written);
    if (!name) return std::nullopt;
    Place where = place;
    // The brackets and what stands beside the name in them stay.
    const std::string_view marked = line.substr(0, place.column + place.length);
    const std::size_t at = place.column ? marked.find(written, place.column - 1) : marked.npos;
    if (at != marked.npos)
        where = {place.path, place.line, static_cast<unsigned>(at + 1), static_cast<unsigned>(written.size())};
    return NameFix(where, *name, text);
}

}  // namespace zek::tool
