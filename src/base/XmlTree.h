#pragma once

#include "base/XmlSelection.h"

#include <libxml/tree.h>

#include <memory>
#include <vector>

namespace base {

/// What XmlDocument and its XmlNodes share: the document, the nodes that were taken out of it, and the means
/// to select nodes. Everything is freed with the last of them.
class XmlTree {
public:
    /// Takes the document over.
    XmlTree(xmlDoc* document, bool hasDeclaration);
    ~XmlTree();
    XmlTree(const XmlTree&) = delete;
    XmlTree& operator=(const XmlTree&) = delete;

    xmlDoc* Document() const { return document_.get(); }
    xmlNode* DocumentNode() const { return reinterpret_cast<xmlNode*>(document_.get()); }
    /// Whether the source had an XML declaration.
    bool HasDeclaration() const { return hasDeclaration_; }

    /// Takes a node out of the document. It is freed now when `isForgettable` and nobody holds a handle to
    /// it, else with the tree.
    void Remove(xmlNode* node, bool isForgettable);

    XmlSelection& Selection() { return selection_; }

private:
    struct Free {
        void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
    };
    std::unique_ptr<xmlDoc, Free> document_;
    bool hasDeclaration_;
    std::vector<xmlNode*> removed_;
    XmlSelection selection_;
};

/// Counts of the handles to a node, kept in the node itself.
void AddHandle(xmlNode* node) noexcept;
void DropHandle(xmlNode* node) noexcept;
bool HasHandle(const xmlNode* node) noexcept;

/// The next node in document order within `top`, null after the last. Attributes are not walked.
xmlNode* NextInTree(xmlNode* node, const xmlNode* top) noexcept;

} // namespace base
