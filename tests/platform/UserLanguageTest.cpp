#include "platform/linux/UserLanguage.h"

#include "tests/support/TestVariable.h"

#include <gtest/gtest.h>

#include <string>

using platform::UserLanguage;

namespace {

std::uint16_t LanguageOf(const char* all, const char* messages, const char* lang) {
    const TestVariable lcAll("LC_ALL", all), lcMessages("LC_MESSAGES", messages), langVariable("LANG", lang);
    return UserLanguage();
}

TEST(UserLanguage, IsTheSystemsNumberOfTheLocale) {
    EXPECT_EQ(LanguageOf(nullptr, nullptr, "de_DE.UTF-8"), 0x0407);
    EXPECT_EQ(LanguageOf(nullptr, nullptr, "de_AT@euro"), 0x0C07);
    EXPECT_EQ(LanguageOf(nullptr, nullptr, "en_US"), 0x0409);
    EXPECT_EQ(LanguageOf(nullptr, nullptr, "en_GB.utf8"), 0x0809);
    EXPECT_EQ(LanguageOf(nullptr, nullptr, "pl_PL.ISO-8859-2"), 0x0415);
    EXPECT_EQ(LanguageOf(nullptr, nullptr, "zh_TW.Big5"), 0x0404);
    EXPECT_EQ(LanguageOf(nullptr, nullptr, "pt_BR.UTF-8"), 0x0416);
    EXPECT_EQ(LanguageOf(nullptr, nullptr, "de_DE@collation=phonebook"), 0x0407) << "without the sort order";
}

TEST(UserLanguage, IsOfTheLanguagesOwnCountryWhereNoneIsKnown) {
    EXPECT_EQ(LanguageOf(nullptr, nullptr, "de"), 0x0407);
    EXPECT_EQ(LanguageOf(nullptr, nullptr, "de_XX.UTF-8"), 0x0407);
}

TEST(UserLanguage, IsThatOfTheFirstVariableThatIsSet) {
    EXPECT_EQ(LanguageOf("fr_FR.UTF-8", "de_DE.UTF-8", "en_US.UTF-8"), 0x040C);
    EXPECT_EQ(LanguageOf(nullptr, "de_DE.UTF-8", "en_US.UTF-8"), 0x0407);
    EXPECT_EQ(LanguageOf("", "", "en_US.UTF-8"), 0x0409);
    EXPECT_EQ(LanguageOf("C", "de_DE.UTF-8", "en_US.UTF-8"), 0);
}

TEST(UserLanguage, IsNoneWhereTheLocaleNamesNone) {
    for (const char* locale :
         {"C", "POSIX", "C.UTF-8", "xx_YY", "", "_", ".", "@", "/usr/share/locale/de", "../x", "\xFF\xFE"})
        EXPECT_EQ(LanguageOf(nullptr, nullptr, locale), 0) << locale;
    EXPECT_EQ(LanguageOf(nullptr, nullptr, nullptr), 0);
    for (const std::size_t length : {155U, 156U, 157U, 158U, 100'000U})
        EXPECT_EQ(LanguageOf(nullptr, nullptr, std::string(length, 'd').c_str()), 0) << length;
}

} // namespace
