/// The queries of the compiled image as their rules are told: no index, a walk of the list and of the maps for every
/// question. Relies on the published records.
#pragma once

#include <string>
#include <vector>

#include "zekcomp/records.h"

namespace zek::test::plain {

/// What a query gives, and the code that it leaves.
template <class Result>
struct Answer {
    Result result;
    unsigned code;
};

std::vector<tagGCSECT*> ImageSections(unsigned identifier);
Answer<tagGCSECT*> SectionByIndex(unsigned identifier, unsigned index);
Answer<tagGCSECT*> SectionByName(unsigned identifier, const std::string& name);
Answer<tagGCSECT*> SectionById(unsigned identifier, unsigned number);
Answer<tagGCENTRY*> EntryByIndex(tagGCSECT& section, unsigned index);
Answer<tagGCENTRY*> EntryByName(tagGCSECT& section, const std::string& name);
Answer<tagGCENTRY*> EntryByType(tagGCSECT& section, unsigned identifier);
Answer<tagGCVALUE> ValueByIndex(const tagGCENTRY& entry, unsigned index);
Answer<tagGCVALUE> ValueById(const tagGCENTRY& entry, unsigned field);
Answer<unsigned> GroupIndex(const std::string& name);

/// What an identifier stands for.
tagGCVALUE Resolved(unsigned identifier);

}  // namespace zek::test::plain
