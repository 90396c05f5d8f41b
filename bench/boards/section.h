/// One section of a board, to be written in any format. Relies on nothing.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace zek::bench {

/// The kinds of sections, in the order in which a board has them: what is named stands before what names it.
enum class Kind : unsigned {
    kQuorzek,
    kDefine,
    kSystem,
    kProperty,
    kTable,
    kAction,
    kGlobal,
    kRepeater,
    kGroup,
    kSensor,
    kDevice,
    kTavrGroup,
};

struct KindName {
    std::string_view keyword;
    std::string_view field;  ///< what formats without keywords call it
};

inline constexpr std::array<KindName, 12> kKindNames = {{
    {"QUORZEK", "quorzek"},
    {"DEFINE", "define"},
    {"SYSTEM", "system"},
    {"PROPERTY", "property"},
    {"TABLE", "table"},
    {"ACTION", "action"},
    {"GLOBAL", "global"},
    {"REPEATER", "repeater"},
    {"GROUP", "group"},
    {"SENSOR", "sensor"},
    {"DEVICE", "device"},
    {"TAVRGROUP", "tavrgroup"},
}};
static_assert(kKindNames.size() == static_cast<unsigned>(Kind::kTavrGroup) + 1, "a row for each kind");

inline const KindName& NameOf(Kind kind) { return kKindNames[static_cast<unsigned>(kind)]; }

/// The keys whose names the language fixes.
enum class Key : unsigned {
    kVersion,
    kType,
    kModel,
    kFlag,
    kSouthbridge,
    kNorthbridge,
    kZekLoop,
    kParent,
    kName,
    kChildGroup,
    kId,
    kInitFlag,
    kControlMask,
    kTheory,
    kThresholdFH,
    kThresholdWH,
    kThresholdFL,
    kThresholdWL,
    kArgNumber,
    kPid,
};

struct KeyName {
    std::string_view keyword;
    std::string_view field;
};

inline constexpr std::array<KeyName, 20> kKeyNames = {{
    {"VERSION", "version"},
    {"TYPE", "type"},
    {"MODEL", "model"},
    {"FLAG", "flag"},
    {"SOUTHBRIDGE", "southbridge"},
    {"NORTHBRIDGE", "northbridge"},
    {"ZEKLOOP", "zekloop"},
    {"PARENT", "parent"},
    {"NAME", "name"},
    {"CHILDGROUP", "childgroup"},
    {"ID", "id"},
    {"INITFLAG", "initflag"},
    {"CONTROLMASK", "controlmask"},
    {"THEORY", "theory"},
    {"THRESHOLD_FH", "threshold_fh"},
    {"THRESHOLD_WH", "threshold_wh"},
    {"THRESHOLD_FL", "threshold_fl"},
    {"THRESHOLD_WL", "threshold_wl"},
    {"ARGNUMBER", "argnumber"},
    {"PID", "pid"},
}};
static_assert(kKeyNames.size() == static_cast<unsigned>(Key::kPid) + 1, "a row for each key");

inline const KeyName& NameOf(Key key) { return kKeyNames[static_cast<unsigned>(key)]; }

/// How an item with a fixed key is written where the format leaves the choice.
enum class Form {
    kText,
    kDecimal,
    kHex,
    kWord,  ///< a word that stands for the number
};

struct Field {
    Key key;
    Form form;
    unsigned number = 0;
    std::string text;  ///< the text, or the word
};

/// A word for a number.
struct Word {
    std::string key;
    unsigned number;
};

struct Property {
    std::string key;
    std::string text;
};

/// A row of a table: the value of every byte from `first` to `last`.
struct Row {
    unsigned first;
    unsigned last;
    unsigned value;
};

struct Value {
    std::string key;
    std::string_view type;  ///< the word for the value type
    std::string operands;   ///< joined by commas; none holds a comma
};

struct Repeated {
    std::string key;
    unsigned count;
    std::string call;  ///< action and arguments, joined by commas
};

struct Section {
    Kind kind = Kind::kQuorzek;
    unsigned index = 0;  ///< among the sections of its kind
    std::vector<Field> fields;
    std::vector<unsigned> sensors;  ///< IDs of sensors
    std::vector<Word> words;
    std::vector<Row> rows;
    std::vector<Value> values;
    std::vector<Repeated> repeated;
    std::vector<Property> properties;

    /// Becomes another section, still without items. The memory of the items is kept.
    void Begin(Kind newKind, unsigned newIndex) {
        kind = newKind;
        index = newIndex;
        fields.clear();
        sensors.clear();
        words.clear();
        rows.clear();
        values.clear();
        repeated.clear();
        properties.clear();
    }
    void Text(Key key, std::string text) { fields.push_back({key, Form::kText, 0, std::move(text)}); }
    void Number(Key key, unsigned number, Form form = Form::kDecimal) { fields.push_back({key, form, number, {}}); }
    void WordFor(Key key, std::string_view word, unsigned number) {
        fields.push_back({key, Form::kWord, number, std::string(word)});
    }
};

}  // namespace zek::bench
