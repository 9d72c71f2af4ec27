#pragma once

#include "base/XmlTree.h"

#include <cstddef>
#include <string>

namespace base {

/// Hears at which offsets of the text each element begins and ends.
class XmlPlaces {
public:
    virtual ~XmlPlaces() = default;
    virtual void OnBegin(const xmlNode* element, std::size_t offset) = 0;
    virtual void OnEnd(const xmlNode* element, std::size_t offset) = 0;
};

/// XML text of a node and everything below it (of all top-level nodes for the document), no indentation
/// added. Reading it again gives an equal tree.
std::string WriteXml(xmlNode* top, XmlPlaces* places = nullptr);
/// "<?xml ...?>" and a line break, for a document that is written as UTF-8.
std::string WriteXmlDeclaration(const xmlDoc& document);

} // namespace base
