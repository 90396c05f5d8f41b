// DEFINE, IFDEF and INCLUDE: the sections that act while the source is read.
#include "check/vocabulary.h"
#include "frontend/parse.h"
#include "model/messages.h"
#include "model/output.h"
#include "model/section_kinds.h"
#include "model/state.h"

namespace {

/// So deep may files include each other. Our parser library refuses a deeper chain before that, and one that comes back
/// to a file; with another library the chain would go on to the end of the stack.
constexpr unsigned kDeepestInclude = 1000;

/// Counts an include for as long as it is read.
class NestedInclude {
public:
    NestedInclude() { ++zek::g_includeDepth; }
    ~NestedInclude() { --zek::g_includeDepth; }
    NestedInclude(const NestedInclude&) = delete;
    NestedInclude& operator=(const NestedInclude&) = delete;
};

/// Reads the sections of an included file into the model; false when it cannot be opened.
bool ReadIncluded(const std::string& file) {
    if (zek::g_includeDepth >= kDeepestInclude) return false;
    const NestedInclude nested;
    CZEKParse parse;
    if (!parse.Start(file)) return false;
    parse.Parse();
    return true;
}

/// Adds a definition and, when it is sound, makes its key a predefined name.
void Define(CZEKSection& section, const std::string& file, const std::string& key, const std::string& value,
            unsigned line) {
    CZEKEntry& entry = zek::AddUndeclared(section, *zek::KindOf(zek::kDefineSection), file, key, value, line);
    if (entry.IsValid(&section, zek::kWhileReading)) AddPredDefineValue(key, *zek::NumberOf(entry.m_ZekEntryData));
}

}  // namespace

unsigned CGSDEFINE::SetEntry(const std::string& file, const std::string& key, const std::string& value, unsigned line) {
    Define(*this, file, key, value, line);
    return 1;
}

unsigned CGSIFDEF::SetEntry(const std::string& file, const std::string& key, const std::string& value, unsigned line) {
    if (!m_dwSeen) {
        m_dwCondition = ChkIFDEF(file, key, value, line);
        m_dwSeen = 1;
        return 1;
    }
    // The names are defined whether or not the condition holds: hosts rely on it.
    Define(*this, file, key, value, line);
    return 1;
}

unsigned CGSIFDEF::ChkIFDEF(const std::string& file, const std::string& key, const std::string& value, unsigned line) {
    if (!CZEKSection::SetEntry(file, key, value, line)) return 0;
    CZEKEntry* word = zek::FirstEntry(*this, zek::kDefineWord);
    unsigned ignored = 0;
    return word->IsValid(this, zek::kWhileReading) && GetPreDefinedValue(*zek::TextOf(*word), &ignored);
}

unsigned CGSINCLUDE::SetEntry(const std::string& file, const std::string& key, const std::string& value,
                              unsigned line) {
    CZEKEntry& entry = zek::AddUndeclared(*this, *zek::KindOf(zek::kIncludeSection), file, key, value, line);
    if (!entry.IsValid(this, zek::kWhileReading)) return 1;
    if (!ReadIncluded(GetFile(1) + *zek::TextOf(entry))) {
        LOG(zek::kFileNotLoaded, GetFile(0).c_str(), line, m_strName.c_str(), key.c_str(), value.c_str());
    }
    return 1;
}
