#include "fields.h"
#include "formats.h"
#include "text.h"

namespace zek::bench {
namespace {

/// What a board holds has no character that JSON would want escaped.
class JsonWriter {
public:
    explicit JsonWriter(std::string& out) : out_(out) {}

    void Text(std::string_view field, std::string_view text) {
        Name(field);
        AppendQuoted(out_, text);
    }
    void Word(std::string_view field, std::string_view word) { Text(field, word); }
    void Number(std::string_view field, unsigned number) {
        Name(field);
        AppendNumber(out_, number);
    }
    void Numbers(std::string_view field, const std::vector<unsigned>& numbers) {
        BeginList(field);
        AppendNumbers(out_, numbers, ",");
        EndList();
    }
    void Texts(std::string_view field, std::string_view joined) {
        BeginList(field);
        AppendQuotedTexts(out_, joined);
        EndList();
    }
    void BeginList(std::string_view field) {
        Name(field);
        out_ += '[';
    }
    void EndList() { out_ += ']'; }
    void BeginRecord() {
        Separate();
        out_ += '{';
    }
    void EndRecord() { out_ += '}'; }

private:
    void Name(std::string_view field) {
        Separate();
        Append(out_, '"', field, "\":");
    }
    void Separate() {
        if (!out_.empty() && out_.back() != '{' && out_.back() != '[') out_ += ',';
    }

    std::string& out_;
};

}  // namespace

std::string BoardAsJson(const Board& board) {
    std::string out;
    JsonWriter writer(out);
    Fields fields(writer);
    Section section;
    writer.BeginRecord();
    for (unsigned kind = 0; kind < kKindNames.size(); ++kind) {
        writer.BeginList(kKindNames[kind].field);
        for (unsigned i = 0; i < board.Count(Kind{kind}); ++i) {
            board.Fill(Kind{kind}, i, section);
            fields.Write(section);
        }
        writer.EndList();
    }
    writer.EndRecord();
    out += '\n';
    return out;
}

}  // namespace zek::bench
