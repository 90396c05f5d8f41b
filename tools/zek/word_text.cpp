#include "word_text.h"

#include "printable.h"

namespace zek::tool {

std::string ToldNumber(unsigned number) { return std::to_string(number) + " (" + Hexadecimal(number, 1) + ')'; }

std::string ToldWord(const ShownWord& word) {
    std::string text = Hexadecimal(word.word) + ' ' + word.wordClass;
    if (word.number) return text + ' ' + ToldNumber(*word.number);
    if (word.text) return text + ' ' + Quoted(*word.text);
    return text;
}

}  // namespace zek::tool
