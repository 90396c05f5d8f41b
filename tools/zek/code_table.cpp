#include "code_table.h"

#include <algorithm>
#include <map>

#include "filled_text.h"

namespace zek::tool {
namespace {

std::vector<CodeGroup> AllGroups() {
    std::vector<CodeGroup> all;
    for (const auto& some : {ReadingCodes(), CheckingCodes(), CommandCodes(), LintCodes()}) {
        all.insert(all.end(), some.begin(), some.end());
    }
    return all;
}

/// The rows by what `key` gives of them, the last of several.
std::map<std::string_view, const CodeRow*> RowsBy(const char* CodeRow::*key) {
    std::map<std::string_view, const CodeRow*> rows;
    for (const CodeGroup& group : CodeGroups()) {
        for (const CodeRow& row : group.rows) rows[row.*key] = &row;
    }
    return rows;
}

const CodeRow* Found(const std::map<std::string_view, const CodeRow*>& rows, std::string_view key) {
    const auto found = rows.find(key);
    return found == rows.end() ? nullptr : found->second;
}

}  // namespace

std::span<const CodeGroup> CodeGroups() {
    static const std::vector<CodeGroup> groups = AllGroups();
    return groups;
}

const CodeRow* RowOfCode(std::string_view code) {
    static const auto rows = RowsBy(&CodeRow::code);
    return Found(rows, code);
}

std::set<std::string> AllCodes() {
    std::set<std::string> codes;
    for (const CodeGroup& group : CodeGroups()) {
        for (const CodeRow& row : group.rows) codes.insert(row.code);
    }
    return codes;
}

const CodeGroup* GroupOfCode(std::string_view code) {
    for (const CodeGroup& group : CodeGroups()) {
        for (const CodeRow& row : group.rows) {
            if (row.code == code) return &group;
        }
    }
    return nullptr;
}

std::string Filled(std::string_view code, const std::vector<std::string>& texts) {
    return FilledFormat(RowOfCode(code)->format, texts);
}

const CodeRow* RowOfFormat(std::string_view format) {
    static const auto rows = RowsBy(&CodeRow::format);
    if (format.ends_with('\n')) format.remove_suffix(1);
    return Found(rows, format);
}

std::string_view WithoutPlace(std::string_view format) {
    for (const std::string_view prefix : {"Error[%s:%u]", "Warning[%s:%u]"}) {
        if (!format.starts_with(prefix)) continue;
        format.remove_prefix(prefix.size());
        return format.substr(std::min(format.find_first_not_of(":, "), format.size()));
    }
    return format;
}

}  // namespace zek::tool
