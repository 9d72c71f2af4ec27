#include "base/Utf8.h"

#include "base/Text.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct IllFormed {
    const char* bytes;
    std::size_t at; // of the first ill-formed byte
};

void PrintTo(const IllFormed& each, std::ostream* out) {
    for (const char* byte = each.bytes; *byte; ++byte)
        *out << std::hex << static_cast<int>(static_cast<unsigned char>(*byte)) << ' ';
}

class IllFormedUtf8 : public testing::TestWithParam<IllFormed> {};

TEST_P(IllFormedUtf8, IsFound) {
    EXPECT_FALSE(base::IsWellFormedUtf8(GetParam().bytes));
    EXPECT_EQ(base::IllFormedUtf8At(GetParam().bytes), GetParam().at);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, IllFormedUtf8,
    testing::Values(IllFormed{"\x80", 0}, IllFormed{"a\xBF", 1}, IllFormed{"\xC0\x80", 0},
                    IllFormed{"\xC1\xBF", 0}, IllFormed{"\xC2", 0}, IllFormed{"\xC2z", 0},
                    IllFormed{"\xE0\x9F\xBF", 0}, IllFormed{"\xE1\x80", 0}, IllFormed{"\xED\xA0\x80", 0},
                    IllFormed{"\xED\xBF\xBF", 0}, IllFormed{"\xF0\x8F\xBF\xBF", 0},
                    IllFormed{"\xF0\x90\x80", 0}, IllFormed{"\xF4\x90\x80\x80", 0},
                    IllFormed{"\xF5\x80\x80\x80", 0}, IllFormed{"\xFE", 0}, IllFormed{"\xFF", 0},
                    IllFormed{"abcdefghé\xFF", 10}, IllFormed{"abcdefghijklmnop\xFF", 16},
                    IllFormed{"\xE2\x82\xAC\xE2\x82", 3}));

TEST(Utf8, DecodesEveryCharacterThatItWrites) {
    for (char32_t character = 0; character <= 0x10FFFF; ++character) {
        if (character >= 0xD800 && character < 0xE000) continue;
        std::string text;
        base::AppendUtf8(text, character);
        const base::Utf8Step step = base::DecodeUtf8(text, 0);
        ASSERT_TRUE(step.isWellFormed) << "U+" << std::hex << static_cast<unsigned>(character);
        ASSERT_EQ(step.character, character);
        ASSERT_EQ(step.length, text.size());
        ASSERT_TRUE(base::IsWellFormedUtf8(text));
    }
}

TEST(Utf8, AcceptsTheShortestEncodingOnly) {
    int accepted = 0;
    std::string text = "...";
    for (unsigned bytes = 0; bytes < 0x1000000; ++bytes) {
        text[0] = static_cast<char>(bytes >> 16);
        text[1] = static_cast<char>(bytes >> 8);
        text[2] = static_cast<char>(bytes);
        const base::Utf8Step step = base::DecodeUtf8(text, 0);
        if (!step.isWellFormed || step.length != 3) continue;
        ++accepted;
        ASSERT_GE(step.character, 0x800u);
        ASSERT_FALSE(step.character >= 0xD800 && step.character < 0xE000);
    }
    EXPECT_EQ(accepted, 0x10000 - 0x800 - 0x800);
}

TEST(Utf8, CountsAsciiBytes) {
    EXPECT_EQ(base::AsciiRun("", 0), 0u);
    EXPECT_EQ(base::AsciiRun("abc", 1), 2u);
    for (std::size_t length = 0; length < 40; ++length) {
        const std::string text = std::string(length, 'x') + "é" + std::string(20, 'y');
        EXPECT_EQ(base::AsciiRun(text, 0), length);
    }
}

} // namespace
