#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Edits of the catalogue's text that leave every other byte of it as it is.
namespace arvon::host::toolsXml {

struct Edit {
    std::size_t tool = 0; // which Tool element, from 0 in document order
    std::string attribute;
    std::string value;
};

/// The text with attributes of Tool elements set and Tool elements cut out; a cut takes the line with it
/// where nothing else stands on it. Tool elements inside one that is cut stay unless they are cut too. An
/// encoding that the XML declaration names becomes UTF-8. `text` must be well-formed XML in UTF-8. Nothing
/// when the text does not hold `toolCount` elements of that name.
std::optional<std::string> Apply(std::string_view text, std::size_t toolCount, const std::vector<Edit>& edits,
                                 const std::vector<std::size_t>& cuts);

} // namespace arvon::host::toolsXml
