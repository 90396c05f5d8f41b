// Damaged images through both families of queries: whatever is damaged, the process goes on.
#include <iostream>
#include <optional>
#include <sstream>
#include <stdexcept>

#include "compile/image_bytes.h"
#include "docs/page.h"
#include "reliability/all_queries.h"
#include "reliability/child_cases.h"
#include "reliability/damage.h"
#include "reliability/image_file.h"
#include "reliability/test_images.h"
#include "view/view_comparison.h"

namespace zek::test {

namespace {

/// Whether an image loads, which stands in the file as well; asks everything of what it left, loaded or not.
using Load = bool (*)(const std::string& file, const std::string& image);

bool AsCompiledImage(const std::string& file, const std::string&) {
    ForgetEverything();
    tagMETAFILEINFO info{};
    const bool loaded = gcInit(file, &info);
    AskCompiledImage();
    return loaded;
}

/// Opens a view; one that opens must answer as the loaded image does.
bool AsView(const std::string& file, const std::string& image) {
    // No byte more than the image has, so that AddressSanitizer sees one that is read behind it.
    const std::vector<unsigned char> bytes(image.begin(), image.end());
    ImageFinding failure;
    const std::optional<ImageView> view = ImageView::Open(bytes, &failure);
    if (!view) {
        EXPECT_FALSE(failure.code == ImageCode::kNone || IsNote(failure.code)) << "a refusal has a code";
        EXPECT_LE(failure.offset, image.size());
        EXPECT_FALSE(failure.Place().empty() || failure.Sentence().empty()) << NameOf(failure.code);
        return false;
    }
    ForgetEverything();
    tagMETAFILEINFO info{};
    EXPECT_EQ(gcInit(file, &info), 1U);
    EXPECT_EQ(DifferenceFromLoaded(*view, info), "");
    return true;
}

bool AsDebugImage(const std::string& file, const std::string& image) {
    tagMETAFILEINFO info{};
    bool loaded = false;
    try {
        loaded = gdInit(file, &info);
    } catch (const std::out_of_range&) {
        // The one exception that it may throw.
    }
    AskDebugImage(image.size());
    gdUnInit();
    TakeMessages();
    return loaded;
}

struct DamageRow {
    const char* name;
    ImagePair (*images)();
    std::size_t mostCases;
    bool viewed = true;  ///< whether a view takes the whole image
    /// Damaged debug images that one process loads. The list of source files is read only once in a process, so a
    /// damaged list needs a fresh one.
    std::size_t debugBatch = 200;
};

/// The page that tells the counts.
constexpr char kPage[] = "docs/reliability.md";

/// 1234567 as 1,234,567.
std::string WithCommas(std::size_t number) {
    std::string text = std::to_string(number);
    for (std::size_t at = text.size(); at > 3; at -= 3) text.insert(at - 3, ",");
    return text;
}

/// A row of the page's table, whose first cells are given.
std::string Row(std::string row, const Tally& tally) {
    for (const std::size_t count : {tally.tried, tally.verified, tally.refused, tally.crashed.size()}) {
        row += ' ' + WithCommas(count) + " |";
    }
    return row + '\n';
}

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
        {"Small", Small, kAll, true, 1},      {"Queried", Queried, kAll, false}, {"Everything", Everything, kAll},
        {"ExampleBoard", ExampleBoard, 4000}, {"Generated58", Of<58>, 4000},     {"Generated82", Of<82>, 4000},
    };

protected:
    /// Damages an image in every way and loads it, and now and then the whole one right behind it. Gives its row
    /// of the page.
    static std::string Run(const char* by, const std::string& image, std::size_t mostCases, const ChildSetting& setting,
                           Load load) {
        const Damages damages(image, mostCases);
        const ImageFile file;
        const bool whole = load != AsView || GetParam().viewed;
        const Tally tally = RunInChildren(damages.Count(), setting, [&](std::size_t number) {
            const std::string damaged = damages.Damaged(number);
            file.Hold(damaged);
            const bool loaded = load(file.Name(), damaged);
            if (number % 16 != 0) return loaded;
            file.Hold(image);
            EXPECT_EQ(load(file.Name(), image), whole) << "the whole image, behind that one";
            return loaded;
        });
        for (const std::string& crash : tally.crashed) {
            ADD_FAILURE() << damages.Name(std::stoul(crash)) << ", case " << crash;
        }
        return Row(std::string("| ") + GetParam().name + " | `" + by + "` |", tally);
    }
};

TEST_P(DamagedImage, EndsNoProcessThatLoadsIt) {
    const ImagePair images = GetParam().images();
    const std::size_t most = GetParam().mostCases;
    std::string rows = Run("gcInit", images.compiled, most, {.spareMemory = kSpareMemory}, AsCompiledImage);
    // Comparing takes longer than loading.
    rows += Run("zek::ImageView", images.compiled, most / 4, {.spareMemory = kSpareMemory}, AsView);
    if (!images.debug.empty()) {
        rows += Run("gdInit", images.debug, most, {.batch = GetParam().debugBatch, .spareMemory = kSpareMemory},
                    AsDebugImage);
    }
    std::cout << rows;
    EXPECT_NE(SourceFile(kPage).find('\n' + rows), std::string::npos) << kPage << " has other rows than these:\n"
                                                                      << rows;
}

TEST(DamagedImages, AddUpToTheLastRowOfTheirTable) {
    const std::string page = SourceFile(kPage);
    const std::size_t begin = page.find("\n| Image | By | Tried | Verified | Refused | Crashed |\n");
    ASSERT_NE(begin, std::string::npos);
    std::istringstream rows(page.substr(begin, page.find("\n| all |", begin) - begin));
    std::string line;
    for (int head = 0; head < 3; ++head) std::getline(rows, line);
    Tally sum;
    std::size_t count = 0;
    while (std::getline(rows, line)) {
        std::erase(line, ',');
        ++count;
        std::istringstream numbers(line.substr(line.find("` |") + 3));
        std::size_t tried = 0;
        std::size_t verified = 0;
        std::size_t refused = 0;
        char bar = 0;
        ASSERT_TRUE(numbers >> tried >> bar >> verified >> bar >> refused) << line;
        EXPECT_EQ(tried, verified + refused) << line;
        sum.tried += tried;
        sum.verified += verified;
        sum.refused += refused;
    }
    EXPECT_EQ(count, 17U) << "six images three ways, but for one debug image that is not there";
    EXPECT_NE(page.find('\n' + Row("| all | |", sum)), std::string::npos) << Row("| all | |", sum);
}

INSTANTIATE_TEST_SUITE_P(Of, DamagedImage, testing::ValuesIn(DamagedImage::kRows), RowName());

}  // namespace zek::test
