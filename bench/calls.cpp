// Times the queries of both images: zek_calls FOLDER SIZE... [--benchmark_OPTION]...
// Boards of so many sensors are made in FOLDER. Each query is asked in random order, from a fixed seed, so that it
// finds what it needs in memory as a host does that comes back to some sensor, and some also in the order of the image
// ("walk"), as a host does that goes through all of them. "memory" reads what the query must read, without a call.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <numeric>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "board_files.h"
#include "boards/random.h"
#include "zekcomp/debug_image.h"
#include "zekcomp/identifiers.h"
#include "zekcomp/image.h"
#include "zekcomp/image_view.h"

namespace zek::bench {
namespace {

constexpr unsigned kBaseField = 0xb0000;
constexpr unsigned kDebugSensor = 0x20000005;

template <class T>
std::vector<T> Shuffled(std::vector<T> values) {
    Random random(1, 0, 0);
    for (std::size_t i = values.size(); i > 1; --i) std::swap(values[i - 1], values[random.Below(i)]);
    return values;
}

/// In which order things are asked about.
enum class Order { kRandom, kWalk, kFew };

constexpr std::size_t kFew = 64;

template <class T>
std::vector<T> Ordered(const std::vector<T>& values, Order order) {
    if (order == Order::kWalk) return values;
    std::vector<T> shuffled = Shuffled(values);
    if (order == Order::kFew && shuffled.size() > kFew) shuffled.erase(shuffled.begin() + kFew, shuffled.end());
    return shuffled;
}

/// Asks about each of some things in turn.
template <class T, class Query>
void Ask(benchmark::State& state, const std::vector<T>& things, Query query) {
    std::size_t i = 0;
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(query(things[i]));
        if (++i == things.size()) i = 0;
    }
}

/// What a host can ask about that has loaded the compiled image of a board.
struct ImageHandles {
    std::vector<tagGCSECT*> sensors;
    std::vector<tagGCENTRY*> entries;
    std::vector<tagGCENTRY*> reads;  ///< those entries that are values with a base, such as read from a bus
    std::vector<unsigned> ids;
    std::vector<std::string> names;
    std::vector<std::string> absent;
    std::unordered_map<std::string, unsigned> table;  ///< the names again, as a host's own look-up
    std::vector<unsigned char> bytes;
    std::optional<ImageView> view;  ///< of the same image
};

void Add(ImageHandles& handles, tagGCSECT* sensor) {
    handles.sensors.push_back(sensor);
    handles.ids.push_back(static_cast<unsigned>(gcGetValueByIndex(gcGetEntryByType(sensor, kIdID), 0).qwNumber));
    handles.names.emplace_back(gcGetValueByIndex(gcGetEntryByType(sensor, kIdName), 0).pszName);
    handles.absent.push_back(handles.names.back() + '?');
    handles.table.emplace(handles.names.back(), static_cast<unsigned>(handles.table.size()));
    const unsigned count = gcGetEntryCount(sensor);
    for (unsigned i = 0; i < count; ++i) {
        tagGCENTRY* entry = gcGetEntryByIndex(sensor, i, nullptr);
        handles.entries.push_back(entry);
        if (gcGetValueByID(entry, kBaseField).dwKind == 1) handles.reads.push_back(entry);
    }
}

/// Loads the compiled image of a board, unless it is the one that is loaded.
const ImageHandles& LoadedImage(const std::string& image) {
    static std::string loaded;
    static ImageHandles handles;
    if (loaded == image) return handles;
    handles = {};
    if (!gcInit(image, nullptr)) throw std::runtime_error("cannot load " + image);
    const unsigned count = gcGetSectCount(kImageSensor);
    for (unsigned i = 0; i < count; ++i) Add(handles, gcGetSectByIndex(kImageSensor, i));
    if (handles.reads.empty()) throw std::runtime_error("no values with a base in " + image);
    std::ifstream in(image, std::ios::binary);
    handles.bytes.assign(std::istreambuf_iterator<char>(in), {});
    handles.view = ImageView::Open(handles.bytes);
    if (!handles.view) throw std::runtime_error("cannot verify " + image);
    loaded = image;
    return handles;
}

/// What a host can ask about that has loaded the debug image of a board.
struct DebugHandles {
    std::vector<CZEKSection*> sensors;
    std::vector<CZEKEntry*> entries;
};

const DebugHandles& LoadedDebugImage(const std::string& debug) {
    static std::string loaded;
    static DebugHandles handles;
    if (loaded == debug) return handles;
    handles = {};
    gdUnInit();
    if (!gdInit(debug, nullptr)) throw std::runtime_error("cannot load " + debug);
    for (unsigned i = 0; CZEKSection* sensor = gdGetSectByIndex(kDebugSensor, i); ++i) {
        handles.sensors.push_back(sensor);
    }
    for (CZEKSection* sensor : handles.sensors) {
        for (unsigned i = 0; CZEKEntry* entry = gdGetEntryByIndex(sensor, i); ++i) handles.entries.push_back(entry);
    }
    if (handles.entries.empty()) throw std::runtime_error("no sensors in " + debug);
    loaded = debug;
    return handles;
}

std::vector<unsigned> Indexes(std::size_t count) {
    std::vector<unsigned> indexes(count);
    std::iota(indexes.begin(), indexes.end(), 0U);
    return indexes;
}

using benchmark::State;

void SectionByID(State& state, const ImageHandles& image, Order order) {
    Ask(state, Ordered(image.ids, order), [](unsigned id) { return gcGetSectByID(kImageSensor, id); });
}

void SectionByIndex(State& state, const ImageHandles& image, Order order) {
    const std::vector<unsigned> indexes = Ordered(Indexes(image.sensors.size()), order);
    Ask(state, indexes, [](unsigned index) { return gcGetSectByIndex(kImageSensor, index); });
}

tagGCSECT* SensorOf(const std::string& name) { return gcGetSectByName(kImageSensor, name); }

void SectionByName(State& state, const ImageHandles& image, Order order) {
    Ask(state, Ordered(image.names, order), SensorOf);
}

void SectionByAbsentName(State& state, const ImageHandles& image, Order order) {
    Ask(state, Ordered(image.absent, order), SensorOf);
}

void ViewedSection(State& state, const ImageHandles& image, const std::vector<std::string>& names, Order order) {
    Ask(state, Ordered(names, order),
        [&image](const std::string& name) { return image.view->SectionNamed(kImageSensor, name).has_value(); });
}

void ViewedSectionByName(State& state, const ImageHandles& image, Order order) {
    ViewedSection(state, image, image.names, order);
}

void ViewedSectionByAbsentName(State& state, const ImageHandles& image, Order order) {
    ViewedSection(state, image, image.absent, order);
}

void ViewedSectionByID(State& state, const ImageHandles& image, Order order) {
    Ask(state, Ordered(image.ids, order),
        [&image](unsigned id) { return image.view->SectionWithID(kImageSensor, id).has_value(); });
}

void HashLookUp(State& state, const ImageHandles& image, Order order) {
    const auto lookUp = [&image](const std::string& name) { return image.table.find(name); };
    Ask(state, Ordered(image.names, order), lookUp);
}

void HashLookUpOfAbsentName(State& state, const ImageHandles& image, Order order) {
    const auto lookUp = [&image](const std::string& name) { return image.table.find(name); };
    Ask(state, Ordered(image.absent, order), lookUp);
}

void EntryByType(State& state, const ImageHandles& image, Order order) {
    Ask(state, Ordered(image.sensors, order), [](tagGCSECT* sensor) { return gcGetEntryByType(sensor, kIdID); });
}

/// The name identifiers of the entries up to the ID.
void EntryByTypeMemory(State& state, const ImageHandles& image, Order order) {
    Ask(state, Ordered(image.sensors, order), [](const tagGCSECT* sensor) {
        const auto isID = [](const tagGCENTRY& entry) { return entry.dwName == kIdID; };
        return std::find_if(sensor->vEntries.begin(), sensor->vEntries.end(), isID);
    });
}

void ValueByIndex(State& state, const ImageHandles& image, Order order) {
    Ask(state, Ordered(image.entries, order), [](tagGCENTRY* entry) { return gcGetValueByIndex(entry, 0); });
}

/// The word alone, without what it stands for.
void ValueByIndexMemory(State& state, const ImageHandles& image, Order order) {
    Ask(state, Ordered(image.entries, order), [](const tagGCENTRY* entry) { return entry->vdwValues.front(); });
}

void ValueByID(State& state, const ImageHandles& image, Order order) {
    Ask(state, Ordered(image.reads, order), [](tagGCENTRY* entry) { return gcGetValueByID(entry, kBaseField); });
}

void DebugSectionByIndex(State& state, const DebugHandles& image, Order order) {
    const std::vector<unsigned> indexes = Ordered(Indexes(image.sensors.size()), order);
    Ask(state, indexes, [](unsigned index) { return gdGetSectByIndex(kDebugSensor, index); });
}

/// Every entry of one sensor in turn, then those of the next one.
void DebugEntryByIndex(State& state, const DebugHandles& image, Order order) {
    std::vector<std::pair<CZEKSection*, unsigned>> places;
    for (CZEKSection* sensor : Ordered(image.sensors, order)) {
        for (unsigned i = 0; gdGetEntryByIndex(sensor, i); ++i) places.emplace_back(sensor, i);
    }
    Ask(state, places, [](const auto& place) { return gdGetEntryByIndex(place.first, place.second); });
}

void DebugValue(State& state, const DebugHandles& image, Order order) {
    std::vector<char> text(std::size_t{1} << 20);
    Ask(state, Ordered(image.entries, order), [&text](CZEKEntry* entry) { return gdGetValue(entry, text.data()); });
}

template <class Handles>
struct Row {
    const char* name;
    void (*run)(State& state, const Handles& image, Order order);
    Order order;
};

constexpr Row<ImageHandles> kImageRows[] = {
    {"gcGetSectByID", SectionByID, Order::kRandom},
    {"gcGetSectByID, few", SectionByID, Order::kFew},
    {"gcGetSectByIndex", SectionByIndex, Order::kRandom},
    {"gcGetSectByIndex, few", SectionByIndex, Order::kFew},
    {"gcGetEntryByType", EntryByType, Order::kRandom},
    {"gcGetEntryByType, walk", EntryByType, Order::kWalk},
    {"gcGetEntryByType, few", EntryByType, Order::kFew},
    {"gcGetEntryByType, memory", EntryByTypeMemory, Order::kRandom},
    {"gcGetValueByIndex", ValueByIndex, Order::kRandom},
    {"gcGetValueByIndex, walk", ValueByIndex, Order::kWalk},
    {"gcGetValueByIndex, few", ValueByIndex, Order::kFew},
    {"gcGetValueByIndex, memory", ValueByIndexMemory, Order::kRandom},
    {"gcGetValueByID", ValueByID, Order::kRandom},
    {"gcGetValueByID, walk", ValueByID, Order::kWalk},
    {"gcGetValueByID, few", ValueByID, Order::kFew},
    {"gcGetSectByName", SectionByName, Order::kRandom},
    {"SectionNamed", ViewedSectionByName, Order::kRandom},
    {"hash look-up", HashLookUp, Order::kRandom},
    {"gcGetSectByName, absent", SectionByAbsentName, Order::kRandom},
    {"SectionNamed, absent", ViewedSectionByAbsentName, Order::kRandom},
    {"hash look-up, absent", HashLookUpOfAbsentName, Order::kRandom},
    {"SectionWithID", ViewedSectionByID, Order::kRandom},
};

constexpr Row<DebugHandles> kDebugRows[] = {
    {"gdGetSectByIndex", DebugSectionByIndex, Order::kRandom},
    {"gdGetSectByIndex, few", DebugSectionByIndex, Order::kFew},
    {"gdGetEntryByIndex", DebugEntryByIndex, Order::kRandom},
    {"gdGetEntryByIndex, walk", DebugEntryByIndex, Order::kWalk},
    {"gdGetEntryByIndex, few", DebugEntryByIndex, Order::kFew},
    {"gdGetValue", DebugValue, Order::kRandom},
    {"gdGetValue, walk", DebugValue, Order::kWalk},
    {"gdGetValue, few", DebugValue, Order::kFew},
};

/// Registers every query of one image.
template <class Handles>
void Register(std::span<const Row<Handles>> rows, unsigned size, const std::string& file,
              const Handles& (*load)(const std::string& file)) {
    for (const Row<Handles>& row : rows) {
        const std::string name = std::string(row.name) + '/' + std::to_string(size);
        benchmark::RegisterBenchmark(name.c_str(),
                                     [row, file, load](State& state) { row.run(state, load(file), row.order); });
    }
}

/// Makes a board of each size and registers every query of its images; image by image, so that each is loaded once.
void Prepare(const std::string& folder, const std::vector<unsigned>& sizes) {
    for (const unsigned size : sizes) {
        Register<ImageHandles>(kImageRows, size, MakeBoard(folder, "board", size).image, LoadedImage);
    }
    for (const unsigned size : sizes) {
        Register<DebugHandles>(kDebugRows, size, FilesOf(folder, "board", size).debug, LoadedDebugImage);
    }
}

}  // namespace
}  // namespace zek::bench

int main(int count, char** words) try {
    benchmark::Initialize(&count, words);
    if (count < 3) {
        std::fprintf(stderr, "usage: zek_calls FOLDER SIZE... [--benchmark_OPTION]...\n");
        return 2;
    }
    const std::string folder = words[1];
    std::vector<unsigned> sizes;
    for (int i = 2; i < count; ++i) sizes.push_back(static_cast<unsigned>(std::stoul(words[i])));
    zek::bench::Prepare(folder, sizes);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "zek_calls: %s\n", error.what());
    return 1;
}
