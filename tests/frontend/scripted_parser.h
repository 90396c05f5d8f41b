/// A section-file parser whose behaviour a test writes down. The texts live in the program; the functions that the
/// compiler looks up live in libraries made of scripted_parser.cpp, each lacking another function. Relies on the
/// standard library.
#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace zek::test {

/// A text and what the parser says its size is.
struct ScriptedText {
    ScriptedText(const char* bytes) : text(bytes) {}
    ScriptedText(std::string bytes) : text(std::move(bytes)) {}

    std::string text;
    int sizeError = 0;    ///< added to the right size
    bool isLeft = false;  ///< the buffer is left as it is
    /// What a look at it gives: a size, else the right one, and whether it is nowhere.
    std::optional<unsigned> peekedSize = {};
    bool isNowhere = false;
};

struct ScriptedItem {
    ScriptedText key;
    ScriptedText value;
    unsigned line = 0;  ///< 0: the variable of the line is left as it is
};

struct ScriptedSection {
    ScriptedText name;
    unsigned line = 0;  ///< 0: the variable of the line is left as it is
    std::vector<ScriptedItem> items = {};
    bool infoFails = false;
};

/// A look at an item gives its line and so much, which tells the two ways of reading an item apart.
inline constexpr unsigned kPeekedLine = 1000;

struct Script {
    std::map<std::string, std::vector<ScriptedSection>> files;
    std::size_t opensLeft = std::numeric_limits<std::size_t>::max();  ///< afterwards no file can be opened
    unsigned parseStatus = 1;
    unsigned sizeStatus = 1;                 ///< what a call with null buffers returns
    std::optional<unsigned> sizeAfterwards;  ///< what a call that fills a buffer stores as its size
    std::size_t sections = 0;                ///< so many are there in each file, the scripted ones in turn; 0 for those
    bool isBlind = false;                    ///< a look at an item finds none
    bool isQuiet = false;                    ///< calls are not noted
    std::string calls;                       ///< one line per call: the function without RS, and its arguments
    std::string awaitedCall;                 ///< the first time that such a line is noted, `meanwhile` runs
    std::function<void()> meanwhile;
};

/// The script of this process; the libraries find it in the program.
__attribute__((visibility("default"))) Script& TheScript();

}  // namespace zek::test
