#include "compile/image_file.h"

#include <algorithm>
#include <memory>
#include <stdexcept>

#include "compile/compile.h"
#include "compile/image_format.h"
#include "compile/init_tables.h"
#include "compile/numbering.h"
#include "compile/state.h"
#include "compile/tables.h"
#include "model/file_header.h"
#include "model/files.h"
#include "zekcomp/errors.h"

const unsigned ZEK_VERSION = 0x01000000;

namespace zek {

namespace {

/// Appends sections to the image as they come, each count once it is known.
class WrittenSections : public CompiledSections {
public:
    explicit WrittenSections(ByteWriter& out) : out_(out), sectionsAt_(out.Position()) { out.U32(0); }

    void Section(unsigned identifier) override {
        CountEntries();
        ++sections_;
        out_.Words({identifier, 0});
        entriesAt_ = out_.Position() - 4;
        entries_ = 0;
    }
    void Entry(const tagGCENTRY& entry) override {
        ++entries_;
        out_.Words({entry.dwName, static_cast<unsigned>(entry.vdwValues.size())}, entry.vdwValues);
    }
    /// To be called behind the last entry.
    void End() {
        CountEntries();
        out_.SetU32(sectionsAt_, sections_);
    }

private:
    void CountEntries() {
        if (sections_ > 0) out_.SetU32(entriesAt_, entries_);
    }

    ByteWriter& out_;
    std::size_t sectionsAt_;
    std::size_t entriesAt_ = 0;
    unsigned sections_ = 0;
    unsigned entries_ = 0;
};

/// The sections that g_GCHead holds.
void PutHeldSections(CompiledSections& out) {
    for (const tagGCSECT* section : g_GCHead) {
        out.Section(section->dwSect);
        for (const tagGCENTRY& entry : section->vEntries) out.Entry(entry);
    }
}

/// Each table at the next boundary strictly behind what was written before it, its offset in the directory.
void PutTables(ByteWriter& out) {
    std::size_t slot = kImageDirectory;
    for (const IdentifierTable& table : kIdentifierTables) {
        out.Zeros(NextTable(out.Position()) - out.Position());
        out.SetU32(slot, static_cast<unsigned>(out.Position()));
        slot += 4;
        PutTable(out, table);
    }
}

/// The sections that `put` gives, then the tables.
template <class Put>
ByteBuffer ImageOf(Put&& put) {
    ByteBuffer image;
    ByteWriter out(image);
    PutFileHeader(out, kImageMagic, ZEK_VERSION, kImageBody);
    WrittenSections sections(out);
    put(sections);
    sections.End();
    PutTables(out);
    return image;
}

unsigned WriteImage(const std::string& file, const ByteBuffer& image) {
    std::ofstream stream = CreateFile(file);
    if (!stream) return 0;
    WriteBytes(stream, image);
    return 1;
}

/// Sections and entries take at least this many bytes, so that no count needs more room than the rest of the image.
constexpr std::size_t kSmallestRecord = 8;

std::size_t RoomFor(std::size_t count, const ByteReader& in) { return std::min(count, in.Left() / kSmallestRecord); }

void TakeEntry(ByteReader& in, std::vector<tagGCENTRY>& entries) {
    const unsigned name = in.U32();
    const std::size_t count = in.U32();
    entries.push_back({name, in.Words(count)});
}

void TakeSections(ByteReader& in) {
    unsigned sections = in.U32();
    g_GCHead.reserve(RoomFor(sections, in));
    for (; sections > 0; --sections) {
        const unsigned identifier = in.U32();
        auto section = std::make_unique<tagGCSECT>();
        section->dwSect = identifier;
        g_GCHead.push_back(section.get());
        tagGCSECT& added = *section.release();
        unsigned entries = in.U32();
        added.vEntries.reserve(RoomFor(entries, in));
        for (; entries > 0; --entries) TakeEntry(in, added.vEntries);
    }
}

/// Where the body of the record that counts for each table begins; 0 for a table without a record. A directory may name
/// a table more than once; the last one counts, so no table is read twice however long the directory is.
using Records = std::array<std::size_t, kIdentifierTables.size()>;

/// Whether the bytes hold the record's body. A name table may claim more than they hold (see TakeTable).
bool IsWhole(ByteReader body, const IdentifierTable& table) {
    const std::size_t length = body.U32();
    return table.names || length <= body.Left();
}

/// Walks the directory to its end, or to the first record that the bytes cut; false for the latter.
bool FindRecords(ByteReader in, Records& records) {
    ByteReader record = in;
    in.Seek(kImageDirectory);
    try {
        while (const unsigned offset = in.U32()) {
            record.Seek(offset);
            const IdentifierTable* table = TableOf(record.U32());
            if (!table) continue;
            std::size_t& place = records[static_cast<std::size_t>(table - kIdentifierTables.data())];
            // A record that the bytes cut empties its map, but leaves the table data as it was.
            if (table->names || table->numbers) place = record.Position();
            if (!IsWhole(record, *table)) return false;
            place = record.Position();
        }
    } catch (const std::out_of_range&) {
        return false;
    }
    return true;
}

bool TakeTables(ByteReader in) {
    Records records{};
    const bool whole = FindRecords(in, records);
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (records[i] == 0) continue;
        in.Seek(records[i]);
        try {
            TakeTable(in, kIdentifierTables[i]);
        } catch (const std::out_of_range&) {
            // The record that the bytes cut, as FindRecords has told: taking it has emptied its map.
        }
    }
    return whole;
}

/// Reads what follows the magic; false when the version is another or the bytes end too early.
bool TakeImage(ByteReader in, tagMETAFILEINFO* info) {
    in.Seek(kMagicSize);
    try {
        const unsigned version = in.U32();
        if (version != ZEK_VERSION) return false;
        const unsigned time = in.U32();
        if (info) *info = {version, time};
        ++g_changes;
        g_GCHead.clear();
        in.Seek(kImageBody);
        TakeSections(in);
    } catch (const std::out_of_range&) {
        return false;
    }
    return TakeTables(in);
}

unsigned Fail(ErrorCode code) {
    gcSetLastError(code);
    return 0;
}

}  // namespace

unsigned WriteModel(const std::string& file) {
    Numbering numbering;
    InitTblD();
    const ByteBuffer image = ImageOf([](CompiledSections& sections) {
        PutHeldSections(sections);
        CompileModel(sections);
    });
    numbering.Prepare();
    const unsigned written = WriteImage(file, image);
    numbering.Enter();
    return written;
}

}  // namespace zek

unsigned WriteMeta(const std::string& file) { return zek::WriteImage(file, zek::ImageOf(zek::PutHeldSections)); }

unsigned ReadMeta(const std::string& file, tagMETAFILEINFO* info) {
    const std::optional<zek::ByteBuffer> bytes = zek::ReadImage(file, zek::kImageMagic);
    if (!bytes) return zek::Fail(zek::kCannotOpen);
    if (!zek::HasMagic(bytes->View(), zek::kImageMagic)) return zek::Fail(zek::kBadMagic);
    return zek::TakeImage(zek::ByteReader(*bytes), info) ? 1 : zek::Fail(zek::kBadVersion);
}
