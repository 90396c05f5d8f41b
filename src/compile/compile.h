/// Turning the checked source model into compiled sections and entries. Relies on the published records and tables.h.
#pragma once

#include <string>
#include <vector>

#include "zekcomp/api.h"
#include "zekcomp/records.h"

/// The compiled sections: those that Compile made, or those of the image that was loaded. Owns them.
extern ZEK_API std::vector<tagGCSECT*> g_GCHead;

/// Appends every section of the model to g_GCHead. Always 1.
ZEK_API unsigned Compile();

/// Frees every compiled section and empties g_GCHead; the tables stay.
ZEK_API void CompDestory();

/// A new section without entries, owned by the caller; null for a kind that is not compiled.
ZEK_API tagGCSECT* CreateGCSect(unsigned sectionType);

/// The name identifier of an entry; 0 for a kind without a name and for a name that is not numbered.
ZEK_API unsigned GetEntryName(unsigned entryType, const std::string& key);

/// Appends the words of an entry's data, which is of the class of `entryType`.
ZEK_API void SetEntryValues(unsigned sectionType, unsigned entryType, void* data, tagGCENTRY& entry);

/// The word of an operand; 0xFFFFFFFF when it cannot be resolved, 0 for a name that is not numbered.
ZEK_API unsigned GetValueVal(std::string& text);

namespace zek {

/// Takes the compiled sections, each followed by its entries. An entry is good during the call only.
class CompiledSections {
public:
    virtual ~CompiledSections() = default;
    virtual void Section(unsigned identifier) = 0;
    virtual void Entry(const tagGCENTRY& entry) = 0;
};

/// Compiles every section of the model, in order.
void CompileModel(CompiledSections& out);

}  // namespace zek
