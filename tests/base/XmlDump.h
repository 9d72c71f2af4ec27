#pragma once

#include "base/XmlDocument.h"

#include <string>

/// Every node of a tree on a line of its own, with all that it holds: equal dumps are equal trees.
inline std::string Dump(const base::XmlNode& node, int level = 0) {
    std::string dump(static_cast<std::size_t>(level), ' ');
    dump += node.Name();
    for (const auto& [name, value] : node.Attributes())
        dump += " " + name + "=[" + value + "]";
    if (!node.FirstChild()) dump += " [" + node.Text() + "]";
    dump += "\n";
    for (const base::XmlNode& child : node.Children())
        dump += Dump(child, level + 1);
    return dump;
}

inline std::string Dump(const base::XmlDocument& document) {
    return Dump(document.SelectSingle("/"));
}
