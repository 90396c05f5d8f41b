/// Images for views, and what the verification says of them as text. Relies on small_image.h and image_view.h.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "compile/small_image.h"
#include "support/process_test.h"
#include "zekcomp/image_view.h"

namespace zek::test {

inline std::span<const unsigned char> BytesOf(const std::string& text) {
    return {reinterpret_cast<const unsigned char*>(text.data()), text.size()};
}

/// "code at offset, place: sentence".
inline std::string TextOf(const ImageFinding& finding) {
    return std::string(NameOf(finding.code)) + " at " + std::to_string(finding.offset) + ", " + finding.Place() + ": " +
           finding.Sentence();
}

/// Why an image is refused; empty when it opens.
inline std::string Refusal(const std::string& image) {
    ImageFinding failure;
    if (ImageView::Open(BytesOf(image), &failure)) return "";
    EXPECT_FALSE(IsNote(failure.code));
    return TextOf(failure);
}

/// The notes on an image, one line each; the failure when it is refused.
inline std::string Notes(const std::string& image) {
    ImageFinding failure;
    const std::optional<ImageView> view = ImageView::Open(BytesOf(image), &failure);
    if (!view) return "refused: " + TextOf(failure);
    std::string lines;
    std::size_t count = 0;
    view->ForEachNote([&](const ImageFinding& note) {
        EXPECT_TRUE(IsNote(note.code));
        lines += TextOf(note) + "\n";
        ++count;
    });
    EXPECT_EQ(view->NoteCount(), count);
    return lines;
}

/// A string as it is, nothing as "-".
inline std::string TextOf(const ImageValue& value) {
    if (value.kind == ImageValue::Kind::kNumber) return std::to_string(value.number);
    return value ? '"' + std::string(value.text) + '"' : "-";
}

/// The bodies of the tables of names that an image needs besides its numbers.
struct ViewedTables {
    std::vector<std::string> properties = {};
    std::vector<std::string> globals = {};
    std::vector<std::string> values = {"IPMI", ""};
    std::vector<std::string> repeaters = {};
    WordList numbers = {};
    std::vector<std::string> texts = {};
    std::vector<std::string> groups = {"0"};
    std::vector<std::string> actions = {};
    std::vector<std::string> tables = {};
    std::string blocks = {};
};

/// A whole image, all ten tables in their order.
inline std::string ViewedImage(const std::vector<SectionWords>& sections, const ViewedTables& tables) {
    return Image(sections, {Record(kIdProperty, Names(tables.properties)), Record(kIdGlobal, Names(tables.globals)),
                            Record(kIdValue, Names(tables.values)), Record(kIdRepeater, Names(tables.repeaters)),
                            Record(kIdNumber, Joined(tables.numbers)), Record(kIdString, Names(tables.texts)),
                            Record(kIdGroup, Names(tables.groups)), Record(kIdAction, Names(tables.actions)),
                            Record(kIdTableName, Names(tables.tables)), Record(kIdTableData, tables.blocks)});
}

}  // namespace zek::test
