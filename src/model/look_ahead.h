/// Fetching what look-ups of names will read, before they are made: in a large description each name that a section
/// refers to is elsewhere in memory, and waiting for one after the other takes longer than all else that is done with
/// it. Relies on fetch.h, key_table.h, section.h.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "model/fetch.h"
#include "model/key_table.h"
#include "model/section.h"

namespace zek {

/// Names that are about to be looked up, in two steps, since a slot tells where its row is: noting a name has its slot
/// fetched, and what is done in between gives that time to arrive. Never changes what a look-up finds.
class LookAhead {
public:
    using Names = KeyTable<std::string_view, unsigned>;

    /// Whether the model is one of which each part has left the caches before it is looked up.
    static bool IsWorthIt() { return SectionsOfModel() > kSectionsInCache; }

    /// The table, or null when it is in the cache anyway or not there.
    static const Names* IfLarge(const Names* table) { return table && table->IsLarge() ? table : nullptr; }

    /// Notes a name, unless the table is null; where too many are noted, those behind are not fetched.
    void Note(const Names* table, std::string_view name) {
        if (!table || count_ == notes_.size()) return;
        const unsigned tag = Names::TagOf(name);
        table->FetchSlot(tag);
        notes_[count_++] = {table, tag};
    }
    /// Has the rows of the noted names fetched, and forgets them.
    void FetchRows() {
        for (std::size_t i = 0; i < count_; ++i) notes_[i].table->FetchRow(notes_[i].tag);
        count_ = 0;
    }

private:
    static constexpr std::size_t kSectionsInCache = std::size_t{1} << 15;

    struct Noted {
        const Names* table;
        unsigned tag;
    };

    std::array<Noted, 64> notes_;
    std::size_t count_ = 0;
};

/// Where the operands of values are looked up; null where nothing is to be fetched.
struct OperandTables {
    bool Any() const { return predefined || globals || actions || tables; }

    const LookAhead::Names* predefined;
    const LookAhead::Names* globals;
    std::size_t globalPrefix;  ///< so many characters of a global are not looked up
    const LookAhead::Names* actions;
    const LookAhead::Names* tables;
};

/// Notes the names among the operands of a value.
void NoteOperands(const CGeValue& value, const OperandTables& tables, LookAhead& ahead);

/// Has a section behind the current one fetched, and the entries of the one before that, whose place it has told by
/// now. No further ahead: the processor fetches only a few lines at a time.
inline void FetchBehind(const SectionList& sections, std::size_t current) {
    if (current + 3 < sections.size()) FetchAll(sections[current + 3], sizeof(CZEKSection));
    if (current + 2 >= sections.size()) return;
    for (const CZEKEntry* entry : sections[current + 2]->m_vpEntry) FetchAll(entry, sizeof *entry);
}

/// Goes through sections in order; where it looks ahead, has `note` note the names of each while the one before it is
/// visited. Ends where `visit` says no.
template <class Note, class Visit>
void VisitAhead(const SectionList& sections, bool looksAhead, Note&& note, Visit&& visit) {
    LookAhead ahead;
    for (std::size_t i = 0; i < sections.size(); ++i) {
        if (looksAhead) {
            ahead.FetchRows();
            FetchBehind(sections, i);
            if (i + 1 < sections.size()) note(*sections[i + 1], ahead);
        }
        if (!visit(*sections[i])) return;
    }
}

}  // namespace zek
