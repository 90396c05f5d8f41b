#include "compared_numbers.h"

#include "compiled_words.h"

namespace zek::tool {
namespace {

std::uint32_t ComparedNumber(const ImageView& view, std::uint32_t word) {
    const ImageValue value = view.Resolve(word);
    return value.kind == ImageValue::Kind::kNumber ? value.number : kIdUnresolved;
}

std::optional<std::uint32_t> FirstNumber(const ImageView& view, ImageView::Section section, std::uint32_t key) {
    const auto entry = section.EntryWithId(key);
    if (!entry || entry->WordCount() == 0) return std::nullopt;
    return ComparedNumber(view, entry->Word(0));
}

}  // namespace

ComparedNumbers::ComparedNumbers(const ImageView& view) {
    ReadLists(view);
    ReadIDs(view, kImageSensor, true);
    ReadIDs(view, kImageDevice, false);
    ReadIDs(view, kImageTavrGroup, false);
    ReadCalls(view);
    ReadArguments(view);
}

void ComparedNumbers::ReadLists(const ImageView& view) {
    for (const ImageView::Section section : view.SectionsOf(kImageTavrGroup)) {
        if (const auto id = FirstNumber(view, section, kIdID)) views_.insert(*id);
        const auto sensors = section.EntryWithId(kIdSensors);
        for (unsigned i = 0; sensors && i < sensors->WordCount(); ++i) {
            const std::uint32_t number = ComparedNumber(view, sensors->Word(i));
            if (number == kIdUnresolved) {
                hasUnresolved_ = true;
            } else {
                listed_.insert(number);
            }
        }
    }
}

void ComparedNumbers::ReadIDs(const ImageView& view, std::uint32_t kind, bool isListed) {
    std::set<std::uint32_t> given;
    for (const ImageView::Section section : view.SectionsOf(kind)) {
        const auto id = FirstNumber(view, section, kIdID);
        if (!id) continue;
        const bool isKnown = !isListed || listed_.count(*id) > 0;
        if (isKnown && given.insert(*id).second) continue;
        // A word counts as 0, which then must be in a list, or as another number that is.
        const bool hasZero = !isListed || listed_.count(0) > 0 || hasUnresolved_ || listed_.empty();
        ids_[section.Index()] = hasZero ? 0 : *listed_.begin();
        needsZero_ = needsZero_ || (isListed && listed_.count(0) == 0 && hasUnresolved_);
    }
}

void ComparedNumbers::ReadCalls(const ImageView& view) {
    for (const ImageView::Section section : view.AllSections()) {
        for (const ImageView::Entry entry : section.AllEntries()) {
            if (section.Kind() == kImageRepeater && entry.WordCount() >= 2) {
                calls_[entry.Word(1)] = entry.WordCount() - 2;
            }
            if (!entry.ValueType()) continue;
            const std::uint32_t type = CompiledWords::TypeOf(entry);
            const unsigned place = type == 3 ? 1 : 2;
            const bool isCall = type == 3 || type == 102;
            if (isCall && entry.WordCount() > place) calls_[entry.Word(place)] = entry.WordCount() - place - 1;
        }
    }
}

void ComparedNumbers::ReadArguments(const ImageView& view) {
    for (const ImageView::Section section : view.SectionsOf(kImageAction)) {
        const auto name = section.EntryWithId(kIdName);
        const auto number = FirstNumber(view, section, kIdArgNumber);
        if (!name || name->WordCount() == 0 || !number) continue;
        const auto call = calls_.find(name->Word(0));
        if (call != calls_.end() && call->second != *number) arguments_[section.Index()] = call->second;
    }
}

}  // namespace zek::tool
