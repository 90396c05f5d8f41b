/// An image that has been verified, one section at a time, for the commands that print it. Relies on the library's view
/// of compiled images, and on its queries of debug images, which know one image per process.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "debug_source.h"
#include "image_bytes.h"
#include "zekcomp/image_view.h"
#include "zekcomp/records.h"

namespace zek::tool {

/// A word of a compiled image and what it stands for.
struct ShownWord {
    unsigned word = 0;
    const char* wordClass = "";       ///< such as "number", "string" or "operator"
    std::optional<unsigned> number;   ///< where it stands for a number
    std::optional<std::string> text;  ///< where it stands for a name
};

struct ShownEntry {
    std::string key;               ///< as in the source
    unsigned id = 0;               ///< compiled image: the name identifier
    std::vector<ShownWord> words;  ///< compiled image
    std::string value;             ///< debug image: as hosts see it
    /// Debug image: the texts of the source and where they stood; lives as long as the Image.
    const DebugEntry* source = nullptr;
};

struct ShownSection {
    const char* keyword = "";  ///< as in the source, without brackets
    unsigned index = 0;        ///< among the sections of its kind
    std::optional<std::string> name;
    std::optional<unsigned> id;
    std::optional<std::string> parent;  ///< debug image
    std::vector<ShownEntry> entries;
    const DebugSection* source = nullptr;  ///< debug image; lives as long as the Image

    /// The first entry of that key, or null. Among values VALUE and VALUE_ are one, as for the compiler.
    const ShownEntry* Entry(const std::string& key) const;
};

/// One table of names or numbers of a compiled image.
struct ShownTable {
    const char* name = "";
    std::vector<ShownWord> words;
};

/// 256 bytes of table data.
struct ShownBlock {
    unsigned index = 0;
    std::optional<std::string> name;
    std::string bytes;
};

/// Verifies an image, and loads a debug image into the library for as long as it lives; at most one at a time.
class Image {
public:
    /// Throws Failure: kUsageOrFiles for a file that cannot be read, kNoImage for what is not a valid image.
    explicit Image(const std::string& file);
    ~Image();
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    ImageKind Kind() const { return kind_; }
    const tagMETAFILEINFO& Info() const { return info_; }
    /// Those of the file.
    std::string_view Bytes() const { return bytes_; }

    /// Every section, kind by kind; of a debug image also those of INCLUDE, which the library does not restore.
    void ForEachSection(const std::function<void(const ShownSection&)>& show) const;
    /// The sections of one kind; the others are not read.
    void ForEachSectionOf(std::string_view keyword, const std::function<void(const ShownSection&)>& show) const;
    /// Compiled image: every table of names and numbers in the order of the file.
    void ForEachTable(const std::function<void(const ShownTable&)>& show) const;
    /// Compiled image: the table data.
    void ForEachBlock(const std::function<void(const ShownBlock&)>& show) const;
    /// Debug image: the predefined names.
    const std::map<std::string, unsigned>& Names() const { return names_; }
    /// Debug image: the same sections with their texts, and those that the library does not restore.
    const DebugSource& Source() const { return source_; }

private:
    std::string bytes_;
    ImageKind kind_;
    tagMETAFILEINFO info_ = {};
    std::optional<ImageView> view_;          // of a compiled image
    std::map<std::string, unsigned> names_;  // of a debug image, as is what follows
    DebugSource source_;
};

}  // namespace zek::tool
