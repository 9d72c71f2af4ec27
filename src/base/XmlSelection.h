#pragma once

#include <libxml/xpath.h>

#include <memory>
#include <string>
#include <vector>

namespace base {

/// Evaluates XPath expressions on one document, keeping what can be reused between them.
class XmlSelection {
public:
    explicit XmlSelection(xmlDoc* document);

    /// The nodes that an expression selects, in document order, evaluated at `node`. Errors as
    /// XmlNode::Select.
    std::vector<xmlNode*> Select(xmlNode* node, const std::string& xpath);
    /// To be told of every node that is added to the document: what is allowed grows with it.
    void NoteAdded() { ++nodes_; }

private:
    struct Free {
        void operator()(xmlXPathContext* context) const { xmlXPathFreeContext(context); }
        void operator()(xmlXPathCompExpr* expression) const { xmlXPathFreeCompExpr(expression); }
        void operator()(xmlXPathObject* object) const { xmlXPathFreeObject(object); }
    };

    /// What gathering the text of the whole document takes, in nodes visited.
    unsigned long CostOfWholeText() const;
    unsigned long AllowedStepsFor(const std::string& xpath) const;
    xmlXPathContext& ReadyContext(const std::string& xpath);
    [[noreturn]] void Refuse(const std::string& xpath, const std::string& reason);

    xmlDoc* document_;
    unsigned long nodes_ = 0; // of the document as it was read, and those added since
    std::unique_ptr<xmlXPathContext, Free> context_;
    std::string fault_; // of the expression at hand
};

} // namespace base
