#pragma once

#include <cstdint>

/// Numbers of the options' own errors, counted from base::errors::ObjectErrorBase.
namespace kvtm::optionError {

inline constexpr std::int32_t NoData = 41;           // the options file could not be read
inline constexpr std::int32_t NotLoaded = 42;        // a write before the first read
inline constexpr std::int32_t NoParameter = 43;      // a request without a parameter that it needs
inline constexpr std::int32_t NoOption = 44;         //
inline constexpr std::int32_t NoValue = 45;          // an option without a "Value"
inline constexpr std::int32_t NoTool = 46;           //
inline constexpr std::int32_t UnknownSet = 47;       // a save with an option set that was not read
inline constexpr std::int32_t NoLocaleSettings = 48; //
inline constexpr std::int32_t NoView = 49;           //
inline constexpr std::int32_t NoOptionsText = 50;    // an update by a text that holds no tools

} // namespace kvtm::optionError
