#include "parser_test.h"

namespace {

using namespace std::string_literals;

struct TextRow {
    const char* name;
    std::string text;
    std::string dump;
};

class SectionText : public ParserTest, public testing::WithParamInterface<TextRow> {};

TEST_P(SectionText, GivesTheseSectionsAndItems) { EXPECT_EQ(DumpText(GetParam().text), GetParam().dump); }

std::string RowName(const testing::TestParamInfo<TextRow>& row) { return row.param.name; }

#define ROWS(prefix, ...) INSTANTIATE_TEST_SUITE_P(prefix, SectionText, testing::Values(__VA_ARGS__), RowName)

ROWS(File, TextRow{"Empty", "", ""}, TextRow{"OneByte", "a", "1 []\n1 <a> <>\n"},
     TextRow{"Whole", "[A]\nk=v\n\n[B]\nl = w\n", "1 [A]\n2 <k> <v>\n4 [B]\n5 <l> <w>\n"},
     TextRow{"ByteOrderMark", "\xEF\xBB\xBF[A]\nk=v\n", "1 [A]\n2 <k> <v>\n"},
     TextRow{"ByteOrderMarkAlone", "\xEF\xBB\xBF", ""},
     TextRow{"ByteOrderMarkBeforeComment", "\xEF\xBB\xBF;c\n[A]\n", "2 [A]\n"},
     TextRow{"SecondByteOrderMarkIsText", "\xEF\xBB\xBF\xEF\xBB\xBFk\n", "1 []\n1 <\xEF\xBB\xBFk> <>\n"},
     TextRow{"CutByteOrderMarkIsText", "\xEF\xBB", "1 []\n1 <\xEF\xBB> <>\n"},
     TextRow{"LaterByteOrderMarkIsText", "[A]\n\xEF\xBB\xBFk\n", "1 [A]\n2 <\xEF\xBB\xBFk> <>\n"},
     TextRow{"AnyByteIsKept", "[\xFF\xC3\xA4\x01]\n\x80=\xFE\n", "1 [\xFF\xC3\xA4\x01]\n2 <\x80> <\xFE>\n"});

ROWS(Line, TextRow{"NoFinalLineFeed", "[A]\nk=v", "1 [A]\n2 <k> <v>\n"},
     TextRow{"CarriageReturn", "[A]\r\nk=v\r\n", "1 [A]\n2 <k> <v>\n"},
     TextRow{"CarriageReturnAtTheEnd", "[A]\r\nk=v\r", "1 [A]\n2 <k> <v>\n"},
     TextRow{"OnlyOneCarriageReturnGoes", "[A]\nk=v\r\r\n", "1 [A]\n2 <k> <v\r>\n"},
     TextRow{"CarriageReturnWithinIsText", "k\rl=v\n", "1 []\n1 <k\rl> <v>\n"},
     TextRow{"CarriageReturnIsNoWhiteSpace", "[A]\n\rk=v \r \n", "1 [A]\n2 <\rk> <v \r>\n"},
     TextRow{"LoneCarriageReturnIsEmpty", "[A]\n\r\nk\n", "1 [A]\n3 <k> <>\n"},
     TextRow{"EmptyOnesCount", "\n\n \n\t\n[A]\n\nk\n", "5 [A]\n7 <k> <>\n"},
     TextRow{"TrimmedAtBothEnds", " \t[A]\t \n\t k = v \t\n", "1 [A]\n2 <k> <v>\n"},
     TextRow{"OtherControlsAreText", "\vk\f=\vv\f\n", "1 []\n1 <\vk\f> <\vv\f>\n"});

ROWS(Comment, TextRow{"AtTheBegin", ";c\n#c\n  ;c\n\t#c\n[A]\n", "5 [A]\n"},
     TextRow{"AfterWhiteSpace", "[A] ; c\nk=v\t# c\n", "1 [A]\n2 <k> <v>\n"},
     TextRow{"OnlyAfterWhiteSpace", "[A]\nk=v;w#x\n", "1 [A]\n2 <k> <v;w#x>\n"},
     TextRow{"OnlyOutsideQuotes", "[A]\nk=\"a ; b\" ; c\n", "1 [A]\n2 <k> <\"a ; b\">\n"},
     TextRow{"BehindAClosedQuote", "[A]\nk=\"a\";b \"c\" #d\n", "1 [A]\n2 <k> <\"a\";b \"c\">\n"},
     TextRow{"NotInAnOpenQuote", "[A]\nk=\"a ; b\nl=v ; c\n", "1 [A]\n2 <k> <\"a ; b>\n3 <l> <v>\n"},
     TextRow{"QuotesInItMeanNothing", "[A]\n; \"\nk=v ; \"\nl=w ; c\n", "1 [A]\n3 <k> <v>\n4 <l> <w>\n"},
     TextRow{"CutsAHeader", "[A ;]\n", "1 [[A]\n"},
     TextRow{"RightAfterEquals", "k=;c\nl= ;c\n", "1 []\n1 <k> <;c>\n2 <l> <>\n"},
     TextRow{"CarriageReturnGoesWithIt", "k=v ;c\r\n", "1 []\n1 <k> <v>\n"},
     TextRow{"AfterACarriageReturnIsNone", "k=v\r;c\n", "1 []\n1 <k> <v\r;c>\n"},
     TextRow{"AtTheEndOfTheFile", "k=v ;", "1 []\n1 <k> <v>\n"},
     TextRow{"AfterANulIsNone", "k=v\0;c\n"s, "1 []\n1 <k> <v>\n"});

ROWS(Joining, TextRow{"Two", "k = a,\\\nb\nl\n", "1 []\n1 <k> <a,b>\n3 <l> <>\n"},
     TextRow{"Many", "k\\\n=\\\na\\\nb\\\nc\n", "1 []\n1 <k> <abc>\n"},
     TextRow{"WhiteSpaceAroundGoes", "k = a \t\\ \t\n \t b\n", "1 []\n1 <k> <ab>\n"},
     TextRow{"WhiteSpaceWithinStays", "k = a b \\\n c d\n", "1 []\n1 <k> <a bc d>\n"},
     TextRow{"AcrossCarriageReturns", "k=a\\\r\nb\r\n", "1 []\n1 <k> <ab>\n"},
     TextRow{"NotBeforeTwoCarriageReturns", "k=a\\\r\r\nb\n", "1 []\n1 <k> <a\\\r>\n2 <b> <>\n"},
     TextRow{"CommentBehindTheBackslash", "k=a \\ ; c\nb\n", "1 []\n1 <k> <ab>\n"},
     TextRow{"NoCommentRightAtTheBackslash", "k=a \\;c\nb\n", "1 []\n1 <k> <a \\;c>\n2 <b> <>\n"},
     TextRow{"BackslashInACommentIsNone", "k=a ; c \\\nb\n", "1 []\n1 <k> <a>\n2 <b> <>\n"},
     TextRow{"CommentAfterTheLast", "k=a\\\nb ; c\n", "1 []\n1 <k> <ab>\n"},
     TextRow{"CommentLineEndsIt", "k=a\\\n; c \\\nb\n", "1 []\n1 <k> <a>\n3 <b> <>\n"},
     TextRow{"EmptyLineEndsIt", "k=a\\\n \t\nb\n", "1 []\n1 <k> <a>\n3 <b> <>\n"},
     TextRow{"CommentBeginsAJoinedLine", "k=a\\\n#b\n", "1 []\n1 <k> <a>\n"},
     TextRow{"CommentIsJudgedBeforeIt", "k=a \\\n;b\nl\n", "1 []\n1 <k> <a>\n3 <l> <>\n"},
     TextRow{"NotWithinQuotes", "k=\"a\\\nb\"\n", "1 []\n1 <k> <\"a\\>\n2 <b\"> <>\n"},
     TextRow{"AfterAClosedQuote", "k=\"a\"\\\n\"b ; c\"\n", "1 []\n1 <k> <\"a\"\"b ; c\">\n"},
     TextRow{"OpenQuoteEndsWithTheLine", "k=a\\\n\"b\nl=c ; d\n", "1 []\n1 <k> <a\"b>\n3 <l> <c>\n"},
     TextRow{"BackslashWithinTheLineStays", "k=a\\b\\ c\n", "1 []\n1 <k> <a\\b\\ c>\n"},
     TextRow{"OnlyTheLastBackslashGoes", "k=a\\\\\nb\n", "1 []\n1 <k> <a\\b>\n"},
     TextRow{"OnlyTheLastOfTwoApartGoes", "k=a \\ \\\n b\n", "1 []\n1 <k> <a \\b>\n"},
     TextRow{"AtTheEndOfTheFile", "k=a \\", "1 []\n1 <k> <a>\n"},
     TextRow{"AtTheLastLineFeed", "k=a \\\n", "1 []\n1 <k> <a>\n"}, TextRow{"OnlyBackslashes", "\\\n\\\n \\ \n\\", ""},
     TextRow{"BackslashesInOneLine", "\\\\\\\n", "1 []\n1 <\\\\> <>\n"},
     TextRow{"NumberOfTheFirst", "\n\\\n\\\nk\\\n=v\n[A]\n", "2 []\n2 <k> <v>\n6 [A]\n"},
     TextRow{"Header", "[A\\\n B]\nk\n", "1 [AB]\n3 <k> <>\n"},
     TextRow{"HeaderAfterABackslash", "k=a\\\n[B]\n", "1 []\n1 <k> <a[B]>\n"},
     TextRow{"EmptyLineThenHeader", " \\\n[B]\n", "1 [B]\n"},
     TextRow{"AfterAByteOrderMark", "\xEF\xBB\xBF\\\nk\n", "1 []\n1 <k> <>\n"});

ROWS(Header, TextRow{"NameIsTrimmed", "[ \tA B\t ]\n", "1 [A B]\n"},
     TextRow{"EmptyName", "[]\n[ \t]\n", "1 []\n2 []\n"}, TextRow{"NotClosed", "[A\nk\n", "1 [[A]\n2 <k> <>\n"},
     TextRow{"OnlyABracket", "[\n", "1 [[]\n"}, TextRow{"TextBehind", "[A] B\n", "1 [[A] B]\n"},
     TextRow{"SecondBracketBehind", "[A]]\n[A][B]\n", "1 [[A]]]\n2 [[A][B]]\n"},
     TextRow{"OpeningBracketWithin", "[[A]\n", "1 [[A]\n"},
     TextRow{"QuotesMeanNothing", "[\"A]\"]\n", "1 [[\"A]\"]]\n"},
     TextRow{"EqualsWithin", "[A=B]\n[A]=B\n", "1 [A=B]\n2 [[A]=B]\n"},
     TextRow{"SameNameAgain", "[A]\nk\n[A]\nl\n", "1 [A]\n2 <k> <>\n3 [A]\n4 <l> <>\n"},
     TextRow{"WithoutItems", "[A]\n[B]\n\n[C]\n", "1 [A]\n2 [B]\n4 [C]\n"}, TextRow{"CaseIsKept", "[aB]\n", "1 [aB]\n"},
     TextRow{"ClosingBracketAlone", "]\n", "1 []\n1 <]> <>\n"});

ROWS(Item, TextRow{"KeyAndValueAreTrimmed", "[A]\n \tk l\t =\t v w \n", "1 [A]\n2 <k l> <v w>\n"},
     TextRow{"FirstEqualsDivides", "k=v=w\nl==x\n", "1 []\n1 <k> <v=w>\n2 <l> <=x>\n"},
     TextRow{"EqualsInQuotesDivides", "\"k=l\"=v\n", "1 []\n1 <\"k> <l\"=v>\n"},
     TextRow{"NoEquals", "[A]\nk l\n", "1 [A]\n2 <k l> <>\n"},
     TextRow{"NothingBeforeEquals", "= v\n  =w\n=\n", "1 []\n1 <= v> <>\n2 <=w> <>\n3 <=> <>\n"},
     TextRow{"NothingBehindEquals", "k=\nl= \n", "1 []\n1 <k> <>\n2 <l> <>\n"},
     TextRow{"QuotesStay", "k=\"a\", \"b\",c\"\n", "1 []\n1 <k> <\"a\", \"b\",c\">\n"},
     TextRow{"SameKeyAgain", "k=v\nk=w\n", "1 []\n1 <k> <v>\n2 <k> <w>\n"},
     TextRow{"BeforeTheFirstHeader", "\nk=v\nl\n[A]\nm\n", "2 []\n2 <k> <v>\n3 <l> <>\n4 [A]\n5 <m> <>\n"},
     TextRow{"BeforeTheFirstHeaderAtTheEnd", "\n k=v", "2 []\n2 <k> <v>\n"},
     TextRow{"BracketWithin", "k[1]=v\n", "1 []\n1 <k[1]> <v>\n"});

ROWS(Nul, TextRow{"EndsAKey", "k\0l=v\n"s, "1 []\n1 <k> <v>\n"},
     TextRow{"EndsAValue", "k=v\0w\n"s, "1 []\n1 <k> <v>\n"}, TextRow{"EndsAName", "[A\0B]\nk\n"s, "1 [A]\n2 <k> <>\n"},
     TextRow{"EndsAnUnclosedName", "[A\0B] C\n"s, "1 [[A]\n"},
     TextRow{"EndsAKeyWithoutEquals", "k\0l\n"s, "1 []\n1 <k> <>\n"},
     TextRow{"ComesAfterTheTrimming", "[ A \0 ]\n k \0 = v \0 w \n"s, "1 [A ]\n2 <k > <v >\n"},
     TextRow{"DoesNotEndALine", "[A]\nk=v\0\nl=w\n"s, "1 [A]\n2 <k> <v>\n3 <l> <w>\n"},
     TextRow{"StandsInAJoinedPart", "k=a\0\\\nb\nl\n"s, "1 []\n1 <k> <a>\n3 <l> <>\n"},
     TextRow{"IsNoWhiteSpace", "[A]\n\0k=v\n=w\0\n"s, "1 [A]\n2 <> <v>\n3 <=w> <>\n"},
     TextRow{"Alone", "\0"s, "1 []\n1 <> <>\n"});

}  // namespace
