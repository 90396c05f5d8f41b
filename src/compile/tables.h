/// The identifier tables of the compiled image: they number every name and constant, and tell what an identifier stands
/// for. Relies on the published records and bytes.h.
#pragma once

#include <array>
#include <cstdint>
#include <fstream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "model/bytes.h"
#include "zekcomp/api.h"
#include "zekcomp/identifiers.h"

// Name or number to identifier; 0 for a key that is not numbered yet. Filled by gccOutput and by gcInit; never emptied
// but when a table is read.
extern ZEK_API std::map<std::string, unsigned> g_tblProperty;
extern ZEK_API std::map<std::string, unsigned> g_tblGlobal;
extern ZEK_API std::map<std::string, unsigned> g_tblValue;
extern ZEK_API std::map<std::string, unsigned> g_tblRepeater;
extern ZEK_API std::map<unsigned, unsigned> g_tblDword;
extern ZEK_API std::map<std::string, unsigned> g_tblString;
extern ZEK_API std::map<std::string, unsigned> g_tblGroup;
extern ZEK_API std::map<std::string, unsigned> g_tblAction;
extern ZEK_API std::map<std::string, unsigned> g_tblTableName;
/// One block of 256 bytes per table, in the order of the table names.
extern ZEK_API std::vector<unsigned char> g_tblTableData;

/// The identifier of a key: its own, or for a new or unnumbered key the counter, which then advances by `step`.
ZEK_API unsigned InsertTbl(std::map<std::string, unsigned>& table, unsigned& counter, const std::string& name,
                           unsigned step);
ZEK_API unsigned InsertTbl(std::map<unsigned, unsigned>& table, unsigned& counter, const unsigned& number,
                           unsigned step);

// These two walk the map; `GetTblData(id)` has an index.
/// The number of an identifier, or 0xFFFFFFFF; the first in key order when several have it.
ZEK_API unsigned GetTblData(std::map<unsigned, unsigned>& table, unsigned id);
/// The name of an identifier, owned by the table and valid while that is unchanged, or null; the first in key order.
ZEK_API const char* GetTblData(std::map<std::string, unsigned>& table, unsigned id);

/// Write a table record; `counter` is the table's counter.
ZEK_API void WriteTbl(std::ofstream& out, std::map<unsigned, unsigned>& table, unsigned counter);
ZEK_API void WriteTbl(std::ofstream& out, std::map<std::string, unsigned>& table, unsigned counter);

/// Reads the record at the stream's position into the table that its tag names; behind any other tag nothing is read. A
/// record that the file's end cuts sets the stream's fail bit.
ZEK_API void ReadTbl(std::ifstream& in);
/// Read the body of a record, behind its tag, into an emptied table; `counter` gives out the identifiers.
ZEK_API void ReadTbl(std::ifstream& in, std::map<unsigned, unsigned>& table, unsigned& counter, unsigned step);
ZEK_API void ReadTbl(std::ifstream& in, std::map<std::string, unsigned>& table, unsigned& counter, unsigned step);

namespace zek {

using NameTable = std::map<std::string, unsigned>;
using NumberTable = std::map<unsigned, unsigned>;

/// One table: its class, its map (by name, or by number, or neither for the table data) and its counter.
struct IdentifierTable {
    unsigned classWord;
    NameTable* names;
    NumberTable* numbers;
    unsigned* counter;
};

/// Every table, in the order of the image's directory.
extern const std::array<IdentifierTable, 10> kIdentifierTables;

/// The class of an identifier as a number, without the ordinal.
inline constexpr unsigned kIdClassShift = 24;

/// The table of a class word, or null.
const IdentifierTable* TableOf(unsigned classWord);
/// Its position among the tables.
inline std::size_t RowOf(const IdentifierTable& table) {
    return static_cast<std::size_t>(&table - kIdentifierTables.data());
}

/// The identifier of a name or number in the table of a class, given out when it is new.
unsigned Number(unsigned classWord, std::string_view name);
unsigned Number(unsigned number);

/// The identifier of a name in the table of a class. A name that is not numbered stays so: it is added with 0, and the
/// name counts in the length of the written table, which hosts know.
unsigned LookUp(unsigned classWord, std::string_view name);

/// Appends a table record.
void PutTable(ByteWriter& out, const IdentifierTable& table);
/// Takes the body of a record into its table. Throws `std::out_of_range` when the bytes cut it, `std::bad_alloc` when
/// memory runs out: a table of names or numbers is then empty, and the table data stays as it was.
void TakeTable(ByteReader& in, const IdentifierTable& table);

/// Some of the tables, a bit for each.
using TableSet = unsigned;
/// The table of an identifier's class; of a class without one, none.
TableSet TableSetOf(unsigned id);
/// Differs when one of our functions has numbered a key of one of these tables or added one, or the size of one has
/// changed; with g_changes it tells whether what an index has made of their identifiers is still good.
std::uint64_t StampOf(TableSet tables);

}  // namespace zek
