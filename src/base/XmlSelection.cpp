#include "base/XmlSelection.h"

#include "base/ComponentError.h"
#include "base/NumberText.h"
#include "base/Text.h"
#include "base/XmlDocument.h"
#include "base/XmlFault.h"
#include "base/XmlText.h"
#include "base/XmlTree.h"

#include <libxml/xpathInternals.h>

#include <algorithm>
#include <new>

namespace base {

namespace {

/// An expression without what it has in quotes.
std::string WithoutLiterals(std::string_view xpath) {
    std::string bare;
    std::size_t at = 0;
    for (std::size_t quote; (quote = xpath.find_first_of("'\"", at)) != std::string_view::npos;) {
        bare.append(xpath.substr(at, quote - at)).append("''");
        at = xpath.find(xpath[quote], quote + 1);
        if (at == std::string_view::npos) return bare;
        ++at;
    }
    return bare.append(xpath.substr(at));
}

/// Faults that the library lets pass: an alternative that is missing at the end, a slash too many.
bool IsIncomplete(std::string_view xpath) {
    const std::string bare = WithoutLiterals(xpath);
    return TrimWhiteSpace(bare).ends_with('|') || bare.find("///") != std::string::npos;
}

/// Whether a predicate may look beyond what it filters, at the text of the whole document.
bool LooksBeyondInPredicate(std::string_view bare) {
    int depth = 0;
    for (std::size_t at = 0; at < bare.size(); ++at) {
        const std::string_view rest = bare.substr(at);
        if (rest.front() == '[') ++depth;
        if (rest.front() == ']') --depth;
        if (depth <= 0) continue;
        if (rest.front() == '/') return true;
        for (const std::string_view beyond : {"..", "::", "id"})
            if (rest.starts_with(beyond)) return true;
    }
    return false;
}

/// Whether one of the alternatives goes down into everything below more than once.
bool DescendsTwice(std::string_view bare) {
    for (const std::string& alternative : Split(bare, '|'))
        if (alternative.find("//") != alternative.rfind("//")) return true;
    return false;
}

/// How many steps an expression may take on a document of that many nodes. Where the library joins sets that
/// can hold the same nodes, it looks for each node among all others: every step may then cost as many
/// comparisons as there are nodes.
unsigned long AllowedSteps(std::string_view bare, unsigned long nodes) {
    constexpr unsigned long comparisons = 1'000'000'000;
    const auto has = [&bare](std::string_view part) { return bare.find(part) != std::string::npos; };
    if (has("..") || has("::") || DescendsTwice(bare)) return comparisons / (nodes + 1000);
    if (has("|")) return std::max(16 * nodes, comparisons / (nodes + 1000));
    return 10'000'000 + 32 * nodes;
}

const char* ReasonOf(int error) {
    switch (error) {
    case XPATH_UNFINISHED_LITERAL_ERROR:
        return "a quote is not closed";
    case XPATH_VARIABLE_REF_ERROR:
        return "a variable has no name";
    case XPATH_UNDEF_VARIABLE_ERROR:
        return "there are no variables";
    case XPATH_INVALID_PREDICATE_ERROR:
        return "a predicate is malformed";
    case XPATH_UNKNOWN_FUNC_ERROR:
        return "there is no such function";
    case XPATH_INVALID_OPERAND:
        return "an operand is of a wrong kind";
    case XPATH_INVALID_TYPE:
        return "a value is of a wrong kind";
    case XPATH_INVALID_ARITY:
        return "a function has a wrong number of arguments";
    case XPATH_UNDEF_PREFIX_ERROR:
        return "there are no namespace prefixes";
    case XPATH_OP_LIMIT_EXCEEDED:
        return "it takes too many steps";
    case XPATH_RECURSION_LIMIT_EXCEEDED:
        return "it is nested too deeply";
    default:
        return "it is malformed";
    }
}

void TakeFault(void* fault, XmlErrorArgument error) {
    auto& text = *static_cast<std::string*>(fault);
    if (!text.empty()) return;
    text = ReasonOf(error->code - XML_XPATH_EXPRESSION_OK);
    if (error->str1) text += " (at character " + std::to_string(error->int1 + 1) + ")";
}

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

} // namespace

XmlSelection::XmlSelection(xmlDoc* document) : document_(document) {
    auto* top = reinterpret_cast<xmlNode*>(document);
    for (xmlNode* node = top; node; node = NextInTree(node, top))
        ++nodes_;
}

unsigned long XmlSelection::CostOfWholeText() const {
    constexpr std::size_t bytesPerNode = 64; // that take as long to copy as a node to visit
    unsigned long cost = 0;
    auto* top = reinterpret_cast<xmlNode*>(document_);
    for (xmlNode* node = top; node; node = NextInTree(node, top)) {
        ++cost;
        const bool hasContent =
            node->type != XML_ELEMENT_NODE && node->type != XML_DOCUMENT_NODE && node->type != XML_DTD_NODE;
        if (hasContent && node->content) cost += ViewOf(node->content).size() / bytesPerNode;
    }
    return cost;
}

/// The library does not count what it takes to gather a node's text: where each of many nodes may have the
/// whole document's gathered, the steps are bounded by that.
unsigned long XmlSelection::AllowedStepsFor(const std::string& xpath) const {
    constexpr unsigned long gathered = 20'000'000; // nodes
    const std::string bare = WithoutLiterals(xpath);
    const unsigned long allowed = AllowedSteps(bare, nodes_);
    if (!LooksBeyondInPredicate(bare)) return allowed;
    return std::min(allowed, gathered / (CostOfWholeText() + 100));
}

xmlXPathContext& XmlSelection::ReadyContext(const std::string& xpath) {
    if (!context_) {
        context_.reset(xmlXPathNewContext(document_));
        if (!context_) throw std::bad_alloc();
        context_->error = &TakeFault;
        context_->userData = &fault_;
    }
    fault_.clear();
    context_->opCount = 0;
    context_->opLimit = AllowedStepsFor(xpath);
    return *context_;
}

void XmlSelection::Refuse(const std::string& xpath, const std::string& reason) {
    constexpr std::size_t shownCharacters = 500;
    // A failed evaluation may leave marks in the context.
    context_.reset();
    const std::u32string characters = ToCodePoints(FirstCharacters(xpath, shownCharacters));
    throw ComponentError(errors::InvalidCall, "XmlDocument",
                         "the XPath \"" + FromCodePoints(characters) + "\" was refused: " + reason);
}

std::vector<xmlNode*> XmlSelection::Select(xmlNode* node, const std::string& xpath) {
    if (xpath.size() > XmlDocument::MaximumExpression)
        Refuse(xpath, "it has " + std::to_string(xpath.size()) + " bytes, at most " +
                          std::to_string(XmlDocument::MaximumExpression) + " are read");
    if (!IsXmlText(xpath)) Refuse(xpath, "it is no text of XML characters in UTF-8");

    if (IsIncomplete(xpath)) Refuse(xpath, "it is malformed");

    const QuietLibrary quiet;
    xmlXPathContext& context = ReadyContext(xpath);
    context.node = node;
    const std::unique_ptr<xmlXPathCompExpr, Free> expression(
        xmlXPathCtxtCompile(&context, XmlText(xpath.c_str())));
    if (!expression) Refuse(xpath, fault_.empty() ? "it is malformed" : fault_);
    const std::unique_ptr<xmlXPathObject, Free> object(xmlXPathCompiledEval(expression.get(), &context));
    if (!object || !fault_.empty()) {
        if (fault_.empty() && context.opCount >= context.opLimit)
            fault_ = ReasonOf(XPATH_OP_LIMIT_EXCEEDED); // which is not always told
        Refuse(xpath, fault_.empty() ? "it cannot be evaluated" : fault_);
    }
    if (object->type != XPATH_NODESET)
        Refuse(xpath, std::string("it gives ") + KindOf(*object) + " where nodes are wanted");

    if (!object->nodesetval) return {};
    xmlXPathNodeSetSort(object->nodesetval);
    std::vector<xmlNode*> nodes(object->nodesetval->nodeTab,
                                object->nodesetval->nodeTab + object->nodesetval->nodeNr);
    // Namespace nodes are copies that go with the result.
    std::erase_if(nodes, [](const xmlNode* each) { return each->type == XML_NAMESPACE_DECL; });
    return nodes;
}

} // namespace base
