#include "compile/tables.h"

#include <algorithm>
#include <bit>
#include <stdexcept>

#include "compile/enter_keys.h"
#include "compile/numbering.h"
#include "compile/state.h"
#include "model/files.h"
#include "model/hash.h"

namespace zek {

constexpr std::array<IdentifierTable, 10> kIdentifierTables = {{
    {kIdProperty, &g_tblProperty, nullptr, &g_idxProperty},
    {kIdGlobal, &g_tblGlobal, nullptr, &g_idxGlobal},
    {kIdValue, &g_tblValue, nullptr, &g_idxValue},
    {kIdRepeater, &g_tblRepeater, nullptr, &g_idxRepeater},
    {kIdNumber, nullptr, &g_tblDword, &g_idxDword},
    {kIdString, &g_tblString, nullptr, &g_idxString},
    {kIdGroup, &g_tblGroup, nullptr, &g_idxGroup},
    {kIdAction, &g_tblAction, nullptr, &g_idxAction},
    {kIdTableName, &g_tblTableName, nullptr, &g_idxTableName},
    {kIdTableData, nullptr, nullptr, nullptr},
}};

namespace {

/// The row of each class, and of any other a number of no row.
constexpr std::array<unsigned char, 256> kRowOfClass = [] {
    std::array<unsigned char, 256> rows{};
    rows.fill(kIdentifierTables.size());
    for (unsigned char row = 0; row < kIdentifierTables.size(); ++row) {
        rows[kIdentifierTables[row].classWord >> kIdClassShift] = row;
    }
    return rows;
}();

/// What stands for a number that is not there; the number itself cannot be told from it: hosts rely on it.
constexpr unsigned kNoNumber = 0xFFFFFFFF;

unsigned ClassOf(unsigned id) { return id & kIdClassMask; }

const IdentifierTable* OwnTable(const NameTable& names) {
    const auto table = std::ranges::find(kIdentifierTables, &names, &IdentifierTable::names);
    return table == kIdentifierTables.end() ? nullptr : &*table;
}

const IdentifierTable* OwnTable(const NumberTable& numbers) {
    return &numbers == &g_tblDword ? TableOf(kIdNumber) : nullptr;
}

/// Tells the indexes of a key that was numbered in one of our tables, or added to it with 0.
template <class Key>
void FollowInsertion(const IdentifierTable& table, const Key& key, unsigned id, bool isNew) {
    ++g_insertions[RowOf(table)];
    g_resolver.Follow(table, key, id, isNew);
}

template <class Key>
unsigned Insert(std::map<Key, unsigned>& table, unsigned& counter, const Key& key, unsigned step) {
    const auto [row, isNew] = table.try_emplace(key, 0);
    unsigned& id = row->second;
    if (id != 0) return id;
    id = counter;
    counter += step;
    if (const IdentifierTable* own = OwnTable(table)) FollowInsertion(*own, key, id, isNew);
    return id;
}

/// A key without an identifier: the filler of a hole in the table.
template <class Name>
void PutKey(ByteWriter& out, const Name* name) {
    if (name) out.Raw(*name);
    out.Zeros(1);
}

void PutKey(ByteWriter& out, const unsigned* number) { out.U32(number ? *number : kNoNumber); }

std::size_t SizeOf(std::string_view name) { return name.size() + 1; }

std::size_t SizeOf(unsigned) { return 4; }

/// Of a table, or of the rows that stand for it.
template <class Key, class Rows>
void PutRecord(ByteWriter& out, const Rows& rows, unsigned counter) {
    const unsigned classWord = ClassOf(counter);
    out.U32(classWord);
    if (counter == classWord) return out.U32(0);
    // The length counts the unnumbered keys too, which are not written: readers take what follows for more names.
    std::size_t length = 0;
    for (const auto& [key, id] : rows) length += SizeOf(key);
    out.U32(static_cast<unsigned>(length));
    for (const Key* key : KeysByIdentifier<Key>(rows, classWord, counter - classWord)) PutKey(out, key);
}

template <class Key>
void WriteRecord(std::ofstream& out, const std::map<Key, unsigned>& table, unsigned counter) {
    ByteBuffer record;
    ByteWriter writer(record);
    PutRecord<Key>(writer, table, counter);
    WriteBytes(out, record);
}

/// The names of a body; one whose length runs past the end of the bytes gives the names that are there, since a length
/// that counts unnumbered keys may do that in a sound image.
void TakeBody(ByteReader& in, NameTable& table, unsigned& counter, unsigned step) {
    table.clear();
    ++g_changes;
    if (const IdentifierTable* own = OwnTable(table)) g_resolver.Forget(*own);
    const std::string_view body = in.View(in.U32());
    EnteredKeys<std::string, std::string_view> keys(table);
    for (std::size_t start = 0; start < body.size(); counter += step) {
        const std::size_t end = std::min(body.find('\0', start), body.size());
        keys.Add(body.substr(start, end - start), counter);
        start = end + 1;
    }
    keys.Enter();
}

void TakeBody(ByteReader& in, NumberTable& table, unsigned& counter, unsigned step) {
    table.clear();
    ++g_changes;
    ByteReader body = in.Block();
    EnteredKeys<unsigned, unsigned> keys(table);
    for (; body.Left() >= 4; counter += step) keys.Add(body.U32(), counter);
    keys.Enter();
}

/// Takes the body of one of our tables, whose counter stands at its class word: all of it, or nothing where it throws.
template <class Key>
void TakeKeys(ByteReader& in, std::map<Key, unsigned>& table, unsigned& counter) {
    const unsigned first = counter;
    try {
        TakeBody(in, table, counter, 1);
    } catch (...) {
        table.clear();
        counter = first;
        throw;
    }
}

void TakeTableData(ByteReader& in) {
    const std::string body = in.Str();
    g_tblTableData.assign(body.begin(), body.end());
}

/// Appends the stream's next `length` bytes, or those that are left.
void AppendNext(std::ifstream& in, std::size_t length, ByteBuffer& bytes) {
    const auto here = in.tellg();
    in.seekg(0, std::ios::end);
    const auto left = static_cast<std::size_t>(in.tellg() - here);
    in.seekg(here);
    const std::size_t count = in ? std::min(length, left) : 0;
    in.read(reinterpret_cast<char*>(bytes.Extend(count)), static_cast<std::streamsize>(count));
    bytes.Shrink(count - static_cast<std::size_t>(in.gcount()));
}

/// Takes a record's body from a stream that stands at its length.
template <class Take>
void TakeFromStream(std::ifstream& in, Take&& take) {
    ByteBuffer record;
    AppendNext(in, 4, record);
    if (record.Size() == 4) AppendNext(in, ByteReader(record).U32(), record);
    try {
        ByteReader reader(record);
        take(reader);
    } catch (const std::out_of_range&) {
        in.setstate(std::ios::failbit);
    }
}

}  // namespace

const IdentifierTable* TableOf(unsigned classWord) {
    const std::size_t row = kRowOfClass[classWord >> kIdClassShift];
    return row < kIdentifierTables.size() && kIdentifierTables[row].classWord == classWord ? &kIdentifierTables[row]
                                                                                           : nullptr;
}

unsigned Number(unsigned classWord, std::string_view name) {
    const IdentifierTable& table = *TableOf(classWord);
    if (g_numbering) return g_numbering->Number(table, name);
    return InsertTbl(*table.names, *table.counter, std::string(name), 1);
}

unsigned Number(unsigned number) {
    return g_numbering ? g_numbering->Number(number) : InsertTbl(g_tblDword, g_idxDword, number, 1);
}

unsigned LookUp(unsigned classWord, std::string_view name) {
    const IdentifierTable& table = *TableOf(classWord);
    if (g_numbering) return g_numbering->LookUp(table, name);
    const auto [row, isNew] = table.names->try_emplace(std::string(name), 0);
    if (isNew) FollowInsertion(table, row->first, 0, isNew);
    return row->second;
}

void PutTable(ByteWriter& out, const IdentifierTable& table) {
    if (table.names) {
        if (g_numbering) return PutRecord<std::string_view>(out, g_numbering->Names(table), *table.counter);
        return PutRecord<std::string>(out, *table.names, *table.counter);
    }
    if (table.numbers) {
        if (g_numbering) return PutRecord<unsigned>(out, g_numbering->Numbers(), *table.counter);
        return PutRecord<unsigned>(out, *table.numbers, *table.counter);
    }
    out.U32(table.classWord);
    out.U32(static_cast<unsigned>(g_tblTableData.size()));
    out.Raw({reinterpret_cast<const char*>(g_tblTableData.data()), g_tblTableData.size()});
}

void TakeTable(ByteReader& in, const IdentifierTable& table) {
    if (!table.counter) return TakeTableData(in);
    *table.counter = table.classWord;
    if (table.names) return TakeKeys(in, *table.names, *table.counter);
    TakeKeys(in, *table.numbers, *table.counter);
}

TableSet TableSetOf(unsigned id) {
    const std::size_t row = kRowOfClass[id >> kIdClassShift];
    return row < kIdentifierTables.size() ? 1U << row : 0;
}

std::uint64_t StampOf(TableSet tables) {
    std::uint64_t stamp = 0;
    for (; tables != 0; tables &= tables - 1) {
        const auto row = static_cast<std::size_t>(std::countr_zero(tables));
        const IdentifierTable& table = kIdentifierTables[row];
        const std::size_t size = table.names ? table.names->size() : table.numbers ? table.numbers->size() : 0;
        stamp = MixedProduct(stamp ^ kHashSeed ^ size ^ std::uint64_t{g_insertions[row]} << 32, kGoldenRatio);
    }
    return stamp;
}

}  // namespace zek

unsigned InsertTbl(std::map<std::string, unsigned>& table, unsigned& counter, const std::string& name, unsigned step) {
    return zek::Insert(table, counter, name, step);
}

unsigned InsertTbl(std::map<unsigned, unsigned>& table, unsigned& counter, const unsigned& number, unsigned step) {
    return zek::Insert(table, counter, number, step);
}

unsigned GetTblData(std::map<unsigned, unsigned>& table, unsigned id) {
    const unsigned* number = zek::FirstKeyWith(table, id);
    return number ? *number : zek::kNoNumber;
}

const char* GetTblData(std::map<std::string, unsigned>& table, unsigned id) {
    const std::string* name = zek::FirstKeyWith(table, id);
    return name ? name->c_str() : nullptr;
}

tagGCVALUE GetTblData(unsigned id) {
    tagGCVALUE value;
    return zek::g_resolver.AtOnce(id, value) ? value : zek::g_resolver.Resolve(id);
}

void WriteTbl(std::ofstream& out, std::map<unsigned, unsigned>& table, unsigned counter) {
    zek::WriteRecord(out, table, counter);
}

void WriteTbl(std::ofstream& out, std::map<std::string, unsigned>& table, unsigned counter) {
    zek::WriteRecord(out, table, counter);
}

void ReadTbl(std::ifstream& in) {
    zek::ByteBuffer tag;
    zek::AppendNext(in, 4, tag);
    if (tag.Size() < 4) return in.setstate(std::ios::failbit);
    const zek::IdentifierTable* table = zek::TableOf(zek::ByteReader(tag).U32());
    if (table) zek::TakeFromStream(in, [table](zek::ByteReader& reader) { zek::TakeTable(reader, *table); });
}

void ReadTbl(std::ifstream& in, std::map<unsigned, unsigned>& table, unsigned& counter, unsigned step) {
    zek::TakeFromStream(in, [&](zek::ByteReader& reader) { zek::TakeBody(reader, table, counter, step); });
}

void ReadTbl(std::ifstream& in, std::map<std::string, unsigned>& table, unsigned& counter, unsigned step) {
    zek::TakeFromStream(in, [&](zek::ByteReader& reader) { zek::TakeBody(reader, table, counter, step); });
}
