// Models that a host has put together at random: what the check accepts is compiled into an image that opens as a view
// and answers as the loaded image does, but for the refusals that the page on hosts names.
#include "view/random_model.h"

#include <algorithm>
#include <iostream>

#include "compile/image_bytes.h"
#include "view/compiled_model.h"

namespace zek::test {

namespace {

constexpr unsigned kModelsInShard = 150;

/// Whether some group does not begin with its PARENT and NAME, or has two NAMEs.
bool HasOddGroup() {
    for (const SectionList* list : CZEKSection::m_svpHSection) {
        for (const CZEKSection* section : *list) {
            if (section->m_dwType != kGroupSection) continue;
            const std::vector<CZEKEntry*>& entries = section->m_vpEntry;
            const bool begins = entries.size() > 1 && entries[0]->m_dwType == kParent && entries[1]->m_dwType == kName;
            if (!begins || std::ranges::count(entries, kName, &CZEKEntry::m_dwType) > 1) return true;
        }
    }
    return false;
}

/// Whether a section that is not compiled stands before a group in its list.
bool HasHiddenGroup() {
    for (const SectionList* list : CZEKSection::m_svpHSection) {
        const auto hidden =
            std::ranges::find_if(*list, [](const CZEKSection* section) { return section->m_dwType >= kDefineSection; });
        if (std::find_if(hidden, list->end(), [](const CZEKSection* section) {
                return section->m_dwType == kGroupSection;
            }) != list->end()) {
            return true;
        }
    }
    return false;
}

/// Why an image may be refused.
struct Excuses {
    bool oddGroup;
    bool hiddenGroup;
    bool usedUp;
};

class RandomHandBuilt : public CompiledModel, public testing::WithParamInterface<unsigned> {
protected:
    void OpenOrCount(const Excuses& excuses) {
        const std::string image = Written();
        ImageFinding failure;
        if (const auto view = ImageView::Open(BytesOf(image), &failure)) {
            ++opened_;
            EXPECT_EQ(Difference(*view), "");
            gcUnInit();
            return;
        }
        SCOPED_TRACE(TextOf(failure));
        switch (failure.code) {
            case ImageCode::kWrongTable:
                ++usedUp_;
                EXPECT_TRUE(excuses.usedUp);
                break;
            case ImageCode::kParentCycle:
                ++circles_;
                EXPECT_TRUE(excuses.oddGroup);
                break;
            case ImageCode::kMissingParent:
                lostNames_ += !excuses.hiddenGroup;
                hidden_ += !excuses.oddGroup;
                EXPECT_TRUE(excuses.oddGroup || excuses.hiddenGroup);
                break;
            default: ADD_FAILURE() << "a refusal that no host knows";
        }
    }

    unsigned opened_ = 0;
    unsigned circles_ = 0;
    unsigned lostNames_ = 0;
    unsigned hidden_ = 0;
    unsigned usedUp_ = 0;
};

}  // namespace

TEST_P(RandomHandBuilt, OpensOrIsRefusedAsThePageSays) {
    const unsigned first = GetParam() * kModelsInShard;
    unsigned unsound = 0;
    for (unsigned seed = first; seed < first + kModelsInShard && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Source(kSound);
        RandomModel model(seed);
        model.Build();
        SCOPED_TRACE(model.Story());
        if (gccCheck()) {
            OpenOrCount({HasOddGroup(), HasHiddenGroup(), model.UsedUp()});
        } else {
            ++unsound;
            gccCompEnd();
        }
        TakeMessages();
        // The others have what earlier models left in the tables.
        if (model.UsedUp() || seed % 4 == 0) ForgetEverything();
    }
    std::cout << kModelsInShard << " models, " << unsound << " unsound, " << opened_ << " opened; refused: " << circles_
              << " circles, " << lostNames_ << " lost names, " << hidden_ << " hidden groups, " << usedUp_
              << " used-up tables\n";
    EXPECT_GE(opened_, kModelsInShard / 3);
    EXPECT_GT(circles_, 0U);
    EXPECT_GT(lostNames_, 0U);
    EXPECT_GT(hidden_, 0U);
    EXPECT_GT(usedUp_, 0U);
}

INSTANTIATE_TEST_SUITE_P(Shard, RandomHandBuilt, testing::Range(0U, 2U));

}  // namespace zek::test
