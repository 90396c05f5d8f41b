#include "compiled_words.h"

#include <algorithm>
#include <iterator>

#include "decompile.h"
#include "printable.h"
#include "values.h"
#include "zekcomp/value_shapes.h"

namespace zek::tool {
namespace {

std::string OperatorIn(std::uint32_t word) {
    const char* const text = (word & kIdClassMask) == kIdOperator ? OperatorText(word & kIdOrdinalMask) : nullptr;
    if (text) return text;
    throw CannotExpress("no operator has the word " + Hexadecimal(word));
}

}  // namespace

std::string CompiledWords::Text(std::uint32_t word, std::uint32_t wordClass) const {
    const ImageValue value = view_.Resolve(word);
    if ((word & kIdClassMask) == wordClass && value.kind == ImageValue::Kind::kText) return std::string(value.text);
    throw CannotExpress("the word " + Hexadecimal(word) + " stands where a name must, and is none");
}

std::uint32_t CompiledWords::Number(std::uint32_t word) {
    const ImageValue value = view_.Resolve(word);
    const bool isNumber = (word & kIdClassMask) == kIdNumber && value.kind == ImageValue::Kind::kNumber;
    // The number 0xFFFFFFFF has an identifier as others have, and stands for nothing.
    if (!isNumber && (word & kIdClassMask) != kIdNumber) {
        throw CannotExpress("the word " + Hexadecimal(word) + " stands where a number must, and is none");
    }
    if (word == nextNumber_) ++nextNumber_;
    return isNumber ? value.number : 0xFFFFFFFF;
}

std::string CompiledWords::Operand(std::uint32_t word, const std::set<std::uint32_t>& values) {
    const std::uint32_t wordClass = word & kIdClassMask;
    const ImageValue value = view_.Resolve(word);
    if (wordClass == kIdNumber && word <= nextNumber_ && word - kIdNumber < view_.IdentifierCount(kIdNumber)) {
        return std::to_string(Number(word));
    }
    const bool isText = value.kind == ImageValue::Kind::kText && !value.text.empty();
    if (wordClass == kIdGlobal && isText) return "G_" + std::string(value.text);
    if (wordClass == kIdValue && values.count(word)) return "VALUE_" + std::string(value.text);
    // The number of an argument is added to its class, so some argument gives every word.
    return "ARG" + std::to_string(word - kIdArgument);
}

std::string CompiledWords::InRole(char role, std::uint32_t word, const std::set<std::uint32_t>& values) {
    switch (role) {
        case kOperatorOperand: return OperatorIn(word);
        case kActionOperand: return Text(word, kIdAction);
        case kTableOperand: return Text(word, kIdTableName);
        default: return Operand(word, values);
    }
}

std::vector<std::string> CompiledWords::Value(const ImageView::Entry& entry, const std::set<std::uint32_t>& values) {
    const std::uint32_t type = TypeOf(entry);
    std::vector<std::string> texts = {made_.Type(type)};
    const ValueShape shape = ShapeOf(type) ? *ShapeOf(type) : ValueShape();
    for (unsigned i = 1; i < entry.WordCount(); ++i) {
        const bool inList = i > shape.operands.size();
        if (inList && !shape.list) {
            throw CannotExpress("a value of the type " + std::to_string(type) + " has too many words");
        }
        const char role = inList ? static_cast<char>(kReference) : shape.operands[i - 1];
        texts.push_back(InRole(role, entry.Word(i), values));
    }
    NameSmBus(type, entry, texts);
    return texts;
}

/// The checks of two value types want to see these words, though they only warn.
void CompiledWords::NameSmBus(std::uint32_t type, const ImageView::Entry& entry, std::vector<std::string>& texts) {
    if (type != kSmbusList && type != kSmbus) return;
    constexpr unsigned kBus = 3;
    constexpr unsigned kBase = 4;
    if (texts.size() <= kBase) return;
    const ImageValue bus = view_.Resolve(entry.Word(kBus));
    if (bus.kind == ImageValue::Kind::kNumber && texts[kBus] == std::to_string(bus.number)) {
        texts[kBus] = made_.SmBus(bus.number).value_or(texts[kBus]);
    }
    if (texts[kBase] == "0") texts[kBase] = "0x00";
}

std::vector<std::string> CompiledWords::Repeater(const ImageView::Entry& entry) {
    if (entry.WordCount() < 2) throw CannotExpress("an item of a [REPEATER] has too few words");
    std::vector<std::string> texts = {std::to_string(Number(entry.Word(0))), Text(entry.Word(1), kIdAction)};
    for (unsigned i = 2; i < entry.WordCount(); ++i) texts.push_back(Operand(entry.Word(i), {}));
    return texts;
}

}  // namespace zek::tool
