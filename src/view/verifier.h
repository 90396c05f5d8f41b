/// The verification of a compiled image, which also builds what a view keeps. Relies on view_data.h and entry_shape.h.
#pragma once

#include <functional>
#include <vector>

#include "view/entry_shape.h"
#include "view/view_data.h"

namespace zek {

/// The class of each table in the order of the directory.
inline constexpr std::array<unsigned, 10> kTables = {kIdProperty, kIdGlobal, kIdValue,  kIdRepeater,  kIdNumber,
                                                     kIdString,   kIdGroup,  kIdAction, kIdTableName, kIdTableData};

using ShowNote = std::function<void(const ImageFinding&)>;

/// Goes through an image once, front to back but for the tables, which it needs before the sections; these stand in
/// table_verification.cpp. Stops at the first failure; every member that verifies gives false for one.
class ImageVerifier {
public:
    /// `show` may be empty.
    ImageVerifier(ImageView::Data& data, ShowNote show) : data_(data), show_(std::move(show)), image_(data.image) {}

    bool Verify();
    const ImageFinding& Failure() const { return failure_; }

private:
    /// Where in the image the verification is; the rest of a finding is the same for all that it makes there.
    struct Place {
        std::uint32_t section = ImageFinding::kNowhere;
        std::uint32_t kind = ImageFinding::kNowhere;
        std::uint32_t entry = ImageFinding::kNowhere;
        std::uint32_t table = ImageFinding::kNowhere;
    };
    /// A group's or sensor's PARENT, the first where it has several.
    struct ParentOf {
        std::uint32_t section;
        std::uint32_t word;
        std::uint32_t offset;
    };
    struct TableFrame;

    bool Header();
    bool Zeros(std::size_t begin, std::size_t end);
    bool Tables();
    bool Directory();
    bool Table(std::size_t slot);
    std::size_t WrittenInGap(const TableFrame& frame, std::size_t length) const;
    std::size_t Fillers(const TableFrame& frame, std::size_t length) const;
    bool IsShort(const TableFrame& frame, std::size_t length) const;
    bool TakeLength(const TableFrame& frame, std::size_t& length, bool& isShort);
    bool IsLastNameEnded(const TableFrame& frame, std::size_t length, bool isShort);
    std::uint32_t Numbered(const TableFrame& frame, std::size_t keys);
    bool Names(const TableFrame& frame, ImageTable& table);
    bool Numbers(const TableFrame& frame, ImageTable& table);
    bool Blocks(const TableFrame& frame);
    void FindRepeated(ImageTable& table, const TableFrame& frame);
    bool Sections();
    bool Section(std::size_t& at);
    bool Entry(std::size_t& at);
    bool Name(std::size_t at, unsigned name);
    bool StandsBefore(unsigned name, std::size_t limit);
    bool Value(const unsigned char* record, std::size_t at);
    bool Words(const EntryShape& shape, const unsigned char* record, std::size_t at, bool mayCarry);
    bool Word(char role, unsigned word, std::size_t at, std::uint32_t index, bool mayCarry);
    void Remember(const unsigned char* record, std::size_t at);
    void IndexEntries(std::size_t first, unsigned count);
    void SortByKind();
    bool Parents();
    bool Parent(const ParentOf& child, std::vector<std::uint32_t>& parents);
    bool Cycles(const std::vector<std::uint32_t>& parents);

    ImageFinding Finding(ImageCode code, std::size_t offset, std::uint32_t found, std::uint32_t limit,
                         std::uint32_t index) const;
    bool Fail(ImageCode code, std::size_t offset, std::size_t found = 0, std::size_t limit = 0,
              std::uint32_t index = ImageFinding::kNowhere);
    /// Gives true, so that what goes on can say so.
    bool Note(ImageCode code, std::size_t offset, std::size_t found = 0, std::size_t limit = 0,
              std::uint32_t index = ImageFinding::kNowhere);
    unsigned At(std::size_t offset) const { return WordAt(image_.data() + offset); }

    ImageView::Data& data_;
    ShowNote show_;
    std::span<const unsigned char> image_;
    ImageFinding failure_;
    Place place_;
    std::array<std::size_t, kTables.size() + 1> starts_{};  ///< of the tables, then the end of the image
    std::vector<ParentOf> parents_;
    /// The last section that has an entry of a name, by the name's class and ordinal.
    std::array<std::vector<std::uint32_t>, (kIdRepeater >> 24) + 1> lastWith_;
};

}  // namespace zek
