// Times the queries of both images: zek_calls FOLDER SIZE... [--benchmark_OPTION]..., or lists them: zek_calls --list
// Boards of so many sensors are made in FOLDER. Each query is asked in random order, from a fixed seed, so that it
// finds what it needs in memory as a host does that comes back to some sensor, and some also in the order of the image
// ("walk"), as a host does that goes through all of them. "memory" reads what the query must read, without a call.
// "long sections" asks two sections of many keys in turn.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "board_files.h"
#include "loaded_images.h"

namespace zek::bench {
namespace {

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

void EntryByTypeInTurn(State& state, const LongHandles& image, Order /*order*/) {
    Ask(state, image.keys, [](const auto& key) { return gcGetEntryByType(key.section, key.identifier); });
}

void EntryByNameInTurn(State& state, const LongHandles& image, Order /*order*/) {
    Ask(state, image.keys, [](const auto& key) { return gcGetEntryByName(key.section, key.name, nullptr); });
}

void DebugEntryByIndexInTurn(State& state, const LongDebugHandles& image, Order /*order*/) {
    Ask(state, image.places, [](const auto& place) { return gdGetEntryByIndex(place.first, place.second); });
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

constexpr Row<LongHandles> kLongRows[] = {
    {"gcGetEntryByType, long sections", EntryByTypeInTurn, Order::kRandom},
    {"gcGetEntryByName, long sections", EntryByNameInTurn, Order::kRandom},
};

constexpr Row<LongDebugHandles> kLongDebugRows[] = {
    {"gdGetEntryByIndex, long sections", DebugEntryByIndexInTurn, Order::kRandom},
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
        Register<ImageHandles>(kImageRows, size, MakeBoard(folder, "board", size).image, LoadedBoard);
    }
    for (const unsigned size : sizes) {
        Register<DebugHandles>(kDebugRows, size, FilesOf(folder, "board", size).debug, LoadedDebugBoard);
    }
    for (const unsigned size : sizes) {
        const BoardFiles files = MakeBoard(folder, "long-sections", size);
        Register<LongHandles>(kLongRows, size, files.image, LoadedLongSections);
        Register<LongDebugHandles>(kLongDebugRows, size, files.debug, LoadedLongDebugSections);
    }
}

template <class Rows>
void PrintNames(const Rows& rows) {
    for (const auto& row : rows) std::printf("%s\n", row.name);
}

void List() {
    PrintNames(kImageRows);
    PrintNames(kDebugRows);
    PrintNames(kLongRows);
    PrintNames(kLongDebugRows);
}

}  // namespace
}  // namespace zek::bench

int main(int count, char** words) try {
    if (count == 2 && std::string_view(words[1]) == "--list") {
        zek::bench::List();
        return 0;
    }
    benchmark::Initialize(&count, words);
    if (count < 3) {
        std::fprintf(stderr, "usage: zek_calls FOLDER SIZE... [--benchmark_OPTION]... | --list\n");
        return 2;
    }
    const std::string folder = words[1];
    std::vector<unsigned> sizes;
    for (int i = 2; i < count; ++i) sizes.push_back(static_cast<unsigned>(std::stoul(words[i])));
    std::filesystem::create_directories(folder);
    zek::bench::Prepare(folder, sizes);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "zek_calls: %s\n", error.what());
    return 1;
}
