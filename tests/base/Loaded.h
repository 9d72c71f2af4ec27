#pragma once

#include "base/XmlDocument.h"

#include <string_view>

/// The document of a text.
inline base::XmlDocument Loaded(std::string_view text) {
    base::XmlDocument document;
    document.LoadText(text);
    return document;
}
