#pragma once

#include "base/Value.h"

#include <string>

namespace kvtm {

/// One option value.
struct DataProperty {
    std::string Name;    // the option's name, and its key in the owning record
    base::Value Value;   // text as it was read; empty when the option has none
    base::Value Visible; // for those who use the records; nothing here reads or writes it
};

} // namespace kvtm
