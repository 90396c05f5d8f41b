#include "zek/command.h"

namespace zek::test {

namespace {

class ZekVerify : public ZekTest {
protected:
    void SetUp() override {
        ZekTest::SetUp();
        WriteSound("a.zek", 2);
        ASSERT_EQ(Zek({"compile", "a.zek"}).code, 0);
    }

    /// An image with some bytes replaced.
    static std::string Damaged(const std::string& file, std::size_t at, const std::string& bytes) {
        return Read(file).replace(at, bytes.size(), bytes);
    }
};

constexpr char kImageOk[] = "a.zki: ok: compiled image, 4 sections, 23 entries, 0 notes\n";
constexpr char kDebugOk[] = "a.zkd: ok: debug image, 5 sections, 46 entries, 0 notes\n";

TEST_F(ZekVerify, SaysWhatValidImagesHold) {
    const Result result = Zek({"verify", "a.zki", "a.zkd"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out, std::string(kImageOk) + kDebugOk);
    EXPECT_EQ(result.err, "");
}

TEST_F(ZekVerify, GoesOnBehindWhatIsWrongAndEndsWithTheWorst) {
    Write("x", "no image");
    const struct {
        Strings images;
        int code;
        std::string out;
        std::string err;
    } rows[] = {
        {{"missing", "a.zki"}, 2, kImageOk, "zek: cannot read missing: No such file or directory\n"},
        {{"x", "missing", "a.zkd"},
         3,
         kDebugOk,
         "zek: x: is neither a compiled nor a debug image (bad-magic at byte 0)\n"
         "zek: cannot read missing: No such file or directory\n"},
        {{"a.zki", ".", "a.zkd"}, 2, std::string(kImageOk) + kDebugOk, "zek: cannot read .: Is a directory\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.images));
        Strings arguments = row.images;
        arguments.insert(arguments.begin(), "verify");
        const Result result = Zek(arguments);
        EXPECT_EQ(result.code, row.code);
        EXPECT_EQ(result.out, row.out);
        EXPECT_EQ(result.err, row.err);
    }
}

TEST_F(ZekVerify, TellsPlaceReasonCodeAndOffset) {
    const std::string debug = Read("a.zkd");
    const std::size_t name = debug.find("Sensor 2");
    const struct {
        std::string bytes;
        std::string why;
    } rows[] = {
        {Damaged("a.zki", 256, Word(0xFFFFFFFF)),
         "image: 4294967295 sections are announced, there is room for 41 (section-count at byte 256)"},
        {debug.substr(0, name + 3),
         "section 3, block: needs 770 bytes, and the image ends after 132 (cut-short at byte " +
             std::to_string(name + 3 - 132 - 4) + ')'},
        {Damaged("a.zkd", name - 4, Word(9)),
         "section 3 [SENSOR], entry 1, text: needs 9 bytes, and its block ends after 8 (overrun at byte " +
             std::to_string(name - 4) + ')'},
        {Damaged("a.zkd", name - 8, Word(0x10020014)),
         "section 3 [SENSOR], entry 1, type id of the data: is 0x10020014, and that of the entry is 0x10020015 "
         "(wrong-data at byte " +
             std::to_string(name - 8) + ')'},
    };
    for (const auto& row : rows) {
        Write("x", row.bytes);
        const Result result = Zek({"verify", "x"});
        EXPECT_EQ(result.code, 3);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "zek: x: " + row.why + '\n');
        for (const std::string command : {"dump", "tree"}) {
            const Result shown = Zek({command, "x"});
            EXPECT_EQ(shown.code, 3);
            EXPECT_EQ(shown.out, "");
            EXPECT_EQ(shown.err, result.err);
        }
    }
}

TEST_F(ZekVerify, CountsNotesAndShowsThemWhereAsked) {
    Write("d", Read("a.zkd") + "xyz");
    Write("i", Read("a.zki") + "xyz");
    EXPECT_EQ(Zek({"verify", "d", "i"}).out,
              "d: ok: debug image, 5 sections, 46 entries, 1 note\n"
              "i: ok: compiled image, 4 sections, 23 entries, 1 note\n");
    const auto end = [](const char* file) { return std::to_string(Read(file).size()); };
    EXPECT_EQ(Zek({"verify", "--notes", "d", "i", "a.zkd"}).out,
              "d: note: image: 3 bytes follow behind the last section (trailing-bytes at byte " + end("a.zkd") + ")\n" +
                  "d: ok: debug image, 5 sections, 46 entries, 1 note\n" +
                  "i: note: table of table data: 3 bytes follow the last table (trailing-bytes at byte " +
                  end("a.zki") + ")\n" + "i: ok: compiled image, 4 sections, 23 entries, 1 note\n" + kDebugOk);
}

/// An image that has a note for each of very many words.
class ZekManyNotes : public ZekTest {
protected:
    static constexpr unsigned kNotes = 300'000;

    void SetUp() override {
        ZekTest::SetUp();
        WriteSound("a.zek");
        std::string source = Read("a.zek");
        const std::size_t list = source.find("SENSORS = ") + 10;
        std::string words;
        for (unsigned i = 0; i < kNotes; ++i) words += "W,";
        Write("a.zek", "[DEFINE]\nW = 1\n" + source.insert(list, words));
        ASSERT_EQ(Zek({"compile", "a.zek"}).code, 0);
    }
};

// The sanitizer does not start under such a limit.
#if !defined(__SANITIZE_ADDRESS__)
TEST_F(ZekManyNotes, TakeNoMemory) {
    const std::string count = std::to_string(kNotes);
    for (const std::string options : {"", "--json "}) {
        SCOPED_TRACE(options);
        const std::string command = ZEK_PROGRAM " verify --notes " + options + "a.zki";
        const Result result = Program({"sh", "-c", "ulimit -v 100000; " + command}).Finish();
        EXPECT_EQ(result.code, 0);
        EXPECT_EQ(result.err, "");
        std::size_t notes = 0;
        for (std::size_t at = 0; (at = result.out.find("what was not found", at)) != std::string::npos; ++at) ++notes;
        EXPECT_EQ(notes, kNotes);
        EXPECT_NE(result.out.find(options.empty() ? ", " + count + " notes\n" : "\"noteCount\":" + count),
                  result.out.npos);
    }
}

/// As JSON, the 64 bytes that a word takes while it is shown grew tenfold.
TEST_F(ZekManyNotes, TakeLittleMemoryToBeShown) {
    for (const std::string command : {"dump --json", "tree --json", "dump", "tree"}) {
        SCOPED_TRACE(command);
        const Result result = Program({"sh", "-c", "ulimit -v 160000; " ZEK_PROGRAM " " + command + " a.zki"}).Finish();
        EXPECT_EQ(result.code, 0);
        EXPECT_EQ(result.err, "");
        EXPECT_GT(result.out.size(), kNotes * std::size_t{10});
    }
}
#endif

/// Where nobody reads, that is told once, and the images behind are not looked at.
TEST_F(ZekManyNotes, EndWithTheFirstFailureOfStandardOutput) {
    for (const Strings& options : std::vector<Strings>{{"verify", "--notes"}, {"verify", "--notes", "--json"}}) {
        Strings arguments = options;
        arguments.insert(arguments.end(), {"a.zki", "a.zki", "missing"});
        const Result result = Zek(arguments, {.readerGone = true});
        EXPECT_EQ(result.code, 2);
        EXPECT_EQ(result.err, "zek: cannot write to standard output: Broken pipe\n");
    }
}

TEST_F(ZekVerify, ReadsStandardInputWhereTheNameIsADash) {
    for (const std::string command : {"verify -", "dump -", "tree -"}) {
        const Result result = Program({"sh", "-c", "cat a.zkd | " ZEK_PROGRAM " " + command}).Finish();
        EXPECT_EQ(result.code, 0);
        EXPECT_EQ(result.err, "");
        if (command == "verify -") {
            EXPECT_EQ(result.out, "-: ok: debug image, 5 sections, 46 entries, 0 notes\n");
        } else {
            EXPECT_EQ(result.out, Zek({command.substr(0, 4), "a.zkd"}).out);
        }
    }
    const Result empty = Program({"sh", "-c", ZEK_PROGRAM " verify - a.zki < /dev/null"}).Finish();
    EXPECT_EQ(empty.code, 3);
    EXPECT_EQ(empty.out, kImageOk);
    EXPECT_EQ(empty.err, "zek: -: is neither a compiled nor a debug image (bad-magic at byte 0)\n");
}

// The sanitizer does not start under such a limit.
#if !defined(__SANITIZE_ADDRESS__)
TEST_F(ZekVerify, FileOfHolesThatMemoryCannotHoldEndsWithTwo) {
    std::filesystem::copy("a.zkd", "holes");
    std::filesystem::resize_file("holes", std::uintmax_t{1} << 40);
    const Result result = Program({"sh", "-c", "ulimit -v 2000000; " ZEK_PROGRAM " verify holes a.zkd"}).Finish();
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.out, kDebugOk);
    EXPECT_EQ(result.err, "zek: cannot read holes: Cannot allocate memory\n");
}
#endif

TEST_F(ZekVerify, NameIsSafeForATerminal) {
    std::filesystem::copy("a.zki", "\x1b[2J");
    EXPECT_EQ(Zek({"verify", "\x1b[2J"}).out, "\\x1b[2J" + std::string(kImageOk).substr(5));
}

}  // namespace

}  // namespace zek::test
