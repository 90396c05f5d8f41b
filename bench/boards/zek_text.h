/// Sections as text of the ZEK language, as people write them: with comments, blank lines and columns here and there.
/// Relies on section.h.
#pragma once

#include <cstdint>
#include <string>

#include "random.h"
#include "section.h"

namespace zek::bench {

class ZekText {
public:
    /// Writes to the end of `out`, which must outlive this. The seed decides on comments and columns.
    ZekText(std::string& out, std::uint64_t seed);

    void Write(const Section& section);
    /// An item, in the columns of the section that is being written.
    void Item(std::string_view key, std::string_view value);
    void Header(std::string_view keyword);

private:
    void Key(std::string_view key);
    void EndItem();
    void WriteField(const Field& field);
    void WriteSensors(const std::vector<unsigned>& sensors);
    void WriteRow(const Row& row);

    std::string& out_;
    Random random_;
    std::string_view equals_ = " = ";
    std::size_t column_ = 0;  ///< where the equals signs of the section stand; 0 for right behind the keys
};

}  // namespace zek::bench
