/// An image told by the names and keys of its source, so that two can be compared. Relies on image.h.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "image.h"

namespace zek::tool {

/// A value; in its text a comma stands between each two of its parts.
struct DescribedValue {
    /// A part that is the NAME of a section.
    struct Reference {
        const char* keyword;  ///< of the section; static
        std::size_t at;       ///< in the text
        std::size_t size;
    };

    std::string key;  ///< as in the source
    std::string text;
    std::vector<Reference> references = {};  ///< in the order of the text
};

/// What a section holds, in the order of the image.
struct DescribedSection {
    std::string keyword;
    std::string name;
    std::vector<DescribedValue> values = {};
    std::string bytes = {};  ///< of a [TABLE] of a compiled image
};

/// The sections of an image, kind by kind. Those without a NAME are told by their keys alone, so that all of a kind are
/// one; where a key stands in several of them, #2 and so on follow it. A word that is defined several times stands
/// there once, with the value that counts. Each item of an [INCLUDE] is a section of its own, named by its file.
struct DescribedImage {
    ImageKind kind = ImageKind::kNone;
    std::vector<DescribedSection> sections;
};

/// Throws Failure as Image does.
DescribedImage Describe(const std::string& file);

}  // namespace zek::tool
