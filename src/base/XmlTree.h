#pragma once

#include <libxml/tree.h>
#include <libxml/xpath.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace base {

/// What XmlDocument and its XmlNodes share: the document, the nodes that were taken out of it, and the means
/// to select nodes. Everything is freed with the last of them.
class XmlTree {
public:
    XmlTree(xmlDoc* document, bool hasDeclaration);
    ~XmlTree();
    XmlTree(const XmlTree&) = delete;
    XmlTree& operator=(const XmlTree&) = delete;

    xmlDoc* Document() const { return document_; }
    xmlNode* DocumentNode() const { return reinterpret_cast<xmlNode*>(document_); }
    /// Whether the source had an XML declaration.
    bool HasDeclaration() const { return hasDeclaration_; }

    /// Takes a node out of the document. It is freed now when `isForgettable` and nobody holds a handle to
    /// it, else with the tree.
    void Remove(xmlNode* node, bool isForgettable);

    /// The nodes that an XPath expression selects, in document order, evaluated at `node`.
    std::vector<xmlNode*> Select(xmlNode* node, const std::string& xpath);

private:
    struct Free {
        void operator()(xmlXPathContext* context) const { xmlXPathFreeContext(context); }
        void operator()(xmlXPathCompExpr* expression) const { xmlXPathFreeCompExpr(expression); }
        void operator()(xmlXPathObject* object) const { xmlXPathFreeObject(object); }
    };

    xmlXPathContext& SelectionContext();
    [[noreturn]] void RaiseSelection(const std::string& xpath, std::string reason);

    xmlDoc* document_;
    bool hasDeclaration_;
    std::vector<xmlNode*> removed_;
    std::unique_ptr<xmlXPathContext, Free> selection_;
    std::string selectionFault_; // what libxml2 said of the expression at hand
};

/// Counts of the handles to a node, kept in the node itself.
void AddHandle(xmlNode* node) noexcept;
void DropHandle(xmlNode* node) noexcept;
bool HasHandle(const xmlNode* node) noexcept;

/// The next node in document order within `top`, null after the last. Attributes are not walked.
xmlNode* NextInTree(xmlNode* node, const xmlNode* top) noexcept;

} // namespace base
