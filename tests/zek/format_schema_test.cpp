// The documents for programs are what their schemas say, whatever bytes the source holds.
#include <nlohmann/json.hpp>
#include <valijson/adapters/nlohmann_json_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validator.hpp>

#include "docs/page.h"
#include "zek/command.h"

namespace zek::test {

namespace {

using nlohmann::json;

constexpr char kJsonPage[] = "docs/json.md";

/// What is wrong with a document; empty when nothing is. The schema is a file, or stands in the page.
std::string WrongWith(const json& document, const std::string& schemaFile) {
    const bool isPage = schemaFile == kJsonPage;
    const json text = json::parse(isPage ? Block(schemaFile, "json zek-findings/2") : SourceFile(schemaFile));
    valijson::Schema schema;
    valijson::SchemaParser().populateSchema(valijson::adapters::NlohmannJsonAdapter(text), schema);
    valijson::ValidationResults results;
    if (valijson::Validator().validate(schema, valijson::adapters::NlohmannJsonAdapter(document), &results)) return "";
    std::string wrong;
    for (valijson::ValidationResults::Error error; results.popError(error);) {
        for (const std::string& part : error.context) wrong += part;
        wrong += ": " + error.description + '\n';
    }
    return wrong.empty() ? "wrong" : wrong;
}

struct Format {
    const char* name;
    std::string format;
    Strings schemas;
};

/// The published schema, which allows much that zek never writes, and one of just what it writes.
const Strings kSarifSchemas = {"tests/zek/sarif-2.1.0-rtm.5.json", "tests/zek/sarif.schema.json"};

class ZekFormat : public ZekTest, public testing::WithParamInterface<Format> {
protected:
    /// The document that a check of these sources gives, which must be what the schema says.
    static json Checked(Strings sources, int code, const std::string& command = "check") {
        sources.insert(sources.begin(), {command, "--format", GetParam().format, "--verbose"});
        const Result result = Zek(sources);
        EXPECT_EQ(result.code, code);
        json document = json::parse(result.out, nullptr, false);
        EXPECT_FALSE(document.is_discarded()) << result.out;
        for (const std::string& schema : GetParam().schemas) {
            EXPECT_EQ(WrongWith(document, schema), "") << schema << '\n' << result.out;
        }
        return document;
    }
};

TEST_P(ZekFormat, HoldsWithFindingsOfEverySort) {
    std::filesystem::create_directory("parts");
    Write("parts/\xff\xc3\xbc %.zek", "[GLOBAL]\nG_Limit = VT_X,1\nG_\xff = \xe2\x82\xac\x01\xff,1\n[SENSR]\n");
    Write(
        "a.zek",
        "[INCLUDE]\nFILE = parts/\xff\xc3\xbc %.zek\nFILE = none\nFILE = a.zek\n[PROPERTY]\nA = 1,2\nA = 3\n[DEFINE]\n"
        "VT_Y = 1 ; zek: allow W10\n[GROUP]\nNAME = \"x\n");
    WriteSound("sound.zek");
    const json document = Checked({"a.zek", "sound.zek", "a.zek"}, 1);
    Checked({"--max-findings", "1", "a.zek"}, 1);
    EXPECT_NE(document.dump().find("did you mean SENSOR?") == std::string::npos,
              document.dump().find("\"fix\"") == std::string::npos);
}

TEST_P(ZekFormat, HoldsWithoutFindingsAndWithoutSources) {
    WriteSound("sound.zek");
    Checked({"sound.zek"}, 0);
    const auto expectReason = [](const json& document) {
        const std::string text = document.dump();
        EXPECT_NE(text.find("\"cannot read missing.zek: No such file or directory\""), text.npos) << text;
    };
    expectReason(Checked({"missing.zek"}, 2));
    expectReason(Checked({"missing.zek", "sound.zek"}, 2));
    expectReason(Checked({"missing.zek"}, 2, "compile"));
}

TEST_P(ZekFormat, HoldsWhateverBytesTheSourceHas) {
    unsigned state = 1;
    const std::string pieces[] = {
        "[GROUP]\n", "[GLOBAL]\n", "NAME", "=",  "\n",    "\"",       ",",    "\\\n",
        " ; ",       "G_A",        "VT_X", "ID", "[X]\n", "\xff\xfe", "\x1b", "zek: allow W101"};
    for (int round = 0; round < 20; ++round) {
        std::string text;
        for (int i = 0; i < 300; ++i) {
            state = state * 1103515245U + 12345U;
            const unsigned drawn = state >> 16;
            text += drawn % 5 == 0 ? std::string(1, static_cast<char>(drawn >> 4)) : pieces[drawn % 16];
        }
        Write("any.zek", text);
        SCOPED_TRACE(round);
        Checked({"any.zek"}, Zek({"check", "any.zek"}).code);
    }
}

INSTANTIATE_TEST_SUITE_P(Format, ZekFormat,
                         testing::Values(Format{"Json", "json", {kJsonPage}}, Format{"Sarif", "sarif", kSarifSchemas}),
                         RowName());

TEST(ZekFormatSchemas, CanFail) {
    EXPECT_NE(WrongWith(json::parse(R"({"schema": "zek-findings/2"})"), kJsonPage), "");
    for (const std::string& schema : kSarifSchemas) {
        EXPECT_NE(WrongWith(json::parse(R"({"version": "2.1.0", "runs": [{}]})"), schema), "") << schema;
    }
}

class ZekFindingOptions : public ZekTest {};

TEST_F(ZekFindingOptions, RaiseAndHideAndDecideTheExitCode) {
    WriteSound("a.zek");
    Write("a.zek", Read("a.zek") + "[PROPERTY]\nA = 1,2\nB = 1,2 ; zek: allow W101\n");
    const struct {
        Strings options;
        int code;
        std::string summary;
    } rows[] = {
        {{}, 0, "a.zek: 1 warning\n"},
        {{"-Werror"}, 1, "a.zek: 1 error\n"},
        {{"-Werror", "-W", "W101"}, 0, "a.zek: 1 warning\n"},
        {{"--error", "W101"}, 1, "a.zek: 1 error\n"},
        {{"--error", "W101", "--no-warn", "W101"}, 0, ""},
        {{"--no-warn=W101", "--error=W101"}, 1, "a.zek: 1 error\n"},
        {{"--error", "L121"}, 2, "zek: L121 is a finding of 'zek check'; 'zek compile' does not look for it\n"},
        {{"-W", "L121"}, 2, "zek: L121 is a finding of 'zek check'; 'zek compile' does not look for it\n"},
        {{"--no-warn", "L121"}, 0, "a.zek: 1 warning\n"},
        {{"--no-warn", "E101"}, 2, "zek: E101 is an error and stays one\n"},
        {{"-W", "none"}, 2, "zek: there is no code none\n"},
        {{"--raw", "--format", "json"}, 2, "zek: --raw shows text, not json\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.options));
        Strings words = {"compile", "a.zek"};
        words.insert(words.end(), row.options.begin(), row.options.end());
        std::filesystem::remove("a.zki");
        const Result result = Zek(words);
        EXPECT_EQ(result.code, row.code);
        EXPECT_TRUE(result.err.ends_with(row.summary)) << result.err;
        EXPECT_EQ(result.err.empty(), row.summary.empty()) << result.err;
        EXPECT_EQ(std::filesystem::exists("a.zki"), row.code == 0);
    }
}

TEST_F(ZekFindingOptions, DocumentThatCannotBeWrittenEndsWithTwo) {
    WriteSound("a.zek");
    for (const std::string format : {"json", "sarif"}) {
        const Result result = Zek({"check", "--format", format, "a.zek"}, {.out = "/dev/full"});
        EXPECT_EQ(result.code, 2);
        EXPECT_EQ(result.err, "zek: cannot write to standard output: No space left on device\n");
    }
}

}  // namespace

}  // namespace zek::test
