// Whether a compiled and a debug image belong together.
#include <nlohmann/json.hpp>

#include "zek/command.h"

namespace zek::test {

namespace {

class ZekPair : public ZekTest {
protected:
    void SetUp() override {
        ZekTest::SetUp();
        WriteSound("a.zek", 2);
        WriteSound("b.zek", 3);
        ASSERT_EQ(Zek({"compile", "a.zek", "--timestamp", "1"}).code, 0);
        ASSERT_EQ(Zek({"compile", "b.zek"}).code, 0);
    }
};

TEST_F(ZekPair, OfOneCompilationBelongsTogetherWhateverTheTimeStamps) {
    ASSERT_EQ(Zek({"compile", "a.zek", "-o", "later.zki", "-g", "later.zkd", "--timestamp", "2"}).code, 0);
    for (const Strings& images : std::vector<Strings>{{"a.zki", "a.zkd"}, {"a.zkd", "a.zki"}, {"a.zki", "later.zkd"}}) {
        const Result result = Zek({"verify", "--pair", images[0], images[1]});
        EXPECT_EQ(result.code, 0) << result.err;
        const std::string debug = images[1] == "later.zkd" ? "later.zkd" : "a.zkd";
        EXPECT_EQ(result.out, "a.zki and " + debug + ": ok: they belong together\n");
    }
}

TEST_F(ZekPair, OfDifferentSourcesEndsWithOneAndTellsTheFirstDifference) {
    const std::string sizeA = std::to_string(Read("a.zki").size());
    const std::string sizeB = std::to_string(Read("b.zki").size());
    const Result result = Zek({"verify", "--pair", "a.zki", "b.zkd"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "zek: a.zki and b.zkd do not belong together: the debug image compiles to " + sizeB +
                              " bytes, the compiled image has " + sizeA + ", and they differ from byte 128 on\n");
    std::string other = Read("a.zek");
    Write("c.zek", other.replace(other.find("Sensor 2"), 8, "Sensor X"));
    ASSERT_EQ(Zek({"compile", "c.zek"}).code, 0);
    EXPECT_EQ(Zek({"verify", "--pair", "a.zki", "c.zkd"}).err,
              "zek: a.zki and c.zkd do not belong together: the debug image compiles to " + sizeA +
                  " bytes, the compiled image has " + sizeA + ", and they differ from byte " +
                  std::to_string(Read("c.zki").find("Sensor X") + 7) + " on\n");
}

TEST_F(ZekPair, IsToldAsJsonToo) {
    Write("x", "no image");
    const auto json = [](const char* text) { return nlohmann::json::parse(text); };
    const struct {
        Strings images;
        int code;
        nlohmann::json told;
    } rows[] = {
        {{"a.zki", "a.zkd"},
         0,
         json(R"({"schema": "zek-verify-pair/2", "files": ["a.zki", "a.zkd"], "image": "a.zki", "debug": "a.zkd",
                  "pair": true, "exitCode": 0})")},
        {{"b.zkd", "a.zki"},
         1,
         {{"schema", "zek-verify-pair/2"},
          {"files", {"b.zkd", "a.zki"}},
          {"image", "a.zki"},
          {"debug", "b.zkd"},
          {"pair", false},
          {"difference",
           {{"imageSize", Read("a.zki").size()}, {"compiledSize", Read("b.zki").size()}, {"offset", 128}}},
          {"reason", "a.zki and b.zkd do not belong together: the debug image compiles to " +
                         std::to_string(Read("b.zki").size()) + " bytes, the compiled image has " +
                         std::to_string(Read("a.zki").size()) + ", and they differ from byte 128 on"},
          {"exitCode", 1}}},
        {{"a.zki", "x"},
         3,
         json(R"({"schema": "zek-verify-pair/2", "files": ["a.zki", "x"], "faultyFile": "x", "fault": {"place": "",
                  "text": "is neither a compiled nor a debug image", "code": "bad-magic", "offset": 0},
                  "exitCode": 3})")},
        {{"a.zki", "missing"}, 2, json(R"({"schema": "zek-verify-pair/2", "files": ["a.zki", "missing"],
                  "reason": "cannot read missing: No such file or directory", "exitCode": 2})")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.images));
        const Result result = Zek({"verify", "--json", "--pair", row.images[0], row.images[1]});
        EXPECT_EQ(result.code, row.code);
        EXPECT_EQ(nlohmann::json::parse(result.out), row.told);
        EXPECT_EQ(result.err, Zek({"verify", "--pair", row.images[0], row.images[1]}).err);
    }
    const Result one = Zek({"verify", "--json", "--pair", "a.zki"});
    EXPECT_EQ(one.code, 2);
    EXPECT_EQ(one.out, "");
}

TEST_F(ZekPair, TakesOneValidImageOfEachKind) {
    Write("x", "no image");
    Write("cut", Read("a.zkd").substr(0, 300));
    ExpectRefused({
        {{"verify", "--pair", "a.zki"}, 2, "--pair takes two images, IMAGE and DEBUG"},
        {{"verify", "--pair", "a.zki", "a.zkd", "b.zkd"}, 2, "--pair takes two images, IMAGE and DEBUG"},
        {{"verify", "--pair", "a.zki", "b.zki"},
         2,
         "--pair takes a compiled and a debug image, and both are of one kind: a.zki and b.zki"},
        {{"verify", "--pair", "a.zki", "missing"}, 2, "cannot read missing: No such file or directory"},
        {{"verify", "--pair", "a.zki", "x"}, 3, "x: is neither a compiled nor a debug image (bad-magic at byte 0)"},
    });
    EXPECT_EQ(Zek({"verify", "--pair", "a.zki", "cut"}).code, 3);
}

}  // namespace

}  // namespace zek::test
