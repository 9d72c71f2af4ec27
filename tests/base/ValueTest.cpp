#include "base/Value.h"

#include "tests/base/RefusalOf.h"

#include <bit>
#include <clocale>
#include <cmath>
#include <limits>
#include <locale>
#include <memory>
#include <random>
#include <string>

namespace {

using base::Value;
using namespace std::string_literals;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// A conversion and what comes of it.
template <class Result> struct Conversion {
    Value given;
    Result expected;
};

template <class Result> void PrintTo(const Conversion<Result>& each, std::ostream* out) {
    *out << "kind " << static_cast<int>(each.given.GetKind());
    if (each.given.TextIfAny()) *out << " \"" << *each.given.TextIfAny() << '"';
    *out << " to " << testing::PrintToString(each.expected);
}

class ToBoolean : public testing::TestWithParam<Conversion<bool>> {};

TEST_P(ToBoolean, Converts) {
    EXPECT_EQ(GetParam().given.ToBoolean(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Value, ToBoolean,
    testing::Values(Conversion<bool>{{}, false}, Conversion<bool>{true, true}, Conversion<bool>{false, false},
                    Conversion<bool>{0, false}, Conversion<bool>{-1, true}, Conversion<bool>{1, true},
                    Conversion<bool>{0.0, false}, Conversion<bool>{-0.0, false}, Conversion<bool>{0.1, true},
                    Conversion<bool>{"0", false}, Conversion<bool>{"-1", true}, Conversion<bool>{"1", true},
                    Conversion<bool>{" 0 ", false}, Conversion<bool>{"0.5", true},
                    Conversion<bool>{"0.0", false}, Conversion<bool>{"True", true},
                    Conversion<bool>{"TRUE", true}, Conversion<bool>{"tRuE", true},
                    Conversion<bool>{"False", false}, Conversion<bool>{"false", false},
                    Conversion<bool>{" True ", true}, Conversion<bool>{"#TRUE#", true},
                    Conversion<bool>{"#FALSE#", false}, Conversion<bool>{"&H0", false},
                    Conversion<bool>{"&H10", true}, Conversion<bool>{"1e-400", false},
                    Conversion<bool>{base::Date{0}, false}, Conversion<bool>{base::Date{45000}, true}));

class NoBoolean : public testing::TestWithParam<const char*> {};

TEST_P(NoBoolean, IsRefused) {
    EXPECT_EQ(RefusalOf([] { Value(GetParam()).ToBoolean(); }).number, base::errors::TypeMismatch);
}

INSTANTIATE_TEST_SUITE_P(Value, NoBoolean,
                         testing::Values("", " ", "Yes", "on", "Tru", "Truee", "T", "#TRUE", "#True#",
                                         "#false#", "--1", "0x1", "wahr", "True False", "1 0", "nan", "inf"));

class ToInteger : public testing::TestWithParam<Conversion<std::int32_t>> {};

TEST_P(ToInteger, Converts) {
    EXPECT_EQ(GetParam().given.ToInteger(), GetParam().expected);
}

using Int = Conversion<std::int32_t>;
INSTANTIATE_TEST_SUITE_P(Kinds, ToInteger,
                         testing::Values(Int{{}, 0}, Int{true, -1}, Int{false, 0}, Int{7, 7}, Int{-7, -7},
                                         Int{-0.0, 0}, Int{base::Date{45000.6}, 45001},
                                         Int{2147483647.0, 2147483647},
                                         Int{-2147483648.0, std::numeric_limits<std::int32_t>::min()}));
INSTANTIATE_TEST_SUITE_P(HalvesToEven, ToInteger,
                         testing::Values(Int{0.5, 0}, Int{1.5, 2}, Int{2.5, 2}, Int{3.5, 4}, Int{-0.5, 0},
                                         Int{-1.5, -2}, Int{-2.5, -2}, Int{-3.5, -4},
                                         Int{0.49999999999999994, 0}, Int{0.5000001, 1}, Int{1.4999999, 1},
                                         Int{2.5000001, 3}, Int{-2.5000001, -3},
                                         Int{1073741824.5, 1073741824}, Int{2147483646.5, 2147483646},
                                         Int{2147483647.4999, 2147483647},
                                         Int{-2147483648.5, std::numeric_limits<std::int32_t>::min()},
                                         Int{"2.5", 2}, Int{"3.5", 4}, Int{"-0.5", 0}));
INSTANTIATE_TEST_SUITE_P(
    Texts, ToInteger,
    testing::Values(Int{"0", 0}, Int{"42", 42}, Int{"-42", -42}, Int{"+42", 42}, Int{" 42 ", 42},
                    Int{"\t42\r\n", 42}, Int{"0042", 42}, Int{"42.", 42}, Int{".6", 1}, Int{"1e3", 1000},
                    Int{"1E3", 1000}, Int{"1d3", 1000}, Int{"1D+3", 1000}, Int{"12e-1", 1},
                    Int{"1,000", 1000}, Int{"1,234,567.5", 1234568}, Int{"10,00", 1000}, Int{"1,", 1},
                    Int{"&H1F", 31}, Int{"&h1f", 31}, Int{"&O17", 15}, Int{"&o17", 15}, Int{"&HFFFF", 65535},
                    Int{"&HFFFFFFFF", -1}, Int{"&H80000000", std::numeric_limits<std::int32_t>::min()},
                    Int{"&H0000000000001F", 31}, Int{"2147483647", 2147483647},
                    Int{"-2147483648", std::numeric_limits<std::int32_t>::min()},
                    Int{std::string(100'000, '0') + "7", 7}, Int{"0." + std::string(100'000, '0') + "7", 0},
                    Int{"0e999999999999999999999", 0}, Int{"5e-99999999999999999999", 0}));

struct Refused {
    Value given;
    std::int32_t number;
};

void PrintTo(const Refused& each, std::ostream* out) {
    *out << each.number;
    if (each.given.TextIfAny()) *out << " for \"" << each.given.TextIfAny()->substr(0, 40) << '"';
}

class NoInteger : public testing::TestWithParam<Refused> {};

TEST_P(NoInteger, IsRefused) {
    const Refusal refusal = RefusalOf([] { GetParam().given.ToInteger(); });
    EXPECT_EQ(refusal.number, GetParam().number);
    EXPECT_EQ(refusal.source, "Value");
    EXPECT_FALSE(refusal.description.empty());
}

constexpr auto mismatch = base::errors::TypeMismatch;
constexpr auto overflow = base::errors::Overflow;
INSTANTIATE_TEST_SUITE_P(
    Texts, NoInteger,
    testing::Values(
        Refused{"", mismatch}, Refused{" ", mismatch}, Refused{"12abc", mismatch}, Refused{"abc", mismatch},
        Refused{"1 2", mismatch}, Refused{"1.2.3", mismatch}, Refused{"--1", mismatch},
        Refused{"+-1", mismatch}, Refused{"-", mismatch}, Refused{".", mismatch}, Refused{"e5", mismatch},
        Refused{"1e", mismatch}, Refused{"1e+", mismatch}, Refused{"1.5,000", mismatch},
        Refused{",5", mismatch}, Refused{"&H", mismatch}, Refused{"&HG", mismatch}, Refused{"&H-1", mismatch},
        Refused{"&O8", mismatch}, Refused{"&", mismatch}, Refused{"&X1", mismatch}, Refused{"-&H1", mismatch},
        Refused{"0x1F", mismatch}, Refused{"True", mismatch}, Refused{"nan", mismatch},
        Refused{"inf", mismatch}, Refused{"-inf", mismatch}, Refused{"Infinity", mismatch},
        Refused{"1\0"s, mismatch}, Refused{"\0"s, mismatch}, Refused{"１２", mismatch},
        Refused{"1\xC2", mismatch}, Refused{"1\xA0", mismatch}, Refused{"1\u200B", mismatch},
        Refused{"$", mismatch}, Refused{"$$5", mismatch}, Refused{"$5$", mismatch}, Refused{"(5", mismatch},
        Refused{"5)", mismatch}, Refused{"((5))", mismatch}, Refused{"()", mismatch},
        Refused{"( - )", mismatch}, Refused{"-5-", mismatch}, Refused{"5--", mismatch},
        Refused{"5-5", mismatch}, Refused{"5(5)", mismatch}, Refused{")5(", mismatch},
        Refused{"$&H1", mismatch}, Refused{"&H1-", mismatch}, Refused{"(&H1)", mismatch},
        Refused{"5-e3", mismatch}, Refused{"(2147483649)", overflow}, Refused{"2147483648", overflow},
        Refused{"2147483647.5", overflow}, Refused{"-2147483649", overflow}, Refused{"1e10", overflow},
        Refused{"1e400", overflow}, Refused{"-1e400", overflow}, Refused{"&H100000000", overflow},
        Refused{"1e999999999999999999999", overflow}, Refused{std::string(100'000, '9'), overflow}));
INSTANTIATE_TEST_SUITE_P(Numbers, NoInteger,
                         testing::Values(Refused{2147483647.5, overflow}, Refused{-2147483648.51, overflow},
                                         Refused{1e300, overflow}, Refused{infinity, overflow},
                                         Refused{-infinity, overflow}, Refused{notANumber, overflow},
                                         Refused{base::Date{1e10}, overflow},
                                         Refused{std::shared_ptr<base::Object>(), mismatch}));

class ToDouble : public testing::TestWithParam<Conversion<double>> {};

TEST_P(ToDouble, Converts) {
    EXPECT_EQ(GetParam().given.ToDouble(), GetParam().expected);
}

using Real = Conversion<double>;
INSTANTIATE_TEST_SUITE_P(
    Value, ToDouble,
    testing::Values(
        Real{{}, 0}, Real{true, -1}, Real{7, 7}, Real{2.5, 2.5}, Real{base::Date{1.25}, 1.25},
        Real{"0.1", 0.1}, Real{".5", 0.5}, Real{"5.", 5}, Real{"5-", -5}, Real{"5 +", 5}, Real{"- 5", -5},
        Real{"+\t5", 5}, Real{"(5)", -5}, Real{"( 1,234.5 )", -1234.5}, Real{"(-5)", -5}, Real{"-(5)", -5},
        Real{"(5-)", -5}, Real{"$5", 5}, Real{"-$1,000.50", -1000.5}, Real{"$ -5", -5}, Real{"($.5)", -0.5},
        Real{"5 $-", -5}, Real{"1e-3-", -0.001}, Real{"\u00A05\u3000 ", 5}, Real{"-0", 0},
        Real{"3.1415926535897932384626433832795", 3.141592653589793},
        Real{"1.7976931348623157e308", 1.7976931348623157e308},
        Real{"5e-324", std::numeric_limits<double>::denorm_min()}, Real{"1e-400", 0}, Real{"-1e-400", 0},
        Real{"0." + std::string(400, '0') + "1e401", 1}, Real{"1" + std::string(400, '0') + "e-400", 1},
        Real{"1,234.5", 1234.5}, Real{"1,2,3d2", 12300}, Real{"&HFFFFFFFF", -1},
        Real{"9007199254740993", 9007199254740992},
        Real{"9007199254740993." + std::string(2000, '0'), 9007199254740992},
        Real{"9007199254740993." + std::string(2000, '0') + "1", 9007199254740994},
        Real{"9007199254740993" + std::string(2000, '0') + "1E-2001", 9007199254740994},
        Real{"1" + std::string(2000, '9') + "E-2000", 2}, Real{std::string(1'000'000, '0') + "1.5", 1.5}));

TEST(Value, RefusesTextsThatAreTooLargeForADouble) {
    for (const std::string& text : {"1e309"s, "-1e309"s, std::string(400, '9'), "0.001e312"s, "1d400"s})
        EXPECT_EQ(RefusalOf([&] { Value(text).ToDouble(); }).number, overflow) << text;
}

TEST(Value, ShowsTheRefusedText) {
    EXPECT_EQ(RefusalOf([] { Value("12abc").ToDouble(); }).description, "\"12abc\" is not a number");
    EXPECT_EQ(RefusalOf([] { Value("12abc").ToInteger(); }).description, "\"12abc\" is not an integer");
    EXPECT_EQ(RefusalOf([] { Value("maybe").ToBoolean(); }).description, "\"maybe\" is not a boolean");
    EXPECT_EQ(RefusalOf([] { Value("soon").ToDate(); }).description, "\"soon\" is not a date");
    const std::string description =
        RefusalOf([] { Value(std::string(1'000'000, 'x')).ToDate(); }).description;
    EXPECT_EQ(description, "\"" + std::string(40, 'x') + "...\" is not a date");
}

class ToText : public testing::TestWithParam<Conversion<std::string>> {};

TEST_P(ToText, Converts) {
    EXPECT_EQ(GetParam().given.ToText(), GetParam().expected);
}

using Shown = Conversion<std::string>;
INSTANTIATE_TEST_SUITE_P(
    Value, ToText,
    testing::Values(
        Shown{{}, ""}, Shown{true, "True"}, Shown{false, "False"}, Shown{0, "0"}, Shown{-17, "-17"},
        Shown{std::numeric_limits<std::int32_t>::min(), "-2147483648"}, Shown{"a\0b"s, "a\0b"s},
        Shown{0.0, "0"}, Shown{-0.0, "0"}, Shown{1.0, "1"}, Shown{-1.5, "-1.5"}, Shown{0.1, "0.1"},
        Shown{0.1 + 0.2, "0.3"}, Shown{1.0 / 3, "0.333333333333333"}, Shown{-2.0 / 3, "-0.666666666666667"},
        Shown{100.0, "100"}, Shown{1234.5, "1234.5"}, Shown{123456789012345.0, "123456789012345"},
        Shown{999999999999999.0, "999999999999999"}, Shown{999999999999999.9, "1E+15"}, Shown{1e15, "1E+15"},
        Shown{1.5e15, "1.5E+15"}, Shown{-1e15, "-1E+15"}, Shown{1e100, "1E+100"}, Shown{0.0001, "0.0001"},
        Shown{0.00012345, "0.00012345"}, Shown{0.00001, "1E-05"}, Shown{-0.000015, "-1.5E-05"},
        Shown{5e-324, "4.94065645841247E-324"}, Shown{1.7976931348623157e308, "1.79769313486232E+308"},
        Shown{0.99999999999999999, "1"}, Shown{9.9999999999999999, "10"}, Shown{2147483648.0, "2147483648"}));

TEST(Value, HasNoTextForWhatIsNotFinite) {
    for (const double number : {infinity, -infinity, notANumber})
        EXPECT_EQ(RefusalOf([&] { Value(number).ToText(); }).number, overflow);
}

TEST(Value, ReadsBackEveryNumberThatItWritesToFifteenDigits) {
    std::mt19937_64 random(7);
    for (int i = 0; i < 100'000; ++i) {
        const auto number = std::bit_cast<double>(random());
        // What fifteen digits of a number near the largest stand for can lie beyond it.
        if (!std::isfinite(number) || std::fabs(number) > 1e308) continue;
        const double read = Value(Value(number).ToText()).ToDouble();
        ASSERT_LE(std::fabs(read - number), std::fabs(number) * 5e-15 + 1e-320) << number;
    }
}

TEST(Value, WritesShortDecimalsAsTheyWereRead) {
    std::mt19937 random(8);
    for (int i = 0; i < 100'000; ++i) {
        const std::int64_t digits = 1 + static_cast<std::int64_t>(random()) * 1000 % 999'999'999'999'999;
        std::string text = std::to_string(digits);
        text.erase(text.find_last_not_of('0') + 1);
        text.insert(random() % text.size(), ".");
        if (text.front() == '.') text.insert(0, "0");
        if (text.back() == '.') text.pop_back();
        text.erase(0, std::min(text.find_first_not_of('0'), text.size()));
        if (text.empty() || text.front() == '.') text.insert(0, "0");
        ASSERT_EQ(Value(Value(text).ToDouble()).ToText(), text);
    }
}

/// Writes numbers as much of Europe does.
class DecimalComma : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(Value, ConvertsWithoutRegardToTheLocale) {
    const std::locale streams = std::locale::global(std::locale(std::locale(), new DecimalComma));
    const std::string runtime = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "German_Germany.1252"})
        std::setlocale(LC_ALL, name); // where one of them is installed
    EXPECT_EQ(Value(1234.5).ToText(), "1234.5");
    EXPECT_EQ(Value(1234567).ToText(), "1234567");
    EXPECT_EQ(Value("1,234.5").ToDouble(), 1234.5);
    EXPECT_EQ(base::LeadingNumber("1.5x"), 1.5);
    EXPECT_EQ(Value(Value("1/2/2003").ToDate()).ToText(), "1/2/2003");
    std::setlocale(LC_ALL, runtime.c_str());
    std::locale::global(streams);
}

TEST(Value, KnowsItsKind) {
    EXPECT_EQ(Value().GetKind(), Value::Kind::Empty);
    EXPECT_EQ(Value(true).GetKind(), Value::Kind::Boolean);
    EXPECT_EQ(Value(1).GetKind(), Value::Kind::Integer);
    EXPECT_EQ(Value(1.0).GetKind(), Value::Kind::Double);
    EXPECT_EQ(Value("").GetKind(), Value::Kind::Text);
    EXPECT_EQ(Value(std::string_view("x")).GetKind(), Value::Kind::Text);
    EXPECT_EQ(Value(base::Date{}).GetKind(), Value::Kind::Date);
    EXPECT_EQ(Value(std::shared_ptr<base::Object>()).GetKind(), Value::Kind::Object);
    EXPECT_TRUE(Value().IsEmpty());
    EXPECT_FALSE(Value("").IsEmpty());
}

TEST(Value, GivesItsTextWithoutACopy) {
    const Value text("abc");
    ASSERT_NE(text.TextIfAny(), nullptr);
    EXPECT_EQ(*text.TextIfAny(), "abc");
    EXPECT_EQ(text.TextIfAny(), text.TextIfAny());
    EXPECT_EQ(Value(1).TextIfAny(), nullptr);
    EXPECT_EQ(Value().TextIfAny(), nullptr);
}

TEST(Value, SharesALongTextWithItsCopies) {
    const Value value(std::string(100'000, 'x'));
    const Value copy = value; // NOLINT: the copy is the point
    EXPECT_EQ(copy.TextIfAny(), value.TextIfAny());
    EXPECT_EQ(copy.ToText(), std::string(100'000, 'x'));
}

TEST(Value, ConvertsLongTextsAsShortOnes) {
    const std::string blanks(5000, ' ');
    const Value number(blanks + "-12"), word(blanks + "True"), nothing(blanks);
    EXPECT_EQ(number.GetKind(), Value::Kind::Text);
    EXPECT_FALSE(number.IsEmpty());
    EXPECT_EQ(number.ToInteger(), -12);
    EXPECT_EQ(number.ToDouble(), -12.0);
    EXPECT_TRUE(number.EqualsNumber(-12));
    EXPECT_TRUE(word.ToBoolean());
    EXPECT_EQ(nothing.ToText(), blanks);
    EXPECT_THROW(nothing.ToInteger(), base::ComponentError);
    EXPECT_THROW(number.ToObject(), base::ComponentError);
}

TEST(Value, IsUsableAfterALongTextWasMovedAway) {
    Value value(std::string(100'000, 'x'));
    const Value taken = std::move(value);
    EXPECT_EQ(taken.ToText().size(), 100'000u);
    EXPECT_NO_THROW(value.ToText()); // NOLINT: whatever it holds now
    value = Value("new");
    EXPECT_EQ(value.ToText(), "new");
}

TEST(Value, GivesItsObject) {
    const auto object = std::make_shared<base::Object>();
    EXPECT_EQ(Value(object).ToObject(), object);
    EXPECT_EQ(Value(std::shared_ptr<base::Object>()).ToObject(), nullptr);
    for (const Value& other : {Value(), Value(1), Value("x"), Value(false)})
        EXPECT_EQ(RefusalOf([&] { other.ToObject(); }).number, mismatch);
}

TEST(Value, ConvertsNoObject) {
    const Value object(std::make_shared<base::Object>());
    EXPECT_EQ(RefusalOf([&] { object.ToBoolean(); }).number, mismatch);
    EXPECT_EQ(RefusalOf([&] { object.ToInteger(); }).number, mismatch);
    EXPECT_EQ(RefusalOf([&] { object.ToDouble(); }).number, mismatch);
    EXPECT_EQ(RefusalOf([&] { object.ToText(); }).number, mismatch);
    EXPECT_EQ(RefusalOf([&] { object.ToDate(); }).number, mismatch);
}

TEST(Value, EqualsNumbersByContent) {
    EXPECT_TRUE(Value().EqualsNumber(0));
    EXPECT_FALSE(Value().EqualsNumber(-1));
    EXPECT_TRUE(Value(true).EqualsNumber(-1));
    EXPECT_FALSE(Value(true).EqualsNumber(1));
    EXPECT_TRUE(Value(3).EqualsNumber(3));
    EXPECT_TRUE(Value(2.5).EqualsNumber(2.5));
    EXPECT_TRUE(Value("-1").EqualsNumber(-1));
    EXPECT_TRUE(Value(" -1.0 ").EqualsNumber(-1));
    EXPECT_TRUE(Value("&HFFFFFFFF").EqualsNumber(-1));
    EXPECT_TRUE(Value("1,000").EqualsNumber(1000));
    EXPECT_TRUE(Value("(1)").EqualsNumber(-1));
    EXPECT_TRUE(Value("1-").EqualsNumber(-1));
    EXPECT_TRUE(Value(base::Date{5}).EqualsNumber(5));
}

TEST(Value, EqualsNoNumberWhenItIsNone) {
    for (const char* text : {"", " ", "True", "x", "0x", "nan", "1e400"}) {
        EXPECT_FALSE(Value(text).EqualsNumber(0)) << text;
        EXPECT_FALSE(Value(text).EqualsNumber(-1)) << text;
        EXPECT_FALSE(Value(text).EqualsNumber(std::numeric_limits<double>::max())) << text;
    }
    EXPECT_FALSE(Value(std::shared_ptr<base::Object>()).EqualsNumber(0));
    EXPECT_FALSE(Value(notANumber).EqualsNumber(0));
    EXPECT_FALSE(Value(0).EqualsNumber(notANumber));
}

class Leading : public testing::TestWithParam<Conversion<double>> {};

TEST_P(Leading, IsTheNumberAtTheStart) {
    EXPECT_EQ(base::LeadingNumber(*GetParam().given.TextIfAny()), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Number, Leading,
    testing::Values(Real{"", 0}, Real{"   ", 0}, Real{"abc", 0}, Real{"12abc", 12}, Real{"  -3.5 kg", -3.5},
                    Real{"3/1/2024", 3}, Real{"2024-03-01", 2024}, Real{"1,000", 1}, Real{"5-", 5},
                    Real{"- 5", 0}, Real{"(5)", 0}, Real{"$5", 0}, Real{"1e3x", 1000}, Real{"1e", 1},
                    Real{"1e+", 1}, Real{"1d2", 100}, Real{".5.5", 0.5}, Real{".", 0}, Real{"-", 0},
                    Real{"-.", 0}, Real{"+7", 7}, Real{"&H1Fz", 31}, Real{"&Hz", 0}, Real{"\t\n 8", 8},
                    Real{"nan", 0}, Real{"inf", 0}, Real{"1e-400", 0},
                    Real{"1e400", std::numeric_limits<double>::max()},
                    Real{"-1e400", -std::numeric_limits<double>::max()}, Real{"\xFF", 0}));

} // namespace
