#pragma once

#include <libxml/xpath.h>

#include <memory>
#include <string>
#include <vector>

namespace base {

/// Evaluates XPath expressions on one document, keeping what can be reused between them.
class XmlSelection {
public:
    explicit XmlSelection(xmlDoc* document) : document_(document) {}

    /// The nodes that an expression selects, in document order, evaluated at `node`. Errors as
    /// XmlNode::Select.
    std::vector<xmlNode*> Select(xmlNode* node, const std::string& xpath);

private:
    struct Free {
        void operator()(xmlXPathContext* context) const { xmlXPathFreeContext(context); }
        void operator()(xmlXPathCompExpr* expression) const { xmlXPathFreeCompExpr(expression); }
        void operator()(xmlXPathObject* object) const { xmlXPathFreeObject(object); }
    };

    xmlXPathContext& ReadyContext();
    [[noreturn]] void Refuse(const std::string& xpath, const std::string& reason);

    xmlDoc* document_;
    std::unique_ptr<xmlXPathContext, Free> context_;
    std::string fault_; // of the expression at hand
};

} // namespace base
