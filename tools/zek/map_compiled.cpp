#include <algorithm>
#include <map>
#include <optional>

#include "compiled_view.h"
#include "image_bytes.h"
#include "map.h"
#include "printable.h"
#include "source_pairing.h"
#include "word_text.h"

namespace zek::tool {
namespace {

constexpr std::size_t kWord = 4;

/// Shows one range behind the other; each begins where the one before it ends.
class CompiledMap {
public:
    CompiledMap(const ImageView& view, const DebugSource* source, const ShowRange& show)
        : view_(view), bytes_(reinterpret_cast<const char*>(view.Bytes().data()), view.Bytes().size()), show_(show) {
        if (source) pairing_.emplace(*source);
        ForEachCompiledTable(view, [&](const ShownTable& table) { tables_.push_back(table); });
        tables_.push_back({"table data", {}});
    }

    void Image() {
        Header();
        Sections();
        for (std::size_t slot = 0; slot < tables_.size(); ++slot) Table(slot);
    }

private:
    void Range(std::size_t size, unsigned depth, const std::string& what, const SourceSpot& spot = {}) {
        if (size == 0) return;
        show_({at_, size, depth, what, spot});
        at_ += size;
    }
    std::uint32_t Word() const { return WordAt(bytes_, at_); }
    /// Where the zeros begin that fill the bytes from here to there.
    std::size_t ZerosUpTo(std::size_t end) const {
        const std::size_t last = bytes_.substr(at_, end - at_).find_last_not_of('\0');
        return last == bytes_.npos ? at_ : at_ + last + 1;
    }
    /// What lies between here and there and belongs to nothing.
    void Fill(std::size_t end) {
        Range(end - at_, 0, ZerosUpTo(end) == at_ ? "zeros" : "bytes that nothing refers to");
    }

    void Header() {
        Range(kMagicSize, 0, "magic");
        Range(kWord, 0, "format version " + Hexadecimal(view_.Version()));
        Range(kWord, 0, "time stamp " + std::to_string(view_.Time()));
        Fill(kDirectoryOffset);
        for (const ShownTable& table : tables_) {
            Range(kWord, 0, "directory: " + std::string(table.name) + " at " + Hexadecimal(Word()));
        }
        Range(kWord, 0, "end of the directory");
        Fill(kSectionsOffset);
    }

    void Sections() {
        Range(kWord, 0, "number of sections: " + std::to_string(Word()));
        ForEachSection([&](const ShownSection& section) { Section(section, SourceOf(section)); });
    }

    void ForEachSection(const std::function<void(const ShownSection&)>& show) const {
        std::map<unsigned, unsigned> counts;
        for (const ImageView::Section section : view_.AllSections()) {
            show(ShowCompiledSection(view_, section, counts[section.Kind()]++));
        }
    }

    const DebugSection* SourceOf(const ShownSection& section) const {
        return pairing_ ? pairing_->SectionOf(section) : nullptr;
    }

    void Section(const ShownSection& section, const DebugSection* source) {
        const std::string name = section.name ? ' ' + Quoted(*section.name) : "";
        Range(kWord, 0, std::string("[") + section.keyword + "] #" + std::to_string(section.index) + name,
              source ? source->spot : SourceSpot());
        Range(kWord, 1, "number of entries: " + std::to_string(Word()));
        std::vector<const DebugEntry*> entries(section.entries.size());
        if (source) entries = SourcePairing::EntriesOf(section, *source);
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const ShownEntry& entry = section.entries[i];
            Range(kWord, 1, Printable(entry.key) + " (" + Hexadecimal(entry.id) + ')',
                  entries[i] ? entries[i]->spot : SourceSpot());
            Range(kWord, 2, "number of words: " + std::to_string(Word()));
            for (const ShownWord& word : entry.words) Range(kWord, 2, ToldWord(word));
        }
    }

    void Table(std::size_t slot) {
        Fill(WordAt(bytes_, kDirectoryOffset + kWord * slot));
        const bool last = slot + 1 == tables_.size();
        const std::size_t end = last ? bytes_.size() : WordAt(bytes_, kDirectoryOffset + kWord * (slot + 1));
        const ShownTable& table = tables_[slot];
        const unsigned tableClass = Word();
        Range(kWord, 0, "table: " + std::string(table.name));
        Range(kWord, 1, "length: " + Counted(Word(), "byte", "bytes"));
        if (last) {
            Blocks();
            Range(end - at_, 0, "bytes behind the image");
        } else if (tableClass == kIdNumber) {
            Numbers(table.words.size(), end);
        } else {
            Names(table.words.size(), end, tableClass);
        }
    }

    // The length of a table may end before what was written; there are keys until only zeros are left.

    void Numbers(std::size_t count, std::size_t end) {
        const std::size_t zeros = ZerosUpTo(end);
        for (unsigned id = kIdNumber; end - at_ >= kWord; ++id) {
            if (id - kIdNumber >= count && at_ >= zeros) return;
            Range(kWord, 1, Hexadecimal(id) + " = " + std::to_string(Word()));
        }
    }

    void Names(std::size_t count, std::size_t end, unsigned tableClass) {
        const std::size_t zeros = ZerosUpTo(end);
        for (unsigned id = tableClass; at_ < end; ++id) {
            if (id - tableClass >= count && at_ >= zeros) return;
            const std::string_view name = bytes_.substr(at_, std::min(bytes_.find('\0', at_), end) - at_);
            Range(std::min(name.size() + 1, end - at_), 1, Hexadecimal(id) + " = " + Quoted(name));
        }
    }

    void Blocks() {
        ForEachCompiledBlock(view_, [&](const ShownBlock& block) {
            const std::string name = block.name ? ' ' + Quoted(*block.name) : "";
            Range(block.bytes.size(), 1, "table data #" + std::to_string(block.index) + name);
        });
    }

    const ImageView& view_;
    std::string_view bytes_;
    const ShowRange& show_;
    std::optional<SourcePairing> pairing_;
    std::vector<ShownTable> tables_;  // in the order of the directory
    std::size_t at_ = 0;
};

}  // namespace

void MapCompiledImage(const ImageView& view, const DebugSource* source, const ShowRange& show) {
    CompiledMap(view, source, show).Image();
}

}  // namespace zek::tool
