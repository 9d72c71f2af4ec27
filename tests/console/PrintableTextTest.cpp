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

TEST(PrintableText, TakesOneColumnACharacter) {
    EXPECT_EQ(Width("Wärme –"), 7u);
}
