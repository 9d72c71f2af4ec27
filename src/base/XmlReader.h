#pragma once

#include "base/XmlTree.h"

#include <memory>
#include <string_view>

namespace base {

/// Parses UTF-8 text, within the bounds and by the rules of XmlDocument. Throws ComponentError with line and
/// column.
std::shared_ptr<XmlTree> ReadXml(std::string_view text);

} // namespace base
