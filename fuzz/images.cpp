#include <stdexcept>
#include <string>

#include "compilation.h"
#include "harness.h"
#include "image_structure.h"
#include "memory_file.h"
#include "process_state.h"
#include "queries.h"
#include "zekcomp/zekcomp.h"

namespace zek::fuzz {

namespace {

constexpr unsigned kSensorKind = 5;
constexpr std::string_view kOutOfRangeText = "vector::_M_range_check";

void LoadGoodCompiled() {
    MemoryFile file;
    file.Write(GoodImages().compiled);
    Require(gcInit(file.Path(), nullptr) == 1, "a good image is loaded after a bad one");
    tagGCSECT* const sensor = gcGetSectByName(kImageSensor, kGoodSensor);
    Require(sensor && sensor == gcGetSectByID(kImageSensor, kGoodId), "a good image answers as ever");
}

/// Loads a debug image; the only exception is the documented one.
bool Load(const std::string& file) {
    try {
        return gdInit(file, nullptr) == 1;
    } catch (const std::out_of_range& error) {
        Require(error.what() == kOutOfRangeText, "the exception has its text");
        return false;
    }
}

void LoadGoodDebug() {
    MemoryFile file;
    file.Write(GoodImages().debug);
    Require(Load(file.Path()), "a good image is loaded after a bad one");
    CZEKSection* const sensor = gdGetSectByIndex(kSensorKind, 0);
    Require(sensor && gdGetSectName(sensor) == std::string_view(kGoodSensor) && gdGetSectID(sensor) == kGoodId,
            "a good image answers as ever");
}

}  // namespace

void CompiledImage(std::string_view bytes) {
    GoodImages();
    MemoryFile file;
    file.Write(bytes);
    const unsigned loaded = gcInit(file.Path(), nullptr);
    Require(gcGetLastError() == (loaded ? kNoError : kBadMagic), "every failed load has one code");
    AskImage();
    LoadGoodCompiled();
    ForgetEverything();
}

void DebugImage(std::string_view bytes) {
    GoodImages();
    MemoryFile file;
    file.Write(bytes);
    Load(file.Path());
    AskModel(bytes.size());
    gdUnInit();
    LoadGoodDebug();
    ForgetEverything();
}

void ImageStructure(std::string_view bytes) {
    bytes.starts_with(kCompiledMagic) ? CompiledImage(bytes) : DebugImage(bytes);
}

}  // namespace zek::fuzz
