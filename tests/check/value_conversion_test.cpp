// The first pass of VALUE entries: their sub-strings become a value of their type.
#include "check/check_test.h"
#include "check/vocabulary.h"

namespace zek::test {

namespace {

constexpr std::size_t kAny = 99;

/// The bytes of a value: its type, its word, its strings, then its list where it has one.
std::string ValueBytes(unsigned type, const std::string& word, const std::vector<std::string>& strings,
                       const std::vector<std::string>* list) {
    const auto text = [](const std::string& s) { return Word(static_cast<unsigned>(s.size())) + s; };
    std::string bytes = Word(type) + text(word);
    for (const std::string& string : strings) bytes += text(string);
    if (!list) return bytes;
    bytes += Word(static_cast<unsigned>(list->size()));
    for (const std::string& string : *list) bytes += text(string);
    return bytes;
}

}  // namespace

class ValueConversion : public CheckTest {
protected:
    void SetUp() override {
        CheckTest::SetUp();
        Source(kWords);
        section_ = CZEKSection::Create("main.zek", "DEVICE", 1);
        Messages();
    }
    /// Checks a new entry VALUE_X of line 3 with the value and expects the result, the messages, what is stored, and
    /// whether the sub-strings are kept. The messages are given without what all have in common.
    void Expect(const std::string& value, unsigned result, const std::vector<std::string>& messages,
                const std::string& stored, bool kept = false) {
        SCOPED_TRACE("value '" + value + "'");
        CGEVALUE entry(kOwnValue, tagNOTATION{kNotationFamilyValue});
        entry.Init("main.zek", "VALUE_X", value, 3);
        const std::vector<std::string> subStrings = entry.m_vstrSubStr;
        EXPECT_EQ(entry.IsValid(section_, 0), result);
        std::string all;
        for (const std::string& message : messages) {
            const std::string level = message.starts_with("Too much") ? "Warning" : "Error";
            all += level + "[main.zek:3]: [DEVICE]:VALUE_X, " + message + "\n";
        }
        EXPECT_EQ(Messages(), all);
        std::vector<unsigned char> bytes;
        static_cast<CGeValue*>(entry.m_ZekEntryData.GetData())->GetBuffer(bytes);
        EXPECT_EQ(Dump(std::string(bytes.begin(), bytes.end())), Dump(stored));
        EXPECT_EQ(entry.m_vstrSubStr, kept ? subStrings : std::vector<std::string>()) << "which sub-strings are kept";
    }
    CZEKSection* section_ = nullptr;
};

/// A value type, how many sub-strings it takes with its word, and what its payload keeps of them.
struct TypeRow {
    unsigned type;
    std::size_t fewest;
    std::size_t most;
    std::size_t strings;
    bool list;
    std::size_t mostInList;
};

TEST_F(ValueConversion, TakesTheSubStringsThatItsTypeNeeds) {
    constexpr TypeRow kRows[] = {
        {0, 0, 1, 0, false, 0},     {1, 2, 2, 1, false, 0},        {3, 2, kAny, 1, true, kAny},
        {4, 5, 5, 4, false, 0},     {5, 6, 6, 4, true, kAny},      {6, 3, kAny, 2, true, kAny},
        {7, 0, 5, 0, true, 4},      {8, 5, 5, 4, false, 0},        {9, 6, 6, 4, true, kAny},
        {10, 3, 3, 2, false, 0},    {11, 6, 6, 4, true, kAny},     {12, 5, 5, 4, false, 0},
        {13, 0, kAny, 0, false, 0}, {50, 0, kAny, 0, false, 0},    {100, 0, kAny, 0, false, 0},
        {101, 2, 2, 1, false, 0},   {102, 3, kAny, 2, true, kAny}, {103, 2, 2, 1, false, 0},
        {104, 2, 2, 1, false, 0},   {105, 0, kAny, 0, false, 0},
    };
    for (const TypeRow& row : kRows) {
        const std::string word = "T" + std::to_string(row.type);
        std::string value = word;
        std::vector<std::string> strings;
        std::vector<std::string> list;
        for (std::size_t count = 1; count < 10; ++count) {
            const bool tooFew = count < row.fewest;
            std::vector<std::string> messages;
            if (tooFew) messages = {"Not enough sub-strings for value type " + word + "."};
            if (count > row.most) messages = {"Too much sub-strings for value type " + word + "."};
            // Until there are enough, the payload of the type is there but empty.
            const auto stored = tooFew ? std::vector<std::string>(row.strings) : strings;
            const auto storedList = tooFew ? std::vector<std::string>() : list;
            Expect(value, tooFew ? 0 : 1, messages,
                   ValueBytes(row.type, word, stored, row.list ? &storedList : nullptr), tooFew);
            const std::string next = "s" + std::to_string(count);
            value += "," + next;
            if (strings.size() < row.strings) {
                strings.push_back(next);
            } else if (list.size() < row.mostInList) {
                list.push_back(next);
            }
        }
    }
}

TEST_F(ValueConversion, TakesTheNumberOfItsTypeFromAPredefinedNameAlone) {
    Expect("TMAX,1,2,3", 1, {}, ValueBytes(0xFFFFFFFF, "TMAX", {}, nullptr));
    const std::string untouched = ValueBytes(0, "", {}, nullptr);
    Expect("1,5", 0, {"Value operator type(1) is invalid."}, untouched);
    Expect("NOSUCH,5", 0, {"Value operator type(NOSUCH) is invalid."}, untouched);
    Expect("t1,5", 0, {"Value operator type(t1) is invalid."}, untouched);
    Expect(",5", 0, {"Value operator type() is invalid."}, untouched);
    Expect("", 0, {"No value type sub-string."}, untouched);
}

TEST_F(ValueConversion, OfAnOperationCountsByItsOperator) {
    const auto bytes = [](std::vector<std::string> strings) {
        strings.resize(5);
        return ValueBytes(2, "T2", strings, nullptr);
    };
    const std::vector<std::string> notEnough = {"Not enough sub-strings for value type T2."};
    const std::vector<std::string> tooMuch = {"Too much sub-strings for value type T2."};
    Expect("T2", 0, notEnough, bytes({}), true);
    Expect("T2,+,1", 0, notEnough, bytes({}), true);
    for (const std::string code : {"+", "-", "*", "/", "|", "&", "%", "^", ">>", "<<", "pow"}) {
        Expect("T2," + code + ",a,b", 1, {}, bytes({code, "a", "b"}));
        Expect("T2," + code + ",a,b,c", 1, tooMuch, bytes({code, "a", "b"}));
    }
    for (const std::string code : {"==", ">", ">=", "!=", "<", "<="}) {
        Expect("T2," + code + ",a,b", 0, notEnough, bytes({code}), true);
        Expect("T2," + code + ",a,b,c", 0, notEnough, bytes({code}), true);
        Expect("T2," + code + ",a,b,c,d", 1, {}, bytes({code, "a", "b", "c", "d"}));
        Expect("T2," + code + ",a,b,c,d,e", 1, tooMuch, bytes({code, "a", "b", "c", "d"}));
    }
}

TEST_F(ValueConversion, OfAnOperationRefusesAnUnknownOperator) {
    const auto bytes = [](const std::string& code) { return ValueBytes(2, "T2", {code, "", "", "", ""}, nullptr); };
    for (const std::string code : {"=", "POW", " +", ""}) {
        Expect("T2," + code + ",a,b", 0, {"Value:OPERATOR " + code + " is invalid."}, bytes(code));
        Expect("T2," + code + ",a,b,c", 0,
               {"Too much sub-strings for value type T2.", "Value:OPERATOR " + code + " is invalid."}, bytes(code));
    }
    Expect("T2,=,a", 0, {"Not enough sub-strings for value type T2."}, bytes(""), true);
}

TEST_F(ValueConversion, OfAnIoPortNeedsABaseAddressOfZero) {
    const std::vector<std::string> none;
    const std::vector<std::string> one = {"e"};
    for (const unsigned type : {4U, 5U, 8U, 9U, 11U, 12U}) {
        const std::string word = "T" + std::to_string(type);
        const bool list = type == 5 || type == 9 || type == 11;
        const auto expect = [&](const std::string& bus, const std::string& address, bool sound) {
            std::vector<std::string> messages;
            if (!sound) messages = {"The BaseAddress " + address + " of BUSTYPE_SIMPLEIOPORT must be 0."};
            Expect(word + ",a,b," + bus + "," + address + (list ? ",e" : ""), sound ? 1 : 0, messages,
                   ValueBytes(type, word, {"a", "b", bus, address}, list ? &one : nullptr));
        };
        for (const char* address : {"0", "0x00", "00", "0.7"}) expect("BUSTYPE_SIMPLEIOPORT", address, true);
        // A predefined name does not count, although its value is 0.
        for (const char* address : {"0x10", "ZERO", "", "4294967296", "000000000000"}) {
            expect("BUSTYPE_SIMPLEIOPORT", address, false);
        }
        expect("BUSTYPE_SMBUS", "0x10", true);
        expect("bustype_simpleioport", "0x10", true);
    }
    Expect("T5,a,b,BUSTYPE_SIMPLEIOPORT,1,e,f", 0,
           {"Too much sub-strings for value type T5.", "The BaseAddress 1 of BUSTYPE_SIMPLEIOPORT must be 0."},
           ValueBytes(5, "T5", {"a", "b", "BUSTYPE_SIMPLEIOPORT", "1"},
                      std::make_unique<std::vector<std::string>>(std::initializer_list<std::string>{"e", "f"}).get()));
}

TEST_F(ValueConversion, ThatFailsKeepsTheSubStringsWhileTheSourceIsRead) {
    for (const char* value : {"NOSUCH,5", "T2,=,a,b", "T4,a,b,BUSTYPE_SIMPLEIOPORT,1"}) {
        SCOPED_TRACE(value);
        CGEVALUE entry(kOwnValue, tagNOTATION{kNotationFamilyValue});
        entry.Init("main.zek", "VALUE_X", value, 3);
        const std::vector<std::string> all = entry.m_vstrSubStr;
        EXPECT_EQ(entry.IsValid(section_, kWhileReading), 0U);
        EXPECT_EQ(entry.m_vstrSubStr, all);
        EXPECT_EQ(entry.IsValid(section_, 0), 0U);
        EXPECT_TRUE(entry.m_vstrSubStr.empty());
    }
}

TEST_F(ValueConversion, IsNotMadeOfAnEntryWithABadName) {
    CGEVALUE entry(kOwnValue, tagNOTATION{kNotationFamilyValue});
    entry.Init("main.zek", "VALUEX", "T1,5", 3);
    EXPECT_EQ(entry.IsValid(section_, 0), 0U);
    EXPECT_EQ(Messages(), "Error[main.zek:3]: [DEVICE]:VALUEX, Entry name is invalid.\n");
    EXPECT_EQ(static_cast<CGeValue*>(entry.m_ZekEntryData.GetData())->GetType(), 0U);
    EXPECT_EQ(entry.m_vstrSubStr.size(), 2U);
}

}  // namespace zek::test
