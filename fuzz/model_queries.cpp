#include <cstring>
#include <string>
#include <vector>

#include "harness.h"
#include "model/section.h"
#include "queries.h"
#include "yardstick/plain_model.h"
#include "zekcomp/zekcomp.h"

namespace zek::fuzz {

namespace {

namespace plain = test::plain;

constexpr unsigned kSectionClass = 0x20000000;
constexpr unsigned kLastKind = 16;
constexpr unsigned kDataClass = 0xFFFF0000;
constexpr unsigned kTextData = 0x10020000;
/// A host need not have more room for a value than the size of the file and so much.
constexpr std::size_t kMostMissing = std::size_t{1} << 20;

/// The room for a value of an image of `size` bytes.
class Room {
public:
    explicit Room(std::size_t size) : size_(size + kMostMissing) {
        if (memory_.size() < size_) memory_.resize(size_);
    }

    void Ask(CZEKEntry& entry) {
        // At the end of the memory, so that AddressSanitizer sees a byte too many.
        char* const room = memory_.data() + memory_.size() - size_;
        Require(gdGetValue(&entry, room) == 1, "an entry has a value");
        Require(std::strlen(room) < size_, "a value ends");
    }

private:
    /// Kept for the next image: to clear it takes longer than all the rest.
    static inline std::vector<char> memory_;
    std::size_t size_;
};

bool Same(const char* text, const std::string* expected) {
    return text && expected ? !std::strcmp(text, expected->c_str()) : !text && !expected;
}

/// The text of an entry, or null: in a damaged image its data may be of any class.
const std::string* TextOfType(const CZEKSection& section, unsigned type) {
    const CZEKEntry* entry = plain::Entry(section, type);
    const bool text = entry && (entry->m_ZekEntryData.GetType() & kDataClass) == kTextData;
    return text ? plain::Text(entry) : nullptr;
}

void AskSection(CZEKSection& section, Room& room) {
    gdGetSectID(&section);
    Require(Same(gdGetSectName(&section), TextOfType(section, kName)), "a section has its name");
    Require(Same(gdGetSectPName(&section), TextOfType(section, kParent)), "a section has its parent");
    unsigned position = 0;
    for (CZEKEntry* const entry : section.m_vpEntry) {
        if (!plain::HoldsData(entry)) continue;
        Require(gdGetEntryByIndex(&section, position++) == entry, "entries with data stand in their order");
        Require(gdGetEntryName(entry) == entry->m_strName.c_str(), "an entry has its key");
        room.Ask(*entry);
    }
    Require(!gdGetEntryByIndex(&section, position), "there is no entry behind the last");
}

}  // namespace

void AskModel(std::size_t size) {
    Room room(size);
    for (unsigned kind = 0; kind <= kLastKind; ++kind) {
        const std::vector<CZEKSection*> sections = plain::Sections(kSectionClass + kind);
        for (unsigned i = 0; i < sections.size(); ++i) {
            Require(gdGetSectByIndex(kind, i) == sections[i], "a section stands at its position");
            Require(gdGetSectByIndex(kSectionClass + kind, i) == sections[i], "a kind has two spellings");
            AskSection(*sections[i], room);
        }
        Require(!gdGetSectByIndex(kind, static_cast<unsigned>(sections.size())), "no section stands behind the last");
    }
    Require(!gdGetEntryByIndex(nullptr, 0) && !gdGetSectName(nullptr) && !gdGetEntryName(nullptr),
            "a null handle has nothing");
}

}  // namespace zek::fuzz
