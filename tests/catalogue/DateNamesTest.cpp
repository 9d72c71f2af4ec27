// Names and separators of the user's own locale: the system's real ones, compiled for the test.

#include "catalogue/DateFormat.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestProgram.h"
#include "tests/support/TestVariable.h"

#include <gtest/gtest.h>

// The C library itself loses the list of folders that it makes of LOCPATH; asked by the leak detection.
extern "C" [[gnu::visibility("default")]] const char* __lsan_default_suppressions() {
    return "leak:argz_add_sep";
}

namespace kvtm {
namespace {

class DateNamesOfUser : public testing::Test {
protected:
    DateNames In(const std::string& locale) {
        const std::string compiled = locales_ / (locale + ".UTF-8");
        EXPECT_EQ(WaitForEnd(StartProgram(
                      {"/usr/bin/localedef", "--no-archive", "-i", locale, "-f", "UTF-8", compiled})),
                  0);
        const TestVariable folder("LOCPATH", locales_.Path().c_str());
        const TestVariable chosen("LC_ALL", (locale + ".UTF-8").c_str());
        return DateNames::OfUser();
    }

private:
    TestFolder locales_;
};

TEST_F(DateNamesOfUser, AreThoseOfTheLocale) {
    const DateNames names = In("de_DE");
    EXPECT_EQ(names.months.front(), "Januar");
    EXPECT_EQ(names.months[2], "März");
    EXPECT_EQ(names.months.back(), "Dezember");
    EXPECT_EQ(names.shortMonths[11], "Dez");
    EXPECT_EQ(names.days.front(), "Sonntag");
    EXPECT_EQ(names.days.back(), "Samstag");
    EXPECT_EQ(names.shortDays[3], "Mi");
    EXPECT_EQ(names.shortDate, "dd.mm.yyyy");
    EXPECT_EQ(names.dateSeparator, ".");
    EXPECT_EQ(names.am, "AM") << "the locale has none of its own";
}

TEST_F(DateNamesOfUser, HaveTheLocalesHalvesOfTheDay) {
    const DateNames names = In("el_GR");
    EXPECT_EQ(names.am, "πμ");
    EXPECT_EQ(names.pm, "μμ");
    EXPECT_EQ(names.shortDate, "dd/mm/yyyy");
    EXPECT_EQ(names.dateSeparator, "/");
}

TEST_F(DateNamesOfUser, HaveAShortDateOfTwoDigitsForTheYear) {
    EXPECT_EQ(In("sq_AL").shortDate, "dd.mm.yy");
}

TEST_F(DateNamesOfUser, AreEnglishWithoutALocale) {
    for (const char* locale : {"C", "POSIX", "no_SUCH.UTF-8"}) {
        const TestVariable chosen("LC_ALL", locale);
        const DateNames names = DateNames::OfUser();
        EXPECT_EQ(names.months, DateNames::English().months) << locale;
        EXPECT_EQ(names.shortDate, "m/d/yyyy");
        EXPECT_EQ(names.pm, "PM");
    }
}

} // namespace
} // namespace kvtm
