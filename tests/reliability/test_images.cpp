#include "reliability/test_images.h"

#include "compile/small_image.h"
#include "debugimage/small_debug_image.h"
#include "interface/queried_image.h"
#include "reliability/everything.h"
#include "yardstick/generated_source.h"

namespace zek::test {

ImagePair ImagesTest::Compiled(const std::string& mainSource) {
    InChild([&] {
        ASSERT_EQ(gccCompStart(mainSource), 1U);
        gccParse();
        gccCheck();
        EXPECT_EQ(gccOutputD("compiled.zkd"), 1U);
        EXPECT_EQ(gccOutput("compiled.zki"), 1U);
    });
    // The same at every time, so that there are as many ways to damage them.
    return {WithoutTime(Read("compiled.zki")), WithoutTime(Read("compiled.zkd"))};
}

ImagePair ImagesTest::Small() { return {SmallImage(), SmallDebugImage()}; }

ImagePair ImagesTest::Queried() { return {QueriedImage(), ""}; }

ImagePair ImagesTest::Everything() {
    Write("everything.zek", kEverything);
    Write("words.zek", kWords);
    return Compiled("everything.zek");
}

ImagePair ImagesTest::ExampleBoard() {
    const std::string path = ZEK_GOLDEN "/server-board";
    return {Read(path + ".zki"), Read(path + ".zkd")};
}

ImagePair ImagesTest::Generated(unsigned seed) {
    std::filesystem::create_directory("dir");
    for (const auto& [name, text] : FilesToWrite(seed)) Write(name, text);
    return Compiled("main.zek");
}

}  // namespace zek::test
