#include "options/TreeNodes.h"

namespace kvtm::treeNodes {

using base::ViewOf;

namespace {

xmlNode* NamedFrom(xmlNode* node, std::string_view name) noexcept {
    while (node && !IsNamed(node, name))
        node = node->next;
    return node;
}

} // namespace

xmlNode* FirstChildNamed(const xmlNode* parent, std::string_view name) noexcept {
    return NamedFrom(parent->children, name);
}

xmlNode* NextSiblingNamed(const xmlNode* sibling, std::string_view name) noexcept {
    return NamedFrom(sibling->next, name);
}

xmlNode* AncestorNamed(const xmlNode* node, std::string_view name) noexcept {
    xmlNode* ancestor = node->parent;
    while (ancestor && !IsNamed(ancestor, name))
        ancestor = ancestor->parent;
    return ancestor;
}

std::optional<std::string_view> Attribute(const xmlNode* element, std::string_view name) noexcept {
    for (const xmlAttr* attribute = element->properties; attribute; attribute = attribute->next) {
        if (attribute->ns || ViewOf(attribute->name) != name) continue;
        return attribute->children ? ViewOf(attribute->children->content) : std::string_view();
    }
    return std::nullopt;
}

std::optional<std::string_view> TextInOnePiece(const xmlNode* element) noexcept {
    const xmlNode* child = element->children;
    if (!child) return std::string_view();
    if (child->next || child->type != XML_TEXT_NODE) return std::nullopt;
    return ViewOf(child->content);
}

std::string Text(const xmlNode* element) {
    if (const std::optional<std::string_view> whole = TextInOnePiece(element)) return std::string(*whole);
    std::string text;
    for (const xmlNode* node = element; node; node = base::NextInTree(const_cast<xmlNode*>(node), element)) {
        if (node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE)
            text += ViewOf(node->content);
    }
    return text;
}

bool TextEquals(const xmlNode* element, std::string_view text) {
    const std::optional<std::string_view> whole = TextInOnePiece(element);
    return whole ? *whole == text : Text(element) == text;
}

} // namespace kvtm::treeNodes
