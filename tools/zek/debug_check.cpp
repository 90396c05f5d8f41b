#include "debug_check.h"

#include <algorithm>
#include <bitset>
#include <cstdint>

#include "debug_layout.h"
#include "image_bytes.h"
#include "zekcomp/identifiers.h"

namespace zek::tool {
namespace {

constexpr std::size_t kVersionOffset = 0x10;
constexpr std::size_t kReservedOffset = 0x18;
constexpr std::size_t kWord = 4;

/// Bytes of the image that are still to be read: those of a block, or all.
struct Extent {
    std::size_t at = 0;
    std::size_t end = 0;
    bool isBlock = false;

    std::size_t Left() const { return end - at; }
};

/// Walks through an image once and throws the first failure as a DebugFinding.
class Checker {
public:
    Checker(std::string_view image, const std::function<void(const DebugFinding&)>& showNote, DebugCheck& seen)
        : image_(image), showNote_(showNote), seen_(seen) {}

    void Check() {
        CheckHeader();
        Extent all = {ZEKD_DATA_OFFSET, image_.size()};
        CheckNames(all);
        CheckGroups(all);
        if (all.Left() == 0) return;
        Name("image", all.at);
        Note(DebugCode::kTrailingBytes, all.Left());
    }

private:
    // What is being read, for findings.

    void Name(const char* field, std::size_t offset, std::size_t index = DebugFinding::kNowhere) {
        where_.field = field;
        where_.offset = offset;
        where_.index = index;
    }
    [[noreturn]] void Fail(DebugCode code, std::size_t found, std::size_t limit = 0) const {
        throw Finding(code, found, limit);
    }
    void Note(DebugCode code, std::size_t found) {
        ++seen_.notes;
        if (showNote_) showNote_(Finding(code, found, 0));
    }
    DebugFinding Finding(DebugCode code, std::size_t found, std::size_t limit) const {
        DebugFinding finding = where_;
        finding.code = code;
        finding.found = found;
        finding.limit = limit;
        return finding;
    }

    // The encodings.

    void Require(const Extent& in, std::size_t bytes) const {
        if (bytes <= in.Left()) return;
        Fail(in.isBlock ? DebugCode::kOverrun : DebugCode::kCutShort, bytes, in.Left());
    }
    std::uint32_t Word(Extent& in) const {
        Require(in, kWord);
        const std::uint32_t word = WordAt(image_, in.at);
        in.at += kWord;
        return word;
    }
    std::uint32_t Word(Extent& in, const char* field) {
        Name(field, in.at);
        return Word(in);
    }
    /// A number of elements of so many bytes at least.
    std::uint32_t Count(Extent& in, const char* field, std::size_t bytes) {
        const std::uint32_t count = Word(in, field);
        if (count > in.Left() / bytes) Fail(DebugCode::kCount, count, in.Left() / bytes);
        return count;
    }
    std::string_view Text(Extent& in) const {
        const std::uint32_t length = Word(in);
        Require(in, length);
        const std::string_view text = image_.substr(in.at, length);
        in.at += length;
        return text;
    }
    /// A text that comes from a source, and not from a host as the names of predefined words may.
    std::string_view SourceText(Extent& in) const {
        const std::string_view text = Text(in);
        const std::size_t nul = text.find('\0');
        if (nul != std::string_view::npos) Fail(DebugCode::kNul, nul);
        return text;
    }
    void List(Extent& in, const char* count, const char* element) {
        const std::uint32_t elements = Count(in, count, kWord);
        for (std::uint32_t i = 0; i < elements; ++i) {
            Name(element, in.at, i);
            SourceText(in);
        }
    }
    /// The extent of a block, behind which `in` then stands.
    Extent Block(Extent& in, const char* field) {
        Name(field, in.at);
        const std::uint32_t length = Word(in);
        Require(in, length);
        const Extent block = {in.at, in.at + length, true};
        in.at = block.end;
        return block;
    }
    void RequireEnd(const Extent& block, const char* field) {
        Name(field, block.at);
        if (block.Left() > 0) Fail(DebugCode::kSurplusBytes, block.Left());
    }

    // The parts of the image.

    void CheckHeader() {
        Name("image", image_.size());
        if (image_.size() < ZEKD_DATA_OFFSET) Fail(DebugCode::kTooShort, image_.size(), ZEKD_DATA_OFFSET);
        Name("image", 0);
        if (KindOf(image_) != ImageKind::kDebug) Fail(DebugCode::kBadMagic, 0);
        Name("image", kVersionOffset);
        const std::uint32_t version = WordAt(image_, kVersionOffset);
        if (version != ZEKD_VERSION) Fail(DebugCode::kBadVersion, version, ZEKD_VERSION);
        for (std::size_t at = kReservedOffset; at < ZEKD_DATA_OFFSET; ++at) {
            Name("image", at);
            if (image_[at] != '\0') Fail(DebugCode::kReservedByte, static_cast<unsigned char>(image_[at]));
        }
    }

    void CheckNames(Extent& in) {
        const std::uint32_t count = Count(in, "number of predefined names", 2 * kWord);
        std::string_view before;
        for (where_.name = 0; where_.name < count; ++where_.name) {
            Name("name", in.at);
            const std::string_view name = Text(in);
            if (where_.name > 0 && name <= before) Fail(DebugCode::kUnsortedName, 0);
            before = name;
            Word(in, "value");
        }
        where_.name = DebugFinding::kNowhere;
    }

    void CheckGroups(Extent& in) {
        const std::uint32_t groups = Word(in, "number of groups");
        if (groups > std::size(kDebugKinds)) Fail(DebugCode::kGroupCount, groups, std::size(kDebugKinds));
        for (where_.group = 0; where_.group < groups; ++where_.group) CheckGroup(in);
        where_.group = DebugFinding::kNowhere;
    }

    void CheckGroup(Extent& in) {
        const std::uint32_t sections = Count(in, "number of sections", kWord);
        groupKind_ = 0;
        for (std::uint32_t i = 0; i < sections; ++i) {
            where_.section = seen_.sections++;
            CheckSection(in);
            where_.kind = 0;
        }
        where_.section = DebugFinding::kNowhere;
    }

    void CheckSection(Extent& in) {
        Extent section = Block(in, "block");
        Extent common = Block(section, "common part");
        const DebugKind& kind = CheckSectionType(common);
        const Object object = CheckObject(common);
        RequireNotation(object, kind.notation);
        Name("name", object.nameOffset);
        if (object.name != kind.keyword) Fail(DebugCode::kWrongName, 0);
        const std::uint32_t entries = Count(section, "number of entries", kWord);
        if (entries < kind.declared.size()) Fail(DebugCode::kEntryCount, entries, kind.declared.size());
        for (where_.entry = 0; where_.entry < entries; ++where_.entry) CheckEntry(section, kind);
        where_.entry = DebugFinding::kNowhere;
        seen_.entries += entries;
        RequireEnd(section, "block");
    }

    const DebugKind& CheckSectionType(Extent& common) {
        const std::uint32_t type = Word(common, "type id");
        const DebugKind* kind = DebugKindOf(type);
        if (!kind) Fail(DebugCode::kUnknownSection, type);
        where_.kind = type;
        if (groupKind_ && type != groupKind_) Fail(DebugCode::kMixedGroup, type, groupKind_);
        const auto row = static_cast<std::size_t>(kind - kDebugKinds);
        if (!groupKind_ && kinds_[row]) Fail(DebugCode::kRepeatedGroup, type);
        kinds_[row] = true;
        groupKind_ = type;
        return *kind;
    }

    /// The common part behind the type id.
    struct Object {
        std::size_t offset = 0;  ///< of the notation; line and file index follow
        std::uint32_t notation = 0;
        std::uint32_t line = 0;
        std::uint32_t file = 0;
        std::size_t nameOffset = 0;
        std::string_view name;
    };

    Object CheckObject(Extent& common) {
        Object object;
        object.offset = common.at;
        object.notation = Word(common, "notation");
        object.line = Word(common, "line");
        object.file = Word(common, "file index");
        object.nameOffset = common.at;
        Name("name", object.nameOffset);
        object.name = SourceText(common);
        if (!listRead_) TakeFileList(common);
        Name("file index", object.offset + 2 * kWord);
        if (files_ && object.file >= *files_) Fail(DebugCode::kFileIndex, object.file, *files_);
        RequireEnd(common, "common part");
        return object;
    }

    void RequireNotation(const Object& object, unsigned notation) {
        Name("notation", object.offset);
        if (object.notation != notation) Fail(DebugCode::kNotation, object.notation, notation);
    }

    /// Stands in the first object. Where a process writes several images, it is in the first one only.
    void TakeFileList(Extent& common) {
        listRead_ = true;
        Name("list of source files", common.at);
        seen_.lacksFileList = common.Left() == 0;
        if (seen_.lacksFileList) return Note(DebugCode::kNoFileList, 0);
        Extent count = common;
        files_ = Word(count);
        List(common, "list of source files", "source file");
    }

    void CheckEntry(Extent& section, const DebugKind& kind) {
        Extent entry = Block(section, "block");
        Extent common = Block(entry, "common part");
        const std::uint32_t type = Word(common, "type id");
        CheckEntryType(type, kind);
        const Object object = CheckObject(common);
        Extent data = Block(entry, "typed data");
        const bool given = CheckData(data, type, IsDeclared(kind));
        RequireEnd(data, "typed data");
        RequireEnd(entry, "block");
        if (!given) RequireAbsence(object);
        const DebugKey* key = IsDeclared(kind) ? &kind.declared[where_.entry] : DeclaredKey(kind, type);
        CheckNotation(object, NotationOf(key, type, kind), given && IsDeclared(kind));
        if (given) CheckName(object.name, object.nameOffset, key, type, kind);
    }

    /// Whether the entry is one of those that its section begins with.
    bool IsDeclared(const DebugKind& kind) const { return where_.entry < kind.declared.size(); }

    /// The declared key of this type, or null.
    static const DebugKey* DeclaredKey(const DebugKind& kind, std::uint32_t type) {
        const auto key = std::find_if(kind.declared.begin(), kind.declared.end(),
                                      [type](const DebugKey& candidate) { return candidate.type == type; });
        return key == kind.declared.end() ? nullptr : &*key;
    }

    void CheckEntryType(std::uint32_t type, const DebugKind& kind) const {
        if (IsDeclared(kind)) {
            const unsigned declared = kind.declared[where_.entry].type;
            if (type != declared) Fail(DebugCode::kMissingKey, type, declared);
            return;
        }
        // A declared key may be given again.
        if (DeclaredKey(kind, type) && !kind.Defines()) return;
        if (kind.added && type == kind.added) return;
        if (kind.addsProperties && type == kPropertyKey) return;
        Fail(DebugCode::kUnknownEntry, type);
    }

    /// An image that is loaded has the last of the keys that were given again in the place of the first, with the
    /// notation that it had there.
    void CheckNotation(const Object& object, unsigned notation, bool mayBeRestored) {
        if (!mayBeRestored || object.notation == notation || object.notation != kRepeatedNotation) {
            return RequireNotation(object, notation);
        }
        Name("notation", object.offset);
        Note(DebugCode::kRestoredKey, object.notation);
    }

    /// Nothing is known of a key that a source has not given.
    void RequireAbsence(const Object& object) {
        const std::pair<const char*, bool> fields[] = {
            {"line", object.line == 0}, {"file index", object.file == 0}, {"name", object.name.empty()}};
        std::size_t offset = object.offset;
        for (const auto& [field, isAbsent] : fields) {
            Name(field, offset += kWord);
            if (!isAbsent) Fail(DebugCode::kAbsentKey, 0);
        }
    }

    /// `key` is null for an entry whose key is not declared.
    unsigned NotationOf(const DebugKey* key, std::uint32_t type, const DebugKind& kind) const {
        if (!key) return AddedNotation(type);
        return IsDeclared(kind) ? key->notation : kRepeatedNotation;
    }

    /// The name of a key that was given says which entry it becomes.
    void CheckName(std::string_view name, std::size_t offset, const DebugKey* key, std::uint32_t type,
                   const DebugKind& kind) {
        Name("name", offset);
        if (key ? name != key->name : !IsNameOfAdded(name, type, kind)) Fail(DebugCode::kEntryName, 0);
    }

    static bool IsNameOfAdded(std::string_view name, std::uint32_t type, const DebugKind& kind) {
        if (kind.Defines()) return true;
        // Beside own values, properties are told by their names.
        if (kind.added == kOwnValueKey && name.starts_with("P_") != (type == kPropertyKey)) return false;
        return std::none_of(kind.declared.begin(), kind.declared.end(),
                            [name](const DebugKey& key) { return name == key.name; });
    }

    /// Whether there is data; only a declared key can be without.
    bool CheckData(Extent& data, std::uint32_t entryType, bool isDeclared) {
        const std::uint32_t type = Word(data, "type id of the data");
        if (type == 0 && !isDeclared) Fail(DebugCode::kNoData, 0);
        if (type == 0) return false;
        if (type != entryType) Fail(DebugCode::kWrongData, type, entryType);
        CheckFields(data, DataFields(type));
        return true;
    }

    void CheckFields(Extent& in, std::string_view fields) {
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (fields[i] == 'n') Word(in, "number");
            if (fields[i] == 'l') List(in, "list", "list element");
            if (fields[i] == 'v') CheckValue(in);
            if (fields[i] != 't') continue;
            Name(fields.size() == 1 ? "text" : "operand", in.at, fields.size() == 1 ? DebugFinding::kNowhere : i);
            SourceText(in);
        }
    }

    void CheckValue(Extent& in) {
        Extent value = Block(in, "value record");
        const std::uint32_t type = Word(value, "value type");
        Name("type word", value.at);
        SourceText(value);
        CheckFields(value, ValueFields(type));
        RequireEnd(value, "value record");
    }

    std::string_view image_;
    const std::function<void(const DebugFinding&)>& showNote_;
    DebugCheck& seen_;
    DebugFinding where_;
    std::uint32_t groupKind_ = 0;                // of the sections of this group; 0 before the first
    std::bitset<std::size(kDebugKinds)> kinds_;  // that have a group
    bool listRead_ = false;
    std::optional<std::uint32_t> files_;  // how many source files there are
};

}  // namespace

DebugCheck CheckDebugImage(std::string_view image, const std::function<void(const DebugFinding&)>& showNote) {
    DebugCheck seen;
    try {
        Checker(image, showNote, seen).Check();
    } catch (const DebugFinding& failure) {
        seen.failure = failure;
    }
    return seen;
}

}  // namespace zek::tool
