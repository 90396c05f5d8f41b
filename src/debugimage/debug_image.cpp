#include "debugimage/debug_image.h"

#include "check/vocabulary.h"
#include "debugimage/messages.h"
#include "debugimage/state.h"
#include "debugimage/tree.h"
#include "model/absent_entries.h"
#include "model/file_header.h"
#include "model/files.h"
#include "model/output.h"
#include "model/section_kinds.h"

const unsigned ZEKD_VERSION = 0x01000000;
const unsigned ZEKD_DATA_OFFSET = 0x80;

namespace zek {

namespace {

constexpr std::string_view kMagic = "QUOR ZEK metaD.";
constexpr std::size_t kPiece = std::size_t{1} << 18;

/// Reads a file that may end anywhere: a word that is not there whole is 0, and from then on the file has ended.
class EndlessReader {
public:
    explicit EndlessReader(const ByteBuffer& bytes) : in_(bytes) {}

    bool Ended() const { return ended_; }
    void Seek(std::size_t position) { in_.Seek(position); }
    unsigned U32() { return Whole(4) ? in_.U32() : 0; }
    std::string Text(std::size_t length) { return Whole(length) ? in_.Text(length) : std::string(); }
    /// The next `length` bytes; what the file does not hold reads as zeros.
    ByteReader Block(std::size_t length) { return Whole(length) ? in_.Sub(length) : in_.SubWithZeros(length); }

private:
    bool Whole(std::size_t length) {
        ended_ |= in_.Left() < length;
        return !ended_;
    }

    ByteReader in_;
    bool ended_ = false;
};

void PutNames(ByteWriter& out) {
    out.U32(static_cast<unsigned>(g_tblPreDefine.size()));
    for (const auto& [name, value] : g_tblPreDefine) {
        out.Str(name);
        out.U32(value);
    }
}

/// Writes the sections in pieces: the whole image in memory would double what the model takes.
void WriteSections(std::ofstream& stream, ByteBuffer& piece) {
    ByteWriter out(piece);
    out.U32(static_cast<unsigned>(CZEKSection::m_svpHSection.size()));
    for (const SectionList* list : CZEKSection::m_svpHSection) {
        out.U32(static_cast<unsigned>(list->size()));
        for (const CZEKSection* section : *list) {
            out.Block([&] { PutSection(out, *section); });
            if (piece.Size() < kPiece) continue;
            WriteBytes(stream, piece);
            piece.Clear();
        }
    }
    WriteBytes(stream, piece);
}

void WriteImage(std::ofstream& stream) {
    ByteBuffer image;
    ByteWriter out(image);
    PutFileHeader(out, kMagic, ZEKD_VERSION, ZEKD_DATA_OFFSET);
    PutNames(out);
    WriteSections(stream, image);
}

/// A name that is already defined keeps its value. A record that the file's end cuts is taken as the empty name with 0.
void TakeNames(EndlessReader& in) {
    ForgetPredefinedIndex();
    for (unsigned count = in.U32(); count > 0 && !in.Ended(); --count) {
        std::string name = in.Text(in.U32());
        const unsigned value = in.U32();
        if (in.Ended()) name.clear();
        g_tblPreDefine.emplace(std::move(name), value);
    }
}

/// A section that is not restored still brings the list of source files when it is the first of the file.
void PassOver(ByteReader block) {
    if (g_fileListRead) return;
    ByteReader common = block.Block();
    CZEKObj object;
    TakeObject(common, object);
}

void TakeSections(EndlessReader& in) {
    for (unsigned groups = in.U32(); groups > 0 && !in.Ended(); --groups) {
        for (unsigned count = in.U32(); count > 0; --count) {
            ByteReader block = in.Block(in.U32());
            const SectionKind* kind = KindOf(TypeInBlock(block));
            if (kind && kind->makeToRestore) {
                CZEKSection& section = *kind->makeToRestore();
                TakeSection(block, section);
                ShareAbsentEntries(section);
            } else {
                PassOver(block);
            }
        }
    }
}

}  // namespace

}  // namespace zek

unsigned WriteMetaD(const std::string& file) {
    std::ofstream stream = zek::CreateFile(file);
    if (!stream) {
        LOG(zek::kDebugCreateFailed, file.c_str());
        return 0;
    }
    const bool listWritten = zek::g_fileListWritten;
    try {
        zek::WriteImage(stream);
    } catch (...) {
        // No image has got the list, so the next one must.
        zek::g_fileListWritten = listWritten;
        throw;
    }
    return 1;
}

unsigned ReadMetaD(const std::string& file, tagMETAFILEINFO* info) {
    const std::optional<zek::ByteBuffer> bytes = zek::ReadImage(file, zek::kMagic);
    if (!bytes) {
        LOG(zek::kDebugOpenFailed, file.c_str());
        return 0;
    }
    if (!zek::HasMagic(bytes->View(), zek::kMagic)) {
        LOG(zek::kDebugInvalid, file.c_str());
        return 0;
    }
    zek::EndlessReader in(*bytes);
    in.Seek(zek::kMagicSize);
    const unsigned version = in.U32();
    if (version != ZEKD_VERSION) {
        LOG(zek::kDebugVersion, file.c_str());
        return 0;
    }
    const unsigned time = in.U32();
    if (info) *info = {version, time};
    in.Seek(ZEKD_DATA_OFFSET);
    zek::TakeNames(in);
    zek::TakeSections(in);
    return 1;
}
