#include <map>
#include <stdexcept>

#include "parser_test.h"

namespace {

// Maps names to paths as a host may, and records "NAME from INCLUDER" for each call.
struct Host {
    std::map<std::string, std::string> paths;
    std::vector<std::string> calls;

    static bool Open(void* context, const std::string& name, const std::string& includer, std::string& path) {
        auto* const host = static_cast<Host*>(context);
        host->calls.push_back(name + " from " + includer);
        const auto found = host->paths.find(name);
        if (found == host->paths.end()) return false;
        path = found->second;
        return true;
    }
};

bool ThrowAnException(void*, const std::string&, const std::string&, std::string&) { throw std::logic_error("x"); }
bool ThrowANumber(void*, const std::string&, const std::string&, std::string&) { throw 1; }

using Calls = std::vector<std::string>;

class OpenHook : public ParserTest {
protected:
    void SetUp() override {
        ParserTest::SetUp();
        std::filesystem::current_path(Path(""));
        for (const char* name : {"a", "b", "c"}) {
            host_.paths[name] = Write(std::string(name) + ".ini", "[" + std::string(name) + "]\n");
        }
        RSSetOpenHook(Host::Open, &host_);
    }

    Host host_;
};

TEST_F(OpenHook, DecidesAlone) {
    Write("plain", "[PLAIN]\n");
    Write("dir/found", "[DIR]\n");
    RSAddSearchDir("dir");
    EXPECT_EQ(DumpFile("a"), "1 [a]\n");
    EXPECT_EQ(DumpFile("plain"), "refused");
    EXPECT_EQ(DumpFile("found"), "refused");
    EXPECT_EQ(DumpFile("dir\\found"), "refused");
    EXPECT_EQ(host_.calls, (Calls{"a from ", "plain from ", "found from ", "dir\\found from "}));
}

TEST_F(OpenHook, GivesAPathThatIsOpenedAsItIs) {
    Write("dir/found", "[DIR]\n");
    RSAddSearchDir("dir");
    host_.paths = {{"x", "dir/found"}, {"y", "found"},     {"z", ""}, {"n", std::string("dir/found\0", 10)},
                   {"d", "dir"},       {"s", "dir\\found"}};
    EXPECT_EQ(DumpFile("x"), "1 [DIR]\n");
    for (const char* name : {"y", "z", "n", "d", "s"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(DumpFile(name), "refused");
    }
}

TEST_F(OpenHook, ReceivesTheFileOpenedLastAmongThoseBeingEnumerated) {
    OpenedFile a("a");
    OpenedFile b("b");
    OpenedFile c("c");
    DumpFile("none");
    b.Section(0);
    DumpFile("none");
    a.Section(0);
    DumpFile("none");
    c.Section(0);
    DumpFile("none");
    c.Close();
    DumpFile("none");
    b.Close();
    DumpFile("none");
    a.Close();
    DumpFile("none");
    EXPECT_EQ(host_.calls, (Calls{"a from ", "b from ", "c from ", "none from ", "none from " + Path("b.ini"),
                                  "none from " + Path("b.ini"), "none from " + Path("c.ini"),
                                  "none from " + Path("b.ini"), "none from " + Path("a.ini"), "none from "}));
}

TEST_F(OpenHook, ReceivesAnIncluderThatTheSearchFound) {
    RSSetOpenHook(nullptr, nullptr);
    Write("dir/sub/found", "[DIR]\n");
    RSAddSearchDir("dir");
    const OpenedFile outer("sub\\found");
    outer.Section(0);
    RSSetOpenHook(Host::Open, &host_);
    EXPECT_EQ(DumpFile("a"), "1 [a]\n");
    EXPECT_EQ(host_.calls, (Calls{"a from dir/sub/found"}));
}

TEST_F(OpenHook, DoesNotLiftTheRefusalOfAFileBeingEnumerated) {
    const OpenedFile a("a");
    a.Section(0);
    host_.paths["again"] = Path("a.ini");
    EXPECT_EQ(DumpFile("again"), "refused");
}

TEST_F(OpenHook, ReceivesTheNameByteForByte) {
    DumpFile("");
    DumpFile(std::string("x\0y", 3));
    EXPECT_EQ(host_.calls, (Calls{" from ", std::string("x\0y from ", 9)}));
}

TEST_F(OpenHook, IsTakenAwayByNull) {
    RSSetOpenHook(nullptr, nullptr);
    EXPECT_EQ(DumpFile("a"), "refused");
    EXPECT_EQ(DumpFile("a.ini"), "1 [a]\n");
    EXPECT_EQ(host_.calls, Calls());
}

TEST_F(OpenHook, RefusesByThrowing) {
    for (const RSOpenHook hook : {ThrowAnException, ThrowANumber}) {
        RSSetOpenHook(hook, nullptr);
        EXPECT_EQ(DumpFile("a.ini"), "refused");
    }
    RSSetOpenHook(nullptr, nullptr);
    EXPECT_EQ(DumpFile("a.ini"), "1 [a]\n");
}

TEST_F(OpenHook, MayCloseTheIncluderAndOpenFilesItself) {
    static void* outer = nullptr;
    static std::string seen;
    RSSetOpenHook(nullptr, nullptr);
    outer = RSOpenFile("a.ini");
    RSEnumSection(outer, 0);
    RSSetOpenHook(
        [](void*, const std::string& name, const std::string& includer, std::string& path) {
            RSSetOpenHook(nullptr, nullptr);
            RSCloseFile(&outer);
            seen = includer + ": " + DumpFile("b.ini");
            path = name;
            return true;
        },
        nullptr);
    EXPECT_EQ(DumpFile("c.ini"), "1 [c]\n");
    EXPECT_EQ(seen, "a.ini: 1 [b]\n");
}

}  // namespace
