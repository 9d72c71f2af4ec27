#pragma once

#include <string>

namespace base {

/// The bytes of an XML file as UTF-8, by byte order mark or declaration. Bytes in UTF-8 are answered as they
/// stand, well-formed or not. Throws ComponentError with line and column for an encoding that is not known
/// and for bytes that it does not have.
std::string DecodeXml(std::string bytes);

} // namespace base
