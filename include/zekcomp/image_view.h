/// A reader of compiled images that verifies: opened once on bytes in memory, it then answers from them without copies
/// and without doubt. Relies on identifiers.h. For hosts in C++20.
///
/// A view belongs to nobody but its host: there may be any number at once, beside the image that `gcInit` has loaded,
/// and every const call may run in many threads at a time. The bytes stay the host's; they must not change while the
/// view, a copy of it, or anything that it handed out is in use. Copies share what the view has built, so that a
/// service opens a new file, looks at it, and then swaps one view for the other. But for `Open` and `ForEachNote`,
/// nothing allocates; nothing fails for the image's sake, and nothing touches the error slots.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "zekcomp/api.h"
#include "zekcomp/identifiers.h"

namespace zek {

/// What the verification finds. Failures, up to 99, refuse the image: the compiler writes no such thing. Notes, from
/// 100 on, are odd but can be the compiler's work, so the image opens. The numbers stay as they are.
enum class ImageCode : unsigned {
    kNone = 0,
    kTooShort = 1,             ///< the bytes end within the header
    kBadMagic = 2,             ///< another kind of file
    kBadVersion = 3,           ///< a format version that this library does not know
    kReservedByte = 4,         ///< a byte that is always 0 is not
    kMissingTable = 5,         ///< a slot of the directory is 0
    kMisplacedTable = 6,       ///< a table does not begin where it must, or not within the image
    kExtraTable = 7,           ///< the directory does not end behind the tables
    kWrongTable = 8,           ///< the tag of a table is not that of its slot
    kTableLength = 9,          ///< the length of a table cannot be, or runs past its end
    kUnendedName = 10,         ///< the last name of a table has no end
    kBlockCount = 11,          ///< more blocks of table data than names of tables
    kSectionCount = 20,        ///< more sections than the image has bytes for
    kSectionEnd = 21,          ///< the sections do not end where the tables begin
    kUnknownSection = 22,      ///< no identifier of a kind of section
    kEntryCount = 23,          ///< more entries than there are bytes for
    kUnknownEntry = 24,        ///< a name identifier that no entry has
    kWordCount = 25,           ///< more words than there are bytes for
    kWrongWordCount = 26,      ///< too few or too many words for such an entry
    kWrongClass = 27,          ///< a word of a class that cannot stand there
    kBeyondTable = 28,         ///< an identifier behind the last one of its table
    kUnknownOperator = 29,     ///< no code of an operator
    kMissingParent = 30,       ///< no group has the name of the parent
    kParentCycle = 31,         ///< a group is its own ancestor
    kTrailingBytes = 100,      ///< bytes follow behind the last table
    kSurplusLength = 101,      ///< a table of names says that it is longer than what was written
    kShortLength = 102,        ///< a table says that it is shorter than what was written
    kRepeatedKey = 103,        ///< a name or number stands in its table before: this identifier stands for nothing
    kUnnumbered = 104,         ///< the word 0: a name without an identifier
    kUnresolved = 105,         ///< the word or number 0xFFFFFFFF: what the source said was not found
    kCarriedWord = 106,        ///< a number that was too large carried the word into another class
    kOwnParent = 107,          ///< a group names itself as its parent
    kTableWithoutBlock = 108,  ///< there are names of tables without a block of table data
    kBeyondLength = 109,  ///< the key lies behind what its table's length covers: this identifier stands for nothing
    kTooManyKeys = 110,   ///< a table has more keys than there are identifiers of a class, 2 to the power of 24
    kForeignEntry = 111,  ///< the name identifier is one that no source gives to such a kind of section
    kRepeatedEntry =
        112,  ///< an entry of the section before has the same name identifier, and is the entry that is found
};

/// Whether the code is a note, not a failure.
constexpr bool IsNote(ImageCode code) { return static_cast<unsigned>(code) >= 100; }

/// The code as a short text for logs and scripts, such as "bad-magic". Static.
ZEK_API const char* NameOf(ImageCode code);

/// One thing that the verification found, and where.
struct ImageFinding {
    static constexpr std::uint32_t kNowhere = 0xFFFFFFFF;

    ImageCode code = ImageCode::kNone;
    std::uint32_t section = kNowhere;  ///< its place among all sections, from 0
    std::uint32_t kind = kNowhere;     ///< the identifier of that section
    std::uint32_t entry = kNowhere;    ///< its place in the section, from 0
    std::uint32_t table = kNowhere;    ///< the class of a table
    std::uint32_t index = kNowhere;    ///< the place of a word in its entry, of a key or block in its table, of a slot
    std::uint64_t offset = 0;          ///< of what was found, in bytes from the beginning of the image
    std::uint32_t found = 0;           ///< the word, count, length or byte that was found
    std::uint32_t limit = 0;           ///< what it should have been, or been at most

    /// Where it is, such as "section 12 [SENSOR], entry 3, word 1".
    ZEK_API std::string Place() const;
    /// What is wrong there, in a sentence without its place and without a full stop.
    ZEK_API std::string Sentence() const;
};

/// What a word stands for.
struct ImageValue {
    enum class Kind { kNothing, kNumber, kText };

    Kind kind = Kind::kNothing;
    unsigned word = kIdUnresolved;  ///< the word that was asked for; kIdUnresolved where there is none
    unsigned number = 0;
    std::string_view text = {};  ///< within the bytes of the image

    explicit operator bool() const { return kind != Kind::kNothing; }
};

class ImageView {
    struct Data;

public:
    class Section;
    class Sections;
    class Entry;
    class Entries;

    /// Verifies everything once and builds the indexes, which take memory in proportion to the image. Nothing when the
    /// image is refused; then `failure`, which may be null, tells why. Throws `std::bad_alloc`.
    ZEK_API static std::optional<ImageView> Open(std::span<const unsigned char> image, ImageFinding* failure = nullptr);

    /// The bytes that the view was opened on.
    ZEK_API std::span<const unsigned char> Bytes() const;
    /// Format version, and the time of writing: the low 32 bits of the calendar time in seconds.
    ZEK_API unsigned Version() const;
    ZEK_API unsigned Time() const;

    /// All sections in the order of the image; or those of one kind (kImageSensor ...), none for what is no kind.
    ZEK_API Sections AllSections() const;
    ZEK_API Sections SectionsOf(unsigned kind) const;
    /// The first section of a kind with a NAME `name`; of [PROPERTY], [GLOBAL] and [REPEATER] sections, which have a
    /// NAME only where a host gave them one, the first with an entry of this name, too. Of several NAMEs each finds the
    /// section, while `Section::Name` tells the first.
    ZEK_API std::optional<Section> SectionNamed(unsigned kind, std::string_view name) const;
    /// The first section of a kind with an ID `number`. Of several IDs each finds the section, while `Section::ID`
    /// tells the first.
    ZEK_API std::optional<Section> SectionWithID(unsigned kind, unsigned number) const;

    /// What a word of the image stands for wherever it stands.
    ZEK_API ImageValue Resolve(unsigned word) const;
    /// The identifier of a name in the table of a class (kIdProperty ...), or nothing.
    ZEK_API std::optional<unsigned> IdentifierOf(unsigned tableClass, std::string_view name) const;
    /// How many identifiers the table of a class has, from ordinal 0 on; 0 for a class without a table.
    ZEK_API unsigned IdentifierCount(unsigned tableClass) const;

    /// The block of a table, of kTableBlockSize bytes, by its ordinal or its table-name identifier; empty where there
    /// is none. The top byte does not count, as in `gcGetTableData`.
    ZEK_API std::span<const unsigned char> TableBlock(unsigned table) const;
    ZEK_API unsigned TableBlockCount() const;

    /// The ordinal of a group, counted from 1; 0 for "0", the root, which needs no section; or nothing.
    ZEK_API std::optional<unsigned> GroupIndex(std::string_view name) const;

    /// How many notes the verification made.
    ZEK_API std::size_t NoteCount() const;
    /// Shows the notes as the verification comes to them: tables, then sections, then parents. No note is kept, so this
    /// opens the image once more, with the time and memory of `Open`. Throws `std::bad_alloc`.
    ZEK_API void ForEachNote(const std::function<void(const ImageFinding&)>& show) const;

private:
    explicit ImageView(std::shared_ptr<const Data> data) : data_(std::move(data)) {}

    friend class ImageVerifier;

    std::shared_ptr<const Data> data_;
};

/// One entry; as light as a pointer.
class ImageView::Entry {
public:
    /// The name identifier: a keyword (class kIdKeyword), or a name of a table.
    ZEK_API unsigned Id() const;
    /// The name, without a prefix such as P_; empty for keywords and for a name that stands for nothing.
    ZEK_API std::string_view Name() const;

    /// The number of its words.
    ZEK_API unsigned WordCount() const;
    /// A word as it stands, and what it stands for there: nothing for a word that a number carried into another class.
    /// `index` from 0; kIdUnresolved and nothing from the count on.
    ZEK_API unsigned Word(unsigned index) const;
    ZEK_API ImageValue Value(unsigned index) const;

    /// The value type of a value or global; nothing for other entries.
    ZEK_API std::optional<unsigned> ValueType() const;
    /// The word that a field code selects by the value type, as `gcGetValueByID` selects it; nothing where the field
    /// does not apply.
    ZEK_API ImageValue Field(unsigned field) const;

    /// Where its record begins in the image, in bytes; its words begin 8 bytes behind.
    ZEK_API std::size_t Offset() const;

private:
    friend class ImageView;
    friend class Section;
    friend class Entries;

    Entry(const Data* data, const unsigned char* record, unsigned kind) : data_(data), record_(record), kind_(kind) {}

    const Data* data_;
    const unsigned char* record_;
    unsigned kind_;
};

/// The entries of a section in their order.
class ImageView::Entries {
public:
    class Iterator {
    public:
        using value_type = Entry;
        using difference_type = std::ptrdiff_t;
        using iterator_category = std::forward_iterator_tag;
        using pointer = void;
        using reference = Entry;

        Iterator() = default;
        Entry operator*() const { return {data_, record_, kind_}; }
        ZEK_API Iterator& operator++();
        Iterator operator++(int) {
            const Iterator before = *this;
            ++*this;
            return before;
        }
        bool operator==(const Iterator& other) const { return left_ == other.left_; }

    private:
        friend class Entries;

        Iterator(const Data* data, const unsigned char* record, unsigned kind, unsigned left)
            : data_(data), record_(record), kind_(kind), left_(left) {}

        const Data* data_ = nullptr;
        const unsigned char* record_ = nullptr;
        unsigned kind_ = 0;
        unsigned left_ = 0;
    };

    Iterator begin() const { return {data_, first_, kind_, count_}; }
    Iterator end() const { return {data_, nullptr, kind_, 0}; }
    unsigned size() const { return count_; }
    bool empty() const { return count_ == 0; }

private:
    friend class Section;

    Entries(const Data* data, const unsigned char* first, unsigned kind, unsigned count)
        : data_(data), first_(first), kind_(kind), count_(count) {}

    const Data* data_;
    const unsigned char* first_;
    unsigned kind_;
    unsigned count_;
};

/// One section; as light as a pointer.
class ImageView::Section {
public:
    /// Its kind: kImageQuorzek to kImageRepeater.
    ZEK_API unsigned Kind() const;
    /// Its place among all sections of the image, from 0.
    unsigned Index() const { return index_; }

    /// What its first NAME and its first ID stand for; nothing where it has none.
    ZEK_API std::optional<std::string_view> Name() const;
    ZEK_API std::optional<unsigned> ID() const;
    /// The group that its first PARENT names; nothing for a group at the top, one that names itself, without a PARENT,
    /// and for a section that is neither a group nor a sensor, whatever PARENT a host gave it.
    ZEK_API std::optional<Section> Parent() const;

    ZEK_API Entries AllEntries() const;
    /// The first entry with this name identifier.
    ZEK_API std::optional<Entry> EntryWithId(unsigned id) const;
    /// The first entry whose name is `name`: a property, global, value or repeater item, never a keyword such as NAME.
    ZEK_API std::optional<Entry> EntryNamed(std::string_view name) const;

    /// Where its record begins in the image, in bytes.
    ZEK_API std::size_t Offset() const;

private:
    friend class ImageView;

    Section(const Data* data, unsigned index) : data_(data), index_(index) {}

    const Data* data_;
    unsigned index_;
};

/// Sections in the order of the image.
class ImageView::Sections {
public:
    class Iterator {
    public:
        using value_type = Section;
        using difference_type = std::ptrdiff_t;
        using iterator_category = std::forward_iterator_tag;
        using pointer = void;
        using reference = Section;

        Iterator() = default;
        Section operator*() const { return {data_, places_ ? places_[place_] : place_}; }
        Iterator& operator++() {
            ++place_;
            return *this;
        }
        Iterator operator++(int) { return {data_, places_, place_++}; }
        bool operator==(const Iterator& other) const { return place_ == other.place_; }

    private:
        friend class Sections;

        Iterator(const Data* data, const std::uint32_t* places, unsigned place)
            : data_(data), places_(places), place_(place) {}

        const Data* data_ = nullptr;
        const std::uint32_t* places_ = nullptr;
        unsigned place_ = 0;
    };

    Iterator begin() const { return {data_, places_, 0}; }
    Iterator end() const { return {data_, places_, count_}; }
    unsigned size() const { return count_; }
    bool empty() const { return count_ == 0; }
    /// By the place among these, from 0 and below `size`.
    Section operator[](unsigned place) const { return *Iterator(data_, places_, place); }

private:
    friend class ImageView;

    Sections(const Data* data, const std::uint32_t* places, unsigned count)
        : data_(data), places_(places), count_(count) {}

    const Data* data_;
    const std::uint32_t* places_;  ///< null for all sections
    unsigned count_;
};

}  // namespace zek
