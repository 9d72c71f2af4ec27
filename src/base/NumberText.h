#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace base {

/// A number found at the start of a text.
struct NumberScan {
    std::size_t length = 0; // bytes it takes; 0 when the text starts with no number
    double value = 0;       // the largest double of its sign when too large
    bool isTooLarge = false;
};

enum class DigitGrouping { Refused, Accepted };

/// The longest number that starts right here: an optional sign, digits with an optional point and an optional
/// exponent (after e or d in either case), or &H and hexadecimal or &O and octal digits, which stand for the
/// 32-bit integer of that pattern. With `grouping` commas may follow the first whole digit. Never depends on
/// the locale; "inf", "nan" and the like are no numbers. Needs no memory, however long the text is.
NumberScan ScanNumber(std::string_view text, DigitGrouping grouping) noexcept;

/// The number that the whole text is, as the system reads it: ScanNumber's, with grouping, between white
/// space; a sign may stand before or behind it, parentheses make it negative, and a dollar sign says nothing.
std::optional<NumberScan> ReadNumber(std::string_view text) noexcept;

/// True for blank, tab and line break characters.
bool IsWhiteSpace(char character) noexcept;
/// The bytes that white space takes at the start of a text: Unicode's, as the system counts it around numbers
/// and in dates.
std::size_t WhiteSpaceLength(std::string_view text) noexcept;
/// Without such white space at its ends.
std::string_view TrimWhiteSpace(std::string_view text) noexcept;

/// Shortest decimal form with up to 15 significant digits and a point; with an exponent ("1E+15", "1E-05")
/// from 15 whole digits on and below 0.0001. The number must be finite.
std::string NumberToText(double number);

} // namespace base
