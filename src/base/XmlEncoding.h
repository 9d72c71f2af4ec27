#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace base {

/// The bytes of an XML file as UTF-8, by byte order mark, by the form of its first bytes (UTF-16, UTF-32,
/// EBCDIC) or by its declaration, which counts in this order. Every encoding is read that the system's
/// library knows. Bytes in UTF-8 are answered as they stand, well-formed or not, mark included. Throws
/// ComponentError with line and column for an encoding that is not known, one that is declared and not true,
/// and bytes that it does not have.
std::string DecodeXml(std::string bytes);

/// Where the name of the encoding stands in the XML declaration at the start of a text, perhaps behind a byte
/// order mark; nothing when there is no declaration or it names none. A malformed one is left to the parser.
struct XmlEncodingName {
    std::size_t offset = 0, length = 0; // in bytes
};
std::optional<XmlEncodingName> FindXmlEncoding(std::string_view text);

/// Whether a text without byte order mark begins with an XML declaration.
bool HasXmlDeclaration(std::string_view text) noexcept;

} // namespace base
