#include "fields.h"
#include "formats.h"
#include "text.h"

namespace zek::bench {
namespace {

/// What a board holds has no character that the text format would want escaped.
class ProtoWriter {
public:
    explicit ProtoWriter(std::string& out) : out_(out) {}

    void Text(std::string_view field, std::string_view text) { Append(out_, field, ":\"", text, "\" "); }
    void Word(std::string_view field, std::string_view word) { Append(out_, field, ':', word, ' '); }
    void Number(std::string_view field, unsigned number) {
        Append(out_, field, ':');
        AppendNumber(out_, number);
        out_ += ' ';
    }
    void Numbers(std::string_view field, const std::vector<unsigned>& numbers) {
        Append(out_, field, ":[");
        AppendNumbers(out_, numbers, ",");
        out_ += "] ";
    }
    void Texts(std::string_view field, std::string_view joined) {
        Append(out_, field, ":[");
        AppendQuotedTexts(out_, joined);
        out_ += "] ";
    }
    /// A list is its records one after the other, each with the name of the list.
    void BeginList(std::string_view field) { list_ = field; }
    void EndList() {}
    void BeginRecord() { Append(out_, list_, "{"); }
    void EndRecord() { out_ += "} "; }

private:
    std::string& out_;
    std::string_view list_;
};

}  // namespace

std::string BoardAsProtoText(const Board& board) {
    std::string out;
    ProtoWriter writer(out);
    Fields fields(writer);
    Section section;
    for (unsigned kind = 0; kind < kKindNames.size(); ++kind) {
        for (unsigned i = 0; i < board.Count(Kind{kind}); ++i) {
            board.Fill(Kind{kind}, i, section);
            writer.BeginList(kKindNames[kind].field);
            fields.Write(section);
            out += '\n';
        }
    }
    return out;
}

}  // namespace zek::bench
