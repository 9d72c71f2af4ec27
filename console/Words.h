#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace arvon::console {

/// A command that was not understood or not carried out.
class CommandError : public std::runtime_error {
public:
    explicit CommandError(std::string text) : std::runtime_error(text), text_(std::move(text)) {}
    /// The text of its `error` line; what() ends at the first NUL that the user gave.
    const std::string& Text() const { return text_; }

private:
    std::string text_;
};

/// Splits a line into words as a shell does, without any expansion:
/// - blanks and tabs part words; `#` at the start of a word opens a comment;
/// - 'single quotes' keep everything; "double quotes" keep everything but \" \\ \$ \` (the backslash goes);
/// - outside quotes a backslash goes and keeps the character after it, but stays itself before a letter (any
///   character beyond ASCII counts as one) and at the end of the line: C:\QUARRA needs no quotes.
/// Throws CommandError for a quote that is not closed.
std::vector<std::string> SplitWords(std::string_view line);

struct NamedValue {
    std::string name;
    std::string value;
};

/// `name=value`, parted at the first "="; nothing when there is none or no name before it.
std::optional<NamedValue> ReadNamedValue(std::string_view word);

/// A 32-bit number, the whole word. Throws CommandError, naming `what`.
std::int32_t ReadNumber(std::string_view what, std::string_view word);

/// "True", "False", "-1", "0", "1", in any letter case. Throws CommandError, naming `what`.
bool ReadBoolean(std::string_view what, std::string_view word);

} // namespace arvon::console
