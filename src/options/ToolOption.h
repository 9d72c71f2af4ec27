#pragma once

#include "base/Collection.h"
#include "base/XmlDocument.h"
#include "options/DataProperty.h"

#include <memory>
#include <string>

namespace kvtm {

/// One option set: the values under one element that carries an "ID".
class ToolOption {
public:
    std::string Key; // the value of "ID"
    base::Collection<std::shared_ptr<DataProperty>>
        Properties;          // under their names (empty ones too), in document order
    base::XmlNode XMLObject; // the element that was read; keeps its whole document alive

private:
    friend class ToolOptions;

    /// Adds a property for every child element of XMLObject but an "Option" without children. Throws
    /// DuplicateKey for a repeated name; what was added before stays.
    void ReadProperties();
    /// Writes the values back into the second child of every "Option" that has one. Throws InvalidCall for an
    /// option that Properties lacks.
    void WriteProperties();
};

} // namespace kvtm
