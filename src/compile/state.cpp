// The process-wide variables of the compiled image: who fills each, who empties it.
#include "compile/state.h"

#include "compile/compile.h"
#include "compile/tables.h"

// Filled by gccOutput, which adds to them, and by gcInit, which replaces those that the image has. Never emptied
// otherwise: they outlive gccCompEnd and gcUnInit.
std::map<std::string, unsigned> g_tblProperty;
std::map<std::string, unsigned> g_tblGlobal;
std::map<std::string, unsigned> g_tblValue;
std::map<std::string, unsigned> g_tblRepeater;
std::map<unsigned, unsigned> g_tblDword;
std::map<std::string, unsigned> g_tblString;
std::map<std::string, unsigned> g_tblGroup;
std::map<std::string, unsigned> g_tblAction;
std::map<std::string, unsigned> g_tblTableName;
// Made anew by gccOutput; replaced by gcInit.
std::vector<unsigned char> g_tblTableData;

// The next identifier of each table; follow the tables.
unsigned g_idxProperty = zek::kIdProperty;
unsigned g_idxGlobal = zek::kIdGlobal;
unsigned g_idxValue = zek::kIdValue;
unsigned g_idxRepeater = zek::kIdRepeater;
unsigned g_idxDword = zek::kIdNumber;
unsigned g_idxString = zek::kIdString;
unsigned g_idxGroup = zek::kIdGroup;
unsigned g_idxAction = zek::kIdAction;
unsigned g_idxTableName = zek::kIdTableName;

// Filled by Compile and by gcInit; emptied by CompDestory, through gccOutput and gcUnInit.
std::vector<tagGCSECT*> g_GCHead;

namespace zek {

// Advances with every change of our functions that replaces a table or g_GCHead, or numbers many keys; the indexes
// below follow it.
unsigned g_changes = 0;
// Counts what CreateGCSect has made: a section that a host deletes may leave its place to the next.
unsigned g_sectionsMade = 0;
// The keys that our functions have numbered one by one, or added with 0, by table; what is made of the keys of a table
// follows its own.
std::array<unsigned, kIdentifierTables.size()> g_insertions{};
Resolver g_resolver;
ImageIndex g_imageIndex;
EntryIndex g_entryIndex;
// Set while gccOutput compiles.
Numbering* g_numbering = nullptr;

}  // namespace zek
