#pragma once

#include <cstdint>

namespace platform {

/// The system's number of the language that the user reads (0x0407 for German in Germany), from the locale
/// that the environment names for messages; 0 when it names none that has a number ("C").
std::uint16_t UserLanguage();

} // namespace platform
