#include "console/Words.h"

#include <gmock/gmock.h>

using namespace arvon::console;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Words, ArePartedByBlanksAndTabs) {
    EXPECT_THAT(SplitWords("  request \t LaunchTool  "), ElementsAre("request", "LaunchTool"));
}

TEST(Words, OfAnEmptyOrBlankLineAreNone) {
    EXPECT_THAT(SplitWords(""), IsEmpty());
    EXPECT_THAT(SplitWords(" \t "), IsEmpty());
}

TEST(Words, EndAtACommentThatStartsAWord) {
    EXPECT_THAT(SplitWords("load # and look"), ElementsAre("load"));
    EXPECT_THAT(SplitWords("# nothing"), IsEmpty());
    EXPECT_THAT(SplitWords("a#b '#' \\#"), ElementsAre("a#b", "#", "#"));
}

TEST(Words, KeepEverythingInsideSingleQuotes) {
    EXPECT_THAT(SplitWords(R"('a "b" \ #c')"), ElementsAre(R"(a "b" \ #c)"));
}

TEST(Words, EscapeInsideDoubleQuotesOnlyWhatAShellEscapes) {
    EXPECT_THAT(SplitWords(R"("a \"b\" \\ \$ \` C:\QUARRA \1")"), ElementsAre(R"(a "b" \ $ ` C:\QUARRA \1)"));
}

TEST(Words, KeepABackslashBeforeALetter) {
    EXPECT_THAT(SplitWords(R"(Path=C:\QUARRA\Enviro C:\Übung)"),
                ElementsAre(R"(Path=C:\QUARRA\Enviro)", R"(C:\Übung)"));
}

TEST(Words, LoseABackslashBeforeAnythingElse) {
    EXPECT_THAT(SplitWords(R"(a\ b \\server \"q\" \'s\' \1)"),
                ElementsAre("a b", R"(\server)", "\"q\"", "'s'", "1"));
}

TEST(Words, KeepABackslashAtTheEndOfTheLine) {
    EXPECT_THAT(SplitWords("C:\\"), ElementsAre("C:\\"));
}

TEST(Words, JoinQuotedAndPlainPieces) {
    EXPECT_THAT(SplitWords(R"(ToolName="Grid Check"' 2'x)"), ElementsAre("ToolName=Grid Check 2x"));
}

TEST(Words, MayBeEmptyWhenQuoted) {
    EXPECT_THAT(SplitWords("a '' \"\""), ElementsAre("a", "", ""));
}

TEST(Words, KeepNulBytesAndBytesThatAreNoUtf8) {
    const std::string line("a\0b \xFF\xFE", 6);
    EXPECT_THAT(SplitWords(line), ElementsAre(std::string("a\0b", 3), "\xFF\xFE"));
}

TEST(Words, RefuseAQuoteThatIsNotClosed) {
    EXPECT_THROW(SplitWords("message 2 'abc"), CommandError);
    EXPECT_THROW(SplitWords("message 2 \"abc"), CommandError);
    EXPECT_THROW(SplitWords("message 2 \"abc\\\""), CommandError);
}

TEST(NamedValues, ArePartedAtTheFirstEqualsSign) {
    const auto pair = ReadNamedValue("Options=<a b='c'/>");
    ASSERT_TRUE(pair);
    EXPECT_EQ(pair->name, "Options");
    EXPECT_EQ(pair->value, "<a b='c'/>");
    EXPECT_EQ(ReadNamedValue("ToolName=")->value, "");
}

TEST(NamedValues, NeedANameAndAnEqualsSign) {
    EXPECT_FALSE(ReadNamedValue("ToolName"));
    EXPECT_FALSE(ReadNamedValue("=x"));
    EXPECT_FALSE(ReadNamedValue(""));
}

TEST(Numbers, AreWholeWordsOf32Bits) {
    EXPECT_EQ(ReadNumber("KIND", "13"), 13);
    EXPECT_EQ(ReadNumber("KIND", "-2147483648"), -2147483648);
    for (const char* word : {"", "x", "1x", " 1", "1.5", "2147483648", "0x10"})
        EXPECT_THROW(ReadNumber("KIND", word), CommandError) << word;
}

TEST(Numbers, AreRefusedByName) {
    try {
        ReadNumber("KIND", "open");
        FAIL();
    } catch (const CommandError& error) {
        EXPECT_STREQ(error.what(), "KIND: expected a 32-bit number, found \"open\"");
    }
}

TEST(Booleans, AreReadInAnyLetterCase) {
    for (const char* yes : {"True", "true", "TRUE", "-1", "1"})
        EXPECT_TRUE(ReadBoolean("checked", yes)) << yes;
    for (const char* no : {"False", "false", "0"})
        EXPECT_FALSE(ReadBoolean("checked", no)) << no;
    EXPECT_THROW(ReadBoolean("checked", ""), CommandError);
    EXPECT_THROW(ReadBoolean("checked", "yes"), CommandError);
}
