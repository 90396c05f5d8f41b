/// The items of a section as the fields of a record. Relies on section.h.
#pragma once

#include <string_view>

#include "section.h"

namespace zek::bench {

/// Gives the items to the writer of a format, which has these functions:
///
///     void Text(std::string_view field, std::string_view text);
///     void Number(std::string_view field, unsigned number);
///     void Word(std::string_view field, std::string_view word);           // a name of an enumeration
///     void Numbers(std::string_view field, const std::vector<unsigned>& numbers);
///     void Texts(std::string_view field, std::string_view joined);        // by commas, or empty
///     void BeginList(std::string_view field);  void EndList();            // of records:
///     void BeginRecord();  void EndRecord();
template <class Writer>
class Fields {
public:
    explicit Fields(Writer& writer) : writer_(writer) {}

    void Write(const Section& section) {
        writer_.BeginRecord();
        for (const Field& field : section.fields) WriteField(field);
        if (!section.sensors.empty()) writer_.Numbers("sensors", section.sensors);
        WriteList("words", section.words);
        WriteList("rows", section.rows);
        WriteList("values", section.values);
        WriteList("repeated", section.repeated);
        WriteList("properties", section.properties);
        writer_.EndRecord();
    }

private:
    void WriteField(const Field& field) {
        const std::string_view name = NameOf(field.key).field;
        if (field.form == Form::kText) return writer_.Text(name, field.text);
        if (field.form == Form::kWord) return writer_.Word(name, field.text);
        writer_.Number(name, field.number);
    }

    template <class Item>
    void WriteList(std::string_view field, const std::vector<Item>& items) {
        if (items.empty()) return;
        writer_.BeginList(field);
        for (const Item& item : items) {
            writer_.BeginRecord();
            WriteItem(item);
            writer_.EndRecord();
        }
        writer_.EndList();
    }

    void WriteItem(const Word& word) {
        writer_.Text("key", word.key);
        writer_.Number("number", word.number);
    }
    void WriteItem(const Row& row) {
        writer_.Number("first", row.first);
        writer_.Number("last", row.last);
        writer_.Number("value", row.value);
    }
    void WriteItem(const Value& value) {
        writer_.Text("key", value.key);
        writer_.Word("type", value.type);
        if (!value.operands.empty()) writer_.Texts("operands", value.operands);
    }
    void WriteItem(const Repeated& repeated) {
        writer_.Text("key", repeated.key);
        writer_.Number("count", repeated.count);
        writer_.Texts("call", repeated.call);
    }
    void WriteItem(const Property& property) {
        writer_.Text("key", property.key);
        writer_.Text("text", property.text);
    }

    Writer& writer_;
};

}  // namespace zek::bench
