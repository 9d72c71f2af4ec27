#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace base {

/// Upper-cases as the system does in no particular language: letter by letter, beyond ASCII too, where lower
/// case leads back. Ill-formed UTF-8 is kept as it stands.
std::string UpperCase(std::string_view text);
/// Equal when both are equal in upper case.
bool EqualIgnoringCase(std::string_view left, std::string_view right);
/// Without the blanks (U+0020 only) at both ends.
std::string_view TrimBlanks(std::string_view text) noexcept;
/// Pieces between separators; an empty text is one empty piece.
std::vector<std::string> Split(std::string_view text, char separator);
/// Text with every occurrence of `from` replaced.
std::string Replace(std::string_view text, std::string_view from, std::string_view to);
bool IsWellFormedUtf8(std::string_view text) noexcept;
std::u32string ToCodePoints(std::string_view text);
std::string FromCodePoints(std::u32string_view text);
/// UTF-16 to UTF-8; a lone surrogate becomes U+FFFD.
std::string FromUtf16(std::u16string_view text);
std::u16string ToUtf16(std::string_view text);
/// The first `count` characters (code points, not bytes) of a text.
std::string_view FirstCharacters(std::string_view text, std::size_t count) noexcept;

} // namespace base
