#include "platform/linux/UserLanguage.h"

#include <array>
#include <cstdlib>
#include <unicode/uloc.h>

namespace platform {

namespace {

constexpr std::uint16_t PrimaryLanguage = 0x3FF; // its bits; the country's stand above
constexpr std::uint16_t DefaultCountry = 0x400;

const char* MessageLocale() {
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (const char* locale = std::getenv(variable); locale != nullptr && *locale != '\0') return locale;
    return "";
}

} // namespace

std::uint16_t UserLanguage() {
    std::array<char, ULOC_FULLNAME_CAPACITY> name{};
    UErrorCode error = U_ZERO_ERROR;
    // one place is left for the NUL
    uloc_canonicalize(MessageLocale(), name.data(), static_cast<std::int32_t>(name.size()) - 1, &error);
    if (U_FAILURE(error)) return 0;
    const auto language = static_cast<std::uint16_t>(uloc_getLCID(name.data())); // above it: the sort order
    const bool isCountryOpen = language != 0 && (language & ~PrimaryLanguage) == 0;
    return isCountryOpen ? language | DefaultCountry : language;
}

} // namespace platform
