/// A source as the rules of lint see it: its sections in the order of the reading, each item cut into its sub-strings
/// and told apart by what the compiler takes it for. Relies on places.h and lint_text.h, and on the
/// tables in debug_layout.h and value_shapes.h.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "lint_text.h"
#include "places.h"
#include "zekcomp/value_shapes.h"

namespace zek::tool {

/// What the compiler takes an item for.
enum class Meaning { kIgnored, kText, kNumber, kSigned, kList, kValue, kRepeater, kRow, kWord };

struct LintItem {
    const SourceItem* source;
    Meaning meaning;
    std::vector<CutText> parts;

    /// A sub-string; empty where there are not so many.
    std::string Part(std::size_t position) const;
};

struct LintSection {
    const std::string* path;
    const SourceSection* source;
    std::vector<LintItem> items;

    const std::string& Kind() const { return source->name; }
    /// The first item of that key, or null.
    const LintItem* Find(std::string_view key) const;
    /// The first sub-string of that item; empty where there is none.
    std::string TextOf(std::string_view key) const;
};

/// A place where a word gets a value.
struct Definition {
    const LintSection* section;
    const LintItem* item;
    std::size_t position;  ///< of the section among all that were read
    unsigned value;
    bool negative;  ///< as it is written, there or where the word stands that it is taken from
};

class LintModel {
public:
    /// The files and the index must outlive this. Empty with a parser library without hook. `given` are the words that
    /// the command line defines.
    LintModel(const std::vector<SourceFile>& files, SourceIndex& index, std::set<std::string> given);

    /// As they were read, those of a file as often as it was.
    const std::vector<const LintSection*>& Sections() const { return sections_; }
    /// Each once, by file in the order of the first reading.
    const std::vector<std::unique_ptr<LintSection>>& Written() const { return written_; }
    std::vector<const LintSection*> OfKind(std::string_view kind) const;

    /// By the words, each in the order of the reading.
    const std::map<std::string, std::vector<Definition>>& Words() const { return words_; }
    /// All words, those of the command line too.
    std::vector<std::string> WordNames() const;
    /// The definition of the word that counts, which is the last; null where the source has none.
    const Definition* Defined(const std::string& word) const;
    /// Whether something stands for the word before a section, by its position among all that were read.
    bool IsDefinedBefore(const std::string& word, std::size_t position) const;
    /// What the word stands for in the end.
    std::optional<unsigned> WordValue(const std::string& word) const;
    /// The number that a text of a numeric key stands for: a word, or else a number.
    std::optional<unsigned> ValueOf(const std::string& text) const;

    /// The type of a value; nothing where it has none.
    std::optional<unsigned> TypeOf(const LintItem& item) const;
    /// Whether the value does something, or may do so; else all that comes of it is what it works out.
    bool Acts(const LintItem& item) const;
    /// The operands of a value or a repeater that reach the image, by their positions among the sub-strings.
    void ForEachOperand(const LintItem& item, const std::function<void(std::size_t, Operand)>& show) const;
    /// The sub-strings that are looked up among the words, by their positions, but for the values of words.
    void ForEachWord(const LintItem& item, const std::function<void(std::size_t)>& show) const;

private:
    void Define(const LintSection& section, std::size_t position);

    std::vector<std::unique_ptr<LintSection>> written_;
    std::vector<const LintSection*> sections_;
    std::map<std::string, std::vector<Definition>> words_;
    std::set<std::string> given_;
};

/// Whether an operand names something by its beginning (VALUE_, ARG or G_, and more behind it).
bool IsStepName(std::string_view operand);
bool IsArgumentName(std::string_view operand);
bool IsGlobalName(std::string_view operand);

/// The number of an argument; nothing where the operand names none.
std::optional<WrittenNumber> ArgumentNumber(const std::string& operand);

}  // namespace zek::tool
