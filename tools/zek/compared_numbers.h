/// Which numbers of a compiled image its source wrote as words: the checks compare the texts of IDs and of argument
/// numbers, and take a word for another number or for none. Relies on image_view.h.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>

#include "zekcomp/image_view.h"

namespace zek::tool {

inline constexpr std::uint32_t kIdArgNumber = 0x02000010;  ///< of ARGNUMBER

class ComparedNumbers {
public:
    explicit ComparedNumbers(const ImageView& view);

    /// Whether the ID of a section, by its place in the image, must be a word, and the number that the checks are to
    /// take it for; 0 where they need not take it for one.
    std::optional<std::uint32_t> IDAsWord(std::uint32_t section) const { return Found(ids_, section); }
    /// The same of its ARGNUMBER.
    std::optional<std::uint32_t> ArgumentsAsWord(std::uint32_t section) const { return Found(arguments_, section); }
    /// Whether a PID stands for a number that no TAVRGROUP has as its ID.
    bool IsUnknownView(std::uint32_t pid) const { return pid != 0 && views_.count(pid) == 0; }
    /// Whether the first element of a list of sensors that stands for nothing must be a word for 0.
    bool NeedsZero() const { return needsZero_; }

private:
    using Places = std::map<std::uint32_t, std::uint32_t>;

    static std::optional<std::uint32_t> Found(const Places& places, std::uint32_t section) {
        const auto found = places.find(section);
        return found == places.end() ? std::nullopt : std::optional<std::uint32_t>(found->second);
    }
    void ReadLists(const ImageView& view);
    void ReadIDs(const ImageView& view, std::uint32_t kind, bool isListed);
    void ReadCalls(const ImageView& view);
    void ReadArguments(const ImageView& view);

    std::set<std::uint32_t> listed_;  // the sensors that some TAVRGROUP lists
    bool hasUnresolved_ = false;      // an element of such a list stands for nothing
    bool needsZero_ = false;
    std::set<std::uint32_t> views_;
    Places ids_;
    Places arguments_;
    std::map<std::uint32_t, std::uint32_t> calls_;  // by the word of the action, how many parameters it was given
};

}  // namespace zek::tool
