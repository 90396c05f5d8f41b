#include "yardstick/plain_model.h"

#include "check/vocabulary.h"

namespace zek::test::plain {

namespace {

/// Takes the fields of a serialised object one after the other.
struct Fields {
    std::vector<unsigned char> bytes;
    std::size_t at = 0;

    unsigned Word() {
        unsigned word = 0;
        for (unsigned i = 0; i < 4; ++i) word |= unsigned{bytes.at(at++)} << (8 * i);
        return word;
    }
    std::string Str() {
        std::string text;
        for (unsigned length = Word(); length > 0; --length) text += static_cast<char>(bytes.at(at++));
        return text;
    }
    std::vector<std::string> Strs(unsigned count) {
        std::vector<std::string> texts;
        while (count-- > 0) texts.push_back(Str());
        return texts;
    }
};

/// How many strings the payload of a value type has, and whether a list follows.
std::pair<unsigned, bool> ShapeOf(unsigned type) {
    switch (type) {
        case 1:
        case 101:
        case 103:
        case 104: return {1, false};
        case 2: return {5, false};
        case 3: return {1, true};
        case 4:
        case 8:
        case 12: return {4, false};
        case 5:
        case 9:
        case 11: return {4, true};
        case 6:
        case 102: return {2, true};
        case 7: return {0, true};
        case 10: return {2, false};
        default: return {0, false};
    }
}

}  // namespace

std::vector<CZEKSection*> Sections(unsigned type) {
    for (const auto* list : CZEKSection::m_svpHSection) {
        if (!list->empty() && list->front()->m_dwType == type) return *list;
    }
    return {};
}

std::vector<CZEKSection*> SectionsBefore(const CZEKSection& section) {
    std::vector<CZEKSection*> before;
    for (CZEKSection* other : Sections(section.m_dwType)) {
        if (other == &section) break;
        before.push_back(other);
    }
    return before;
}

CZEKEntry* Entry(const CZEKSection& section, unsigned type) {
    for (CZEKEntry* entry : section.m_vpEntry) {
        if (entry->m_dwType == type) return entry;
    }
    return nullptr;
}

bool HoldsData(const CZEKEntry* entry) { return entry && entry->m_ZekEntryData.GetData(); }

const std::string* Text(const CZEKEntry* entry) {
    return entry ? static_cast<const std::string*>(entry->m_ZekEntryData.GetData()) : nullptr;
}

const std::vector<std::string>& List(const CZEKEntry& entry) {
    return *static_cast<const std::vector<std::string>*>(entry.m_ZekEntryData.GetData());
}

Pieces PiecesOf(CZEKEntry& entry) {
    Fields fields;
    Pieces pieces;
    if ((entry.m_dwType & 0xFFFF0000) == 0x10100000) {
        entry.m_ZekEntryData.GetBuffer(fields.bytes);
        fields.Word();
        pieces.strings = fields.Strs(2);
        pieces.list = fields.Strs(fields.Word());
        return pieces;
    }
    static_cast<CGeValue*>(entry.m_ZekEntryData.GetData())->GetBuffer(fields.bytes);
    pieces.type = fields.Word();
    fields.Str();
    const auto [strings, list] = ShapeOf(pieces.type);
    pieces.strings = fields.Strs(strings);
    if (list) pieces.list = fields.Strs(fields.Word());
    return pieces;
}

std::string File(const CZEKObj& object) {
    const std::string file = CZEKObj::m_svstrIncFiles.at(object.m_dwFile);
    return file.substr(file.rfind('\\') + 1);
}

bool IsNumber(const std::string& text, unsigned& number) {
    number = 0;
    return StringToLong(text, &number) == 1;
}

bool IsPredefined(const std::string& text, unsigned& number) {
    for (const auto& [name, value] : g_tblPreDefine) {
        if (name != text) continue;
        number = value;
        return true;
    }
    return false;
}

bool HasPrefix(const std::string& text, const std::string& prefix) {
    return text.size() > prefix.size() && text.compare(0, prefix.size(), prefix) == 0;
}

}  // namespace zek::test::plain
