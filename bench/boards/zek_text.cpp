#include "zek_text.h"

#include "text.h"

namespace zek::bench {
namespace {

constexpr std::size_t kSensorsInLine = 40;

constexpr std::string_view kComments[] = {"as on the drawing", "checked on the bench", "low byte first",
                                          "see the data sheet"};

/// Appends a text so that it is one sub-string and no comment.
void AppendSubString(std::string& out, std::string_view text) {
    const bool quotes = text.find_first_of(",;#") != std::string_view::npos;
    quotes ? AppendQuoted(out, text) : Append(out, text);
}

}  // namespace

ZekText::ZekText(std::string& out, std::uint64_t seed) : out_(out), random_(seed, kStyle, 0) {}

void ZekText::Header(std::string_view keyword) {
    if (!out_.empty()) out_ += '\n';
    const unsigned style = random_.Below(8);
    equals_ = style < 4 ? "=" : " = ";
    column_ = style == 7 ? 12 : 0;
    if (random_.OneIn(16)) Append(out_, "; ", random_.Pick<std::string_view>(kComments), '\n');
    Append(out_, '[', keyword, "]\n");
}

void ZekText::Item(std::string_view key, std::string_view value) {
    Key(key);
    out_ += value;
    EndItem();
}

void ZekText::Key(std::string_view key) {
    out_ += key;
    if (key.size() < column_) out_.append(column_ - key.size(), ' ');
    out_ += equals_;
}

void ZekText::EndItem() {
    if (random_.OneIn(64)) Append(out_, "    ; ", random_.Pick<std::string_view>(kComments));
    out_ += '\n';
}

void ZekText::Write(const Section& section) {
    Header(NameOf(section.kind).keyword);
    for (const Field& field : section.fields) WriteField(field);
    if (section.kind == Kind::kTavrGroup) WriteSensors(section.sensors);
    for (const Word& word : section.words) {
        Key(word.key);
        AppendHex(out_, word.number);
        EndItem();
    }
    for (const Row& row : section.rows) WriteRow(row);
    for (const Value& value : section.values) {
        Key(value.key);
        Append(out_, value.type, value.operands.empty() ? "" : ",", value.operands);
        EndItem();
    }
    for (const Repeated& repeated : section.repeated) {
        Key(repeated.key);
        AppendNumber(out_, repeated.count);
        Append(out_, ',', repeated.call);
        EndItem();
    }
    for (const Property& property : section.properties) {
        Key(property.key);
        AppendSubString(out_, property.text);
        EndItem();
    }
}

void ZekText::WriteField(const Field& field) {
    Key(NameOf(field.key).keyword);
    switch (field.form) {
        case Form::kText: AppendSubString(out_, field.text); break;
        case Form::kDecimal: AppendNumber(out_, field.number); break;
        case Form::kHex: AppendHex(out_, field.number); break;
        case Form::kWord: out_ += field.text; break;
    }
    EndItem();
}

void ZekText::WriteSensors(const std::vector<unsigned>& sensors) {
    Key("SENSORS");
    for (std::size_t i = 0; i < sensors.size(); ++i) {
        if (i > 0) out_ += i % kSensorsInLine == 0 ? ",\\\n    " : ",";
        AppendNumber(out_, sensors[i]);
    }
    EndItem();
}

void ZekText::WriteRow(const Row& row) {
    std::string range;
    AppendNumber(range, row.first);
    if (row.last != row.first) {
        range += '.';
        AppendNumber(range, row.last);
    }
    Key(range);
    AppendNumber(out_, row.value);
    EndItem();
}

}  // namespace zek::bench
