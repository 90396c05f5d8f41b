/// Which item of the source gives a word its value. Relies on debug_lines.h.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "debug_lines.h"

namespace zek::tool {

/// An item of a [DEFINE] or [IFDEF].
struct WordItem {
    const DebugSection* section = nullptr;
    const DebugEntry* item = nullptr;
};

class WordItems {
public:
    /// `names` are the predefined names of the image. Both must outlive this.
    WordItems(const DebugSource& source, const std::map<std::string, unsigned>& names);

    /// Of several items that define a word, the one that counts: the last one that is read. Without item where the
    /// source has none.
    WordItem Behind(std::string_view word) const;

private:
    /// The same where the image does not tell the order of the reading: the last one with the value in the end.
    WordItem ByValue(std::string_view word, const std::vector<WordItem>& items) const;

    const std::map<std::string, unsigned>& names_;
    std::map<std::string_view, std::vector<WordItem>> items_;
    std::map<std::string_view, SourceSpot> last_;  // where each word is defined last
};

}  // namespace zek::tool
