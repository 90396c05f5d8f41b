#include "debugimage/tree.h"

#include <algorithm>
#include <new>
#include <unordered_map>

#include "debugimage/state.h"
#include "model/absent_entries.h"

namespace zek {

namespace {

/// The entry of each type that a record of that type is restored into: the first that is no family entry. Kept as an
/// index because a section may hold a hundred thousand records.
class Twins {
public:
    explicit Twins(const CZEKSection& section) : present_(section.m_vpEntry) {
        for (CZEKEntry* entry : present_) Note(entry->m_dwType, *entry);
    }
    CZEKEntry* Of(unsigned type) const {
        const auto twin = twins_.find(type);
        return twin == twins_.end() ? nullptr : twin->second;
    }
    /// To be told of every entry that has been restored.
    void Note(unsigned type, CZEKEntry& entry) {
        if (!IsFamily(entry)) {
            twins_.try_emplace(type, &entry);
        } else if (Of(type) == &entry) {
            Replace(type);
        }
    }

private:
    /// Of the entries that were there before the records, another may follow; a record adds none while there is a twin.
    void Replace(unsigned type) {
        const auto next = std::find_if(present_.begin(), present_.end(), [type](const CZEKEntry* entry) {
            return entry->m_dwType == type && !IsFamily(*entry);
        });
        if (next == present_.end()) {
            twins_.erase(type);
        } else {
            twins_[type] = *next;
        }
    }

    const std::vector<CZEKEntry*> present_;
    std::unordered_map<unsigned, CZEKEntry*> twins_;
};

/// A damaged list leaves what it gave; one for which there is no memory leaves nothing, so that the next image's list
/// stands where its indexes say.
void TakeFileList(ByteReader& in) {
    const std::size_t before = CZEKObj::m_svstrIncFiles.size();
    try {
        in.List(CZEKObj::m_svstrIncFiles);
    } catch (const std::bad_alloc&) {
        CZEKObj::m_svstrIncFiles.resize(before);
        throw;
    }
}

}  // namespace

void PutObject(ByteWriter& out, const CZEKObj& object) {
    out.Words({object.m_dwType, object.m_eNotation, object.m_dwLine, object.m_dwFile});
    out.Str(object.m_strName);
    if (g_fileListWritten) return;
    out.List(CZEKObj::m_svstrIncFiles);
    g_fileListWritten = true;
}

void PutEntry(ByteWriter& out, const CZEKEntry& entry) {
    out.Block([&] { PutObject(out, entry); });
    out.Block([&] { PutEntryData(out, entry.m_ZekEntryData); });
}

void PutSection(ByteWriter& out, const CZEKSection& section) {
    out.Block([&] { PutObject(out, section); });
    out.U32(static_cast<unsigned>(section.m_vpEntry.size()));
    for (const CZEKEntry* entry : section.m_vpEntry) out.Block([&] { PutEntry(out, *entry); });
}

void TakeObject(ByteReader& in, CZEKObj& object) {
    object.m_dwType = in.U32();
    object.m_eNotation = static_cast<tagNOTATION>(in.U32());
    object.m_dwLine = in.U32();
    object.m_dwFile = in.U32();
    object.m_strName = in.Str();
    if (g_fileListRead) return;
    TakeFileList(in);
    g_fileListRead = true;
}

void TakeEntry(ByteReader& in, CZEKEntry& entry) {
    ByteReader common = in.Block();
    TakeObject(common, entry);
    ByteReader data = in.Block();
    TakeEntryData(data, entry.m_ZekEntryData);
}

void TakeSection(ByteReader& in, CZEKSection& section) {
    ByteReader common = in.Block();
    TakeObject(common, section);
    for (CZEKEntry*& entry : section.m_vpEntry) OwnEntry(entry);
    Twins twins(section);
    for (unsigned count = in.U32(); count > 0; --count) {
        ByteReader record = in.Block();
        const unsigned type = TypeInBlock(record);
        if (CZEKEntry* twin = twins.Of(type)) {
            TakeEntry(record, *twin);
            twins.Note(type, *twin);
            continue;
        }
        std::unique_ptr<CZEKEntry> entry = NewEntry(type, 0);
        if (!entry) continue;
        TakeEntry(record, *entry);
        twins.Note(type, *entry);
        section.m_vpEntry.push_back(entry.get());
        entry.release();
    }
}

unsigned TypeInBlock(ByteReader block) {
    block.U32();
    return block.U32();
}

}  // namespace zek

void CZEKObj::GetBuffer(std::vector<unsigned char>& out) {
    zek::FillBuffer(out, [this](zek::ByteWriter& writer) { zek::PutObject(writer, *this); });
}

void CZEKObj::SetBuffer(const std::vector<unsigned char>& in) {
    zek::ByteReader reader(in);
    zek::TakeObject(reader, *this);
}

void CZEKEntry::GetBuffer(std::vector<unsigned char>& out) {
    zek::FillBuffer(out, [this](zek::ByteWriter& writer) { zek::PutEntry(writer, *this); });
}

void CZEKEntry::SetBuffer(const std::vector<unsigned char>& in) {
    zek::ByteReader reader(in);
    zek::TakeEntry(reader, *this);
}

void CZEKSection::GetBuffer(std::vector<unsigned char>& out) {
    zek::FillBuffer(out, [this](zek::ByteWriter& writer) { zek::PutSection(writer, *this); });
}

void CZEKSection::SetBuffer(const std::vector<unsigned char>& in) {
    zek::ByteReader reader(in);
    zek::TakeSection(reader, *this);
}
