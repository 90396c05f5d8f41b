// What a process has loaded before stays in its tables, so the image that it compiles then has names of other images.
#include <gtest/gtest.h>

#include "view/compiled_model.h"

namespace zek::test {

namespace {

class CompiledAfterAnotherImage : public CompiledModel {
protected:
    /// Loads an image whose groups have these names, and lets go of it.
    static void LoadAnother(const std::vector<std::string>& groups) {
        Write("other.zki", ViewedImage({}, {.groups = groups}));
        ASSERT_EQ(gcInit("other.zki", nullptr), 1U);
        gcUnInit();
    }
};

TEST_F(CompiledAfterAnotherImage, ViewOpensWhereverTheRootStands) {
    LoadAnother({"Z"});
    Source(kSound);
    const std::string image = Compiled();
    const auto view = ImageView::Open(BytesOf(image));
    ASSERT_TRUE(view) << Refusal(image);
    EXPECT_EQ(view->IdentifierOf(kIdGroup, "0"), kIdGroup + 1);
    EXPECT_EQ(NotesOfView(image), "");
    EXPECT_FALSE(view->SectionNamed(kImageGroup, "A")->Parent());
    EXPECT_EQ(view->SectionNamed(kImageGroup, "B")->Parent()->Name(), "A");
}

TEST_F(CompiledAfterAnotherImage, ViewTakesTheFirstNameForNoRoot) {
    LoadAnother({"Z"});
    Source(
        "[QUORZEK]\nVERSION=1\n[GROUP]\nPARENT=0\nNAME=Z\nCHILDGROUP=0\n"
        "[GROUP]\nPARENT=Z\nNAME=B\nCHILDGROUP=0\n[GROUP]\nPARENT=B\nNAME=0\nCHILDGROUP=0\n");
    const std::string image = Compiled();
    EXPECT_EQ(NotesOfView(image), "");
    const auto view = ImageView::Open(BytesOf(image));
    ASSERT_TRUE(view);
    EXPECT_FALSE(view->SectionNamed(kImageGroup, "Z")->Parent());
    EXPECT_EQ(view->SectionNamed(kImageGroup, "B")->Parent()->Name(), "Z");
    EXPECT_EQ(view->SectionNamed(kImageGroup, "0")->Parent()->Name(), "B");
}

}  // namespace

}  // namespace zek::test
