// Damaged images through both families of queries: whatever is damaged, the process goes on.
#include <iostream>
#include <stdexcept>

#include "compile/image_bytes.h"
#include "reliability/all_queries.h"
#include "reliability/child_cases.h"
#include "reliability/damage.h"
#include "reliability/image_file.h"
#include "reliability/test_images.h"

namespace zek::test {

namespace {

/// Whether a file of `size` bytes loads; asks everything of what it left, loaded or not.
using Load = bool (*)(const std::string& file, std::size_t size);

bool AsCompiledImage(const std::string& file, std::size_t) {
    ForgetEverything();
    tagMETAFILEINFO info{};
    const bool loaded = gcInit(file, &info);
    AskCompiledImage();
    return loaded;
}

bool AsDebugImage(const std::string& file, std::size_t size) {
    tagMETAFILEINFO info{};
    bool loaded = false;
    try {
        loaded = gdInit(file, &info);
    } catch (const std::out_of_range&) {
        // The one exception that it may throw.
    }
    AskDebugImage(size);
    gdUnInit();
    TakeMessages();
    return loaded;
}

struct DamageRow {
    const char* name;
    ImagePair (*images)();
    std::size_t mostCases;
    /// Damaged debug images that one process loads. The list of source files is read only once in a process, so a
    /// damaged list needs a fresh one.
    std::size_t debugBatch = 200;
};

constexpr std::size_t kAll = static_cast<std::size_t>(-1);
constexpr std::size_t kSpareMemory = 64 << 20;

}  // namespace

class DamagedImage : public ImagesTest, public testing::WithParamInterface<DamageRow> {
public:
    template <unsigned seed>
    static ImagePair Of() {
        return Generated(seed);
    }
    static constexpr DamageRow kRows[] = {
        {"Small", Small, kAll, 1},        {"Queried", Queried, kAll},
        {"Everything", Everything, kAll}, {"ExampleBoard", ExampleBoard, 4000},
        {"Generated1", Of<1>, 4000},      {"Generated2", Of<2>, 4000},
    };

protected:
    /// Damages an image in every way and loads it, and now and then the whole one right behind it.
    static void Run(const char* kind, const std::string& image, const ChildSetting& setting, Load load) {
        const Damages damages(image, GetParam().mostCases);
        const ImageFile file;
        const Tally tally = RunInChildren(damages.Count(), setting, [&](std::size_t number) {
            const std::string damaged = damages.Damaged(number);
            file.Hold(damaged);
            const bool loaded = load(file.Name(), damaged.size());
            if (number % 16 != 0) return loaded;
            file.Hold(image);
            EXPECT_TRUE(load(file.Name(), image.size())) << "the whole image, behind that one";
            return loaded;
        });
        for (const std::string& crash : tally.crashed) {
            ADD_FAILURE() << damages.Name(std::stoul(crash)) << ", case " << crash;
        }
        std::cout << GetParam().name << ", " << kind << " image: " << tally.Text() << '\n';
    }
};

TEST_P(DamagedImage, EndsNoProcessThatLoadsIt) {
    const ImagePair images = GetParam().images();
    Run("compiled", images.compiled, {.spareMemory = kSpareMemory}, AsCompiledImage);
    Run("debug", images.debug, {.batch = GetParam().debugBatch, .spareMemory = kSpareMemory}, AsDebugImage);
}

INSTANTIATE_TEST_SUITE_P(Of, DamagedImage, testing::ValuesIn(DamagedImage::kRows), RowName());

}  // namespace zek::test
