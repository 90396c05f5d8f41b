#include "debug_fields.h"

#include "debug_layout.h"
#include "image_bytes.h"
#include "zekcomp/identifiers.h"

namespace zek::tool {
namespace {

constexpr std::size_t kWord = 4;

class Walk {
public:
    Walk(std::string_view image, const std::function<void(const DebugFieldSeen&)>& show) : image_(image), show_(show) {}

    void Image() {
        Bytes(DebugField::kMagic, kMagicSize);
        Word(DebugField::kVersion);
        Word(DebugField::kTime);
        Bytes(DebugField::kReserved, ZEKD_DATA_OFFSET - at_);
        for (std::uint32_t names = Word(DebugField::kNameCount); names > 0; --names) {
            Text(DebugField::kName);
            Word(DebugField::kNameValue);
        }
        for (std::uint32_t groups = Word(DebugField::kGroupCount); groups > 0; --groups) {
            for (std::uint32_t sections = Word(DebugField::kSectionCount); sections > 0; --sections) Section();
        }
        if (at_ < image_.size()) Bytes(DebugField::kTrailing, image_.size() - at_);
    }

private:
    void Bytes(DebugField field, std::size_t size) {
        show_({field, at_, size});
        at_ += size;
    }
    std::uint32_t Word(DebugField field) {
        const std::uint32_t word = WordAt(image_, at_);
        show_({field, at_, kWord, word});
        at_ += kWord;
        return word;
    }
    void Text(DebugField field) {
        const std::uint32_t length = WordAt(image_, at_);
        show_({field, at_, kWord + length, length, image_.substr(at_ + kWord, length)});
        at_ += kWord + length;
    }
    void List(DebugField count, DebugField element) {
        for (std::uint32_t left = Word(count); left > 0; --left) Text(element);
    }
    /// The offset behind a block, whose length is read.
    std::size_t Block(DebugField field) {
        const std::uint32_t length = Word(field);
        return at_ + length;
    }

    void Section() {
        Block(DebugField::kSection);
        Common(DebugField::kSectionCommon);
        for (std::uint32_t entries = Word(DebugField::kEntryCount); entries > 0; --entries) {
            Block(DebugField::kEntry);
            Common(DebugField::kEntryCommon);
            Data();
        }
    }

    void Common(DebugField field) {
        const std::size_t end = Block(field);
        Word(DebugField::kTypeId);
        Word(DebugField::kNotation);
        Word(DebugField::kLine);
        Word(DebugField::kFileIndex);
        Text(DebugField::kObjectName);
        // In the first object alone, and not there where the process had written another image before.
        if (at_ < end) List(DebugField::kFileCount, DebugField::kFile);
    }

    void Data() {
        Block(DebugField::kData);
        const std::uint32_t type = Word(DebugField::kDataType);
        if (type != 0) Fields(DataFields(type));
    }

    void Fields(std::string_view fields) {
        for (const char field : fields) {
            switch (field) {
                case 'n': Word(DebugField::kNumber); break;
                case 't': Text(DebugField::kText); break;
                case 'l': List(DebugField::kListCount, DebugField::kListElement); break;
                default: Value();
            }
        }
    }

    void Value() {
        Block(DebugField::kValue);
        const std::uint32_t type = Word(DebugField::kValueType);
        Text(DebugField::kTypeWord);
        Fields(ValueFields(type));
    }

    std::string_view image_;
    const std::function<void(const DebugFieldSeen&)>& show_;
    std::size_t at_ = 0;
};

constexpr const char* kFieldNames[] = {"magic",
                                       "format version",
                                       "time stamp",
                                       "zeros",
                                       "number of predefined names",
                                       "predefined name",
                                       "value of the name",
                                       "number of groups",
                                       "number of sections",
                                       "length of the section",
                                       "length of the common part",
                                       "number of entries",
                                       "length of the entry",
                                       "length of the common part",
                                       "type id",
                                       "notation",
                                       "line",
                                       "file index",
                                       "name",
                                       "number of source files",
                                       "source file",
                                       "length of the typed data",
                                       "type id of the data",
                                       "number",
                                       "text",
                                       "length of the list",
                                       "list element",
                                       "length of the value record",
                                       "value type",
                                       "type word",
                                       "bytes behind the image"};
static_assert(std::size(kFieldNames) == static_cast<std::size_t>(DebugField::kTrailing) + 1);

}  // namespace

const char* NameOf(DebugField field) { return kFieldNames[static_cast<std::size_t>(field)]; }

void ForEachDebugField(std::string_view image, const std::function<void(const DebugFieldSeen&)>& show) {
    Walk(image, show).Image();
}

}  // namespace zek::tool
