#include "console/PrintableText.h"

#include <gtest/gtest.h>

#include <chrono>

using namespace arvon::console;

TEST(PrintableText, KeepsTextOfAnyLanguage) {
    EXPECT_EQ(Printable("Wärmebedarf – 熱"), "Wärmebedarf – 熱");
}

TEST(PrintableText, EscapesControlCharacters) {
    EXPECT_EQ(Printable(std::string_view("a\n\t\0\x1B\x7F", 6)), "a\\n\\t\\x00\\x1B\\x7F");
    EXPECT_EQ(Printable("\xC2\x9B"), "\\xC2\\x9B");
}

TEST(PrintableText, EscapesBytesThatAreNoUtf8) {
    EXPECT_EQ(Printable("a\xFF"), "a\\xFF");
    EXPECT_EQ(Printable("\xE2\x82"), "\\xE2\\x82");
    EXPECT_EQ(Printable("\xC0\xAF"), "\\xC0\\xAF");
}

TEST(PrintableText, IsShortenedByCharactersNotBytes) {
    EXPECT_EQ(Shortened("äöü", 3), "äöü");
    EXPECT_EQ(Shortened("äöüß", 3), "äö…");
    EXPECT_EQ(Shortened("", 3), "");
}

TEST(PrintableText, IsShortenedQuicklyHoweverLongTheText) {
    const std::string text(std::size_t{64} << 20, 'x');
    const auto start = std::chrono::steady_clock::now();
    for (int time = 0; time < 1000; ++time)
        ASSERT_EQ(Shortened(text, 4), "xxx…");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST(PrintableText, IsShortenedByColumns) {
    EXPECT_EQ(Shortened("熱負荷", 6), "熱負荷");
    EXPECT_EQ(Shortened("熱負荷", 5), "熱負…");
    EXPECT_EQ(Shortened("熱負荷", 4), "熱…"); // half of a character cannot be shown
    EXPECT_EQ(Shortened("a\u0308o\u0308u\u0308", 3), "a\u0308o\u0308u\u0308");
    EXPECT_EQ(Shortened("a\u0308o\u0308u\u0308x", 3), "a\u0308o\u0308…");
    EXPECT_EQ(Shortened("ab\x1B", 4), "ab…");
}

TEST(PrintableText, IsShortenedThoughItTakesNoColumn) {
    std::string marks = "a";
    for (int mark = 0; mark < 100'000; ++mark)
        marks += "\u0301";
    EXPECT_LT(Shortened(marks, 10).size(), 1000u);
}

TEST(PrintableText, TakesTheColumnsOfItsCharacters) {
    EXPECT_EQ(Width("Wärme –"), 7u);
    EXPECT_EQ(Width("Wa\u0308rme"), 5u); // the mark is apart
    EXPECT_EQ(Width("熱負荷"), 6u);      // two each
    EXPECT_EQ(Width("ﾈﾂ"), 2u);          // the narrow forms
    EXPECT_EQ(Width("한글"), 4u);
    EXPECT_EQ(Width("\U0001F525"), 2u);
    EXPECT_EQ(Width("\u200B"), 0u);
    EXPECT_EQ(Width(""), 0u);
}
