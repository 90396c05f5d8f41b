#include <nlohmann/json.hpp>

#include "zek/command.h"

namespace zek::test {

namespace {

using Json = nlohmann::json;

constexpr char kSource[] =
    "[DEFINE]\nVT_VALUE = 1\nVT_CALC = 2\nVT_TABLE = 10\n"
    "[PROPERTY]\nColour = light red\n"
    "[GROUP]\nPARENT = 0\nNAME = Board\nCHILDGROUP = 0x10\n"
    "[TABLE]\nNAME = Curve\nTYPE = 1\n0.255 = 9\n4.5 = 0x2A\n"
    "[GLOBAL]\nG_X = VT_CALC,+,3,G_Y\nG_Y = VT_TABLE,Curve,7\n"
    "[DEVICE]\nNAME = Fan\nID = 5\nINITFLAG = 0\nCONTROLMASK = 0\nP_ROLE = x\nVALUE_ON = VT_VALUE,ARG0\n";

class ZekDump : public ZekTest {
protected:
    /// Compiles a source at a known time.
    static void Compile(const std::string& text) { ZekTest::Compile("a", text, {"--timestamp", "1709164799"}); }

    static std::string Shown(const Strings& arguments) {
        const Result result = Zek(arguments);
        EXPECT_EQ(result.code, 0);
        EXPECT_EQ(result.err, "");
        return result.out;
    }

    static Json Parsed(const std::string& image) { return Json::parse(Shown({"dump", "--json", image})); }

    static Json Section(const Json& dump, const std::string& keyword) {
        for (const Json& section : dump["sections"]) {
            if (section["section"] == keyword) return section;
        }
        return {};
    }
};

TEST_F(ZekDump, ShowsACompiledImageWhole) {
    Compile(kSource);
    std::string block;
    for (int line = 0; line < 16; ++line) {
        block += "  " + std::string(1, "0123456789abcdef"[line]) + "0 ";
        for (int i = 0; i < 16; ++i) block += line == 0 && (i == 4 || i == 5) ? " 2a" : " 09";
        block += '\n';
    }
    EXPECT_EQ(
        Shown({"dump", "a.zki"}),
        "compiled image, version 0x01000000, written 2024-02-28 23:59:59 UTC (1709164799)\n"
        "\n[PROPERTY] #0\n"
        "  Colour (0x03000000)\n    0x12000000 string \"light red\"\n"
        "\n[GROUP] #0 \"Board\"\n"
        "  PARENT (0x02000014)\n    0x18000000 group \"0\"\n"
        "  NAME (0x02000015)\n    0x18000001 group \"Board\"\n"
        "  CHILDGROUP (0x02000007)\n    0x11000000 number 16 (0x10)\n"
        "\n[DEVICE] #0 \"Fan\" ID 5\n"
        "  NAME (0x02000015)\n    0x12000002 string \"Fan\"\n"
        "  ID (0x02000008)\n    0x11000004 number 5 (0x5)\n"
        "  INITFLAG (0x02000009)\n    0x11000005 number 0 (0x0)\n"
        "  CONTROLMASK (0x0200000a)\n    0x11000005 number 0 (0x0)\n"
        "  P_ROLE (0x03000001)\n    0x12000003 string \"x\"\n"
        "  VALUE_ON (0x05000006)\n    0x1e000001 value type 1 (0x1)\n    0x1d000000 argument 0 (0x0)\n"
        "\n[TABLE] #0 \"Curve\"\n"
        "  NAME (0x02000015)\n    0x12000001 string \"Curve\"\n"
        "  TYPE (0x02000002)\n    0x11000001 number 1 (0x1)\n"
        "\n[GLOBAL] #0\n"
        "  G_X (0x04000000)\n    0x1e000002 value type 2 (0x2)\n    0x1f000001 operator 1 (0x1)\n"
        "    0x11000002 number 3 (0x3)\n    0x04000001 global \"Y\"\n"
        "  G_Y (0x04000001)\n    0x1e00000a value type 10 (0xa)\n    0x1c000000 table \"Curve\"\n"
        "    0x11000003 number 7 (0x7)\n"
        "\nproperties: 2\n  0x03000000 property \"Colour\"\n  0x03000001 property \"ROLE\"\n"
        "\nglobals: 2\n  0x04000000 global \"X\"\n  0x04000001 global \"Y\"\n"
        "\nvalues: 7\n  0x05000000 value \"IPMI\"\n  0x05000001 value \"\"\n  0x05000002 value \"INIT\"\n"
        "  0x05000003 value \"DEINIT\"\n  0x05000004 value \"ENTRY\"\n  0x05000005 value \"EXIT\"\n"
        "  0x05000006 value \"ON\"\n"
        "\nrepeaters: 0\n"
        "\nnumbers: 6\n  0x11000000 number 16 (0x10)\n  0x11000001 number 1 (0x1)\n  0x11000002 number 3 (0x3)\n"
        "  0x11000003 number 7 (0x7)\n  0x11000004 number 5 (0x5)\n  0x11000005 number 0 (0x0)\n"
        "\nstrings: 4\n  0x12000000 string \"light red\"\n  0x12000001 string \"Curve\"\n  0x12000002 string \"Fan\"\n"
        "  0x12000003 string \"x\"\n"
        "\ngroups: 2\n  0x18000000 group \"0\"\n  0x18000001 group \"Board\"\n"
        "\nactions: 0\n"
        "\ntables: 1\n  0x1c000000 table \"Curve\"\n"
        "\ntable data #0 \"Curve\"\n" +
            block);
}

TEST_F(ZekDump, ShowsADebugImageWhole) {
    Compile(kSource);
    EXPECT_EQ(Shown({"dump", "a.zkd"}),
              "debug image, version 0x01000000, written 2024-02-28 23:59:59 UTC (1709164799)\n"
              "\n[PROPERTY] #0\n  Colour = \"light red\"\n"
              "\n[GROUP] #0 \"Board\"\n  PARENT = \"0\"\n  NAME = \"Board\"\n  CHILDGROUP = \"0x10\"\n"
              "\n[DEVICE] #0 \"Fan\" ID 5\n  NAME = \"Fan\"\n  ID = \"5\"\n  INITFLAG = \"0\"\n  CONTROLMASK = \"0\"\n"
              "  P_ROLE = \"x\"\n  VALUE_ON = \"VT_VALUE,ARG0\"\n"
              "\n[TABLE] #0 \"Curve\"\n  NAME = \"Curve\"\n  TYPE = \"1\"\n  0.255 = \"9\"\n  4.5 = \"0x2A\"\n"
              "\n[GLOBAL] #0\n  G_X = \"VT_CALC,+,3,G_Y,,\"\n  G_Y = \"VT_TABLE,Curve,7\"\n"
              "\n[DEFINE] #0\n  VT_VALUE = \"0x1\"\n  VT_CALC = \"0x2\"\n  VT_TABLE = \"0xa\"\n"
              "\npredefined names: 3\n  \"VT_CALC\" 2 (0x2)\n  \"VT_TABLE\" 10 (0xa)\n  \"VT_VALUE\" 1 (0x1)\n");
}

TEST_F(ZekDump, ShowsIncludesOfADebugImage) {
    Write("b.zek", "[DEFINE]\nB = 1\n");
    Compile("[INCLUDE]\nFILE = b.zek\n[PROPERTY]\nP = 1\n");
    const std::string shown = Shown({"dump", "a.zkd"});
    EXPECT_NE(shown.find("\n\n[INCLUDE] #0\n  FILE = \"b.zek\"\n\npredefined names: 1\n"), std::string::npos) << shown;
    EXPECT_EQ(Section(Parsed("a.zkd"), "INCLUDE"),
              Json::parse(R"({"section": "INCLUDE", "index": 0, "entries": [{"key": "FILE", "value": "b.zek"}]})"));
    EXPECT_EQ(Shown({"dump", "a.zki"}).find("INCLUDE"), std::string::npos);
}

TEST_F(ZekDump, TellsWhereAWordHasAnotherValueInTheEnd) {
    Compile("[DEFINE]\nLIMIT = 40\nV = 1\n[DEFINE]\nLIMIT = 45\n[IFDEF]\nDEFINEWORD = V\nV = 2\n");
    const std::string shown = Shown({"dump", "a.zkd"});
    EXPECT_NE(shown.find("\n[DEFINE] #0\n  LIMIT = \"0x28\", finally 45 (0x2d)\n  V = \"0x1\", finally 2 (0x2)\n"
                         "\n[DEFINE] #1\n  LIMIT = \"0x2d\"\n"),
              std::string::npos)
        << shown;
    EXPECT_NE(shown.find("\n  V = \"0x2\"\n"), std::string::npos) << shown;
    EXPECT_EQ(
        Section(Parsed("a.zkd"), "DEFINE")["entries"],
        Json::parse(R"([{"key": "LIMIT", "value": "0x28", "final": 45}, {"key": "V", "value": "0x1", "final": 2}])"));
}

TEST_F(ZekDump, JsonHoldsTheSameOfACompiledImage) {
    Compile(kSource);
    const Json dump = Parsed("a.zki");
    EXPECT_EQ(dump["image"], "compiled");
    EXPECT_EQ(dump["version"], 0x01000000);
    EXPECT_EQ(dump["time"], 1709164799);
    EXPECT_EQ(dump["sections"].size(), 5u);
    EXPECT_EQ(dump["unknownSections"], 0);
    EXPECT_EQ(Section(dump, "GROUP"), Json::parse(R"({"section": "GROUP", "index": 0, "name": "Board", "entries": [
        {"key": "PARENT", "id": 33554452, "values": [{"word": 402653184, "class": "group", "text": "0"}]},
        {"key": "NAME", "id": 33554453, "values": [{"word": 402653185, "class": "group", "text": "Board"}]},
        {"key": "CHILDGROUP", "id": 33554439, "values": [{"word": 285212672, "class": "number", "number": 16}]}]})"));
    EXPECT_EQ(dump["tables"]["globals"], Json::parse(R"([{"word": 67108864, "class": "global", "text": "X"},
        {"word": 67108865, "class": "global", "text": "Y"}])"));
    EXPECT_EQ(dump["tables"].size(), 9u);
    ASSERT_EQ(dump["tableData"].size(), 1u);
    EXPECT_EQ(dump["tableData"][0]["name"], "Curve");
    EXPECT_EQ(dump["tableData"][0]["bytes"].size(), 256u);
    EXPECT_EQ(dump["tableData"][0]["bytes"][4], 42);
    EXPECT_EQ(dump["tableData"][0]["bytes"][6], 9);
}

TEST_F(ZekDump, JsonHoldsTheSameOfADebugImage) {
    Compile(kSource);
    const Json dump = Parsed("a.zkd");
    EXPECT_EQ(dump["image"], "debug");
    EXPECT_EQ(dump["sections"].size(), 6u);
    EXPECT_EQ(Section(dump, "GROUP"), Json::parse(R"({"section": "GROUP", "index": 0, "name": "Board", "parent": "0",
        "entries": [{"key": "PARENT", "value": "0"}, {"key": "NAME", "value": "Board"},
                         {"key": "CHILDGROUP", "value": "0x10"}]})"));
    EXPECT_EQ(Section(dump, "DEVICE")["id"], 5);
    EXPECT_EQ(dump["predefinedNames"],
              Json::parse(R"([{"name": "VT_CALC", "number": 2}, {"name": "VT_TABLE", "number": 10},
        {"name": "VT_VALUE", "number": 1}])"));
}

/// Every byte that a source may hold, as a key and as a value.
TEST_F(ZekDump, JsonIsSoundWhateverTheBytes) {
    std::string text = "[PROPERTY]\n";
    for (int byte = 1; byte < 256; ++byte) {
        if (std::string("\n\r =,\"\\").find(static_cast<char>(byte)) != std::string::npos) continue;
        text += "k" + std::string(1, static_cast<char>(byte)) + "k = v" + static_cast<char>(byte) + "v\n";
    }
    text +=
        "utf = gr\xc3\xbcn \xf0\x9f\x8c\xa1\nquotes\\ = back\\slash\nsurrogate = \xed\xa0\x80\noverlong = \xc0\x80\n";
    Compile(text);
    for (const char* image : {"a.zki", "a.zkd"}) {
        const Json entries = Parsed(image)["sections"][0]["entries"];
        ASSERT_EQ(entries.size(), 252u);
        const auto value = [&](const Json& entry) {
            return image[4] == 'i' ? entry["values"][0]["text"] : entry["value"];
        };
        EXPECT_EQ(entries[0]["key"], "k\x01k");
        EXPECT_EQ(value(entries[0]), "v\x01v");
        EXPECT_EQ(entries[247]["key"], Json::parse(R"({"bytes": "6bff6b"})"));
        EXPECT_EQ(value(entries[247]), Json::parse(R"({"bytes": "76ff76"})"));
        EXPECT_EQ(value(entries[248]), "gr\xc3\xbcn \xf0\x9f\x8c\xa1");
        EXPECT_EQ(entries[249]["key"], "quotes\\");
        EXPECT_EQ(value(entries[249]), "back\\slash");
        EXPECT_EQ(value(entries[250]), Json::parse(R"({"bytes": "eda080"})"));
        EXPECT_EQ(value(entries[251]), Json::parse(R"({"bytes": "c080"})"));
    }
}

TEST_F(ZekDump, TextIsSafeForATerminal) {
    Compile("[PROPERTY]\nk\x1bk = a\x1b[2J\x7f\xff\\gr\xc3\xbcn\xc2\x9b\n");
    EXPECT_NE(Shown({"dump", "a.zkd"}).find("  k\\x1bk = \"a\\x1b[2J\\x7f\\xff\\\\gr\xc3\xbcn\\xc2\\x9b\"\n"),
              std::string::npos);
}

TEST_F(ZekDump, ReadsAnImageFromAPipe) {
    Compile(kSource);
    const Result result = Program({"sh", "-c", "cat a.zki | " ZEK_PROGRAM " dump /dev/stdin"}).Finish();
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out, Shown({"dump", "a.zki"}));
}

TEST_F(ZekDump, ValueThatIsLongIsShownWhole) {
    const std::string text(100000, 'x');
    std::string list;
    for (int i = 0; i < 20000; ++i) list += ",7";
    Compile("[DEFINE]\nVT_PACK = 13\nVT_WRITE = 5\nBUSTYPE_SMBUS = 1\n[PROPERTY]\nLong = " + text +
            "\n[GLOBAL]\nG_X = VT_WRITE,1,8,BUSTYPE_SMBUS,2" + list + '\n');
    const std::string shown = Shown({"dump", "a.zkd"});
    EXPECT_NE(shown.find("Long = \"" + text + "\"\n"), std::string::npos);
    EXPECT_NE(shown.find("G_X = \"VT_WRITE,1,8,BUSTYPE_SMBUS,2" + list + "\"\n"), std::string::npos);
}

TEST_F(ZekDump, FileThatCannotBeReadEndsWithTwo) {
    std::filesystem::create_directory("folder");
    for (const std::string command : {"dump", "tree"}) {
        EXPECT_EQ(Zek({command, "missing"}).err, "zek: cannot read missing: No such file or directory\n");
        const Result result = Zek({command, "folder"});
        EXPECT_EQ(result.code, 2);
        EXPECT_EQ(result.err, "zek: cannot read folder: Is a directory\n");
    }
}

TEST_F(ZekDump, WhatIsNoImageEndsWithThree) {
    Compile(kSource);
    const std::string image = Read("a.zki");
    const std::string debug = Read("a.zkd");
    const struct {
        const char* name;
        std::string bytes;
        const char* why;
    } rows[] = {
        {"Empty", "", "is neither a compiled nor a debug image (bad-magic at byte 0)"},
        {"Source", kSource, "is neither a compiled nor a debug image (bad-magic at byte 0)"},
        {"MagicOnly", image.substr(0, 15), "is neither a compiled nor a debug image (bad-magic at byte 0)"},
        {"MagicTooLong", std::string(debug).replace(15, 1, "x"),
         "is neither a compiled nor a debug image (bad-magic at byte 0)"},
        {"Version", std::string(image).replace(16, 4, Word(0x01000001)),
         "image: the format version is 0x01000001, only 0x01000000 is known (bad-version at byte 16)"},
        {"DebugVersion", std::string(debug).replace(16, 4, Word(2)),
         "image: the format version is 0x00000002, only 0x01000000 is known (bad-version at byte 16)"},
        {"NoVersion", image.substr(0, 16),
         "image: the image has 16 bytes, its header alone takes 260 (too-short at byte 16)"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Write("x", row.bytes);
        for (const Strings& arguments : std::vector<Strings>{{"dump", "x"}, {"dump", "--json", "x"}, {"tree", "x"}}) {
            const Result result = Zek(arguments);
            EXPECT_EQ(result.code, 3);
            EXPECT_EQ(result.out, "");
            EXPECT_EQ(result.err, std::string("zek: x: ") + row.why + '\n');
        }
    }
}

/// The library reads zeros behind the end of a debug image, so that to it a cut one looks like a smaller one.
TEST_F(ZekDump, DebugImageThatIsCutAnywhereEndsWithThree) {
    Compile("[DEFINE]\nA = 1\n[PROPERTY]\nB = c\n");
    const std::string image = Read("a.zkd");
    for (std::size_t size = 0; size < image.size(); ++size) {
        Write("x", image.substr(0, size));
        const Result result = Zek({size % 2 ? "dump" : "tree", "x"});
        EXPECT_EQ(result.code, 3) << size;
        EXPECT_EQ(result.out, "") << size;
        if (size < 20) continue;
        const bool known =
            result.err.find(size < 128 ? "(too-short at byte " : "(cut-short at byte ") != std::string::npos;
        EXPECT_TRUE(known || result.err.find("(count at byte ") != std::string::npos) << size << ' ' << result.err;
    }
}

TEST_F(ZekDump, BytesBehindAnImageAreAllowed) {
    Compile(kSource);
    for (const std::string file : {"a.zki", "a.zkd"}) {
        const std::string shown = Shown({"dump", file});
        Write(file, Read(file) + std::string(5, '\x7f'));
        EXPECT_EQ(Shown({"dump", file}), shown);
    }
}

/// Whatever a damaged image holds: it is shown or refused.
TEST_F(ZekDump, DamagedImagesEndInOrder) {
    Compile(kSource);
    for (const char* file : {"a.zki", "a.zkd"}) {
        const std::string image = Read(file);
        for (std::size_t at = 24; at < image.size(); at += 37) {
            Write("x", std::string(image).replace(at, 1, 1, static_cast<char>(image[at] ^ 0x81)));
            const Result result = Zek({"dump", "--json", "x"});
            EXPECT_TRUE(result.code == 0 || result.code == 3)
                << file << ' ' << at << ' ' << result.code << ' ' << result.signal;
            EXPECT_EQ(Json::accept(result.out), result.code == 0) << file << ' ' << at;
            const Result tree = Zek({"tree", "x"});
            EXPECT_EQ(tree.code, result.code) << file << ' ' << at << ' ' << tree.signal;
        }
    }
}

}  // namespace

}  // namespace zek::test
