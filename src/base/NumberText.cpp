#include "base/NumberText.h"

#include "base/Utf8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <limits>

namespace base {

namespace {

constexpr std::string_view whiteSpace = " \t\n\v\f\r";
constexpr std::u32string_view otherWhiteSpace = U"\x85\xA0\x1680\x2028\x2029\x202F\x205F\x3000";

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

/// Unsigned decimal digits in the form that from_chars takes, held in place: reading a number allocates
/// nothing. Of more digits than any double needs to be told from its neighbours, the rest counts only by
/// whether it is zero.
class Decimal {
public:
    /// Digits as they stand in a text: with a point, grouping commas and an exponent.
    explicit Decimal(std::string_view digits) {
        const std::size_t exponentAt = std::min(digits.find_first_of("eEdD"), digits.size());
        bool isFraction = false;
        for (const char each : digits.substr(0, exponentAt)) {
            if (each == '.') isFraction = true;
            if (IsDigit(each)) AddDigit(each, isFraction);
        }
        if (isMore_) {
            digits_[count_++] = '1';
            --exponent_;
        }
        if (exponentAt < digits.size()) exponent_ += ReadExponent(digits.substr(exponentAt + 1));
    }

    /// The largest double when too large, 0 when too small for one.
    NumberScan Evaluate() {
        NumberScan scan;
        // how many digits stand before the point, no exponent written
        const std::int64_t magnitude = static_cast<std::int64_t>(count_) + exponent_;
        constexpr std::int64_t beyondDoubles = 400;
        if (count_ == 0 || magnitude < -beyondDoubles) return scan;
        scan.isTooLarge = magnitude > beyondDoubles;
        if (!scan.isTooLarge) {
            digits_[count_] = 'e';
            const auto end =
                std::to_chars(digits_.data() + count_ + 1, digits_.data() + digits_.size(), exponent_).ptr;
            const auto result = std::from_chars(digits_.data(), end, scan.value);
            const bool isRefused = result.ec == std::errc::result_out_of_range;
            scan.isTooLarge = (isRefused && magnitude > 0) || scan.value > std::numeric_limits<double>::max();
            if (isRefused) scan.value = 0;
        }
        if (scan.isTooLarge) scan.value = std::numeric_limits<double>::max();
        return scan;
    }

private:
    void AddDigit(char digit, bool isFraction) {
        const bool isLeadingZero = count_ == 0 && digit == '0';
        const bool isHeld = !isLeadingZero && count_ < heldDigits;
        if (isHeld) digits_[count_++] = digit;
        isMore_ = isMore_ || (!isHeld && digit != '0');
        if (isFraction && (isHeld || isLeadingZero)) --exponent_;
        if (!isFraction && !isHeld && !isLeadingZero) ++exponent_;
    }

    static std::int64_t ReadExponent(std::string_view text) {
        const bool isNegative = text.starts_with('-');
        if (isNegative || text.starts_with('+')) text.remove_prefix(1);
        constexpr std::int64_t enough = 1'000'000'000'000'000; // no text holds so many zeros to undo it
        std::int64_t exponent = 0;
        for (const char digit : text)
            exponent = std::min(exponent * 10 + (digit - '0'), enough);
        return isNegative ? -exponent : exponent;
    }

    static constexpr std::size_t heldDigits = 780;     // 767 decide which of two doubles is nearer
    std::array<char, heldDigits + 1 + 1 + 20> digits_; // one that stands for the rest, 'e', the exponent
    std::size_t count_ = 0;
    std::int64_t exponent_ = 0;
    bool isMore_ = false; // a digit other than 0 that is not held
};

/// Of the character that a text starts with, 0 where it is no white space.
std::size_t FirstWhiteSpaceLength(std::string_view text) {
    if (text.empty()) return 0;
    if (static_cast<signed char>(text.front()) >= 0) return IsWhiteSpace(text.front()) ? 1 : 0;
    const Utf8Step step = DecodeUtf8(text, 0);
    const bool isSpace = (step.character >= 0x2000 && step.character <= 0x200A) ||
                         otherWhiteSpace.find(step.character) != std::u32string_view::npos;
    return isSpace ? step.length : 0;
}

std::size_t LastWhiteSpaceLength(std::string_view text) {
    constexpr std::size_t longest = 3;
    for (std::size_t length = 1; length <= std::min(longest, text.size()); ++length)
        if (FirstWhiteSpaceLength(text.substr(text.size() - length)) == length) return length;
    return 0;
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

/// What may stand around a number, each once.
class NumberMarks {
public:
    bool TakeLeading(char mark) { return TakeSign(mark) || TakeDollar(mark) || Take(mark, '(', isOpened_); }
    bool TakeTrailing(char mark) {
        return TakeSign(mark) || TakeDollar(mark) || (isOpened_ && Take(mark, ')', isClosed_));
    }

    bool AreComplete() const { return isOpened_ == isClosed_; }
    bool AreNegative() const { return isNegative_ || isOpened_; }

private:
    static bool Take(char mark, char wanted, bool& isTaken) {
        if (mark != wanted || isTaken) return false;
        return isTaken = true;
    }
    bool TakeSign(char mark) {
        if (!Take(mark, '-', hasSign_) && !Take(mark, '+', hasSign_)) return false;
        isNegative_ = mark == '-';
        return true;
    }
    bool TakeDollar(char mark) { return Take(mark, '$', hasDollar_); }

    bool hasSign_ = false, isNegative_ = false, hasDollar_ = false, isOpened_ = false, isClosed_ = false;
};

} // namespace

NumberScan ScanNumber(std::string_view text, DigitGrouping grouping) noexcept {
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
    NumberScan scan = Decimal(text.substr(begin, cursor.At() - begin)).Evaluate();
    scan.length = cursor.At();
    if (isNegative) scan.value = -scan.value;
    return scan;
}

std::optional<NumberScan> ReadNumber(std::string_view text) noexcept {
    text = TrimWhiteSpace(text);
    NumberMarks marks;
    const bool isPattern = text.starts_with('&'); // which stands alone
    while (!text.empty() && marks.TakeLeading(text.front()))
        text = TrimWhiteSpace(text.substr(1));
    const bool isBare = text.starts_with('.') || (!text.empty() && IsDigit(text.front()));
    if (!isBare && !isPattern) return {};
    NumberScan scan = ScanNumber(text, DigitGrouping::Accepted);
    if (scan.length == 0) return {};
    text = TrimWhiteSpace(text.substr(scan.length));
    while (!isPattern && !text.empty() && marks.TakeTrailing(text.front()))
        text = TrimWhiteSpace(text.substr(1));
    if (!text.empty() || !marks.AreComplete()) return {};
    if (marks.AreNegative()) scan.value = -scan.value;
    return scan;
}

bool IsWhiteSpace(char character) noexcept {
    return whiteSpace.find(character) != std::string_view::npos;
}

std::size_t WhiteSpaceLength(std::string_view text) noexcept {
    std::size_t length = 0;
    while (const std::size_t next = FirstWhiteSpaceLength(text.substr(length)))
        length += next;
    return length;
}

std::string_view TrimWhiteSpace(std::string_view text) noexcept {
    text.remove_prefix(WhiteSpaceLength(text));
    while (const std::size_t last = LastWhiteSpaceLength(text))
        text.remove_suffix(last);
    return text;
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
