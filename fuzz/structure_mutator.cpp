#include "structure_mutator.h"

#include <algorithm>

namespace zek::fuzz {

namespace {

constexpr unsigned kMostChanges = 4;
/// How often counts, lengths and offsets are put right after bytes came or went.
constexpr unsigned kPutRight = 75;
constexpr unsigned kClass = 0xFF000000;

}  // namespace

StructureMutator::StructureMutator(std::string_view image, unsigned seed) : image_(image), random_(seed) {}

std::string StructureMutator::Mutated() {
    // Mostly few: with every change an image is more likely to be refused at once.
    for (unsigned changes = 1 + random_.Below(1 + random_.Below(kMostChanges)); changes > 0; --changes) {
        structure_ = StructureOf(image_);
        if (structure_.fields.empty()) break;
        while (!Change()) {
        }
    }
    return image_;
}

bool StructureMutator::Change() {
    using Step = bool (StructureMutator::*)();
    // What there is more of in an image is changed more often. The first always applies.
    static const std::vector<Step> kSteps = {
        &StructureMutator::SetField,   &StructureMutator::SetField,   &StructureMutator::SetField,
        &StructureMutator::SetField,   &StructureMutator::SwapFields, &StructureMutator::RemovePart,
        &StructureMutator::DoublePart, &StructureMutator::DoublePart, &StructureMutator::ResizeCover};
    return random_.Chance(2) ? Cut() : (this->*random_.Pick(kSteps))();
}

bool StructureMutator::SetField() {
    // A kind first: of most kinds there are few among thousands of words.
    const auto kind = static_cast<FieldKind>(random_.Below(4));
    std::vector<Field> some;
    std::copy_if(structure_.fields.begin(), structure_.fields.end(), std::back_inserter(some),
                 [kind](const Field& field) { return field.kind == kind; });
    const Field& field = random_.Pick(some.empty() ? structure_.fields : some);
    SetWord(field.at, NewValue(field));
    return true;
}

unsigned StructureMutator::NewValue(const Field& field) {
    const unsigned old = WordAt(image_, field.at);
    const auto left = static_cast<unsigned>(image_.size() - field.at);
    if (field.kind == FieldKind::kWord && random_.Chance(60)) return MixedWord(old);
    if (field.kind == FieldKind::kOffset && random_.Chance(60)) {
        const auto to = static_cast<unsigned>(random_.Pick(structure_.fields).at);
        return random_.Chance(50) ? WordAt(image_, to) : to;
    }
    const std::vector<unsigned> values = {0,        1,          old - 1,    old + 1,    old + 4,         old * 2,
                                          left,     left - 4,   left / 4,   left / 8,   left + 1,        1U << 20,
                                          1U << 24, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 0xFFFFFFFF / 8U, 0xFFFFFFFC};
    return random_.Pick(values);
}

unsigned StructureMutator::MixedWord(unsigned old) {
    const unsigned other = WordAt(image_, random_.Pick(structure_.fields).at);
    const unsigned ordinal = random_.Chance(50) ? other : old + random_.Below(3) - 1;
    const unsigned itsClass = random_.Chance(50) ? other : old;
    return (itsClass & kClass) | (ordinal & ~kClass);
}

bool StructureMutator::SwapFields() {
    const Field& one = random_.Pick(structure_.fields);
    const Field& other = random_.Pick(structure_.fields);
    const unsigned word = WordAt(image_, one.at);
    SetWord(one.at, WordAt(image_, other.at));
    SetWord(other.at, word);
    return true;
}

bool StructureMutator::RemovePart() {
    if (structure_.parts.empty()) return false;
    const Part part = random_.Pick(structure_.parts);
    AddToCount(part, 0U - 1U);
    Replace(part.begin, part.end - part.begin, {});
    return true;
}

/// Sometimes in the place of another part, in which it may not belong.
bool StructureMutator::DoublePart() {
    if (structure_.parts.empty()) return false;
    const Part part = random_.Pick(structure_.parts);
    const std::string bytes = image_.substr(part.begin, part.end - part.begin);
    const Part place = random_.Chance(70) ? part : random_.Pick(structure_.parts);
    if (random_.Chance(20)) {
        Replace(place.begin, place.end - place.begin, bytes);
        return true;
    }
    AddToCount(place, 1);
    Replace(place.end, 0, bytes);
    return true;
}

/// Lets what a length covers become longer or shorter at its end.
bool StructureMutator::ResizeCover() {
    const Field field = random_.Pick(structure_.fields);
    if (field.kind != FieldKind::kLength || field.end == 0) return false;
    const std::size_t size = field.end - field.at - 4;
    if (random_.Chance(50)) {
        const std::size_t removed = random_.Below(std::min<std::size_t>(size, 16) + 1);
        Replace(field.end - removed, removed, {});
        return true;
    }
    std::string added(1 + random_.Below(random_.Chance(10) ? 300 : 8), '\0');
    for (char& byte : added) byte = random_.Chance(50) ? static_cast<char>(random_.Below(256)) : '\0';
    Replace(field.end, 0, added);
    return true;
}

bool StructureMutator::Cut() {
    image_.resize(random_.Pick(structure_.fields).at + random_.Below(5));
    return true;
}

void StructureMutator::Replace(std::size_t at, std::size_t removed, std::string_view inserted) {
    const auto more = static_cast<unsigned>(inserted.size() - removed);
    if (random_.Chance(kPutRight)) {
        for (const Field& field : structure_.fields) {
            const unsigned word = WordAt(image_, field.at);
            const bool covers = field.kind == FieldKind::kLength && field.at + 4 <= at && at + removed <= field.end;
            if (covers || (field.kind == FieldKind::kOffset && word >= at + removed)) SetWord(field.at, word + more);
        }
    }
    image_.replace(at, removed, inserted);
}

void StructureMutator::AddToCount(const Part& part, unsigned step) {
    if (part.count != 0 && random_.Chance(kPutRight)) SetWord(part.count, WordAt(image_, part.count) + step);
}

void StructureMutator::SetWord(std::size_t at, unsigned word) {
    for (std::size_t i = 0; i < 4; ++i) image_[at + i] = static_cast<char>(word >> 8 * i);
}

}  // namespace zek::fuzz
