#include "platform/CodePage.h"

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
    EXPECT_EQ(codePage->ToAnsi("a語b😀c"), "a?b?c");
    EXPECT_EQ(codePage->ToAnsi("a\xC3"), "a?");
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
