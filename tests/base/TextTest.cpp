#include "base/Text.h"

#include <gtest/gtest.h>

#include <clocale>
#include <map>
#include <string>

namespace {

using namespace std::string_literals;

struct CasePair {
    const char* given;
    const char* upper;
};

void PrintTo(const CasePair& pair, std::ostream* out) {
    *out << pair.given << " to " << pair.upper;
}

class UpperCase : public testing::TestWithParam<CasePair> {};

TEST_P(UpperCase, FollowsTheSimpleMappings) {
    EXPECT_EQ(base::UpperCase(GetParam().given), GetParam().upper);
}

INSTANTIATE_TEST_SUITE_P(Texts, UpperCase,
                         testing::Values(CasePair{"", ""}, CasePair{"az AZ 09 @[`{", "AZ AZ 09 @[`{"},
                                         CasePair{"grün", "GRÜN"}, CasePair{"straße", "STRAßE"},
                                         CasePair{"ÿ", "Ÿ"}, CasePair{"÷×", "÷×"}, CasePair{"āąćőž", "ĀĄĆŐŽ"},
                                         CasePair{"ǆǅǄ", "ǄǅǄ"}, CasePair{"ƀ", "Ƀ"}, CasePair{"ɐ", "Ɐ"},
                                         CasePair{"ŉǰ", "ŉǰ"}, CasePair{"ạếỹ", "ẠẾỸ"}, CasePair{"ẞ", "ẞ"},
                                         CasePair{"αβγςσώϊ", "ΑΒΓςΣΏΪ"}, CasePair{"ΐ", "ΐ"},
                                         CasePair{"ἀᾀᾳ", "Ἀᾈᾼ"}, CasePair{"привет, ёжик ѓ", "ПРИВЕТ, ЁЖИК Ѓ"},
                                         CasePair{"ҋӿӏ", "ҊӾӀ"}, CasePair{"բարեւ", "ԲԱՐԵՒ"},
                                         CasePair{"և", "և"}, CasePair{"日本語 ひらがな", "日本語 ひらがな"},
                                         CasePair{"𐐨", "𐐀"}, CasePair{"😀a", "😀A"}, CasePair{"ｚ", "Ｚ"},
                                         CasePair{"ⅷ", "Ⅷ"}, CasePair{"ⓩ", "Ⓩ"}));

TEST(Text, KeepsLettersWhoseCapitalIsAnotherLettersInUpperCase) {
    for (const char* letter : {"µ",   "ı",   "ſ",   "ς",   "ǅ",   "ǈ",   "ǋ",   "ǲ",   "\xCD\x85",
                               "ϐ",   "ϑ",   "ϕ",   "ϖ",   "ϰ",   "ϱ",   "ϵ",   "ᲀ", "ᲁ",
                               "ᲂ", "ᲃ", "ᲄ", "ᲅ", "ᲆ", "ᲇ", "ᲈ", "ẛ",   "\xE1\xBE\xBE"})
        EXPECT_EQ(base::UpperCase(letter), letter);
}

TEST(Text, TellsTextsApartThatOnlyAForeignCapitalWouldJoin) {
    EXPECT_FALSE(base::EqualIgnoringCase("ı", "I"));
    EXPECT_FALSE(base::EqualIgnoringCase("Grosſ", "GROSS"));
    EXPECT_FALSE(base::EqualIgnoringCase("5 µm", "5 μm")); // the micro sign and the Greek letter
    EXPECT_FALSE(base::EqualIgnoringCase("λόγος", "ΛΌΓΟΣ"));
    EXPECT_TRUE(base::EqualIgnoringCase("λόγοσ", "ΛΌΓΟΣ"));
}

TEST(Text, GivesNoTwoLettersOneCapital) {
    std::map<std::string, char32_t> letters; // by the capital
    for (char32_t character = 0; character < 0x20000; ++character) {
        if (character >= 0xD800 && character < 0xE000) continue;
        const std::string text = base::FromCodePoints(std::u32string_view(&character, 1));
        const std::string upper = base::UpperCase(text);
        if (upper == text) continue;
        const auto [place, isFirst] = letters.try_emplace(upper, character);
        ASSERT_TRUE(isFirst) << "U+" << std::hex << static_cast<unsigned>(character) << " and U+"
                             << static_cast<unsigned>(place->second);
    }
    EXPECT_GT(letters.size(), 1300u);
}

TEST(Text, KeepsIllFormedBytesInUpperCase) {
    EXPECT_EQ(base::UpperCase("a\xFF\xC3z\xE2\x82"), "A\xFF\xC3Z\xE2\x82");
    EXPECT_EQ(base::UpperCase("\xED\xA0\x80x\xC0\xAFy"), "\xED\xA0\x80X\xC0\xAFY");
}

TEST(Text, KeepsNulCharactersInUpperCase) {
    EXPECT_EQ(base::UpperCase("a\0b"s), "A\0B"s);
}

TEST(Text, IsInUpperCaseAfterUpperCasing) {
    for (char32_t character = 0; character < 0x20000; ++character) {
        if (character >= 0xD800 && character < 0xE000) continue;
        const std::string once = base::UpperCase(base::FromCodePoints(std::u32string_view(&character, 1)));
        ASSERT_EQ(base::UpperCase(once), once) << "U+" << std::hex << static_cast<unsigned>(character);
        ASSERT_TRUE(base::IsWellFormedUtf8(once));
    }
}

TEST(Text, UpperCasesWithoutRegardToTheLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "");
    EXPECT_EQ(base::UpperCase("ixéж"), "IXÉЖ");
    std::setlocale(LC_ALL, before.c_str());
}

TEST(Text, ComparesIgnoringCase) {
    EXPECT_TRUE(base::EqualIgnoringCase("", ""));
    EXPECT_TRUE(base::EqualIgnoringCase("Layout", "lAYOUT"));
    EXPECT_TRUE(base::EqualIgnoringCase("Größe", "grÖßE"));
    EXPECT_FALSE(base::EqualIgnoringCase("Layout", "Layout "));
    EXPECT_FALSE(base::EqualIgnoringCase("", "a"));
    EXPECT_FALSE(base::EqualIgnoringCase("[", "{"));
    EXPECT_FALSE(base::EqualIgnoringCase("straße", "STRASSE"));
    EXPECT_FALSE(base::EqualIgnoringCase("a\xFF", "A\xFE"));
    EXPECT_TRUE(base::EqualIgnoringCase("a\xFF", "A\xFF"));
}

TEST(Text, ComparesIgnoringCaseAcrossLengthsInBytes) {
    EXPECT_TRUE(base::EqualIgnoringCase("aⱥ", "AȺ"));
    EXPECT_TRUE(base::EqualIgnoringCase("ɐb", "ⱯB"));
    EXPECT_FALSE(base::EqualIgnoringCase("aⱥx", "AȺ"));
}

TEST(Text, TrimsBlanksOnly) {
    EXPECT_EQ(base::TrimBlanks("  a b  "), "a b");
    EXPECT_EQ(base::TrimBlanks("   "), "");
    EXPECT_EQ(base::TrimBlanks(""), "");
    EXPECT_EQ(base::TrimBlanks("\t a\n"), "\t a\n");
    EXPECT_EQ(base::TrimBlanks(" \xC2\xA0 "), "\xC2\xA0");
}

TEST(Text, SplitsAtEverySeparator) {
    using Pieces = std::vector<std::string>;
    EXPECT_EQ(base::Split("a,b,c", ','), (Pieces{"a", "b", "c"}));
    EXPECT_EQ(base::Split("", ','), (Pieces{""}));
    EXPECT_EQ(base::Split(",", ','), (Pieces{"", ""}));
    EXPECT_EQ(base::Split("a,,b,", ','), (Pieces{"a", "", "b", ""}));
    EXPECT_EQ(base::Split("abc", ','), (Pieces{"abc"}));
}

TEST(Text, ReplacesEveryOccurrenceOnce) {
    EXPECT_EQ(base::Replace("aXbX", "X", "yy"), "ayybyy");
    EXPECT_EQ(base::Replace("aaa", "aa", "a"), "aa");
    EXPECT_EQ(base::Replace("abc", "x", "y"), "abc");
    EXPECT_EQ(base::Replace("abc", "b", ""), "ac");
    EXPECT_EQ(base::Replace("", "b", "c"), "");
}

TEST(Text, ReplacesNothingWhenAskedForAnEmptyText) {
    EXPECT_EQ(base::Replace("abc", "", "x"), "abc");
}

TEST(Text, TurnsCodePointsIntoTextAndBack) {
    const std::string text = "a\x7Fé€😀\U0010FFFF";
    EXPECT_EQ(base::ToCodePoints(text), U"a\x7Fé€😀\U0010FFFF");
    EXPECT_EQ(base::FromCodePoints(base::ToCodePoints(text)), text);
}

TEST(Text, WritesTheReplacementCharacterForWhatIsNoCharacter) {
    const char32_t wrong[] = {0xD800, 0xDFFF, 0x110000, 0xFFFFFFFF};
    EXPECT_EQ(base::FromCodePoints(std::u32string_view(wrong, 4)), "\uFFFD\uFFFD\uFFFD\uFFFD");
}

TEST(Text, ReadsOneReplacementCharacterForEachIllFormedStretch) {
    EXPECT_EQ(base::ToCodePoints("a\xFFz"), U"a\uFFFDz");
    EXPECT_EQ(base::ToCodePoints("\xE2\x82z"), U"\uFFFDz");
    EXPECT_EQ(base::ToCodePoints("\xF0\x9F\x98"), U"\uFFFD");
    EXPECT_EQ(base::ToCodePoints("\xED\xA0\x80"), U"\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(base::ToCodePoints("\x80\x80"), U"\uFFFD\uFFFD");
}

TEST(Text, TurnsUtf16IntoTextAndBack) {
    EXPECT_EQ(base::FromUtf16(u"aé€😀"), "aé€😀");
    EXPECT_EQ(base::ToUtf16("aé€😀"), u"aé€😀");
    EXPECT_EQ(base::ToUtf16("\U00010000\U0010FFFF"), u"\U00010000\U0010FFFF");
    EXPECT_EQ(base::FromUtf16(u"\U00010000\U0010FFFF"), "\U00010000\U0010FFFF");
}

TEST(Text, ReadsLoneSurrogatesAsReplacementCharacters) {
    const char16_t lone[] = {0xD83D, u'a', 0xDE00, 0xD83D, 0xD83D, 0xDE00, 0xD83D};
    EXPECT_EQ(base::FromUtf16(std::u16string_view(lone, 7)), "\uFFFDa\uFFFD\uFFFD😀\uFFFD");
}

TEST(Text, WritesIllFormedBytesAsReplacementCharactersInUtf16) {
    EXPECT_EQ(base::ToUtf16("a\xFFz"), u"a\uFFFDz");
}

TEST(Text, TakesTheFirstCharacters) {
    EXPECT_EQ(base::FirstCharacters("aé€😀z", 4), "aé€😀");
    EXPECT_EQ(base::FirstCharacters("aé", 0), "");
    EXPECT_EQ(base::FirstCharacters("aé", 9), "aé");
    EXPECT_EQ(base::FirstCharacters("", 3), "");
    EXPECT_EQ(base::FirstCharacters("\xFF\xFF"
                                    "a",
                                    2),
              "\xFF\xFF");
}

} // namespace
