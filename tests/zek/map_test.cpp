#include <algorithm>

#include "zek/command.h"

namespace zek::test {

namespace {

class ZekMap : public ZekTest {
protected:
    void SetUp() override {
        ZekTest::SetUp();
        Write("words.zek", "[DEFINE]\nVT_CALC = 2\n");
        Write("a.zek",
              "[INCLUDE]\nFILE = words.zek\n\n[GLOBAL]\nG_X = VT_CALC,+,3,7\n\n[GLOBAL]\nG_Y = VT_CALC,-,3,G_X\n");
        ASSERT_EQ(Zek({"compile", "a.zek"}).code, 0);
        for (const char* file : {"a.zki", "a.zkd"}) Write(file, Read(file).replace(20, 4, Word(1709164799)));
    }

    /// What is said of the compiled image of that name and of a.zkd.
    static std::string NotTogether(const std::string& name) {
        constexpr int kBehindTimeStamp = 24;
        const std::string image = Read(name + ".zki");
        const std::string other = Read("a.zki");
        const auto begin = image.begin() + kBehindTimeStamp;
        const auto at = std::mismatch(begin, image.end(), other.begin() + kBehindTimeStamp, other.end()).first;
        return name + ".zki and a.zkd do not belong together: the debug image compiles to " +
               std::to_string(other.size()) + " bytes, the compiled image has " + std::to_string(image.size()) +
               ", and they differ from byte " + std::to_string(at - image.begin()) + " on";
    }
};

constexpr char kHeader[] =
    "00000000     16  magic\n"
    "00000010      4  format version 0x01000000\n"
    "00000014      4  time stamp 1709164799\n"
    "00000018    104  zeros\n";

TEST_F(ZekMap, ShowsEveryByteAndWhereItComesFrom) {
    const Result result = Zek({"map", "a.zki", "a.zkd"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_TRUE(result.out.starts_with(kHeader)) << result.out;
    const std::size_t sections = result.out.find("00000100");
    ASSERT_NE(sections, std::string::npos);
    EXPECT_EQ(result.out.substr(sections),
              "00000100      4  number of sections: 2\n"
              "00000104      4  [GLOBAL] #0  a.zek:4\n"
              "00000108      4    number of entries: 1\n"
              "0000010c      4    G_X (0x04000000)  a.zek:5\n"
              "00000110      4      number of words: 4\n"
              "00000114      4      0x1e000002 value type 2 (0x2)\n"
              "00000118      4      0x1f000001 operator 1 (0x1)\n"
              "0000011c      4      0x11000000 number 3 (0x3)\n"
              "00000120      4      0x11000001 number 7 (0x7)\n"
              "00000124      4  [GLOBAL] #1  a.zek:7\n"
              "00000128      4    number of entries: 1\n"
              "0000012c      4    G_Y (0x04000001)  a.zek:8\n"
              "00000130      4      number of words: 4\n"
              "00000134      4      0x1e000002 value type 2 (0x2)\n"
              "00000138      4      0x1f000002 operator 2 (0x2)\n"
              "0000013c      4      0x11000000 number 3 (0x3)\n"
              "00000140      4      0x04000000 global \"X\"\n"
              "00000144     12  zeros\n"
              "00000150      4  table: properties\n"
              "00000154      4    length: 0 bytes\n"
              "00000158      8  zeros\n"
              "00000160      4  table: globals\n"
              "00000164      4    length: 4 bytes\n"
              "00000168      2    0x04000000 = \"X\"\n"
              "0000016a      2    0x04000001 = \"Y\"\n"
              "0000016c      4  zeros\n"
              "00000170      4  table: values\n"
              "00000174      4    length: 29 bytes\n"
              "00000178      5    0x05000000 = \"IPMI\"\n"
              "0000017d      1    0x05000001 = \"\"\n"
              "0000017e      5    0x05000002 = \"INIT\"\n"
              "00000183      7    0x05000003 = \"DEINIT\"\n"
              "0000018a      6    0x05000004 = \"ENTRY\"\n"
              "00000190      5    0x05000005 = \"EXIT\"\n"
              "00000195     11  zeros\n"
              "000001a0      4  table: repeaters\n"
              "000001a4      4    length: 0 bytes\n"
              "000001a8      8  zeros\n"
              "000001b0      4  table: numbers\n"
              "000001b4      4    length: 8 bytes\n"
              "000001b8      4    0x11000000 = 3\n"
              "000001bc      4    0x11000001 = 7\n"
              "000001c0     16  zeros\n"
              "000001d0      4  table: strings\n"
              "000001d4      4    length: 0 bytes\n"
              "000001d8      8  zeros\n"
              "000001e0      4  table: groups\n"
              "000001e4      4    length: 2 bytes\n"
              "000001e8      2    0x18000000 = \"0\"\n"
              "000001ea      6  zeros\n"
              "000001f0      4  table: actions\n"
              "000001f4      4    length: 0 bytes\n"
              "000001f8      8  zeros\n"
              "00000200      4  table: tables\n"
              "00000204      4    length: 0 bytes\n"
              "00000208      8  zeros\n"
              "00000210      4  table: table data\n"
              "00000214      4    length: 0 bytes\n");
}

TEST_F(ZekMap, ShowsADebugImageFieldByField) {
    const std::string out = Zek({"map", "a.zkd"}).out;
    EXPECT_TRUE(
        out.starts_with("00000000     16  magic\n"
                        "00000010      4  format version: 0x01000000\n"
                        "00000014      4  time stamp: 1709164799\n"
                        "00000018    104  zeros\n"
                        "00000080      4  number of predefined names: 1\n"
                        "00000084     11  predefined name \"VT_CALC\"\n"
                        "0000008f      4  value of the name: 2\n"
                        "00000093      4  number of groups: 3\n"
                        "00000097      4  number of sections: 1\n"))
        << out;
    EXPECT_NE(out.find("      line: 5\n"), std::string::npos);
    EXPECT_NE(out.find("      text \"3\"\n"), std::string::npos);
}

TEST_F(ZekMap, ReadsStandardInput) {
    const Result result = Program({"sh", "-c", ZEK_PROGRAM " map - a.zkd < a.zki"}).Finish();
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out, Zek({"map", "a.zki", "a.zkd"}).out);
}

TEST_F(ZekMap, TellsWhatDoesNotBelongTogether) {
    WriteSound("b.zek");
    ASSERT_EQ(Zek({"compile", "b.zek"}).code, 0);
    // The same names, and another number.
    Write("c.zek", Read("a.zek").replace(Read("a.zek").find("3,7"), 3, "3,8"));
    ASSERT_EQ(Zek({"compile", "c.zek"}).code, 0);
    Write("x", "no image");
    ExpectRefused({
        {{"map", "b.zki", "a.zkd"}, 1, NotTogether("b")},
        {{"map", "c.zki", "a.zkd"}, 1, NotTogether("c")},
        {{"map", "a.zkd", "a.zkd"}, 2, "a.zkd is a debug image, so no other can stand beside it"},
        {{"map", "a.zki", "a.zki"}, 2, "a.zki is no debug image"},
        {{"map", "missing"}, 2, "cannot read missing: No such file or directory"},
        {{"map", "x"}, 3, "x: is neither a compiled nor a debug image (bad-magic at byte 0)"},
        {{"map", "a.zki", "x"}, 3, "x: is neither a compiled nor a debug image (bad-magic at byte 0)"},
    });
}

}  // namespace

}  // namespace zek::test
