/// Debug images and the typed data in them, put together field by field. Relies on process_test.h.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/process_test.h"

namespace zek::test {

using Texts = std::vector<std::string>;

inline std::string Str(std::string_view text) { return Word(static_cast<unsigned>(text.size())) + std::string(text); }

inline std::string List(const Texts& texts) {
    std::string bytes = Word(static_cast<unsigned>(texts.size()));
    for (const std::string& text : texts) bytes += Str(text);
    return bytes;
}

inline std::string Joined(const std::vector<unsigned>& words) {
    std::string bytes;
    for (unsigned word : words) bytes += Word(word);
    return bytes;
}

/// A nested buffer has the form of a text.
inline std::string Block(std::string_view bytes) { return Str(bytes); }

/// Strings one after the other, as a payload without a list has them.
inline std::string Strings(const Texts& texts) {
    std::string bytes;
    for (const std::string& text : texts) bytes += Str(text);
    return bytes;
}

inline std::string Object(unsigned type, unsigned notation, unsigned line, unsigned file, std::string_view name) {
    return Word(type) + Word(notation) + Word(line) + Word(file) + Str(name);
}

inline std::string TextData(unsigned type, std::string_view text) { return Word(type) + Str(text); }

/// A value record in its holder; `payload` is what stands behind the text of the value type.
inline std::string ValueData(unsigned entryType, unsigned valueType, std::string_view typeText,
                             std::string_view payload) {
    return Word(entryType) + Block(Word(valueType) + Str(typeText) + std::string(payload));
}

inline std::string EntryRecord(std::string_view object, std::string_view data) { return Block(object) + Block(data); }

inline std::string SectionRecord(std::string_view object, const Texts& entries) {
    std::string bytes = Block(object) + Word(static_cast<unsigned>(entries.size()));
    for (const std::string& entry : entries) bytes += Block(entry);
    return bytes;
}

inline std::string DebugHead(unsigned version = 0x01000000, unsigned time = 0) {
    std::string head = "QUOR ZEK metaD.";
    head.resize(16, '\0');
    head += Word(version) + Word(time);
    head.resize(0x80, '\0');
    return head;
}

/// A whole file: predefined names, then groups of sections.
inline std::string DebugImage(const std::vector<std::pair<std::string, unsigned>>& names,
                              const std::vector<Texts>& groups) {
    std::string bytes = DebugHead() + Word(static_cast<unsigned>(names.size()));
    for (const auto& [name, value] : names) bytes += Str(name) + Word(value);
    bytes += Word(static_cast<unsigned>(groups.size()));
    for (const Texts& group : groups) bytes += List(group);
    return bytes;
}

inline std::vector<unsigned char> ToVector(std::string_view bytes) { return {bytes.begin(), bytes.end()}; }

inline std::string ToString(const std::vector<unsigned char>& bytes) { return {bytes.begin(), bytes.end()}; }

}  // namespace zek::test
