#include "base/XmlTree.h"

#include <cstdint>

namespace base {

XmlTree::XmlTree(xmlDoc* document, bool hasDeclaration)
    : document_(document), hasDeclaration_(hasDeclaration), selection_(document) {}

XmlTree::~XmlTree() {
    for (xmlNode* node : removed_)
        xmlFreeNode(node);
}

void XmlTree::Remove(xmlNode* node, bool isForgettable) {
    const bool isFreed = isForgettable && !HasHandle(node);
    if (!isFreed) removed_.push_back(node);
    xmlUnlinkNode(node);
    if (isFreed) xmlFreeNode(node);
}

void AddHandle(xmlNode* node) noexcept {
    node->_private = reinterpret_cast<void*>(reinterpret_cast<std::uintptr_t>(node->_private) + 1);
}

void DropHandle(xmlNode* node) noexcept {
    node->_private = reinterpret_cast<void*>(reinterpret_cast<std::uintptr_t>(node->_private) - 1);
}

bool HasHandle(const xmlNode* node) noexcept {
    return node->_private != nullptr;
}

xmlNode* NextInTree(xmlNode* node, const xmlNode* top) noexcept {
    if (node->children) return node->children;
    for (; node != top; node = node->parent) {
        if (node->next) return node->next;
    }
    return nullptr;
}

} // namespace base
