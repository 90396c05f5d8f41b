#include "image_structure.h"

#include <algorithm>
#include <utility>

#include "zekcomp/value_shapes.h"

namespace zek::fuzz {

namespace {

constexpr std::size_t kVersion = 16;
constexpr std::size_t kDirectory = 128;
constexpr std::size_t kBody = 256;
constexpr std::size_t kDebugBody = 128;
constexpr unsigned kNumberTable = 0x11;
constexpr unsigned kTableData = 0x1b;
constexpr std::size_t kBlock = 256;

/// Goes through an image and notes what it passes.
class Walk {
public:
    explicit Walk(std::string_view image) : image_(image), end_(image.size()) {}

    bool More() const { return end_ - at_ >= 4; }
    void Seek(std::size_t at) { at_ = std::min(at, end_); }
    std::size_t At() const { return at_; }

    unsigned Take(FieldKind kind) {
        if (!More()) {
            at_ = end_;
            return 0;
        }
        structure_.fields.push_back({kind, at_, 0});
        at_ += 4;
        return WordAt(image_, at_ - 4);
    }
    void Words(unsigned count) {
        for (; count > 0 && More(); --count) Take(FieldKind::kWord);
    }
    /// So many parts, each taken by `part`.
    template <class Function>
    void Parts(Function&& part) {
        const std::size_t count = at_;
        for (unsigned left = Take(FieldKind::kCount); left > 0 && More(); --left) {
            const std::size_t begin = at_;
            part();
            structure_.parts.push_back({begin, at_, count});
        }
    }
    /// A length, and what it covers taken by `inside`, which finds the end of the bytes at the end of the cover.
    template <class Function>
    void Covered(Function&& inside) {
        const std::size_t length = Take(FieldKind::kLength);
        if (structure_.fields.empty() || at_ == end_) return;
        const std::size_t coverEnd = at_ + std::min(length, end_ - at_);
        structure_.fields.back().end = coverEnd;
        const std::size_t outer = std::exchange(end_, coverEnd);
        inside();
        end_ = outer;
        at_ = coverEnd;
    }
    void Text() {
        Covered([] {});
    }
    void Texts() {
        Parts([this] { Text(); });
    }
    /// Parts of a size each, or each up to a NUL when that is 0, to the end.
    void PartsToEnd(std::size_t size) {
        while (at_ < end_) {
            const std::size_t nul = std::min(image_.find('\0', at_), end_ - 1) + 1;
            const std::size_t next = size == 0 ? nul : std::min(at_ + size, end_);
            if (size == 4 && next - at_ == 4) structure_.fields.push_back({FieldKind::kWord, at_, 0});
            structure_.parts.push_back({at_, next, 0});
            at_ = next;
        }
    }
    Structure Result() && { return std::move(structure_); }

private:
    std::string_view image_;
    std::size_t end_;
    std::size_t at_ = 0;
    Structure structure_;
};

void TakeCompiledEntry(Walk& walk) {
    walk.Words(1);
    walk.Parts([&walk] { walk.Words(1); });
}

void TakeCompiledSection(Walk& walk) {
    walk.Words(1);
    walk.Parts([&walk] { TakeCompiledEntry(walk); });
}

void TakeRecord(Walk& walk) {
    const unsigned tableClass = walk.Take(FieldKind::kWord) >> 24;
    walk.Covered([&] { walk.PartsToEnd(tableClass == kNumberTable ? 4 : tableClass == kTableData ? kBlock : 0); });
}

void TakeCompiled(Walk& walk) {
    walk.Seek(kVersion);
    walk.Words(1);
    walk.Seek(kDirectory);
    std::vector<std::size_t> records;
    while (const unsigned record = walk.At() < kBody ? walk.Take(FieldKind::kOffset) : 0) records.push_back(record);
    walk.Seek(kBody);
    walk.Parts([&walk] { TakeCompiledSection(walk); });
    for (const std::size_t record : records) {
        walk.Seek(record);
        if (walk.More()) TakeRecord(walk);
    }
}

void TakeValue(Walk& walk) {
    const ValueShape* shape = ShapeOf(walk.Take(FieldKind::kWord));
    walk.Text();
    for (std::size_t i = 0; shape && i < shape->operands.size(); ++i) walk.Text();
    if (shape && shape->list) walk.Texts();
}

void TakeTypedData(Walk& walk) {
    switch (walk.Take(FieldKind::kWord) >> 16) {
        case 0x1001: return walk.Words(1);
        case 0x1002: return walk.Text();
        case 0x1004: return walk.Texts();
        case 0x1008: return walk.Covered([&walk] { TakeValue(walk); });
        case 0x1010: walk.Text(), walk.Text(); return walk.Texts();
        default: return;
    }
}

void TakeCommon(Walk& walk) {
    walk.Words(4);
    walk.Text();
    if (walk.More()) walk.Texts();
}

void TakeDebugEntry(Walk& walk) {
    walk.Covered([&walk] { TakeCommon(walk); });
    walk.Covered([&walk] { TakeTypedData(walk); });
}

void TakeDebugSection(Walk& walk) {
    walk.Covered([&walk] { TakeCommon(walk); });
    walk.Parts([&walk] { walk.Covered([&walk] { TakeDebugEntry(walk); }); });
}

void TakeDebug(Walk& walk) {
    walk.Seek(kVersion);
    walk.Words(1);
    walk.Seek(kDebugBody);
    walk.Parts([&walk] {
        walk.Text();
        walk.Words(1);
    });
    walk.Parts([&walk] { walk.Parts([&walk] { walk.Covered([&walk] { TakeDebugSection(walk); }); }); });
}

}  // namespace

unsigned WordAt(std::string_view image, std::size_t at) {
    unsigned word = 0;
    for (std::size_t i = 0; i < 4; ++i) word |= unsigned{static_cast<unsigned char>(image[at + i])} << 8 * i;
    return word;
}

Structure StructureOf(std::string_view image) {
    Walk walk(image);
    if (image.starts_with(kCompiledMagic)) TakeCompiled(walk);
    if (image.starts_with(kDebugMagic)) TakeDebug(walk);
    return std::move(walk).Result();
}

}  // namespace zek::fuzz
