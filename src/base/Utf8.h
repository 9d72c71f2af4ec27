#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace base {

inline constexpr char32_t replacementCharacter = 0xFFFD;

/// One step over UTF-8. An ill-formed stretch is one step over the bytes that could still have begun a
/// character (at least one), with U+FFFD as its character.
struct Utf8Step {
    char32_t character = replacementCharacter;
    std::size_t length = 1; // bytes
    bool isWellFormed = false;
};

/// The step that starts at `offset`, which must lie inside the text.
Utf8Step DecodeUtf8(std::string_view text, std::size_t offset) noexcept;
/// Appends a character; U+FFFD for what is no Unicode scalar value.
void AppendUtf8(std::string& text, char32_t character);
/// The offset of the first ill-formed byte, npos when there is none.
std::size_t IllFormedUtf8At(std::string_view text) noexcept;
/// The number of ASCII bytes from `offset` on.
std::size_t AsciiRun(std::string_view text, std::size_t offset) noexcept;

} // namespace base
