// The process-wide variables of the model: who fills each, who empties it.
#include "model/state.h"

#include "model/absent_entries.h"

// Filled by SetFile and by the first debug image read; never emptied.
std::vector<std::string> CZEKObj::m_svstrIncFiles;
namespace zek {
// Follows m_svstrIncFiles.
FileIndex g_fileIndex;
// Holds every entry made here and all typed data; empty once they are freed, through gccCompEnd and gdUnInit.
constinit Pool g_pool;
// Filled when a section is read into a large model; never emptied.
constinit SharedEntries g_sharedEntries{};
// Filled while a large model is read; empty once its entries are checked or destroyed.
WaitingValues g_waitingValues;
// Set by the driver while it reads a section: no entry of it is a host's.
bool g_readingSection = false;
// Set by the driver while it reads a section of a large model: its entries are shared, its values wait.
bool g_readingLargeModel = false;
// How many files that include each other are being read.
unsigned g_includeDepth = 0;
// Advances whenever a section is made, the model is destroyed, or typed data is allocated or freed.
unsigned g_modelChanges = 0;
}  // namespace zek

// Each kind's list is entered when its first section is made, and stays; never emptied.
std::vector<zek::SectionList*> CZEKSection::m_svpHSection;
// Filled when a section is made; emptied by CZEKSection::Destory, through gccCompEnd and gdUnInit.
zek::SectionList CGSQUORZEK::m_sHeader;
zek::SectionList CGSPROPERTY::m_sHeader;
zek::SectionList CGSSYSTEM::m_sHeader;
zek::SectionList CGSGROUP::m_sHeader;
zek::SectionList CGSSENSOR::m_sHeader;
zek::SectionList CGSDEVICE::m_sHeader;
zek::SectionList CGSACTION::m_sHeader;
zek::SectionList CGSTABLE::m_sHeader;
zek::SectionList CGSTAVRGROUP::m_sHeader;
zek::SectionList CGSGLOBAL::m_sHeader;
zek::SectionList CGSREPEATER::m_sHeader;
zek::SectionList CGSDEFINE::m_sHeader;
zek::SectionList CGSIFDEF::m_sHeader;
zek::SectionList CGSINCLUDE::m_sHeader;
