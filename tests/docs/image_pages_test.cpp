// The dumps in the pages of the two images are what the library writes for the source beside them.
#include "docs/page.h"
#include "support/process_test.h"

namespace zek::test {
namespace {

struct PageRow {
    const char* name;
    const char* page;
    std::string source;
    std::string image;
    unsigned (*write)(const std::string& file);
};

class ImagePage : public ProcessTest, public testing::WithParamInterface<PageRow> {};

TEST_P(ImagePage, ShowsTheBytesThatTheLibraryWrites) {
    const PageRow& row = GetParam();
    Source(Block(row.page, "zek " + row.source), row.source);
    ASSERT_EQ(gccCheck(), 1U) << Errors();
    EXPECT_EQ(Errors(), "");
    ASSERT_EQ(row.write(row.image), 1U);
    const std::string shown = BytesOfDump(Block(row.page, "dump " + row.image));
    EXPECT_EQ(Dump(shown), Dump(WithoutTime(Read(row.image))));
    gccCompEnd();
}

INSTANTIATE_TEST_SUITE_P(Image, ImagePage,
                         testing::Values(PageRow{"Compiled", "docs/compiled-image.md", "board.zek", "board.zki",
                                                 gccOutput},
                                         PageRow{"Debug", "docs/debug-image.md", "lamp.zek", "lamp.zkd", gccOutputD}),
                         RowName());

}  // namespace
}  // namespace zek::test
