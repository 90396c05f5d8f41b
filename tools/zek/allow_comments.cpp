#include "allow_comments.h"

#include <algorithm>

namespace zek::tool {
namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kMark = "zek:";
constexpr std::string_view kAllow = "allow";

void SkipBlanks(std::string_view text, std::size_t& at) {
    at = std::min(text.find_first_not_of(kBlanks, at), text.size());
}

/// Goes past a word, which blanks may precede.
bool Skip(std::string_view text, std::size_t& at, std::string_view word) {
    SkipBlanks(text, at);
    if (!text.substr(at).starts_with(word)) return false;
    at += word.size();
    return true;
}

bool IsLetter(char byte) { return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z'); }

/// The first line from `line` on that is neither empty nor a comment alone; the one behind the last where none is.
unsigned NextWritten(const std::string& path, unsigned line, SourceText& text) {
    for (; line <= text.CountLines(path); ++line) {
        const std::string_view written = text.Line(path, line);
        const std::size_t first = written.find_first_not_of(kBlanks);
        if (first != written.npos && written[first] != ';' && written[first] != '#') break;
    }
    return line;
}

}  // namespace

AllowComments::AllowComments(const std::vector<std::string>& paths, SourceText& text) : text_(text) {
    std::set<std::string> read;
    for (const std::string& path : paths) {
        if (read.insert(path).second) Read(path);
    }
}

void AllowComments::Read(const std::string& path) {
    text_.ForEachComment(path, [&](const Comment& comment) { Add(path, comment); });
}

void AllowComments::Add(const std::string& path, const Comment& comment) {
    std::size_t at = 1;
    SkipBlanks(comment.text, at);
    const std::size_t words = at;
    if (!Skip(comment.text, at, kMark) || !Skip(comment.text, at, kAllow)) return;
    const auto place = [&](std::size_t begin, std::size_t end) {
        return Place{path, comment.line, comment.column + static_cast<unsigned>(begin),
                     static_cast<unsigned>(end - begin)};
    };
    const std::size_t codes = at;
    const bool isWord = at < comment.text.size() && kBlanks.find(comment.text[at]) == kBlanks.npos;
    SkipBlanks(comment.text, at);
    if (isWord || at == comment.text.size()) {
        // One that says something else, such as "allowed", is none of ours.
        if (!isWord || !IsLetter(comment.text[at])) all_.push_back({{}, place(words, codes)});
        return;
    }
    // Comments come by rising lines: several above one line need not look for it again.
    if (comment.line >= aboveLine_ || path != abovePath_) aboveLine_ = 0;
    if (comment.alone && aboveLine_ == 0) aboveLine_ = NextWritten(path, comment.line + 1, text_);
    abovePath_ = path;
    const unsigned about = comment.alone ? aboveLine_ : text_.FirstOfJoined(path, comment.line);
    do {
        SkipBlanks(comment.text, at);
        const std::size_t end = std::min(comment.text.find_first_of(" \t,", at), comment.text.size());
        if (end > at) {
            const std::string code(comment.text.substr(at, end - at));
            codes_.insert(code);
            byLine_[{path, about, code}].push_back(all_.size());
            all_.push_back({code, place(at, end)});
        }
        at = end;
        // What follows the last code is the reason.
    } while (Skip(comment.text, at, ","));
}

bool AllowComments::AllowOn(const std::string& path, unsigned line, const std::string& code) {
    const auto found = byLine_.find({path, line, code});
    if (found == byLine_.end()) return false;
    // All of them are used, or none yet.
    if (all_[found->second.front()].used) return true;
    for (const std::size_t position : found->second) all_[position].used = true;
    return true;
}

bool AllowComments::AllowAt(const Place& place, const std::string& code) {
    const unsigned first = text_.FirstOfJoined(place.path, place.line);
    const bool onFirst = AllowOn(place.path, first, code);
    return (first != place.line && AllowOn(place.path, place.line, code)) || onFirst;
}

bool AllowComments::Allow(const Finding& finding) {
    if (byLine_.empty() || finding.place.line == 0) return false;
    // All comments that allow it are used.
    bool allowed = AllowAt(finding.place, finding.code) | AllowOn(finding.place.path, finding.header, finding.code);
    for (const Place& other : finding.others) allowed |= AllowAt(other, finding.code);
    return allowed;
}

}  // namespace zek::tool
