#include "platform/CodePage.h"

#include "base/Text.h"
#include "tests/base/RefusalOf.h"
#include "tests/support/TestVariable.h"

#include <gtest/gtest.h>

using platform::CodePage;

namespace {

constexpr const char* codePageVariable = "ARVON_CODE_PAGE";

std::string EveryByte() {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    return bytes;
}

TEST(CodePage, Is1252WithoutASetting) {
    const TestVariable setting(codePageVariable, nullptr);
    const auto codePage = CodePage::Create();
    EXPECT_EQ(codePage->FromAnsi("\x80 \xE4\xDF\xFF"), "€ äßÿ");
    EXPECT_EQ(codePage->ToAnsi("„Tür“ – Œ"), "\x84T\xFCr\x93 \x96 \x8C");
}

TEST(CodePage, GivesEveryByteOf1252BackAsItWas) {
    const TestVariable setting(codePageVariable, "1252");
    const auto codePage = CodePage::Create();
    EXPECT_EQ(codePage->ToAnsi(codePage->FromAnsi(EveryByte())), EveryByte());
}

TEST(CodePage, MapsTheUndefinedBytesOf1252ToControls) {
    const TestVariable setting(codePageVariable, nullptr);
    const auto codePage = CodePage::Create();
    EXPECT_EQ(codePage->FromAnsi("\x81\x8D\x8F\x90\x9D"), "\u0081\u008D\u008F\u0090\u009D");
    EXPECT_EQ(codePage->ToAnsi("\u0081\u009D"), "\x81\x9D");
    EXPECT_EQ(codePage->ToAnsi("\u0080"), "?") << "the byte belongs to another character";
}

TEST(CodePage, WritesAQuestionMarkForWhatItCannotExpress) {
    const TestVariable setting(codePageVariable, nullptr);
    const auto codePage = CodePage::Create();
    EXPECT_EQ(codePage->ToAnsi("a語b😀c"), "a?b??c");
    EXPECT_EQ(codePage->ToAnsi("a\xC3"), "a?");
}

TEST(CodePage, WritesTheBestFitOfWhat1252DoesNotHave) {
    const TestVariable setting(codePageVariable, nullptr);
    const auto codePage = CodePage::Create();
    for (const auto& [text, bytes] : std::vector<std::pair<std::string, std::string>>{
             {"Łódź, Žižkov, ăĞıőŲ", "L\xF3"
                                     "dz, \x8Ei\x9Ekov, aGioU"},
             {"ƒ Ƒ ǆ Ǟ ǰ", "\x83 \x83 ? A j"},
             {"ΓΘΣΦΩ αβγδεμπστφ", "GTSFO a\xDF?de\xB5pstf"},
             {"∞ ≈ ≡ ≤ ≥ √ ∩ − ∕ ∙", "8 \x98 = = = v n - / \xB7"},
             {"\u2003|\u2006|\u2007", " | |?"},
             {"‐‑‒–— ‗ ′″ ⁄ ⁴ⁿ₉", "--?\x96\x97 = '? / 4n9"},
             {"e\u0301 A\u030A c\u0327 o\u0323", "e\xB4 A\xB0 c\xB8 o?"},
             {"┌─┬┐│├┼┤║╔═╗╞╩╬ ▀▄█░■", "+--+\xA6++\xA6\xA6+-+\xA6-+ \xAF_\xA6\xA6\xA6"},
             {"ＡＢｃ！～？\u3000《〛", "ABc!~? \xAB]"},
             {"← ↑ → ①", "? ? ? ?"},
             {"ℂ ℓ № ℝ Å ₤ ₧ ₽", "C l ? R \xC5 \xA3 P ?"}})
        EXPECT_EQ(codePage->ToAnsi(text), bytes) << text;
}

TEST(CodePage, HasTheWholeBestFitTableAndNothingBesides) {
    const TestVariable setting(codePageVariable, nullptr);
    const auto codePage = CodePage::Create();
    const std::string own = codePage->FromAnsi(EveryByte());
    int fitted = 0;
    for (char32_t character = 0; character < 0x30000; ++character) {
        if (character >= 0xD800 && character <= 0xDFFF) continue;
        const std::string text = base::FromCodePoints(std::u32string_view(&character, 1));
        const std::string bytes = codePage->ToAnsi(text);
        ASSERT_EQ(bytes.size(), character <= 0xFFFF ? 1U : 2U);
        if (bytes == "?" || bytes == "??" || codePage->FromAnsi(bytes) == text) continue;
        ASSERT_EQ(own.find(text), std::string::npos) << text << " has a byte of its own";
        EXPECT_GE(character, 0x100U);
        EXPECT_LE(character, 0xFFFFU);
        EXPECT_GE(static_cast<unsigned char>(bytes[0]), 0x20)
            << text << " must not become a control character";
        ++fitted;
    }
    EXPECT_EQ(fitted, 441);
}

TEST(CodePage, KeepsNulBytes) {
    const TestVariable setting(codePageVariable, nullptr);
    const auto codePage = CodePage::Create();
    const std::string text("a\0b", 3);
    EXPECT_EQ(codePage->FromAnsi(text), text);
    EXPECT_EQ(codePage->ToAnsi(text), text);
}

TEST(CodePage, ReadsAnotherPageByItsNumber) {
    const TestVariable setting(codePageVariable, "1251");
    const auto codePage = CodePage::Create();
    EXPECT_EQ(codePage->FromAnsi("\xCA\xEB\xFE\xF7"), "Ключ");
    EXPECT_EQ(codePage->ToAnsi("Ключ ä"), "\xCA\xEB\xFE\xF7 ?");
}

TEST(CodePage, MarksBytesWithoutMeaningInAnotherPage) {
    const TestVariable setting(codePageVariable, "932");
    const auto codePage = CodePage::Create();
    EXPECT_EQ(codePage->FromAnsi("\x83\x65\x83\x58\x83\x67"), "テスト");
    EXPECT_EQ(codePage->ToAnsi("テストä"), "\x83\x65\x83\x58\x83\x67?");
    EXPECT_EQ(codePage->FromAnsi("a\x83"), "a\uFFFD") << "half a character at the end";
}

TEST(CodePage, PassesUtf8Through) {
    const TestVariable setting(codePageVariable, "65001");
    const auto codePage = CodePage::Create();
    EXPECT_EQ(codePage->ToAnsi("Tür 語"), "Tür 語");
    EXPECT_EQ(codePage->FromAnsi("Tür\xFF 語"), "Tür\uFFFD 語");
}

TEST(CodePage, ConvertsTextsLongerThanItsRoom) {
    const TestVariable setting(codePageVariable, "1251");
    const auto codePage = CodePage::Create();
    std::string text, bytes;
    for (int i = 0; i < 5000; ++i) {
        text += "Ж";
        bytes += '\xC6';
    }
    EXPECT_EQ(codePage->FromAnsi(bytes), text);
    EXPECT_EQ(codePage->ToAnsi(text), bytes);
}

TEST(CodePage, GivesBackWhatItHeldForAnAccent) {
    const TestVariable setting(codePageVariable, "1258"); // Vietnamese: accents follow their letters
    const auto codePage = CodePage::Create();
    EXPECT_EQ(codePage->FromAnsi("ba"), "ba");
}

TEST(CodePage, RefusesAPageThatNobodyKnows) {
    const TestVariable setting(codePageVariable, "99999");
    const Refusal refusal = RefusalOf([] { CodePage::Create(); });
    EXPECT_EQ(refusal.number, base::errors::InvalidCall);
    EXPECT_NE(refusal.description.find("99999"), std::string::npos);
}

} // namespace
