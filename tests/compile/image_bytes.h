/// Compiled images put together word by word, and what the tables hold. Relies on debug_bytes.h and the tables.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "compile/compile.h"
#include "compile/tables.h"
#include "debugimage/debug_bytes.h"

namespace zek::test {

using WordList = std::vector<unsigned>;

struct EntryWords {
    unsigned name;
    WordList values;
};

struct SectionWords {
    unsigned identifier;
    std::vector<EntryWords> entries;
};

inline std::string SectionBytes(const SectionWords& section) {
    std::string bytes = Joined({section.identifier, static_cast<unsigned>(section.entries.size())});
    for (const EntryWords& entry : section.entries) {
        bytes += Joined({entry.name, static_cast<unsigned>(entry.values.size())}) + Joined(entry.values);
    }
    return bytes;
}

/// A table record: tag, length of the body, body.
inline std::string Record(unsigned tag, const std::string& body) {
    return Joined({tag, static_cast<unsigned>(body.size())}) + body;
}

/// The body of a name table: every name with its NUL.
inline std::string Names(const std::vector<std::string>& names) {
    std::string body;
    for (const std::string& name : names) body += name + '\0';
    return body;
}

inline std::string ImageHead(unsigned version = 0x01000000, unsigned time = 0x5f5e1234) {
    std::string head = "QUOR ZEK meta.";
    head.resize(16, '\0');
    head += Word(version) + Word(time);
    head.resize(128, '\0');
    return head;
}

/// An image of these sections, with these directory words, ended by a 0, and behind the sections `rest`.
inline std::string ImageWithDirectory(const WordList& directory, const std::vector<SectionWords>& sections,
                                      const std::string& rest = "") {
    std::string image = ImageHead() + Joined(directory);
    image.resize(256, '\0');
    image += Word(static_cast<unsigned>(sections.size()));
    for (const SectionWords& section : sections) image += SectionBytes(section);
    return image + rest;
}

/// An image whose records follow the sections, each at the next 16-byte boundary, and stand in the directory.
inline std::string Image(const std::vector<SectionWords>& sections, const std::vector<std::string>& records) {
    WordList directory;
    std::string rest;
    const std::size_t start = ImageWithDirectory({}, sections).size();
    for (const std::string& record : records) {
        rest.append(16 - (start + rest.size()) % 16, '\0');
        directory.push_back(static_cast<unsigned>(start + rest.size()));
        rest += record;
    }
    return ImageWithDirectory(directory, sections, rest);
}

/// The sections that are loaded or compiled, one line each: identifier, then every entry with its words.
inline std::string LoadedSections() {
    std::string text;
    char part[16];
    const auto put = [&](const char* format, unsigned word) {
        std::snprintf(part, sizeof part, format, word);
        text += part;
    };
    for (const tagGCSECT* section : g_GCHead) {
        put("%08x:", section->dwSect);
        for (const tagGCENTRY& entry : section->vEntries) {
            put(" %08x(", entry.dwName);
            for (std::size_t i = 0; i < entry.vdwValues.size(); ++i) put(i ? " %08x" : "%08x", entry.vdwValues[i]);
            text += ')';
        }
        text += '\n';
    }
    return text;
}

/// The numbered keys of a table in the order of their identifiers.
template <class Key>
std::vector<Key> KeysInOrder(const std::map<Key, unsigned>& table) {
    std::map<unsigned, Key> byIdentifier;
    for (const auto& [key, id] : table) {
        if (id != 0) byIdentifier.emplace(id, key);
    }
    std::vector<Key> keys;
    for (const auto& [id, key] : byIdentifier) keys.push_back(key);
    return keys;
}

/// Empties every table and g_GCHead, as if the library had just been loaded.
inline void ForgetEverything() {
    CompDestory();
    for (auto* table : {&g_tblProperty, &g_tblGlobal, &g_tblValue, &g_tblRepeater, &g_tblString, &g_tblGroup,
                        &g_tblAction, &g_tblTableName}) {
        table->clear();
    }
    g_tblDword.clear();
    g_tblTableData.clear();
    g_idxProperty = kIdProperty;
    g_idxGlobal = kIdGlobal;
    g_idxValue = kIdValue;
    g_idxRepeater = kIdRepeater;
    g_idxDword = kIdNumber;
    g_idxString = kIdString;
    g_idxGroup = kIdGroup;
    g_idxAction = kIdAction;
    g_idxTableName = kIdTableName;
}

}  // namespace zek::test
