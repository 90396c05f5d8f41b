/// A file without a name, so that writing it costs no disk. Relies on Linux.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <stdexcept>
#include <string>

namespace zek::test {

/// A file in memory that holds one image after the other.
class ImageFile {
public:
    ImageFile() : descriptor_(memfd_create("image", MFD_CLOEXEC)) {}
    ~ImageFile() { close(descriptor_); }
    ImageFile(const ImageFile&) = delete;
    ImageFile& operator=(const ImageFile&) = delete;

    std::string Name() const { return "/proc/self/fd/" + std::to_string(descriptor_); }
    void Hold(const std::string& bytes) const {
        if (ftruncate(descriptor_, 0) != 0 ||
            pwrite(descriptor_, bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
            throw std::runtime_error("cannot write an image");
        }
    }

private:
    int descriptor_;
};

}  // namespace zek::test
