// The view of compiled images of generated sources, against the queries of the loaded image.
#include "compile/image_bytes.h"
#include "view/view_comparison.h"
#include "view/viewed_image.h"
#include "yardstick/generated_source.h"

namespace zek::test {

using ViewOfGeneratedSource = GeneratedSource;

TEST_P(ViewOfGeneratedSource, OpensWhateverPassesTheCheckAndAnswersAsTheLoadedImage) {
    unsigned passed = 0;
    unsigned opened = 0;
    ForEachSeed([&](unsigned seed) {
        // Half of the images also have what earlier compilations of the process have left in the tables.
        if (seed % 2 == 0) ForgetEverything();

        ASSERT_TRUE(Parse());
        const bool valid = gccCheck();
        ASSERT_EQ(gccOutput("image"), 1U);
        gccCompEnd();
        const std::string image = Read("image");
        ImageFinding failure;
        const std::optional<ImageView> view = ImageView::Open(BytesOf(image), &failure);
        EXPECT_TRUE(view || !valid) << TextOf(failure);
        passed += valid;
        opened += view.has_value();
        if (!view) return;
        tagMETAFILEINFO info{};
        ASSERT_EQ(gcInit("image", &info), 1U);
        EXPECT_EQ(DifferenceFromLoaded(*view, info), "");
        gcUnInit();
    });
    std::cout << kSeedsInShard << " sources, " << passed << " sound, " << opened << " images opened\n";
    EXPECT_GT(passed, 0U) << "some sources are sound";
}

INSTANTIATE_TEST_SUITE_P(Shard, ViewOfGeneratedSource, testing::Range(0U, 8U));

}  // namespace zek::test
