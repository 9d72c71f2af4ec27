#pragma once

#include "desktop/controls/OptionSheet.h"

#include <string>

namespace desktop::test {

inline std::string Option(const std::string& name, const std::string& value) {
    return "<Option><Name>" + name + "</Name><Value>" + value + "</Value></Option>";
}

/// The sheet of an options text.
inline OptionSheet Sheet(const std::string& text) {
    OptionSheet sheet;
    sheet.Load(text);
    return sheet;
}

} // namespace desktop::test
