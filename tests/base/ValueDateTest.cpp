#include "base/Value.h"

#include "tests/base/RefusalOf.h"

#include <limits>
#include <memory>
#include <random>
#include <string>

namespace {

using base::CalendarTime;
using base::Date;
using base::Value;

CalendarTime On(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return {year, month, day, hour, minute, second};
}

void ExpectFields(const CalendarTime& actual, const CalendarTime& expected) {
    EXPECT_EQ(actual.year, expected.year);
    EXPECT_EQ(actual.month, expected.month);
    EXPECT_EQ(actual.day, expected.day);
    EXPECT_EQ(actual.hour, expected.hour);
    EXPECT_EQ(actual.minute, expected.minute);
    EXPECT_EQ(actual.second, expected.second);
}

struct KnownDay {
    double days;
    CalendarTime time;
};

void PrintTo(const KnownDay& each, std::ostream* out) {
    *out << each.days;
}

class Calendar : public testing::TestWithParam<KnownDay> {};

TEST_P(Calendar, ReadsDays) {
    ExpectFields(base::ToCalendar(Date{GetParam().days}), GetParam().time);
}

TEST_P(Calendar, CountsDays) {
    EXPECT_EQ(base::FromCalendar(GetParam().time).days, GetParam().days);
}

INSTANTIATE_TEST_SUITE_P(
    Known, Calendar,
    testing::Values(KnownDay{0, On(1899, 12, 30)}, KnownDay{1, On(1899, 12, 31)}, KnownDay{2, On(1900, 1, 1)},
                    KnownDay{60, On(1900, 2, 28)}, KnownDay{61, On(1900, 3, 1)},
                    KnownDay{25569, On(1970, 1, 1)}, KnownDay{36525, On(1999, 12, 31)},
                    KnownDay{36585, On(2000, 2, 29)}, KnownDay{45352, On(2024, 3, 1)},
                    KnownDay{45352.5, On(2024, 3, 1, 12)}, KnownDay{0.25, On(1899, 12, 30, 6)},
                    KnownDay{-1, On(1899, 12, 29)}, KnownDay{-1.25, On(1899, 12, 29, 6)},
                    KnownDay{-1.75, On(1899, 12, 29, 18)}, KnownDay{-657434, On(100, 1, 1)},
                    KnownDay{-657434.5, On(100, 1, 1, 12)}, KnownDay{2958465, On(9999, 12, 31)},
                    KnownDay{-109205, On(1601, 1, 1)}, KnownDay{-115858, On(1582, 10, 15)}));

TEST(Calendar, RoundsToTheNearestSecond) {
    constexpr double second = 1.0 / 86400;
    ExpectFields(base::ToCalendar(Date{1 + 0.49 * second}), On(1899, 12, 31));
    ExpectFields(base::ToCalendar(Date{1 + 0.51 * second}), On(1899, 12, 31, 0, 0, 1));
    ExpectFields(base::ToCalendar(Date{1 - 0.49 * second}), On(1899, 12, 31));
    ExpectFields(base::ToCalendar(Date{-1 - (1 - 0.49 * second)}), On(1899, 12, 30));
    ExpectFields(base::ToCalendar(Date{-0.5}), On(1899, 12, 30, 12));
}

TEST(Calendar, StaysOnTheLastDayWhenRounding) {
    ExpectFields(base::ToCalendar(Date{2958465.9999999}), On(9999, 12, 31, 23, 59, 59));
}

TEST(Calendar, RefusesDatesOutsideItsYears) {
    for (const double days : {-657435.0, 2958466.0, 1e300, -1e300, std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(RefusalOf([&] { base::ToCalendar(Date{days}); }).number, base::errors::Overflow) << days;
    for (const int year :
         {99, 10000, 0, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
        EXPECT_EQ(RefusalOf([&] { base::FromCalendar(On(year, 1, 1)); }).number, base::errors::Overflow)
            << year;
}

TEST(Calendar, RefusesDaysAndTimesThatDoNotExist) {
    for (const CalendarTime& time :
         {On(2023, 2, 29), On(1900, 2, 29), On(2024, 4, 31), On(2024, 0, 1), On(2024, 13, 1), On(2024, 1, 0),
          On(2024, 1, 32), On(2024, 257, 1), On(2024, 1, 257), On(2024, -1, 1), On(2024, 1, 1, 24),
          On(2024, 1, 1, -1), On(2024, 1, 1, 0, 60), On(2024, 1, 1, 0, 0, 60), On(2024, 1, 1, 0, -1)})
        EXPECT_EQ(RefusalOf([&] { base::FromCalendar(time); }).number, base::errors::TypeMismatch);
}

TEST(Calendar, KeepsEverySecondOfEveryEraItIsGiven) {
    std::mt19937 random(11);
    for (int i = 0; i < 100'000; ++i) {
        const auto pick = [&random](int low, int high) {
            return low + static_cast<int>(random() % static_cast<unsigned>(high - low + 1));
        };
        const CalendarTime time =
            On(pick(100, 9999), pick(1, 12), pick(1, 28), pick(0, 23), pick(0, 59), pick(0, 59));
        ASSERT_NO_FATAL_FAILURE(ExpectFields(base::ToCalendar(base::FromCalendar(time)), time));
    }
}

struct DateReading {
    const char* text;
    CalendarTime time;
};

void PrintTo(const DateReading& each, std::ostream* out) {
    *out << each.text;
}

class DateText : public testing::TestWithParam<DateReading> {};

TEST_P(DateText, IsRead) {
    ExpectFields(base::ToCalendar(Value(GetParam().text).ToDate()), GetParam().time);
}

INSTANTIATE_TEST_SUITE_P(Iso, DateText,
                         testing::Values(DateReading{"2024-03-01", On(2024, 3, 1)},
                                         DateReading{"2024-03-01T14:05:00", On(2024, 3, 1, 14, 5)},
                                         DateReading{"2024-03-01T14:05", On(2024, 3, 1, 14, 5)},
                                         DateReading{"2024-03-01 14:05:09", On(2024, 3, 1, 14, 5, 9)},
                                         DateReading{"2024-03-01T14:05:09.25", On(2024, 3, 1, 14, 5, 9)},
                                         DateReading{"2024-03-01T14:05:09.75", On(2024, 3, 1, 14, 5, 10)},
                                         DateReading{"2024-3-1", On(2024, 3, 1)},
                                         DateReading{"2024/03/01", On(2024, 3, 1)},
                                         DateReading{"0100-01-01", On(100, 1, 1)},
                                         DateReading{"9999-12-31", On(9999, 12, 31)},
                                         DateReading{"  2024-03-01\t", On(2024, 3, 1)},
                                         DateReading{"1890-03-01T06:00:00.75", On(1890, 3, 1, 6, 0, 1)}));
INSTANTIATE_TEST_SUITE_P(
    MonthDayYear, DateText,
    testing::Values(DateReading{"3/1/2024", On(2024, 3, 1)}, DateReading{"03/01/2024", On(2024, 3, 1)},
                    DateReading{"3-1-2024", On(2024, 3, 1)}, DateReading{"12/31/1999", On(1999, 12, 31)},
                    DateReading{"13/1/2024", On(2024, 1, 13)}, DateReading{"3/1/0", On(2000, 3, 1)},
                    DateReading{"3/1/24", On(2024, 3, 1)}, DateReading{"3/1/29", On(2029, 3, 1)},
                    DateReading{"3/1/30", On(1930, 3, 1)}, DateReading{"3/1/99", On(1999, 3, 1)},
                    DateReading{"3/1/2024 2:05:00 PM", On(2024, 3, 1, 14, 5)},
                    DateReading{"3/1/2024 14:05", On(2024, 3, 1, 14, 5)},
                    DateReading{"3/1/2024, 2 PM", On(2024, 3, 1, 14)}));
INSTANTIATE_TEST_SUITE_P(
    MonthNames, DateText,
    testing::Values(DateReading{"1 March 2024", On(2024, 3, 1)}, DateReading{"1 mar 2024", On(2024, 3, 1)},
                    DateReading{"1-Mar-24", On(2024, 3, 1)}, DateReading{"01-MAR-1930", On(1930, 3, 1)},
                    DateReading{"1 May, 2024", On(2024, 5, 1)}, DateReading{"March 1, 2024", On(2024, 3, 1)},
                    DateReading{"Mar 1 2024 8:15 am", On(2024, 3, 1, 8, 15)},
                    DateReading{"30 September 1999 23:59:59", On(1999, 9, 30, 23, 59, 59)}));
INSTANTIATE_TEST_SUITE_P(
    Times, DateText,
    testing::Values(DateReading{"0:00", On(1899, 12, 30)}, DateReading{"14:05", On(1899, 12, 30, 14, 5)},
                    DateReading{"2:05:07 PM", On(1899, 12, 30, 14, 5, 7)},
                    DateReading{"2:05pm", On(1899, 12, 30, 14, 5)}, DateReading{"2 p", On(1899, 12, 30, 14)},
                    DateReading{"12 AM", On(1899, 12, 30)}, DateReading{"12:30 AM", On(1899, 12, 30, 0, 30)},
                    DateReading{"12:30 PM", On(1899, 12, 30, 12, 30)},
                    DateReading{"0:30 PM", On(1899, 12, 30, 12, 30)}));
INSTANTIATE_TEST_SUITE_P(Numbers, DateText,
                         testing::Values(DateReading{"45352", On(2024, 3, 1)},
                                         DateReading{"45,352.5", On(2024, 3, 1, 12)},
                                         DateReading{"-1.25", On(1899, 12, 29, 6)},
                                         DateReading{"0", On(1899, 12, 30)}));

class NoDate : public testing::TestWithParam<const char*> {};

TEST_P(NoDate, IsRefused) {
    EXPECT_EQ(RefusalOf([] { Value(GetParam()).ToDate(); }).number, base::errors::TypeMismatch);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, NoDate,
    testing::Values("", " ", "never", "2024-02-30", "2024-13-01", "2024-00-10", "2024-03", "2024-03-01T",
                    "2024-03-01T25:00", "2024-03-01T14", "2024-03-01T14:05:00Z", "2024-03-01 ,", "2024-03/01",
                    "2024-03-01x", "02024-03-01", "99999-01-01", "0099-01-01", "204-03-01", "3/1", "3/1/",
                    "3/1/20240", "3/32/2024", "13/13/2024", "0/1/2024", "2/29/2023", "1 Foo 2024", "1 Mar",
                    "Mar 2024", "March", "1 Ma 2024", "100 March 2024", "March 1 2024 x", "3.1.2024", "24:00",
                    "12:60", "12:00:60", "13:00 PM", "13 AM", "1:2:3:4", "12:00 XM", "12:00:00.", ":30",
                    "12:", "PM", "T14:05", "1 2 2024", "3/1/2024 14:05 3/1/2024", "1\xC2\xA0March 2024"));

TEST(Date, IsRefusedOutsideItsYearsWhateverHoldsIt) {
    for (const Value& value : {Value(2958466), Value(-657435), Value(1e10), Value("99999999"),
                               Value(std::numeric_limits<double>::quiet_NaN())})
        EXPECT_EQ(RefusalOf([&] { value.ToDate(); }).number, base::errors::Overflow);
}

TEST(Date, ComesFromOtherKindsAsDays) {
    EXPECT_EQ(Value().ToDate().days, 0);
    EXPECT_EQ(Value(true).ToDate().days, -1);
    EXPECT_EQ(Value(45352).ToDate().days, 45352);
    EXPECT_EQ(Value(45352.25).ToDate().days, 45352.25);
    EXPECT_EQ(Value(Date{7}).ToDate().days, 7);
}

TEST(Date, KeepsFractionsOfASecondThatItRead) {
    const double whole = Value("2024-03-01T14:05:09").ToDate().days;
    EXPECT_NEAR(Value("2024-03-01T14:05:09.5").ToDate().days - whole, 0.5 / 86400, 1e-10);
    EXPECT_NEAR(Value("1890-03-01T14:05:09.5").ToDate().days - Value("1890-03-01T14:05:09").ToDate().days,
                -0.5 / 86400, 1e-10);
}

struct DateWriting {
    double days;
    const char* text;
};

void PrintTo(const DateWriting& each, std::ostream* out) {
    *out << each.text;
}

class WrittenDate : public testing::TestWithParam<DateWriting> {};

TEST_P(WrittenDate, LeavesOutThePartThatIsZero) {
    EXPECT_EQ(Value(Date{GetParam().days}).ToText(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Date, WrittenDate,
                         testing::Values(DateWriting{45352, "3/1/2024"},
                                         DateWriting{45352.5, "3/1/2024 12:00:00 PM"},
                                         DateWriting{45352.586863425927, "3/1/2024 2:05:05 PM"},
                                         DateWriting{45352 + 5.0 / 1440, "3/1/2024 12:05:00 AM"},
                                         DateWriting{0.586863425927, "2:05:05 PM"},
                                         DateWriting{0, "12:00:00 AM"}, DateWriting{1, "12/31/1899"},
                                         DateWriting{-1.25, "12/29/1899 6:00:00 AM"},
                                         DateWriting{-657434, "1/1/100"}, DateWriting{2958465, "12/31/9999"},
                                         DateWriting{0.9999999, "12/31/1899"}));

TEST(Date, ReadsBackEveryTextThatItWrites) {
    std::mt19937 random(12);
    for (int i = 0; i < 50'000; ++i) {
        const double days = static_cast<double>(random() % 3'615'899) - 657'434;
        const double fraction = static_cast<double>(random() % 86400) / 86400;
        const Date date{days < 0 ? days - fraction : days + fraction};
        const std::string text = Value(date).ToText();
        ASSERT_EQ(Value(Value(text).ToDate()).ToText(), text);
        ASSERT_NEAR(Value(text).ToDate().days, date.days, 1e-9) << text;
    }
}

} // namespace
