#include "base/DateText.h"
#include "base/Value.h"

#include "tests/base/DateTexts.h"
#include "tests/base/RefusalOf.h"
#include "tests/support/ProcessorTime.h"

#include <limits>
#include <memory>
#include <random>
#include <string>

namespace {

using base::CalendarTime;
using base::Date;
using base::Value;

using dateTexts::On;

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

using dateTexts::DateText;

class ReadDate : public testing::TestWithParam<DateText> {};

TEST_P(ReadDate, IsTheSameInAValueAndInARecord) {
    const Value text(GetParam().text);
    ExpectFields(base::ToCalendar(text.ToDate()), GetParam().time);
    ExpectFields(base::ToCalendar(base::ToRecordDate(text)), GetParam().time);
}

INSTANTIATE_TEST_SUITE_P(Iso, ReadDate, testing::ValuesIn(dateTexts::isoDates));
INSTANTIATE_TEST_SUITE_P(Classic, ReadDate, testing::ValuesIn(dateTexts::classicDates));
INSTANTIATE_TEST_SUITE_P(Numbers, ReadDate, testing::ValuesIn(dateTexts::dayNumbers));

class YearlessDate : public testing::TestWithParam<DateText> {};

TEST_P(YearlessDate, IsOfTheCurrentYear) {
    CalendarTime expected = GetParam().time;
    expected.year = dateTexts::ThisYear();
    ExpectFields(base::ToCalendar(Value(GetParam().text).ToDate()), expected);
}

INSTANTIATE_TEST_SUITE_P(Classic, YearlessDate, testing::ValuesIn(dateTexts::yearlessDates));

TEST(YearlessDate, TakesItsDayForAYearWhereTheCurrentYearHasNoSuchDay) {
    const int year = dateTexts::ThisYear();
    const CalendarTime expected = dateTexts::IsLeapYear(year) ? On(year, 2, 29) : On(2029, 2, 1);
    for (const char* text : {"2/29", "29/2", "Feb 29", "29Feb"})
        ExpectFields(base::ToCalendar(Value(text).ToDate()), expected);
}

class NoDate : public testing::TestWithParam<const char*> {};

TEST_P(NoDate, IsRefused) {
    const Value text(GetParam());
    EXPECT_EQ(RefusalOf([&] { text.ToDate(); }).number, base::errors::TypeMismatch);
    EXPECT_EQ(RefusalOf([&] { base::ToRecordDate(text); }).number, base::errors::TypeMismatch);
}

INSTANTIATE_TEST_SUITE_P(Texts, NoDate, testing::ValuesIn(dateTexts::noDates));

TEST(Date, OfARecordTakesDigitsForAYearOrADayInIt) {
    for (const auto& [text, inRecord, elsewhere] : dateTexts::recordDigits) {
        SCOPED_TRACE(text);
        ExpectFields(base::ToCalendar(base::ToRecordDate(Value(text))), inRecord);
        ExpectFields(base::ToCalendar(Value(text).ToDate()), elsewhere);
    }
}

TEST(Date, OfARecordComesFromOtherKindsAsElsewhere) {
    EXPECT_EQ(base::ToRecordDate(Value(2023)).days, 2023);
    EXPECT_EQ(base::ToRecordDate(Value(Date{7.5})).days, 7.5);
    EXPECT_EQ(base::ToRecordDate(Value()).days, 0);
    EXPECT_EQ(RefusalOf([] { base::ToRecordDate(Value(1e10)); }).number, base::errors::Overflow);
}

TEST(Date, IsReadFromALongTextInProportionToItsLength) {
    constexpr std::size_t megabyte = 1 << 20;
    const std::string blanks(megabyte, ' '), digits(megabyte, '1'), letters(megabyte, 'a');
    ExpectFields(base::ToCalendar(Value("May" + blanks + "14" + blanks + ", " + blanks + "2023").ToDate()),
                 On(2023, 5, 14));
    ExpectFields(base::ToCalendar(Value("1:00" + blanks + "PM" + blanks + "5/14/2023").ToDate()),
                 On(2023, 5, 14, 13));
    ExpectFields(base::ToCalendar(Value("2023-05-14T09:30:00," + digits + "Z").ToDate()),
                 On(2023, 5, 14, 9, 30));
    std::string dashes, slashes;
    for (std::size_t i = 0; i < megabyte / 2; ++i) {
        dashes += "1-";
        slashes += "/ ";
    }
    for (const std::string& text :
         {letters, "May " + letters, "2023-05-14T" + digits, "2023-05-14 " + digits, "T" + digits,
          digits + ":00", "1/" + digits, dashes, slashes, "1" + blanks + letters,
          "1" + blanks + "p" + blanks + "1" + blanks + "x", blanks + "x" + blanks,
          std::string(megabyte, '\0'), "2023-W" + digits, "1:1:1." + digits + "x"}) {
        SCOPED_TRACE(text.substr(0, 20));
        EXPECT_LT(ProcessorSecondsOf([&] {
                      EXPECT_EQ(RefusalOf([&] { Value(text).ToDate(); }).number, base::errors::TypeMismatch);
                  }),
                  InProportion);
    }
}

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
