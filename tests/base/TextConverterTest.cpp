#include "base/TextConverter.h"

#include <gtest/gtest.h>

#include <stdexcept>

using base::TextConverter;

namespace {

std::size_t PassOneByte(std::string_view, std::string& output) {
    output += '?';
    return 1;
}

TEST(TextConverter, KnowsEncodingsByName) {
    EXPECT_TRUE(TextConverter("UTF-8", "ISO-8859-2").IsOpen());
    EXPECT_FALSE(TextConverter("UTF-8", "no-such-thing").IsOpen());
    EXPECT_FALSE(TextConverter("no-such-thing", "UTF-8").IsOpen());
}

TEST(TextConverter, HandsOverWhatItCannotConvert) {
    const TextConverter converter("UTF-8", "Shift_JIS");
    std::string rests;
    const auto misfit = [&](std::string_view rest, std::string& output) {
        rests += "[" + std::string(rest) + "]";
        return PassOneByte(rest, output);
    };
    EXPECT_EQ(converter.Run("a\xFF"
                            "b\x83",
                            misfit),
              "a?b?");
    EXPECT_EQ(rests, "[\xFF"
                     "b\x83][\x83]");
    EXPECT_THROW(
        converter.Run("\xFF",
                      [](std::string_view, std::string&) -> std::size_t { throw std::runtime_error("x"); }),
        std::runtime_error);
    EXPECT_EQ(converter.Run("\xFF\xFF", [](std::string_view, std::string&) { return std::size_t{0}; }), "")
        << "it goes on all the same";
    EXPECT_EQ(converter.Run("\xFF\xFF", [](std::string_view, std::string&) { return std::size_t{100}; }), "");
}

TEST(TextConverter, BeginsEachTextAnew) {
    const TextConverter converter("UTF-8", "ISO-2022-JP");
    EXPECT_EQ(converter.Run("\x1B$B", PassOneByte), "");
    EXPECT_EQ(converter.Run("ab", PassOneByte), "ab") << "the escape belonged to another text";
}

TEST(TextConverter, EndsEarlyBeyondItsLimit) {
    const TextConverter converter("UTF-8", "ISO-8859-1");
    const std::string input(1'000'000, '\xE9');
    EXPECT_EQ(converter.Run(input, PassOneByte).size(), 2 * input.size());
    const std::size_t size = converter.Run(input, PassOneByte, 1000).size();
    EXPECT_GT(size, 1000U);
    EXPECT_LT(size, 100'000U);
}

} // namespace
