// Times the queries of both images: zek_calls FOLDER SIZE... [--benchmark_OPTION]...
// Boards of so many sensors are made in FOLDER. Each query is asked in random order, from a fixed seed, so that it
// finds what it needs in memory as a host does that comes back to some sensor, and some also in the order of the image
// ("walk"), as a host does that goes through all of them. "memory" reads what the query must read, without a call.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <numeric>
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

template <class T>
const std::vector<T>& NotEmpty(const std::vector<T>& values, const char* what) {
    if (values.empty()) throw std::runtime_error(std::string("the image has no ") + what);
    return values;
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
    NotEmpty(handles.reads, "value with a base");
    loaded = image;
    return handles;
}

/// What a host can ask about that has loaded the debug image of a board.
struct DebugHandles {
    std::vector<CZEKSection*> sensors;
    std::vector<CZEKEntry*> entries;
    std::vector<std::pair<CZEKSection*, unsigned>> places;  ///< every entry of each sensor, sensors in random order
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
    for (CZEKSection* sensor : Shuffled(NotEmpty(handles.sensors, "sensor"))) {
        for (unsigned i = 0; CZEKEntry* entry = gdGetEntryByIndex(sensor, i); ++i) {
            handles.entries.push_back(entry);
            handles.places.emplace_back(sensor, i);
        }
    }
    loaded = debug;
    return handles;
}

std::vector<unsigned> Indexes(std::size_t count) {
    std::vector<unsigned> indexes(count);
    std::iota(indexes.begin(), indexes.end(), 0U);
    return indexes;
}

using benchmark::State;

void SectionByID(State& state, const ImageHandles& image) {
    Ask(state, Shuffled(image.ids), [](unsigned id) { return gcGetSectByID(kImageSensor, id); });
}

void SectionByIndex(State& state, const ImageHandles& image) {
    Ask(state, Shuffled(Indexes(image.sensors.size())), [](unsigned i) { return gcGetSectByIndex(kImageSensor, i); });
}

tagGCENTRY* IDEntry(tagGCSECT* sensor) { return gcGetEntryByType(sensor, kIdID); }

void EntryByType(State& state, const ImageHandles& image) { Ask(state, Shuffled(image.sensors), IDEntry); }

void EntryByTypeWalk(State& state, const ImageHandles& image) { Ask(state, image.sensors, IDEntry); }

/// The name identifiers of the entries up to the ID.
void EntryByTypeMemory(State& state, const ImageHandles& image) {
    Ask(state, Shuffled(image.sensors), [](const tagGCSECT* sensor) {
        const auto isID = [](const tagGCENTRY& entry) { return entry.dwName == kIdID; };
        return std::find_if(sensor->vEntries.begin(), sensor->vEntries.end(), isID);
    });
}

tagGCVALUE FirstValue(tagGCENTRY* entry) { return gcGetValueByIndex(entry, 0); }

void ValueByIndex(State& state, const ImageHandles& image) { Ask(state, Shuffled(image.entries), FirstValue); }

void ValueByIndexWalk(State& state, const ImageHandles& image) { Ask(state, image.entries, FirstValue); }

/// The word alone, without what it stands for.
void ValueByIndexMemory(State& state, const ImageHandles& image) {
    Ask(state, Shuffled(image.entries), [](const tagGCENTRY* entry) { return entry->vdwValues.front(); });
}

tagGCVALUE Base(tagGCENTRY* entry) { return gcGetValueByID(entry, kBaseField); }

void ValueByID(State& state, const ImageHandles& image) { Ask(state, Shuffled(image.reads), Base); }

void ValueByIDWalk(State& state, const ImageHandles& image) { Ask(state, image.reads, Base); }

tagGCSECT* SensorOf(const std::string& name) { return gcGetSectByName(kImageSensor, name); }

void SectionByName(State& state, const ImageHandles& image) { Ask(state, Shuffled(image.names), SensorOf); }

void SectionByAbsentName(State& state, const ImageHandles& image) { Ask(state, Shuffled(image.absent), SensorOf); }

void HashLookUp(State& state, const ImageHandles& image) {
    Ask(state, Shuffled(image.names), [&image](const std::string& name) { return image.table.find(name); });
}

void HashLookUpOfAbsentName(State& state, const ImageHandles& image) {
    Ask(state, Shuffled(image.absent), [&image](const std::string& name) { return image.table.find(name); });
}

void DebugSectionByIndex(State& state, const DebugHandles& image) {
    Ask(state, Shuffled(Indexes(image.sensors.size())), [](unsigned i) { return gdGetSectByIndex(kDebugSensor, i); });
}

/// Every entry of one sensor in turn, then those of another one.
void DebugEntryByIndex(State& state, const DebugHandles& image) {
    Ask(state, image.places, [](const auto& place) { return gdGetEntryByIndex(place.first, place.second); });
}

void DebugValue(State& state, const DebugHandles& image) {
    std::vector<char> text(std::size_t{1} << 20);
    Ask(state, Shuffled(image.entries), [&text](CZEKEntry* entry) { return gdGetValue(entry, text.data()); });
}

void DebugValueWalk(State& state, const DebugHandles& image) {
    std::vector<char> text(std::size_t{1} << 20);
    Ask(state, image.entries, [&text](CZEKEntry* entry) { return gdGetValue(entry, text.data()); });
}

struct ImageBenchmark {
    const char* name;
    void (*run)(State& state, const ImageHandles& image);
};

constexpr ImageBenchmark kImageBenchmarks[] = {
    {"gcGetSectByID", SectionByID},
    {"gcGetSectByIndex", SectionByIndex},
    {"gcGetEntryByType", EntryByType},
    {"gcGetEntryByType, walk", EntryByTypeWalk},
    {"gcGetEntryByType, memory", EntryByTypeMemory},
    {"gcGetValueByIndex", ValueByIndex},
    {"gcGetValueByIndex, walk", ValueByIndexWalk},
    {"gcGetValueByIndex, memory", ValueByIndexMemory},
    {"gcGetValueByID", ValueByID},
    {"gcGetValueByID, walk", ValueByIDWalk},
    {"gcGetSectByName", SectionByName},
    {"hash look-up", HashLookUp},
    {"gcGetSectByName, absent", SectionByAbsentName},
    {"hash look-up, absent", HashLookUpOfAbsentName},
};

struct DebugBenchmark {
    const char* name;
    void (*run)(State& state, const DebugHandles& image);
};

constexpr DebugBenchmark kDebugBenchmarks[] = {
    {"gdGetSectByIndex", DebugSectionByIndex},
    {"gdGetEntryByIndex", DebugEntryByIndex},
    {"gdGetValue", DebugValue},
    {"gdGetValue, walk", DebugValueWalk},
};

std::string NameWithSize(const char* name, unsigned size) { return std::string(name) + '/' + std::to_string(size); }

/// Registers every query of an image of each size; size by size, so that each image is loaded once.
void Register(const std::string& folder, const std::vector<unsigned>& sizes) {
    for (const unsigned size : sizes) {
        const std::string image = FilesOf(folder, "board", size).image;
        for (const ImageBenchmark& row : kImageBenchmarks) {
            benchmark::RegisterBenchmark(NameWithSize(row.name, size).c_str(),
                                         [&row, image](State& state) { row.run(state, LoadedImage(image)); });
        }
    }
    for (const unsigned size : sizes) {
        const std::string debug = FilesOf(folder, "board", size).debug;
        for (const DebugBenchmark& row : kDebugBenchmarks) {
            benchmark::RegisterBenchmark(NameWithSize(row.name, size).c_str(),
                                         [&row, debug](State& state) { row.run(state, LoadedDebugImage(debug)); });
        }
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
    for (const unsigned size : sizes) zek::bench::MakeBoard(folder, "board", size);
    zek::bench::Register(folder, sizes);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "zek_calls: %s\n", error.what());
    return 1;
}
