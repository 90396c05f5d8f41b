// Images that find no room, and folders that may not be written: the old images stay as they were.
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include "zek/command.h"

namespace zek::test {

namespace {

/// A folder "disk" with two old images, which compiling a.zek would replace.
class ZekDisk : public ZekTest {
protected:
    void SetUp() override {
        ZekTest::SetUp();
        WriteSound("a.zek", 20);
        std::filesystem::create_directory("disk");
        ASSERT_EQ(Compile().code, 0);
        imageSize_ = std::filesystem::file_size("disk/a.zki");
        debugSize_ = std::filesystem::file_size("disk/a.zkd");
        PutOldImages();
    }
    void TearDown() override {
        EXPECT_TRUE(!mounted_ || umount2("disk", MNT_DETACH) == 0);
        chmod("disk", 0755);
        ZekTest::TearDown();
    }

    static Result Compile(const Setting& setting = {}) {
        return Zek({"compile", "a.zek", "-o", "disk/a.zki", "-g", "disk/a.zkd"}, setting);
    }
    static void PutOldImages() {
        Write("disk/a.zki", "old image");
        Write("disk/a.zkd", "old debug image");
    }

    /// That nothing was written, for this reason: `file` and the system's text.
    static void ExpectRefused(const Result& result, const std::string& reason) {
        EXPECT_EQ(result.code, 2);
        EXPECT_EQ(result.err, "zek: cannot write disk/" + reason + '\n');
        EXPECT_EQ(Read("disk/a.zki"), "old image");
        EXPECT_EQ(Read("disk/a.zkd"), "old debug image");
        EXPECT_EQ(Names("disk"), (Strings{"a.zkd", "a.zki"}));
    }
    void ExpectNewImages(const Result& result) const {
        EXPECT_EQ(result.code, 0) << result.err;
        EXPECT_EQ(std::filesystem::file_size("disk/a.zki"), imageSize_);
        EXPECT_EQ(std::filesystem::file_size("disk/a.zkd"), debugSize_);
        EXPECT_EQ(Names("disk"), (Strings{"a.zkd", "a.zki"}));
    }

    /// Makes "disk" a file system of its own, which no other process sees; false where this process may not.
    bool MountDisk() {
        if (unshare(CLONE_NEWNS) != 0) return false;
        if (mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) return false;
        mounted_ = mount("zek-test", "disk", "tmpfs", 0, "size=1m") == 0;
        if (mounted_) PutOldImages();
        return mounted_;
    }
    static void Remount(unsigned long flags, const std::string& options) {
        ASSERT_EQ(mount("zek-test", "disk", "tmpfs", MS_REMOUNT | flags, options.c_str()), 0) << options;
    }

    std::size_t imageSize_ = 0;
    std::size_t debugSize_ = 0;
    bool mounted_ = false;
};

std::string NoSpace(bool first) { return std::string(first ? "a.zki" : "a.zkd") + ": No space left on device"; }

TEST_F(ZekDisk, ThatIsFullAfterAnyByteLeavesTheOldImages) {
    const std::size_t both = imageSize_ + debugSize_;
    for (const std::size_t room : {std::size_t{0}, std::size_t{1}, imageSize_ / 2, imageSize_ - 1, imageSize_,
                                   imageSize_ + 1, imageSize_ + debugSize_ / 2, both - 1}) {
        SCOPED_TRACE(room);
        ExpectRefused(Compile(Fault("room:" + std::to_string(room))), NoSpace(room < imageSize_));
    }
    ExpectNewImages(Compile(Fault("room:" + std::to_string(both))));
}

/// On a small file system where one may be mounted; where not, the writing call fails in its place.
TEST_F(ZekDisk, ThatIsFullAfterAnyPageLeavesTheOldImages) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const auto pagesOf = [page](std::size_t size) { return (size + page - 1) / page; };
    const bool mounted = MountDisk();
    const std::size_t image = mounted ? pagesOf(imageSize_) : imageSize_;
    const std::size_t both = mounted ? image + pagesOf(debugSize_) : imageSize_ + debugSize_;
    const std::size_t step = mounted ? 1 : page;
    const auto compileWith = [&](std::size_t room) {
        if (!mounted) return Compile(Fault("room:" + std::to_string(room)));
        // Each old image takes a page.
        Remount(0, "size=" + std::to_string((room + 2) * page));
        return Compile();
    };
    std::size_t room = 0;
    for (; room < both; room += step) {
        SCOPED_TRACE(room);
        ExpectRefused(compileWith(room), NoSpace(room < image));
    }
    ExpectNewImages(compileWith(room));
}

/// A file system without room for another file; where none may be mounted, a name too long for one has to do.
TEST_F(ZekDisk, ThatTakesNoMoreFilesLeavesTheOldImages) {
    if (!MountDisk()) {
        const std::string name(300, 'n');
        const Result result = Zek({"compile", "a.zek", "-o", "disk/a.zki", "-g", "disk/" + name});
        ExpectRefused(result, name + ": File name too long");
        return;
    }
    // The folder itself counts, too.
    const auto compileWith = [](unsigned files) {
        Remount(0, "nr_inodes=" + std::to_string(3 + files));
        return Compile();
    };
    ExpectRefused(compileWith(0), NoSpace(true));
    ExpectRefused(compileWith(1), NoSpace(false));
    // The second name by which the old image could be put back counts as a file there.
    ExpectRefused(compileWith(2), NoSpace(true));
    ExpectNewImages(compileWith(3));
}

TEST_F(ZekDisk, ThatMayNotBeWrittenLeavesTheOldImages) {
    ASSERT_EQ(chmod("disk", 0555), 0);
    ExpectRefused(Compile({.permissionsHold = true}), "a.zki: Permission denied");
    const Result result = Zek({"compile", "a.zek", "-g", "disk/a.zkd"}, {.permissionsHold = true});
    ExpectRefused(result, "a.zkd: Permission denied");
    EXPECT_EQ(Names(), (Strings{"a.zek", "disk"})) << "the image that could be written is taken away";
    const Result fresh = Zek({"compile", "a.zek", "-o", "disk/new", "-g", "disk/other"}, {.permissionsHold = true});
    ExpectRefused(fresh, "new: Permission denied");
}

TEST_F(ZekDisk, ThatIsMountedForReadingLeavesTheOldImages) {
    const bool mounted = MountDisk();
    if (mounted) {
        Remount(MS_RDONLY, "");
    } else {
        ASSERT_EQ(chmod("disk", 0555), 0);
    }
    const std::string reason = mounted ? ": Read-only file system" : ": Permission denied";
    const Setting setting = {.permissionsHold = !mounted};
    ExpectRefused(Compile(setting), "a.zki" + reason);
    ExpectRefused(Zek({"compile", "a.zek", "-o", "disk/new", "-g", "b.zkd"}, setting), "new" + reason);
    EXPECT_EQ(Names(), (Strings{"a.zek", "disk"}));
}

TEST_F(ZekDisk, WithProtectedImagesKeepsThem) {
    for (const char* name : {"a.zki", "a.zkd"}) {
        const std::string path = std::string("disk/") + name;
        ASSERT_EQ(chmod(path.c_str(), 0444), 0);
        ExpectRefused(Compile({.permissionsHold = true}), std::string(name) + ": Permission denied");
        ASSERT_EQ(chmod(path.c_str(), 0644), 0);
    }
}

}  // namespace

}  // namespace zek::test
