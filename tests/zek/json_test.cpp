// What the commands print as JSON is of the form that docs/json.md promises.
#include <nlohmann/json.hpp>

#include "zek/command.h"

namespace zek::test {

namespace {

class ZekJson : public ZekTest {
protected:
    void SetUp() override {
        ZekTest::SetUp();
        WriteSound("a.zek", 2);
        // A text that is no UTF-8, a table, and a definition.
        Write("a.zek", Read("a.zek") + "[PROPERTY]\nk\xff = v\xfe\n[TABLE]\nNAME = Curve\nTYPE = 1\n0.255 = 9\n");
        ASSERT_EQ(Zek({"compile", "a.zek"}).code, 0);
        Write("x", "no image");
    }

    /// What is wrong with documents by the schemas that they name; empty when nothing is.
    static std::string Wrong(const Strings& files) {
        Strings words = {ZEK_PYTHON, ZEK_CHECK_JSON, ZEK_JSON_PAGE};
        words.insert(words.end(), files.begin(), files.end());
        return Program(words).Finish().err;
    }

    /// Writes what a command prints to a file and keeps the name.
    void Print(const Strings& arguments, int code, const std::string& schema) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const Result result = Zek(arguments);
        EXPECT_EQ(result.code, code) << result.err;
        EXPECT_EQ(nlohmann::json::parse(result.out)["schema"], schema);
        printed_.push_back(std::to_string(printed_.size()) + ".json");
        Write(printed_.back(), result.out);
    }

    Strings printed_;
};

TEST_F(ZekJson, IsOfTheFormThatThePagePromises) {
    for (const std::string image : {"a.zki", "a.zkd"}) {
        Print({"dump", "--json", image}, 0, "zek-dump/1");
        Print({"tree", "--json", image}, 0, "zek-tree/1");
    }
    Print({"verify", "--json", "a.zki", "a.zkd"}, 0, "zek-verify/2");
    Print({"get", "--json", "a.zki", "SENSOR/#1/VALUE"}, 0, "zek-get/1");
    Print({"get", "--json", "a.zki", "GLOBAL/G_X", "--default", "\xff"}, 0, "zek-get/1");
    Print({"map", "--json", "a.zki", "a.zkd"}, 0, "zek-map/1");
    Print({"map", "--json", "a.zkd"}, 0, "zek-map/1");
    Print({"origin", "--json", "a.zkd", "SENSOR/#1/VALUE", "a.zki"}, 0, "zek-origin/1");
    Print({"diff", "--json", "a.zki", "a.zki"}, 0, "zek-diff/1");
    WriteSound("b.zek", 1);
    ASSERT_EQ(Zek({"compile", "b.zek"}).code, 0);
    Print({"diff", "--json", "a.zki", "b.zki"}, 1, "zek-diff/1");
    Write("behind", Read("a.zki") + "behind");
    Print({"verify", "--json", "--notes", "behind", "x", "missing"}, 3, "zek-verify/2");
    Write("findings.zek", "[INCLUDE]\nFILE = part.zek\n[SENSR]\n[PROPERTY]\nA = 1,2\n");
    Write("part.zek", "[GLOBAL]\nG_\xff = VT_X\n");
    Print({"check", "--format", "json", "a.zek", "findings.zek", "missing"}, 2, "zek-findings/2");
    Print({"compile", "--format", "json", "findings.zek"}, 1, "zek-findings/2");
    Print({"verify", "--json", "--pair", "a.zki", "a.zkd"}, 0, "zek-verify-pair/2");
    Print({"verify", "--json", "--pair", "b.zki", "a.zkd"}, 1, "zek-verify-pair/2");
    Print({"verify", "--json", "--pair", "a.zki", "x"}, 3, "zek-verify-pair/2");
    Print({"verify", "--json", "--pair", "a.zki", "missing"}, 2, "zek-verify-pair/2");
    EXPECT_EQ(Wrong(printed_), "");
}

/// Each document is changed in one place.
TEST_F(ZekJson, CheckFindsWhatIsNotOfThatForm) {
    const struct {
        Strings arguments;
        const char* pointer;
        const char* value;
        const char* why;
    } rows[] = {
        {{"dump", "--json", "a.zki"}, "/time", "-1", "document.json: $.time: -1 is less than the minimum of 0\n"},
        {{"tree", "--json", "a.zki"},
         "/groups/0/extra",
         "1",
         "document.json: $.groups[0]: Additional properties are not allowed ('extra' was unexpected)\n"},
        {{"verify", "--json", "a.zki"},
         "/images/0/valid",
         "7",
         "document.json: $.images[0].valid: 7 is not of type 'boolean'\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pointer);
        nlohmann::json document = nlohmann::json::parse(Zek(row.arguments).out);
        document[nlohmann::json::json_pointer(row.pointer)] = nlohmann::json::parse(row.value);
        Write("document.json", document.dump());
        EXPECT_EQ(Wrong({"document.json"}), row.why);
    }
}

TEST_F(ZekJson, VerdictOfEachImageStandsInIt) {
    const Result result = Zek({"verify", "--json", "a.zki", "x", "missing"});
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.err,
              "zek: x: is neither a compiled nor a debug image (bad-magic at byte 0)\n"
              "zek: cannot read missing: No such file or directory\n");
    EXPECT_EQ(nlohmann::json::parse(result.out), nlohmann::json::parse(R"({"schema": "zek-verify/2", "images": [
        {"file": "a.zki", "valid": true, "image": "compiled", "sections": 6, "entries": 26, "noteCount": 0, "exitCode": 0},
        {"file": "x", "valid": false, "exitCode": 3, "fault": {"place": "", "code": "bad-magic", "offset": 0,
         "text": "is neither a compiled nor a debug image"}},
        {"file": "missing", "exitCode": 2, "reason": "cannot read missing: No such file or directory"}]})"));
}

TEST_F(ZekJson, TreeSaysWhatTheTextSays) {
    const auto tree = nlohmann::json::parse(Zek({"tree", "--json", "a.zki"}).out);
    EXPECT_EQ(tree["groups"], nlohmann::json::parse(R"([{"depth": 0, "name": "Board", "parent": "0", "sensors": [
        {"name": "Sensor 1", "id": 1, "parent": "Board", "values": {"ID": {"written": "1", "number": 1},
         "TYPE": {"written": "1", "number": 1}, "THRESHOLD_WH": {"written": "40", "number": 40}}},
        {"name": "Sensor 2", "id": 2, "parent": "Board", "values": {"ID": {"written": "2", "number": 2},
         "TYPE": {"written": "1", "number": 1}, "THRESHOLD_WH": {"written": "40", "number": 40}}}]}])"));
    EXPECT_EQ(tree["tavrgroups"], nlohmann::json::parse(R"([{"depth": 0, "name": "All", "id": 1, "pid": 0, "sensors": [
        {"written": "1", "id": 1, "name": "Sensor 1"}, {"written": "2", "id": 2, "name": "Sensor 2"}]}])"));
}

}  // namespace

}  // namespace zek::test
