#include "model/look_ahead.h"

#include "zekcomp/value_shapes.h"

namespace zek {

namespace {

/// Notes what is no number, and neither an argument nor a VALUE_ name, which are looked up elsewhere if at all.
void NoteReference(const std::string& text, const OperandTables& tables, LookAhead& ahead) {
    if (text.starts_with("G_")) return ahead.Note(tables.globals, std::string_view(text).substr(tables.globalPrefix));
    const bool maybeNumber = text.empty() || text[0] <= '9';
    if (!maybeNumber && !text.starts_with("VALUE")) ahead.Note(tables.predefined, text);
}

void NoteOperand(char operand, const std::string& text, const OperandTables& tables, LookAhead& ahead) {
    switch (operand) {
        case kOperatorOperand:
        case kValueNameOperand: return;
        case kActionOperand: return ahead.Note(tables.actions, text);
        case kTableOperand: return ahead.Note(tables.tables, text);
        default: return NoteReference(text, tables, ahead);
    }
}

}  // namespace

void NoteOperands(const CGeValue& value, const OperandTables& tables, LookAhead& ahead) {
    const ValueShape* shape = ShapeOf(value.m_dwType);
    if (!shape || !value.m_pData) return;
    const Payload payload = PayloadOf(value);
    for (std::size_t i = 0; i < shape->operands.size(); ++i) {
        NoteOperand(shape->operands[i], payload.strings[i], tables, ahead);
    }
    if (!payload.list) return;
    for (const std::string& text : *payload.list) NoteReference(text, tables, ahead);
}

}  // namespace zek
