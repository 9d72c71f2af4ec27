#pragma once

#include "base/XmlText.h"
#include "base/XmlTree.h"

#include <libxml/tree.h>

#include <optional>
#include <string>
#include <string_view>

/// Small questions to the nodes of a document's tree, put as XPath puts them: names and attributes outside
/// every namespace, an element's text as its whole string value.
namespace kvtm::treeNodes {

inline bool IsNamed(const xmlNode* node, std::string_view name) noexcept {
    return node->type == XML_ELEMENT_NODE && !node->ns && base::ViewOf(node->name) == name;
}

/// Null when there is none.
xmlNode* FirstChildNamed(const xmlNode* parent, std::string_view name) noexcept;
xmlNode* NextSiblingNamed(const xmlNode* sibling, std::string_view name) noexcept;
/// The nearest node of that name above a node; null when there is none.
xmlNode* AncestorNamed(const xmlNode* node, std::string_view name) noexcept;

std::optional<std::string_view> Attribute(const xmlNode* element, std::string_view name) noexcept;

/// An element's text where it lies in one piece in the tree, as nearly always.
std::optional<std::string_view> TextInOnePiece(const xmlNode* element) noexcept;
std::string Text(const xmlNode* element);
bool TextEquals(const xmlNode* element, std::string_view text);

} // namespace kvtm::treeNodes
