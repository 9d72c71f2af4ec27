#pragma once

#include "console/Writer.h"

#include <string>
#include <vector>

namespace arvon::console {

/// Lines of a state for a person: an array of objects as aligned columns under a heading, what lies below an
/// entry (items, nodes, tasks) indented under it; columns in which nothing stands are left out. An array of
/// plain values is one a line; an empty one is the line "(none)".
std::vector<std::string> TableOf(const Json& state);

} // namespace arvon::console
