#include "catalogue/DateFormat.h"

#include "base/ComponentError.h"
#include "tests/support/TestVariable.h"

#include <gtest/gtest.h>

#include <clocale>

namespace kvtm {

namespace {

// Friday, 1 March 2024, 14:05:09; the year began on a Monday.
const base::CalendarTime afternoon{2024, 3, 1, 14, 5, 9};

std::string Formatted(std::string_view picture, const base::CalendarTime& time = afternoon,
                      const DateNames& names = DateNames::English()) {
    return DateFormat(picture, names).Format(base::FromCalendar(time));
}

DateNames German() {
    DateNames names = DateNames::English();
    names.months[2] = "M\xc3\xa4rz";
    names.shortMonths[2] = "M\xc3\xa4r";
    names.days[5] = "Freitag";
    names.shortDays[5] = "Fr";
    names.dateSeparator = ".";
    names.shortDate = "dd.mm.yyyy";
    return names;
}

struct Case {
    const char* picture;
    const char* text;
};

class DatePictures : public testing::TestWithParam<Case> {};

TEST(DateFormat, WritesEveryEnglishName) {
    std::string months, days;
    for (int month = 1; month <= 12; ++month)
        months += Formatted("mmmm mmm ", {2024, month, 1, 0, 0, 0});
    for (int day = 1; day <= 7; ++day) // from a Sunday
        days += Formatted("dddd ddd ", {2024, 9, day, 0, 0, 0});
    EXPECT_EQ(months, "January Jan February Feb March Mar April Apr May May June Jun July Jul August Aug "
                      "September Sep October Oct November Nov December Dec ");
    EXPECT_EQ(days, "Sunday Sun Monday Mon Tuesday Tue Wednesday Wed Thursday Thu Friday Fri Saturday Sat ");
}

TEST(DateFormat, WritesTheDayOfTheYearWithoutZeros) {
    EXPECT_EQ(Formatted("y", {2024, 1, 5, 0, 0, 0}), "5");
}

TEST_P(DatePictures, AreHonoured) {
    EXPECT_EQ(Formatted(GetParam().picture), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Named, DatePictures,
                         testing::Values(Case{"General Date", "3/1/2024 2:05:09 PM"},
                                         Case{"Long Date", "Friday, March 1, 2024"},
                                         Case{"Medium Date", "01-Mar-24"}, Case{"Short Date", "3/1/2024"},
                                         Case{"Long Time", "2:05:09 PM"}, Case{"Medium Time", "02:05 PM"},
                                         Case{"Short Time", "14:05"}, Case{"short date", "3/1/2024"},
                                         Case{"", "3/1/2024 2:05:09 PM"}));

INSTANTIATE_TEST_SUITE_P(
    Letters, DatePictures,
    testing::Values(Case{"d", "1"}, Case{"dd", "01"}, Case{"ddd", "Fri"}, Case{"dddd", "Friday"},
                    Case{"ddddd", "3/1/2024"}, Case{"dddddd", "Friday, March 1, 2024"}, Case{"w", "6"},
                    Case{"ww", "9"}, Case{"m", "3"}, Case{"mm", "03"}, Case{"mmm", "Mar"},
                    Case{"mmmm", "March"}, Case{"q", "1"}, Case{"y", "61"}, Case{"yy", "24"},
                    Case{"yyyy", "2024"}, Case{"h", "14"}, Case{"hh", "14"}, Case{"n", "5"}, Case{"nn", "05"},
                    Case{"s", "9"}, Case{"ss", "09"}, Case{"ttttt", "2:05:09 PM"},
                    Case{"c", "3/1/2024 2:05:09 PM"}, Case{"YYYY-MM-DD HH:NN", "2024-03-01 14:05"}));

INSTANTIATE_TEST_SUITE_P(AnyLetterCase, DatePictures,
                         testing::Values(Case{"D", "1"}, Case{"DDDD", "Friday"}, Case{"DdDdD", "3/1/2024"},
                                         Case{"DDDDDD", "Friday, March 1, 2024"}, Case{"W", "6"},
                                         Case{"WW", "9"}, Case{"Mmm", "Mar"}, Case{"MMMM", "March"},
                                         Case{"Q", "1"}, Case{"Y", "61"}, Case{"YyYy", "2024"},
                                         Case{"H:M", "14:5"}, Case{"HH:MM:SS", "14:05:09"}, Case{"N", "5"},
                                         Case{"TTTTT", "2:05:09 PM"}, Case{"TtTtT", "2:05:09 PM"},
                                         Case{"C", "3/1/2024 2:05:09 PM"}, Case{"H AM/PM", "2 PM"},
                                         Case{"h Am/Pm", "2 PM"}, Case{"h aM/pM", "2 pm"},
                                         Case{"h ampm", "2 PM"}, Case{"GENERAL DATE", "3/1/2024 2:05:09 PM"},
                                         Case{"medium TIME", "02:05 PM"}));

INSTANTIATE_TEST_SUITE_P(
    StandForThemselves, DatePictures,
    testing::Values(Case{"yyyy-mm-ddThh:nn", "2024-03-01T14:05"},
                    Case{"yyyy-mm-ddthh:nn", "2024-03-01t14:05"}, Case{"T", "T"}, Case{"tT", "tT"},
                    Case{"TTTt", "TTTt"}, Case{"TTTTTT", "2:05:09 PMT"}, Case{"hhThmm", "14T1405"},
                    Case{"A", "A"}, Case{"a", "a"}, Case{"P", "P"}, Case{"A.P", "A.P"},
                    Case{"BEFGIJKLORUVXZ befgijkloruvxz", "BEFGIJKLORUVXZ befgijkloruvxz"},
                    Case{"'d'", "'1'"}, Case{"d, (d) [d] {d}", "1, (1) [1] {1}"}, Case{"\\T\\h\\d", "Thd"},
                    Case{"\\\\", "\\"}, Case{"\\\"d\\\"", "\"1\""}, Case{"\"\"", ""},
                    Case{"\"c AM/PM ttttt\" h", "c AM/PM ttttt 14"}, Case{"h \\AM/P\\M", "14 A5/PM"}));

INSTANTIATE_TEST_SUITE_P(
    Combined, DatePictures,
    testing::Values(Case{"m/d/yyyy", "3/1/2024"}, Case{"dd.mm.yyyy", "01.03.2024"}, Case{"h:mm", "14:05"},
                    Case{"hh:mm:ss", "14:05:09"}, Case{"mm hh", "03 14"}, Case{"h d mm", "14 1 03"},
                    Case{"h:mm AM/PM", "2:05 PM"}, Case{"h am/pm", "2 pm"}, Case{"hA/P", "2P"},
                    Case{"h a/p", "2 p"}, Case{"h AMPM", "2 PM"}, Case{"yyyy\\y", "2024y"},
                    Case{"\"day \"d", "day 1"}, Case{"\"open d", "open d"}, Case{"d\\", "1"},
                    Case{"[d]", "[1]"}, Case{"dddd, d. mmmm yyyy", "Friday, 1. March 2024"},
                    Case{"ttttt hh", "2:05:09 PM 14"}, Case{"hh c", "14 3/1/2024 2:05:09 PM"},
                    Case{"hh ttttt AM/PM", "02 2:05:09 PM PM"}, Case{"ddddddd", "Friday, March 1, 20241"},
                    Case{"d;m", "1"}, Case{";d", ""}, Case{"d \\; \";\" m;", "1 ; ; 3"},
                    Case{"ttttt mm", "2:05:09 PM 03"}, Case{"hh ddddd mm", "14 3/1/2024 03"}));

} // namespace

TEST(DateFormat, TakesNamesAndSeparatorsFromTheLocale) {
    EXPECT_EQ(Formatted("dddd, d. mmmm yyyy", afternoon, German()), "Freitag, 1. M\xc3\xa4rz 2024");
    EXPECT_EQ(Formatted("ddd d/mmm", afternoon, German()), "Fr 1.M\xc3\xa4r");
    EXPECT_EQ(Formatted("Short Date", afternoon, German()), "01.03.2024");
}

TEST(DateFormat, LeavesOutThePartThatAGeneralDateDoesNotHave) {
    EXPECT_EQ(Formatted("c", {2024, 3, 1}), "3/1/2024");
    EXPECT_EQ(DateFormat("c", DateNames::English()).Format(base::Date{0.25}), "6:00:00 AM");
}

TEST(DateFormat, ShowsTheTimeOfDayZeroAsItsGeneralDate) {
    const DateNames names = DateNames::English();
    for (const char* picture : {"General Date", "c", ""}) {
        const DateFormat format(picture, names);
        EXPECT_EQ(format.Format(base::Date{0}), "12:00:00 AM");
        EXPECT_EQ(format.Format(base::Value("12/30/1899")), "12:00:00 AM");
        EXPECT_EQ(format.Format(base::Date{-0.5}), "12:00:00 PM"); // times of day zero count from midnight
        EXPECT_EQ(format.Format(base::Date{0.9999999}), "12/31/1899");
        EXPECT_EQ(format.Format(base::Date{1}), "12/31/1899");
        EXPECT_EQ(format.Format(base::Date{-1}), "12/29/1899");
    }
}

TEST(DateFormat, WritesGeneralDatesAsValuesDo) {
    const DateNames names = DateNames::English();
    const DateFormat format("General Date", names);
    for (const double days :
         {0.0, 0.25, 0.5, 0.9999999, 1.0, -1.0, -1.75, 45352.0, 45352.5, 45352.999999, 2958465.0, -657434.0})
        EXPECT_EQ(format.Format(base::Date{days}), base::Value(base::Date{days}).ToText());
}

TEST(DateFormat, NamesTheHalvesOfTheDayAsTheLocaleDoes) {
    DateNames names = German();
    names.am = "vorm.";
    names.pm = "nachm.";
    EXPECT_EQ(Formatted("h AMPM", afternoon, names), "2 nachm.");
    EXPECT_EQ(Formatted("ttttt", afternoon, names), "2:05:09 nachm.");
    EXPECT_EQ(Formatted("Long Time", {2024, 3, 1, 8, 0, 0}, names), "8:00:00 vorm.");
    EXPECT_EQ(Formatted("h AM/PM", afternoon, names), "2 PM");
}

TEST(DateFormat, WritesMidnightAndNoonAsTwelve) {
    EXPECT_EQ(Formatted("h AM/PM", {2024, 3, 1, 0, 0, 0}), "12 AM");
    EXPECT_EQ(Formatted("h AM/PM", {2024, 3, 1, 12, 0, 0}), "12 PM");
    EXPECT_EQ(Formatted("h", {2024, 3, 1, 0, 0, 0}), "0");
}

TEST(DateFormat, CountsWeeksFromTheOneThatHoldsNewYear) {
    EXPECT_EQ(Formatted("ww", {2024, 1, 1}), "1");
    EXPECT_EQ(Formatted("ww", {2024, 1, 6}), "1"); // a Saturday
    EXPECT_EQ(Formatted("ww", {2024, 1, 7}), "2"); // a Sunday
    EXPECT_EQ(Formatted("ww", {2022, 1, 1}), "1"); // a Saturday
    EXPECT_EQ(Formatted("ww", {2022, 1, 2}), "2");
    EXPECT_EQ(Formatted("ww", {2000, 12, 31}), "54");
}

TEST(DateFormat, KnowsTheDaysBeforeTheFirstDay) {
    EXPECT_EQ(Formatted("ddd yyyy-mm-dd", {1899, 12, 30}), "Sat 1899-12-30");
    EXPECT_EQ(Formatted("ddd yyyy-mm-dd", {1899, 12, 29}), "Fri 1899-12-29");
    EXPECT_EQ(Formatted("ddd y", {1700, 12, 31}), "Fri 365");
    EXPECT_EQ(Formatted("yyyy", {9999, 12, 31}), "9999");
    EXPECT_EQ(Formatted("yyyy yy", {100, 1, 1}), "100 00");
    EXPECT_EQ(Formatted("Short Date", {987, 6, 5}), "6/5/987");
}

TEST(DateFormat, FormatsWhatReadsAsADate) {
    const DateNames names = DateNames::English();
    const DateFormat format("yyyy-mm-dd", names);
    EXPECT_EQ(format.Format(base::Value("3/1/2024")), "2024-03-01");
    EXPECT_EQ(format.Format(base::Value("2024-03-01T10:00:00")), "2024-03-01");
    EXPECT_EQ(format.Format(base::Value(base::FromCalendar(afternoon))), "2024-03-01");
    EXPECT_EQ(format.Format(base::Value()), "");
    EXPECT_EQ(format.Format(base::Value("")), "");
    EXPECT_THROW(format.Format(base::Value("last week")), base::ComponentError);
}

TEST(DateFormat, KeepsUnfinishedUtf8InPictures) {
    EXPECT_EQ(Formatted("d\xc3"), "1\xc3");
    EXPECT_EQ(Formatted("\xe6\x97\xa5 d"), "\xe6\x97\xa5 1");
}

TEST(DateNames, AreEnglishWhereTheLocaleIsMissing) {
    const TestVariable locale("LC_ALL", "xx_XX.UTF-8");
    const DateNames names = DateNames::OfUser();
    EXPECT_EQ(names.months[2], "March");
    EXPECT_EQ(names.shortDate, "m/d/yyyy");
}

} // namespace kvtm
