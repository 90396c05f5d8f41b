#include "loaded_images.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <numeric>
#include <stdexcept>

namespace zek::bench {
namespace {

constexpr unsigned kDebugProperty = 0x20000002;

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

/// Loads a compiled image, unless it is the one that is loaded; tells whether it did.
bool LoadImage(const std::string& image) {
    static std::string loaded;
    if (loaded == image) return false;
    if (!gcInit(image, nullptr)) throw std::runtime_error("cannot load " + image);
    loaded = image;
    return true;
}

/// The same for a debug image.
bool LoadDebugImage(const std::string& debug) {
    static std::string loaded;
    if (loaded == debug) return false;
    gdUnInit();
    if (!gdInit(debug, nullptr)) throw std::runtime_error("cannot load " + debug);
    loaded = debug;
    return true;
}

}  // namespace

const ImageHandles& LoadedBoard(const std::string& image) {
    static ImageHandles handles;
    if (!LoadImage(image)) return handles;
    handles = {};
    const unsigned count = gcGetSectCount(kImageSensor);
    for (unsigned i = 0; i < count; ++i) Add(handles, gcGetSectByIndex(kImageSensor, i));
    if (handles.reads.empty()) throw std::runtime_error("no values with a base in " + image);
    std::ifstream in(image, std::ios::binary);
    handles.bytes.assign(std::istreambuf_iterator<char>(in), {});
    handles.view = ImageView::Open(handles.bytes);
    if (!handles.view) throw std::runtime_error("cannot verify " + image);
    return handles;
}

const DebugHandles& LoadedDebugBoard(const std::string& debug) {
    static DebugHandles handles;
    if (!LoadDebugImage(debug)) return handles;
    handles = {};
    for (unsigned i = 0; CZEKSection* sensor = gdGetSectByIndex(kDebugSensor, i); ++i) {
        handles.sensors.push_back(sensor);
    }
    for (CZEKSection* sensor : handles.sensors) {
        for (unsigned i = 0; CZEKEntry* entry = gdGetEntryByIndex(sensor, i); ++i) handles.entries.push_back(entry);
    }
    if (handles.entries.empty()) throw std::runtime_error("no sensors in " + debug);
    return handles;
}

const LongHandles& LoadedLongSections(const std::string& image) {
    static LongHandles handles;
    if (!LoadImage(image)) return handles;
    handles = {};
    tagGCSECT* const sections[] = {gcGetSectByIndex(kImageProperty, 0), gcGetSectByIndex(kImageProperty, 1)};
    const unsigned count = std::min(gcGetEntryCount(sections[0]), gcGetEntryCount(sections[1]));
    for (const unsigned i : Shuffled(Indexes(count))) {
        for (tagGCSECT* section : sections) {
            unsigned identifier = 0;
            gcGetEntryByIndex(section, i, &identifier);
            handles.keys.push_back({section, identifier, GetTblData(identifier).pszName});
        }
    }
    if (handles.keys.empty()) throw std::runtime_error("no keys in " + image);
    return handles;
}

const LongDebugHandles& LoadedLongDebugSections(const std::string& debug) {
    static LongDebugHandles handles;
    if (!LoadDebugImage(debug)) return handles;
    handles = {};
    CZEKSection* const sections[] = {gdGetSectByIndex(kDebugProperty, 0), gdGetSectByIndex(kDebugProperty, 1)};
    unsigned count = 0;
    while (gdGetEntryByIndex(sections[0], count)) ++count;
    for (const unsigned i : Shuffled(Indexes(count))) {
        for (CZEKSection* section : sections) handles.places.emplace_back(section, i);
    }
    if (handles.places.empty()) throw std::runtime_error("no keys in " + debug);
    return handles;
}

std::vector<unsigned> Indexes(std::size_t count) {
    std::vector<unsigned> indexes(count);
    std::iota(indexes.begin(), indexes.end(), 0U);
    return indexes;
}

}  // namespace zek::bench
