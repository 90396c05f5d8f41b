#include <map>

#include "compiled_source.h"
#include "decompile.h"
#include "group_order.h"
#include "printable.h"
#include "surplus_names.h"

namespace zek::tool {
namespace {

constexpr char kHeadComment[] =
    "; Made of a compiled image, and compiles to the same bytes, time stamp aside. Lost are, since the image has none "
    "of\n"
    "; them: comments and lay-out, files, defined words and how numbers were written, sub-strings that were cut away, "
    "and\n"
    "; which of the rows of a table were written. The words in [DEFINE] are made up.";
constexpr char kUnnumberedComment[] =
    "; The image counts names that it does not have: properties of a [TAVRGROUP] that nothing else has. Such an item "
    "ends\n"
    "; its section in the image. This one stands for all of them.";
constexpr char kGroupFileComment[] = "; Groups that stand behind their children, and those above them.";

/// Files of groups: a compilation reads so many, and some more.
constexpr std::size_t kMostFiles = 9000;

/// One section as lines of a source.
struct Piece {
    std::uint32_t kind = 0;
    std::vector<std::string> lines;
};

class Assembly {
public:
    Assembly(const ImageView& view, const std::string& main) : view_(view), main_(main) {
        CompiledSource source(view);
        for (const ImageView::Section section : view.AllSections()) {
            if (section.Kind() == kImageGroup) groups_.push_back(pieces_.size());
            pieces_.push_back({section.Kind(), source.Lines(section)});
        }
        words_ = source.Words().All();
    }

    Decompiled Run() {
        AddUnnumbered();
        order_ = OrderGroups(Groups());
        RequireSize();
        WrittenText text;
        WriteHead(text);
        WriteSections(text);
        Decompiled made = {main_, {{main_, text.Text()}}};
        for (std::size_t i = 0; i < order_.files.size(); ++i) made.files.push_back({FileName(i), GroupText(i)});
        return made;
    }

private:
    void AddUnnumbered() {
        const std::optional<std::string> name = UnnumberedProperty(view_);
        if (!name) return;
        for (Piece& piece : pieces_) {
            if (piece.kind != kImageTavrGroup) continue;
            const auto line = ItemLine("P_" + *name, {"0"});
            if (!line) throw CannotExpress("no item has the key " + Quoted("P_" + *name));
            piece.lines.push_back(kUnnumberedComment);
            piece.lines.push_back(*line);
            return;
        }
        throw CannotExpress("the table of properties counts more names than it has, and there is no [TAVRGROUP]");
    }

    std::vector<GroupLines> Groups() const {
        const std::uint32_t root = view_.IdentifierOf(kIdGroup, "0").value_or(kIdUnresolved);
        std::map<std::uint32_t, std::size_t> positions;
        std::vector<std::uint32_t> parents;
        std::vector<GroupLines> groups;
        for (const ImageView::Section section : view_.SectionsOf(kImageGroup)) {
            const auto name = section.EntryWithId(kIdName);
            const auto parent = section.EntryWithId(kIdParent);
            if (name && name->WordCount() > 0) positions.emplace(name->Word(0), groups.size());
            parents.push_back(parent && parent->WordCount() > 0 ? parent->Word(0) : root);
            groups.push_back({{}, static_cast<std::uint32_t>(pieces_[section.Index()].lines.size())});
        }
        for (std::size_t i = 0; i < groups.size(); ++i) {
            const auto found = positions.find(parents[i]);
            // Who has the parent "0" is at the top, also when a group has that name.
            if (parents[i] != root && found != positions.end()) groups[i].parent = found->second;
        }
        return groups;
    }

    void RequireSize() const {
        std::uint64_t lines = order_.mainStart;
        for (const GroupFile& file : order_.files) lines += file.starts.back();
        if (lines > kMostLines || order_.files.size() > kMostFiles) {
            throw CannotExpress("too many groups stand behind their children");
        }
    }

    void WriteHead(WrittenText& text) const {
        text.AddLines(kHeadComment);
        if (words_.empty()) return;
        text.Add("");
        text.Add("[DEFINE]");
        for (const auto& [word, number] : words_) text.Add(word + " = \"" + std::to_string(number) + '"');
    }

    void WriteSections(WrittenText& text) const {
        std::size_t group = 0;
        std::size_t file = 0;
        for (const Piece& piece : pieces_) {
            if (piece.kind == kImageGroup) {
                const std::size_t position = group++;
                if (IsInFile(position, file)) {
                    if (position == order_.files[file].first) WriteInclude(text, file);
                    if (position + 1 == End(file)) ++file;
                    continue;
                }
                if (text.NextLine() + 1 < order_.mainStart) text.SkipTo(order_.mainStart - 1);
            }
            text.Add("");
            for (const std::string& line : piece.lines) text.AddLines(line);
        }
    }

    std::size_t End(std::size_t file) const { return order_.files[file].first + order_.files[file].starts.size(); }
    bool IsInFile(std::size_t group, std::size_t file) const {
        return file < order_.files.size() && group >= order_.files[file].first && group < End(file);
    }

    void WriteInclude(WrittenText& text, std::size_t file) const {
        text.Add("");
        text.Add("[INCLUDE]");
        text.Add("FILE = \"" + FileName(file) + '"');
    }

    std::string FileName(std::size_t file) const { return main_ + ".groups-" + std::to_string(file + 1); }

    std::string GroupText(std::size_t file) const {
        WrittenText text;
        for (std::size_t i = 0; i < order_.files[file].starts.size(); ++i) {
            text.SkipTo(order_.files[file].starts[i]);
            for (const std::string& line : pieces_[groups_[order_.files[file].first + i]].lines) text.Add(line);
        }
        text.Add(kGroupFileComment);
        return text.Text();
    }

    const ImageView& view_;
    std::string main_;
    std::vector<Piece> pieces_;
    std::vector<std::size_t> groups_;  // of the pieces
    std::map<std::string, std::uint32_t> words_;
    GroupOrder order_;
};

}  // namespace

Decompiled DecompileCompiled(const ImageView& view, const std::string& main) { return Assembly(view, main).Run(); }

}  // namespace zek::tool
