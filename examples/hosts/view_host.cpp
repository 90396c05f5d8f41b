// Shows the sensors of the newest image that is sound, as a service that must not stop: view_host IMAGE...
#include <cstdio>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "zekcomp/image_view.h"

namespace {

constexpr unsigned kWarningHigh = zek::kIdKeyword | 0x0d;
constexpr unsigned kBaseField = 0xb0000;

// An image with the bytes that it is a view of; those stay where they are when it is moved.
struct Loaded {
    std::vector<unsigned char> bytes;
    std::optional<zek::ImageView> view;
};

// Nothing for what is no sound image; the reason is printed.
std::optional<Loaded> Load(const char* file) {
    std::ifstream in(file, std::ios::binary);
    Loaded loaded;
    loaded.bytes.assign(std::istreambuf_iterator<char>(in), {});
    zek::ImageFinding failure;
    loaded.view = zek::ImageView::Open(loaded.bytes, &failure);
    if (loaded.view) return loaded;
    std::fprintf(stderr, "%s: byte %llu, %s: %s [%s]\n", file, static_cast<unsigned long long>(failure.offset),
                 failure.Place().c_str(), failure.Sentence().c_str(), zek::NameOf(failure.code));
    return {};
}

void Show(const zek::ImageView& view) {
    for (const zek::ImageView::Section sensor : view.SectionsOf(zek::kImageSensor)) {
        const std::string name(sensor.Name().value_or("without a name"));
        const auto limit = sensor.EntryWithId(kWarningHigh);
        // The key VALUE has the empty name.
        const auto value = sensor.EntryNamed("");
        std::printf("sensor %s: ID %u, warns at %u, device %u\n", name.c_str(), sensor.ID().value_or(0),
                    limit ? limit->Value(0).number : 0, value ? value->Field(kBaseField).number : 0);
    }
    if (!view.SectionNamed(zek::kImageSensor, "Outlet")) std::printf("no sensor Outlet\n");
}

}  // namespace

int main(int count, char** words) {
    std::optional<Loaded> current;
    for (int i = 1; i < count; ++i) {
        // The image before stays in use until the next one has shown to be sound.
        if (auto next = Load(words[i])) current = std::move(next);
    }
    if (!current) return 1;
    Show(*current->view);
    return 0;
}
