#pragma once

#include "base/XmlTree.h"

#include <string>

namespace base {

/// XML text of a node and everything below it (of all top-level nodes for the document), no indentation
/// added. Reading it again gives an equal tree.
std::string WriteXml(xmlNode* top);
/// "<?xml ...?>" and a line break, for a document that is written as UTF-8.
std::string WriteXmlDeclaration(const xmlDoc& document);

} // namespace base
