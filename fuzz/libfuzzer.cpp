// The entry of a fuzzer: gives each input to the harness that ZEK_HARNESS names.
#include <cstddef>
#include <cstdint>

#include "harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    zek::fuzz::ZEK_HARNESS({reinterpret_cast<const char*>(data), size});
    return 0;
}
