#include "base/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <limits>

namespace base {

namespace {

constexpr std::string_view whiteSpace = " \t\n\v\f\r";

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

/// Walks a text; reads past the end answer NUL, which is part of no number.
class Cursor {
public:
    explicit Cursor(std::string_view text) : text_(text) {}

    std::size_t At() const { return at_; }
    char Peek(std::size_t ahead = 0) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0'; }
    void Skip(std::size_t count = 1) { at_ += count; }

    /// Skips digits (and commas, when they count as grouping) and answers the number of digits.
    std::size_t SkipDigits(DigitGrouping grouping) {
        std::size_t digits = 0;
        while (IsDigit(Peek()) || (grouping == DigitGrouping::Accepted && digits > 0 && Peek() == ',')) {
            if (IsDigit(Peek())) ++digits;
            Skip();
        }
        return digits;
    }

private:
    std::string_view text_;
    std::size_t at_ = 0;
};

/// For digits that no double can hold: whether they are too large, and not too small. `digits` has the form
/// that from_chars takes.
bool IsBeyondDoubles(std::string_view digits) {
    const std::size_t exponentAt = digits.find('e');
    const std::string_view mantissa = digits.substr(0, exponentAt);
    const std::size_t firstDigit = mantissa.find_first_of("123456789");
    if (firstDigit == std::string_view::npos) return false;
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const auto magnitude = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(firstDigit);
    if (exponentAt == std::string_view::npos) return magnitude > 0;
    std::string_view exponentText = digits.substr(exponentAt + 1);
    if (exponentText.starts_with('+')) exponentText.remove_prefix(1);
    std::int64_t exponent = 0;
    const auto result =
        std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent);
    if (result.ec == std::errc::result_out_of_range) return !exponentText.starts_with('-');
    return exponent > -magnitude;
}

/// The value of unsigned decimal digits as they stand in a text.
NumberScan Evaluate(std::string_view digits) {
    std::string plain;
    if (digits.find_first_of(",dDE") != std::string_view::npos) {
        plain = digits;
        std::erase(plain, ',');
        std::replace_if(
            plain.begin(), plain.end(), [](char each) { return each == 'd' || each == 'D' || each == 'E'; },
            'e');
        digits = plain;
    }
    NumberScan scan;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), scan.value);
    const bool isRefused = result.ec == std::errc::result_out_of_range;
    scan.isTooLarge =
        (isRefused && IsBeyondDoubles(digits)) || scan.value > std::numeric_limits<double>::max();
    if (scan.isTooLarge)
        scan.value = std::numeric_limits<double>::max();
    else if (isRefused)
        scan.value = 0;
    return scan;
}

NumberScan ScanPattern(std::string_view text) {
    const char kind = text.size() > 2 ? text[1] : '\0';
    const int base = kind == 'H' || kind == 'h' ? 16 : kind == 'O' || kind == 'o' ? 8 : 0;
    if (base == 0 || text[2] == '-') return {};
    std::uint32_t pattern = 0;
    const auto result = std::from_chars(text.data() + 2, text.data() + text.size(), pattern, base);
    if (result.ec == std::errc::invalid_argument) return {};
    NumberScan scan;
    scan.length = static_cast<std::size_t>(result.ptr - text.data());
    scan.isTooLarge = result.ec == std::errc::result_out_of_range;
    scan.value = scan.isTooLarge ? std::numeric_limits<double>::max() : static_cast<std::int32_t>(pattern);
    return scan;
}

} // namespace

NumberScan ScanNumber(std::string_view text, DigitGrouping grouping) {
    if (text.starts_with('&')) return ScanPattern(text);
    Cursor cursor(text);
    const bool isNegative = cursor.Peek() == '-';
    if (isNegative || cursor.Peek() == '+') cursor.Skip();
    const std::size_t begin = cursor.At();
    std::size_t digits = cursor.SkipDigits(grouping);
    if (cursor.Peek() == '.') {
        cursor.Skip();
        digits += cursor.SkipDigits(DigitGrouping::Refused);
    }
    if (digits == 0) return {};
    if (std::string_view("eEdD").find(cursor.Peek()) != std::string_view::npos) {
        const std::size_t sign = cursor.Peek(1) == '-' || cursor.Peek(1) == '+' ? 1 : 0;
        if (IsDigit(cursor.Peek(1 + sign))) {
            cursor.Skip(1 + sign);
            cursor.SkipDigits(DigitGrouping::Refused);
        }
    }
    NumberScan scan = Evaluate(text.substr(begin, cursor.At() - begin));
    scan.length = cursor.At();
    if (isNegative) scan.value = -scan.value;
    return scan;
}

bool IsWhiteSpace(char character) noexcept {
    return whiteSpace.find(character) != std::string_view::npos;
}

std::string_view TrimWhiteSpace(std::string_view text) noexcept {
    const std::size_t first = text.find_first_not_of(whiteSpace);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(whiteSpace) - first + 1);
}

std::string NumberToText(double number) {
    constexpr int significantDigits = 15;
    if (number == 0) return "0";
    std::array<char, 40> buffer;
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                                       std::chars_format::scientific, significantDigits - 1);
    std::string_view scientific(buffer.data(), static_cast<std::size_t>(written.ptr - buffer.data()));
    std::string text;
    if (scientific.starts_with('-')) {
        text = "-";
        scientific.remove_prefix(1);
    }
    const std::size_t exponentAt = scientific.find('e');
    const std::string_view exponentText = scientific.substr(exponentAt + 1);
    int exponent = 0;
    std::from_chars(exponentText.data() + 1, exponentText.data() + exponentText.size(), exponent);
    if (exponentText.front() == '-') exponent = -exponent;

    std::string digits(scientific.substr(0, exponentAt));
    std::erase(digits, '.');
    digits.erase(digits.find_last_not_of('0') + 1);
    if (exponent < -4 || exponent >= significantDigits) {
        text += digits.front();
        if (digits.size() > 1) text.append(".").append(digits, 1);
        return text.append("E").append(exponentText);
    }
    if (exponent < 0) return text.append("0.").append(static_cast<std::size_t>(-exponent - 1), '0') + digits;
    const auto whole = static_cast<std::size_t>(exponent) + 1;
    if (digits.size() <= whole) return text + digits + std::string(whole - digits.size(), '0');
    return text.append(digits, 0, whole).append(".").append(digits, whole);
}

} // namespace base
