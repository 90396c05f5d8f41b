#include "literals.h"

#include <cctype>
#include <cstddef>

namespace zek::fuzz {

namespace {

/// Goes through C++ code from left to right.
class Code {
public:
    explicit Code(std::string_view text) : text_(text) {}

    std::vector<std::string> Literals() {
        std::vector<std::string> literals;
        bool joined = false;
        while (!text_.empty()) {
            if (std::isspace(static_cast<unsigned char>(text_.front()))) {
                Take(1);
                continue;
            }
            if (!AtLiteral()) {
                joined = false;
                PassOver();
                continue;
            }
            if (!joined) literals.emplace_back();
            literals.back() += text_.starts_with('R') ? Raw() : Plain('"');
            joined = true;
        }
        return literals;
    }

private:
    bool AtLiteral() const { return text_.starts_with('"') || (text_.starts_with("R\"") && !InWord()); }
    bool InWord() const { return std::isalnum(static_cast<unsigned char>(last_)) || last_ == '_'; }

    std::string_view Take(std::size_t count) {
        const std::string_view taken = text_.substr(0, count);
        text_.remove_prefix(taken.size());
        if (!taken.empty()) last_ = taken.back();
        return taken;
    }

    void PassOver() {
        if (text_.starts_with("//")) {
            Take(text_.find('\n'));
        } else if (text_.starts_with('\'') && !InWord()) {
            Plain('\'');
        } else {
            Take(1);
        }
    }

    std::string Raw() {
        Take(2);
        const std::string end = ")" + std::string(Take(text_.find('('))) + "\"";
        Take(1);
        const std::string raw(Take(text_.find(end)));
        Take(end.size());
        return raw;
    }

    std::string Plain(char quote) {
        std::string plain;
        Take(1);
        while (!text_.empty() && text_.front() != quote) {
            const char c = Take(1).front();
            plain += c == '\\' ? Escaped() : c;
        }
        Take(1);
        return plain;
    }

    char Escaped() {
        constexpr std::string_view kLetters = "abfnrtv";
        constexpr std::string_view kMeant = "\a\b\f\n\r\t\v";
        if (text_.starts_with('x')) {
            Take(1);
            return Number(16, 8);
        }
        if (!text_.empty() && text_.front() >= '0' && text_.front() <= '7') return Number(8, 3);
        const std::string_view letter = Take(1);
        if (letter.empty()) return '\\';
        const std::size_t at = kLetters.find(letter.front());
        return at == std::string_view::npos ? letter.front() : kMeant[at];
    }

    char Number(int base, std::size_t most) {
        std::size_t count = 0;
        while (count < most && count < text_.size() && std::isxdigit(static_cast<unsigned char>(text_[count]))) ++count;
        return static_cast<char>(std::stoul(std::string(Take(count)) + " ", nullptr, base));
    }

    std::string_view text_;
    char last_ = ' ';
};

}  // namespace

std::vector<std::string> LiteralsOf(std::string_view code) { return Code(code).Literals(); }

std::vector<std::string> DescriptionsOf(std::string_view page) {
    constexpr std::string_view kFence = "```";
    std::vector<std::string> blocks;
    for (std::size_t at = 0; (at = page.find("```zek", at)) != std::string_view::npos;) {
        const std::size_t begin = page.find('\n', at) + 1;
        at = page.find(kFence, begin);
        blocks.emplace_back(page.substr(begin, at - begin));
        if (at == std::string_view::npos) break;
        at += kFence.size();
    }
    return blocks;
}

}  // namespace zek::fuzz
