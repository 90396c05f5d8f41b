#include "formats.h"
#include "text.h"

namespace zek::bench {
namespace {

/// Whether the keys of a kind's items are new in each section. dtc looks every name of a property up among all that
/// there are, one by one, so these keys are written as text behind a name that only numbers the item.
bool HasKeysOfItsOwn(Kind kind) {
    return kind == Kind::kDefine || kind == Kind::kGlobal || kind == Kind::kRepeater || kind == Kind::kProperty;
}

/// What a board holds has no character that a string of dtc would want escaped.
class DtsWriter {
public:
    DtsWriter(std::string& out, const Board& board) : out_(out), board_(board) {}

    /// A group, with everything that belongs to it and the groups below it. Sensors come early, since the names that
    /// come first are found first.
    void WriteGroup(unsigned group) {
        BeginNode(Kind::kGroup, group);
        for (unsigned kind = kKindNames.size(); kind-- > 0;) {
            if (Kind{kind} != Kind::kGroup) WriteSectionsOf(Kind{kind}, group);
        }
        const unsigned first = board_.FirstChildOf(group);
        const unsigned end = first + board_.ChildrenOf(group);
        for (unsigned child = first; child < end; ++child) WriteGroup(child);
        EndNode();
    }

private:
    void WriteSectionsOf(Kind kind, unsigned group) {
        const unsigned end = board_.FirstOfGroup(kind, group + 1);
        for (unsigned i = board_.FirstOfGroup(kind, group); i < end; ++i) {
            BeginNode(kind, i);
            EndNode();
        }
    }

    /// The node of a section with its items, still open.
    void BeginNode(Kind kind, unsigned index) {
        Append(out_, NameOf(kind).field, '-');
        AppendNumber(out_, index);
        out_ += " {\n";
        items_ = 0;
        board_.Fill(kind, index, section_);
        for (const Field& field : section_.fields) WriteField(field);
        if (!section_.sensors.empty()) {
            out_ += "sensors = ";
            WriteCells(section_.sensors);
            EndItem();
        }
        WriteRows();
        for (const Word& word : section_.words) {
            BeginItem(word.key);
            WriteCells({word.number});
            EndItem();
        }
        for (const Value& value : section_.values) WriteCall(value.key, value.type, value.operands);
        for (const Repeated& repeated : section_.repeated) {
            WriteCall(repeated.key, Numbered("", repeated.count), repeated.call);
        }
        for (const Property& property : section_.properties) {
            BeginItem(property.key);
            AppendQuoted(out_, property.text);
            EndItem();
        }
    }
    void EndNode() { out_ += "};\n"; }

    void WriteField(const Field& field) {
        if (field.key == Key::kParent) return;
        // The property "name" of a node is no free one.
        Append(out_, field.key == Key::kName ? "label" : NameOf(field.key).field, " = ");
        field.form == Form::kText ? AppendQuoted(out_, field.text) : WriteCells({field.number});
        EndItem();
    }

    /// A property for an item, up to its value.
    void BeginItem(std::string_view key) {
        if (!HasKeysOfItsOwn(section_.kind)) return Append(out_, key, " = ");
        out_ += "item-";
        AppendNumber(out_, ++items_);
        Append(out_, " = \"", key, "\", ");
    }
    void EndItem() { out_ += ";\n"; }

    void WriteCall(std::string_view key, std::string_view first, std::string_view others) {
        BeginItem(key);
        AppendQuoted(out_, first);
        if (!others.empty()) {
            out_ += ", ";
            AppendQuotedTexts(out_, others);
        }
        EndItem();
    }
    void WriteCells(const std::vector<unsigned>& numbers) {
        out_ += '<';
        AppendNumbers(out_, numbers, " ");
        out_ += '>';
    }
    void WriteRows() {
        if (section_.rows.empty()) return;
        std::string_view before = "rows = ";
        for (const Row& row : section_.rows) {
            out_ += before;
            WriteCells({row.first, row.last, row.value});
            before = ", ";
        }
        EndItem();
    }

    std::string& out_;
    const Board& board_;
    Section section_;
    unsigned items_ = 0;  ///< of the section that is being written, so far
};

}  // namespace

std::string BoardAsDts(const Board& board) {
    std::string out = "/dts-v1/;\n/ {\n";
    DtsWriter(out, board).WriteGroup(0);
    out += "};\n";
    return out;
}

}  // namespace zek::bench
