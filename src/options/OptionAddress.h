#pragma once

#include <string>
#include <string_view>

/// Where options are found in the options document. Nothing is escaped: with a quote in an identifier or name
/// the path says what it then says, or is malformed.
namespace kvtm::optionAddress {

inline std::string OfTool(std::string_view toolId) {
    return "//Tool[@ID='" + std::string(toolId) + "']";
}

/// Every option of that name, whatever tool it belongs to.
inline std::string OfName(std::string_view optionName) {
    return "//Option[Name='" + std::string(optionName) + "']";
}

inline std::string Of(std::string_view toolId, std::string_view optionName) {
    return OfTool(toolId) + "/Option[Name='" + std::string(optionName) + "']";
}

} // namespace kvtm::optionAddress
