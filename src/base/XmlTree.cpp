#include "base/XmlTree.h"

#include "base/ComponentError.h"
#include "base/Text.h"
#include "base/XmlDocument.h"
#include "base/XmlFault.h"
#include "base/XmlText.h"

#include <libxml/xpathInternals.h>

#include <cstdint>
#include <utility>

namespace base {

namespace {

constexpr unsigned long selectionSteps = 50'000'000; // about a second or two

const char* KindOf(const xmlXPathObject& object) {
    switch (object.type) {
    case XPATH_BOOLEAN:
        return "a boolean";
    case XPATH_NUMBER:
        return "a number";
    case XPATH_STRING:
        return "a text";
    default:
        return "something else";
    }
}

void TakeFault(void* fault, XmlErrorArgument error) {
    auto& text = *static_cast<std::string*>(fault);
    if (text.empty()) text = ReasonOf(error);
}

} // namespace

XmlTree::XmlTree(xmlDoc* document, bool hasDeclaration)
    : document_(document), hasDeclaration_(hasDeclaration) {}

XmlTree::~XmlTree() {
    selection_.reset();
    for (xmlNode* node : removed_)
        xmlFreeNode(node);
    xmlFreeDoc(document_);
}

void XmlTree::Remove(xmlNode* node, bool isForgettable) {
    const bool isFreed = isForgettable && !HasHandle(node);
    if (!isFreed) removed_.push_back(node);
    xmlUnlinkNode(node);
    if (isFreed) xmlFreeNode(node);
}

xmlXPathContext& XmlTree::SelectionContext() {
    if (!selection_) {
        selection_.reset(xmlXPathNewContext(document_));
        if (!selection_) throw std::bad_alloc();
        selection_->error = &TakeFault;
        selection_->userData = &selectionFault_;
        selection_->opLimit = selectionSteps;
    }
    selectionFault_.clear();
    selection_->opCount = 0;
    return *selection_;
}

void XmlTree::RaiseSelection(const std::string& xpath, std::string reason) {
    constexpr std::size_t shownCharacters = 500;
    // A failed evaluation may leave marks in the context.
    selection_.reset();
    throw ComponentError(errors::InvalidCall, "XmlDocument",
                         "the XPath \"" + std::string(FirstCharacters(xpath, shownCharacters)) +
                             "\" was refused: " + std::move(reason));
}

std::vector<xmlNode*> XmlTree::Select(xmlNode* node, const std::string& xpath) {
    if (xpath.size() > XmlDocument::MaximumExpression)
        RaiseSelection(xpath, "it has " + std::to_string(xpath.size()) + " bytes");
    if (!IsXmlText(xpath)) RaiseSelection(xpath, "it is no text of XML characters in UTF-8");

    xmlXPathContext& context = SelectionContext();
    context.node = node;
    const std::unique_ptr<xmlXPathCompExpr, Free> expression(
        xmlXPathCtxtCompile(&context, XmlText(xpath.c_str())));
    if (!expression) RaiseSelection(xpath, selectionFault_.empty() ? "malformed" : selectionFault_);
    const std::unique_ptr<xmlXPathObject, Free> object(xmlXPathCompiledEval(expression.get(), &context));
    if (!object || !selectionFault_.empty())
        RaiseSelection(xpath, selectionFault_.empty() ? "evaluation failed" : selectionFault_);
    if (object->type != XPATH_NODESET)
        RaiseSelection(xpath, std::string("it gives ") + KindOf(*object) + " where nodes are wanted");

    std::vector<xmlNode*> nodes;
    if (!object->nodesetval) return nodes;
    xmlXPathNodeSetSort(object->nodesetval);
    nodes.reserve(static_cast<std::size_t>(object->nodesetval->nodeNr));
    for (int i = 0; i < object->nodesetval->nodeNr; ++i) {
        // A namespace node is a copy that goes with the result.
        if (object->nodesetval->nodeTab[i]->type != XML_NAMESPACE_DECL)
            nodes.push_back(object->nodesetval->nodeTab[i]);
    }
    return nodes;
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
    if (node->children && node->type != XML_ENTITY_REF_NODE) return node->children;
    for (; node != top; node = node->parent) {
        if (node->next) return node->next;
    }
    return nullptr;
}

} // namespace base
