#include "platform/Windows1252.h"

#include "platform/BestFit1252.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace platform::windows1252 {

namespace {

/// Bytes 0x80 to 0x9F; every other byte is the character of the same number.
constexpr std::array<char32_t, 32> HighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr bool IsBefore(const BestFitRun& run, const BestFitRun& next) noexcept {
    return run.first + run.bytes.size() <= next.first;
}
static_assert(std::adjacent_find(BestFitRuns.begin(), BestFitRuns.end(),
                                 [](const auto& run, const auto& next) { return !IsBefore(run, next); }) ==
                  BestFitRuns.end(),
              "searched by halves");

std::optional<unsigned char> BestFit(char32_t character) noexcept {
    const auto behind =
        std::upper_bound(BestFitRuns.begin(), BestFitRuns.end(), character,
                         [](char32_t wanted, const BestFitRun& run) { return wanted < run.first; });
    if (behind == BestFitRuns.begin()) return std::nullopt;
    const BestFitRun& run = *std::prev(behind);
    const std::size_t place = character - run.first;
    if (place >= run.bytes.size()) return std::nullopt;
    return static_cast<unsigned char>(run.bytes[place]);
}

} // namespace

char32_t ToCharacter(unsigned char byte) noexcept {
    if (byte < 0x80 || byte >= 0xA0) return byte;
    return HighControls[byte - 0x80u];
}

std::optional<unsigned char> ToByte(char32_t character) noexcept {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF))
        return static_cast<unsigned char>(character);
    const auto found = std::find(HighControls.begin(), HighControls.end(), character);
    if (found == HighControls.end()) return BestFit(character);
    return static_cast<unsigned char>(0x80 + (found - HighControls.begin()));
}

} // namespace platform::windows1252
