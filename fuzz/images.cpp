#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "../tools/zek/debug_check.h"
#include "compilation.h"
#include "compile/tables.h"
#include "harness.h"
#include "heap_watch.h"
#include "image_structure.h"
#include "memory_file.h"
#include "process_state.h"
#include "queries.h"
#include "view_queries.h"
#include "zekcomp/image_view.h"
#include "zekcomp/zekcomp.h"

namespace zek::fuzz {

namespace {

constexpr unsigned kSensorKind = 5;
constexpr std::string_view kOutOfRangeText = "vector::_M_range_check";

/// How many times its size an image takes at most, as docs/reliability.md tells.
constexpr std::size_t kMostOfCompiled = 288;
constexpr std::size_t kMostOfDebug = 12;
constexpr std::size_t kMostOfView = 28;

void LoadGoodCompiled() {
    MemoryFile file;
    file.Write(GoodImages().compiled);
    Require(gcInit(file.Path(), nullptr) == 1, "a good image is loaded after a bad one");
    tagGCSECT* const sensor = gcGetSectByName(kImageSensor, kGoodSensor);
    Require(sensor && sensor == gcGetSectByID(kImageSensor, kGoodId), "a good image answers as ever");
}

/// Whether so many keys were loaded that a counter has left its class.
bool IsUsedUp() {
    return std::ranges::any_of(kIdentifierTables, [](const IdentifierTable& table) {
        return table.counter && (*table.counter & kIdClassMask) != table.classWord;
    });
}

/// What is compiled behind a loaded image has its keys, too, in whatever order and however often they stood there.
void CompileBehindLoaded() {
    gcUnInit();
    const std::string written = CompileGoodHere();
    const std::vector<unsigned char> image(written.begin(), written.end());
    ImageFinding failure;
    const std::optional<ImageView> view = ImageView::Open(image, &failure);
    if (!view)
        return Require(failure.code == ImageCode::kWrongTable && IsUsedUp(), "what gccOutput writes is verified");
    MemoryFile file;
    file.Write(written);
    Require(gcInit(file.Path(), nullptr) == 1, "what gccOutput writes is loaded by gcInit");
    HoldView(*view);
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
    const HeapWatch heap;
    const unsigned loaded = gcInit(file.Path(), nullptr);
    Require(gcGetLastError() == (loaded ? kNoError : kBadMagic), "every failed load has one code");
    AskImage();
    heap.HoldTo(kMostOfCompiled, bytes.size());
    CompileBehindLoaded();
    LoadGoodCompiled();
    ForgetEverything();
}

void DebugImage(std::string_view bytes) {
    GoodImages();
    MemoryFile file;
    file.Write(bytes);
    const HeapWatch heap;
    const bool loaded = Load(file.Path());
    AskModel(bytes.size());
    heap.HoldTo(kMostOfDebug, bytes.size());
    gdUnInit();
    const tool::DebugCheck check = tool::CheckDebugImage(bytes);
    Require(loaded || check.failure || check.lacksFileList, "an image that is verified is loaded");
    Require(!check.failure || !check.failure->Sentence().empty(), "a refusal says what is wrong");
    LoadGoodDebug();
    ForgetEverything();
}

void ViewedImage(std::string_view bytes) {
    // At most as many bytes as the image has, so that AddressSanitizer sees one too many.
    const std::vector<unsigned char> image(bytes.begin(), bytes.end());
    ImageFinding failure;
    const HeapWatch heap;
    const std::optional<ImageView> opened = ImageView::Open(image, &failure);
    heap.HoldTo(kMostOfView, bytes.size());
    if (!opened) {
        Require(failure.code != ImageCode::kNone && !IsNote(failure.code), "a refusal has a code");
        Require(failure.offset <= image.size(), "a refusal has an offset in the image");
        Require(!failure.Place().empty() && !failure.Sentence().empty(), "a refusal says what is wrong");
        return;
    }
    const ImageView copy = *opened;
    MemoryFile file;
    file.Write(bytes);
    tagMETAFILEINFO info = {};
    Require(gcInit(file.Path(), &info) == 1, "an image that is verified is loaded");
    Require(copy.Version() == info.dwVersion && copy.Time() == info.dwTime, "a view has the header of its image");
    HoldView(copy);
    ForgetEverything();
}

void ImageStructure(std::string_view bytes) {
    if (!bytes.starts_with(kCompiledMagic)) return DebugImage(bytes);
    CompiledImage(bytes);
    ViewedImage(bytes);
}

}  // namespace zek::fuzz
