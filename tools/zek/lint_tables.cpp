// Tables that do not set all their bytes.
#include <algorithm>
#include <bitset>

#include "lint_rules.h"

namespace zek::tool {
namespace {

constexpr std::size_t kRows = 256;

/// What the rows of a table set.
std::bitset<kRows> SetBy(const LintSection& table) {
    std::bitset<kRows> set;
    for (const LintItem& item : table.items) {
        if (item.meaning != Meaning::kRow) continue;
        const std::string_view key = item.source->key;
        const std::size_t point = std::min(key.find('.'), key.size());
        const std::optional<WrittenNumber> low = WrittenNumberIn(key.substr(0, point));
        const std::optional<WrittenNumber> high = point < key.size() ? WrittenNumberIn(key.substr(point + 1)) : low;
        if (!low || !high) continue;
        for (std::size_t row = low->value; row <= high->value && row < kRows; ++row) set.set(row);
    }
    return set;
}

/// The tables in the order in which they are compiled, but only the first or only the others.
void FindIncomplete(const char* code, bool first, LintRun& run) {
    const std::vector<const LintSection*> tables = run.Model().OfKind("TABLE");
    for (std::size_t i = 0; i < tables.size(); ++i) {
        const LintItem* const name = tables[i]->Find("NAME");
        if (!name || (i == 0) != first) continue;
        const std::bitset<kRows> set = SetBy(*tables[i]);
        if (set.all()) continue;
        std::size_t row = 0;
        while (set.test(row)) ++row;
        Finding& finding =
            run.Add(code, *tables[i], *name, 0, {name->Part(0), std::to_string(set.count()), std::to_string(row)});
        const LintItem* const before = first ? nullptr : tables[i - 1]->Find("NAME");
        if (before) finding.notes.push_back({Filled(NoteText::kTableBefore), run.KeyPlace(*tables[i - 1], *before)});
    }
}

}  // namespace

void FindIncompleteFirstTable(LintRun& run) { FindIncomplete("L151", true, run); }
void FindIncompleteLaterTables(LintRun& run) { FindIncomplete("L152", false, run); }

}  // namespace zek::tool
