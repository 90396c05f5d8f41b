// The mutator of a fuzzer whose inputs are images: libFuzzer asks it instead of its own one.
#include <algorithm>
#include <cstddef>

#include "structure_mutator.h"

namespace {

/// How often an image is changed blindly all the same.
constexpr unsigned kBlindly = 10;

}  // namespace

extern "C" std::size_t LLVMFuzzerMutate(unsigned char* data, std::size_t size, std::size_t mostSize);

extern "C" std::size_t LLVMFuzzerCustomMutator(unsigned char* data, std::size_t size, std::size_t mostSize,
                                               unsigned seed) {
    const std::string_view image(reinterpret_cast<const char*>(data), size);
    const std::string mutated = zek::fuzz::StructureMutator(image, seed).Mutated();
    if (mutated == image || mutated.size() > mostSize || seed % 100 < kBlindly) {
        return LLVMFuzzerMutate(data, size, mostSize);
    }
    std::copy(mutated.begin(), mutated.end(), data);
    return mutated.size();
}
