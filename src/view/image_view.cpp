#include "zekcomp/image_view.h"

#include <algorithm>
#include <bit>

#include "compile/value_fields.h"
#include "view/verifier.h"

namespace zek {

namespace {

/// The tables whose names an entry can have.
constexpr unsigned kNameClasses[] = {kIdProperty, kIdGlobal, kIdValue, kIdRepeater};

ImageValue Nothing(unsigned word) { return {ImageValue::Kind::kNothing, word, 0, {}}; }

/// What the words of a record are; the image has been verified.
EntryShape ShapeOfRecord(unsigned kind, const unsigned char* record) {
    const unsigned name = EntryName(record);
    if (!IsValueKey(name)) return ShapeOfKey(kind, name);
    const bool operation = EntryWords(record) > 1;
    return ShapeOfValue(EntryWord(record, 0) & kIdOrdinalMask,
                        operation && IsComparison(EntryWord(record, 1) & kIdOrdinalMask));
}

}  // namespace

std::optional<ImageView> ImageView::Open(std::span<const unsigned char> image, ImageFinding* failure) {
    auto data = std::make_shared<Data>();
    data->image = image;
    ImageVerifier verifier(*data, {});
    if (verifier.Verify()) return ImageView(std::move(data));
    if (failure) *failure = verifier.Failure();
    return {};
}

std::span<const unsigned char> ImageView::Bytes() const { return data_->image; }

unsigned ImageView::Version() const { return data_->version; }

unsigned ImageView::Time() const { return data_->time; }

ImageView::Sections ImageView::AllSections() const {
    return {data_.get(), nullptr, static_cast<unsigned>(data_->sections.size())};
}

ImageView::Sections ImageView::SectionsOf(unsigned kind) const {
    if (!IsKind(kind)) return {data_.get(), nullptr, 0};
    const std::uint32_t* const starts = &data_->kindStarts[kind & kIdOrdinalMask];
    return {data_.get(), data_->byKind.data() + starts[0], starts[1] - starts[0]};
}

std::optional<ImageView::Section> ImageView::SectionNamed(unsigned kind, std::string_view name) const {
    std::uint32_t first = FirstSections::kNone;
    // One class but for what no source says.
    unsigned classes = IsKind(kind) ? data_->nameClasses[kind & kIdOrdinalMask] : 0;
    for (; classes != 0; classes &= classes - 1) {
        const unsigned tableClass = static_cast<unsigned>(std::countr_zero(classes)) << 24;
        // IdentifierOf would tell it by way of memory, which takes as long as all the rest.
        const std::uint32_t ordinal = data_->TableOf(tableClass).OrdinalOf(name);
        if (ordinal != HashSlots::kNone) first = std::min(first, data_->named.Find(kind, tableClass + ordinal));
    }
    if (first == FirstSections::kNone) return {};
    return Section(data_.get(), first);
}

std::optional<ImageView::Section> ImageView::SectionWithID(unsigned kind, unsigned number) const {
    const std::uint32_t section = data_->withID.Find(kind, number);
    if (section == FirstSections::kNone) return {};
    return Section(data_.get(), section);
}

ImageValue ImageView::Resolve(unsigned word) const { return data_->Resolve(word); }

std::optional<unsigned> ImageView::IdentifierOf(unsigned tableClass, std::string_view name) const {
    if (!data_->IsClass(tableClass)) return {};
    const std::uint32_t ordinal = data_->TableOf(tableClass).OrdinalOf(name);
    if (ordinal == HashSlots::kNone) return {};
    return tableClass + ordinal;
}

unsigned ImageView::IdentifierCount(unsigned tableClass) const {
    return data_->IsClass(tableClass) ? data_->TableOf(tableClass).count : 0;
}

std::span<const unsigned char> ImageView::TableBlock(unsigned table) const {
    // In 32 bits the class of a table-name identifier shifts out, as in gcGetTableData.
    const std::size_t start = table * kTableBlockSize;
    if (start >= data_->blocks.size()) return {};
    return data_->blocks.subspan(start, kTableBlockSize);
}

unsigned ImageView::TableBlockCount() const { return static_cast<unsigned>(data_->blocks.size() / kTableBlockSize); }

std::optional<unsigned> ImageView::GroupIndex(std::string_view name) const {
    const std::optional<unsigned> word = IdentifierOf(kIdGroup, name);
    const std::uint32_t group = word ? data_->named.Find(kImageGroup, *word) : FirstSections::kNone;
    // A group that is found by another NAME counts by its first one.
    if (group != FirstSections::kNone) return data_->WordOf(group, kIdName) & kIdOrdinalMask;
    if (name == "0") return 0;
    return {};
}

std::size_t ImageView::NoteCount() const { return data_->notes; }

void ImageView::ForEachNote(const std::function<void(const ImageFinding&)>& show) const {
    Data again;
    again.image = data_->image;
    ImageVerifier(again, show).Verify();
}

unsigned ImageView::Section::Kind() const { return WordAt(data_->Record(index_)); }

std::optional<std::string_view> ImageView::Section::Name() const {
    const ImageValue name = data_->Resolve(data_->WordOf(index_, kIdName));
    if (name.kind != ImageValue::Kind::kText) return {};
    return name.text;
}

std::optional<unsigned> ImageView::Section::ID() const {
    const ImageValue id = data_->Resolve(data_->WordOf(index_, kIdID));
    if (id.kind != ImageValue::Kind::kNumber) return {};
    return id.number;
}

std::optional<ImageView::Section> ImageView::Section::Parent() const {
    const unsigned word = data_->WordOf(index_, kIdParent);
    // A group whose parent is "0" is at the top, also when a group has that name.
    if (Kind() == kImageGroup && word == data_->rootGroup) return {};
    const std::uint32_t parent = data_->named.Find(kImageGroup, word);
    if (parent == FirstSections::kNone || parent == index_) return {};
    return Section(data_, parent);
}

ImageView::Entries ImageView::Section::AllEntries() const {
    const unsigned char* const record = data_->Record(index_);
    return {data_, record + kEntryHead, WordAt(record), WordAt(record + 4)};
}

std::optional<ImageView::Entry> ImageView::Section::EntryWithId(unsigned id) const {
    const unsigned char* const record = data_->EntryWithId(index_, id);
    if (!record) return {};
    return Entry(data_, record, Kind());
}

std::optional<ImageView::Entry> ImageView::Section::EntryNamed(std::string_view name) const {
    // A name can have an identifier in several tables; the entry that stands first counts.
    const unsigned char* first = nullptr;
    for (const unsigned nameClass : kNameClasses) {
        const std::uint32_t ordinal = data_->TableOf(nameClass).OrdinalOf(name);
        if (ordinal == HashSlots::kNone) continue;
        const unsigned char* const record = data_->EntryWithId(index_, nameClass + ordinal);
        if (record && (!first || record < first)) first = record;
    }
    if (!first) return {};
    return Entry(data_, first, Kind());
}

std::size_t ImageView::Section::Offset() const { return data_->sections[index_]; }

ImageView::Entries::Iterator& ImageView::Entries::Iterator::operator++() {
    record_ = NextEntry(record_);
    --left_;
    return *this;
}

unsigned ImageView::Entry::Id() const { return EntryName(record_); }

std::string_view ImageView::Entry::Name() const { return data_->Resolve(Id()).text; }

unsigned ImageView::Entry::WordCount() const { return EntryWords(record_); }

unsigned ImageView::Entry::Word(unsigned index) const {
    return index < WordCount() ? EntryWord(record_, index) : kIdUnresolved;
}

ImageValue ImageView::Entry::Value(unsigned index) const {
    const unsigned word = Word(index);
    if (index >= WordCount() || !MayStand(ShapeOfRecord(kind_, record_).RoleOf(index), word)) return Nothing(word);
    return data_->Resolve(word);
}

std::optional<unsigned> ImageView::Entry::ValueType() const {
    if (!IsValueKey(Id()) || !MayStand(kValueTypeWord, Word(0))) return {};
    return Word(0) & kIdOrdinalMask;
}

ImageValue ImageView::Entry::Field(unsigned field) const {
    const bool repeater = (Id() & kIdClassMask) == kIdRepeater;
    const std::optional<unsigned> type = ValueType();
    if (!repeater && !type) return Nothing(kIdUnresolved);
    if (!repeater && field == kTypeField) return Value(0);
    const std::size_t word = WordOfField(repeater ? kRepeaterFields : *type, field, WordCount());
    return word == kNoWord ? Nothing(kIdUnresolved) : Value(static_cast<unsigned>(word));
}

std::size_t ImageView::Entry::Offset() const { return static_cast<std::size_t>(record_ - data_->image.data()); }

}  // namespace zek
