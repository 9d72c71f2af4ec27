#pragma once

#include <optional>

namespace platform::windows1252 {

/// The character of a byte. Every byte has one: the five that the code page leaves undefined are the C1
/// controls of the same number, as the real system maps them.
char32_t ToCharacter(unsigned char byte) noexcept;
/// The byte of a character; for one outside the code page its best fit, as the real system writes it ("L" for
/// "Ł"), and nothing where there is none.
std::optional<unsigned char> ToByte(char32_t character) noexcept;

} // namespace platform::windows1252
