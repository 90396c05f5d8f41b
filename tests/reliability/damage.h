/// Every way in which this suite damages an image. Relies on nothing.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zek::test {

/// An image cut at every length, and with every byte in turn set to 0x00, 0x7f, 0x80 and 0xff where it is another. Of
/// more than `most` cases, `most` are picked at random, the same at every run.
class Damages {
public:
    Damages(std::string image, std::size_t most);

    std::size_t Count() const { return damages_.size(); }
    std::string Damaged(std::size_t number) const;
    /// Such as "cut to 17 bytes" and "byte 17 set to 0x7f".
    std::string Name(std::size_t number) const;

private:
    static constexpr int kCut = -1;
    struct Damage {
        std::size_t at;
        int byte;  ///< kCut, or what the byte is set to
    };

    std::string image_;
    std::vector<Damage> damages_;
};

}  // namespace zek::test
