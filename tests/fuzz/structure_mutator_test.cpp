#include "structure_mutator.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <set>
#include <stdexcept>
#include <vector>

#include "compilation.h"
#include "memory_file.h"
#include "process_state.h"
#include "reliability/everything.h"
#include "source_files.h"
#include "zekcomp/image_view.h"
#include "zekcomp/zekcomp.h"

namespace zek::fuzz {
namespace {

constexpr unsigned kSeeds = 500;

/// Both images of a description that uses all there is.
const Compilation& Images() {
    static const Compilation images =
        Compile(std::string(test::kEverything) + kFileMark + "words.zek\n" + test::kWords);
    return images;
}

bool Opens(const std::string& image) {
    return ImageView::Open({reinterpret_cast<const unsigned char*>(image.data()), image.size()}).has_value();
}

bool LoadsCompiled(const std::string& image) {
    MemoryFile file;
    file.Write(image);
    const bool loads = gcInit(file.Path(), nullptr) == 1;
    ForgetEverything();
    return loads;
}

bool LoadsDebug(const std::string& image) {
    MemoryFile file;
    file.Write(image);
    bool loads = false;
    try {
        loads = gdInit(file.Path(), nullptr) == 1;
    } catch (const std::out_of_range&) {
        // The one exception that it may throw.
    }
    ForgetEverything();
    return loads;
}

/// How many images, each changed by a seed of its own, do so.
unsigned Count(const std::string& image, bool (*doSo)(const std::string&)) {
    unsigned count = 0;
    for (unsigned seed = 0; seed < kSeeds; ++seed) count += doSo(StructureMutator(image, seed).Mutated());
    return count;
}

TEST(StructureMutator, ChangesAnImageInTheSameWayForTheSameSeed) {
    for (const std::string& image : {Images().compiled, Images().debug}) {
        std::set<std::string> results;
        for (unsigned seed = 0; seed < kSeeds; ++seed) {
            const std::string mutated = StructureMutator(image, seed).Mutated();
            EXPECT_EQ(mutated, StructureMutator(image, seed).Mutated()) << seed;
            if (mutated != image) results.insert(mutated);
        }
        EXPECT_GT(results.size(), kSeeds * 3 / 4) << "most seeds give an image of their own";
    }
}

TEST(StructureMutator, MakesImagesLongerAndShorter) {
    for (const std::string& image : {Images().compiled, Images().debug}) {
        unsigned longer = 0;
        unsigned shorter = 0;
        for (unsigned seed = 0; seed < kSeeds; ++seed) {
            const std::size_t size = StructureMutator(image, seed).Mutated().size();
            longer += size > image.size();
            shorter += size < image.size();
        }
        EXPECT_GT(longer, kSeeds / 10);
        EXPECT_GT(shorter, kSeeds / 10);
    }
}

TEST(StructureMutator, OftenGivesAnImageThatIsTaken) {
    ASSERT_TRUE(Opens(Images().compiled) && LoadsCompiled(Images().compiled) && LoadsDebug(Images().debug));
    const unsigned opened = Count(Images().compiled, Opens);
    const unsigned loaded = Count(Images().compiled, LoadsCompiled);
    const unsigned restored = Count(Images().debug, LoadsDebug);
    std::printf("of %u changed images %u open, %u load; of as many debug images %u load\n", kSeeds, opened, loaded,
                restored);
    EXPECT_GT(opened, kSeeds / 20);
    EXPECT_GT(loaded, kSeeds / 4);
    EXPECT_GT(restored, kSeeds / 4);
    // Not always: what is refused is to be tried as well.
    EXPECT_LT(opened, kSeeds * 9 / 10);
    EXPECT_LT(loaded, kSeeds * 9 / 10);
    EXPECT_LT(restored, kSeeds * 9 / 10);
}

TEST(StructureMutator, ChangesWhatItHasChangedBeforeHoweverDamaged) {
    for (const std::string& image : {Images().compiled, Images().debug}) {
        std::string mutated = image;
        unsigned changed = 0;
        for (unsigned seed = 0; seed < kSeeds; ++seed) {
            const std::string next = StructureMutator(mutated, seed).Mutated();
            changed += next != mutated;
            // It cuts images and doubles parts: back to the beginning when nothing is left, or too much is there.
            mutated = next == mutated || next.size() > 4 * image.size() ? image : next;
        }
        EXPECT_GT(changed, kSeeds * 9 / 10);
    }
}

TEST(StructureMutator, LeavesWhatIsNoImage) {
    for (const std::string& bytes : {std::string(), std::string("[GROUP]\nNAME=a\n"), std::string(kCompiledMagic),
                                     std::string(kDebugMagic), std::string(300, '\0')}) {
        for (unsigned seed = 0; seed < 20; ++seed) EXPECT_EQ(StructureMutator(bytes, seed).Mutated(), bytes);
    }
}

/// So many fields of each kind.
std::vector<std::size_t> FieldsByKind(const Structure& structure) {
    std::vector<std::size_t> counts(4);
    for (const Field& field : structure.fields) ++counts[static_cast<std::size_t>(field.kind)];
    return counts;
}

TEST(ImageStructure, IsFoundInWholeImages) {
    for (const std::string& image : {Images().compiled, Images().debug}) {
        const Structure structure = StructureOf(image);
        // Every word belongs to one field at most.
        std::size_t end = 0;
        for (const Field& field : structure.fields) {
            EXPECT_GE(field.at, end);
            end = field.at + 4;
        }
        EXPECT_LE(end, image.size());
        const auto counts = FieldsByKind(structure);
        EXPECT_GT(counts[static_cast<std::size_t>(FieldKind::kWord)], 40U);
        EXPECT_GT(counts[static_cast<std::size_t>(FieldKind::kCount)], 40U);
        EXPECT_GT(counts[static_cast<std::size_t>(FieldKind::kLength)], 9U);
        EXPECT_EQ(counts[static_cast<std::size_t>(FieldKind::kOffset)], image == Images().compiled ? 11U : 0U)
            << "ten tables and the end";
    }
}

}  // namespace
}  // namespace zek::fuzz
