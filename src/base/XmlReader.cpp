#include "base/XmlReader.h"

#include "base/Utf8.h"
#include "base/XmlDocument.h"
#include "base/XmlEncoding.h"
#include "base/XmlFault.h"
#include "base/XmlText.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <string>
#include <vector>

namespace base {

namespace {

/// The run of one parser over one text. The text is handed over in pieces, so that nothing much is parsed
/// behind a fault.
class Parse {
public:
    explicit Parse(std::string_view text) : text_(text), parser_(xmlNewParserCtxt()) {
        if (!parser_) throw std::bad_alloc();
        parser_->_private = this;
        xmlSAXHandler& handler = *parser_->sax;
        handler.serror = &OnError;
        internalSubset_ = handler.internalSubset;
        handler.internalSubset = &OnDocumentType;
        handler.cdataBlock = &OnCData;
        processingInstruction_ = handler.processingInstruction;
        handler.processingInstruction = &OnProcessingInstruction;
        startElement_ = handler.startElementNs;
        endElement_ = handler.endElementNs;
        handler.startElementNs = &OnStartElement;
        handler.endElementNs = &OnEndElement;
    }
    Parse(const Parse&) = delete;
    Parse& operator=(const Parse&) = delete;
    ~Parse() {
        xmlFreeDoc(parser_->myDoc);
        xmlFreeParserCtxt(parser_);
    }

    /// The parsed document, which the caller owns.
    xmlDoc* Run() {
        // Replacing entities concerns the five predefined ones and character references alone, where no
        // document type can declare others; without it namespace names would keep their references.
        constexpr int options = XML_PARSE_NOENT | XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING |
                                XML_PARSE_HUGE | XML_PARSE_IGNORE_ENC;
        xmlDoc* document = xmlCtxtReadIO(parser_, &OnRead, nullptr, this, nullptr, nullptr, options);
        const bool isAccepted = document && parser_->wellFormed && parser_->nsWellFormed && reason_.empty();
        if (isAccepted) return document;
        xmlFreeDoc(document);
        RaiseXmlFault(std::max(line_, 1), std::max(column_, 1), reason_.empty() ? "no document" : reason_);
    }

private:
    static Parse& Of(void* parser) {
        return *static_cast<Parse*>(static_cast<xmlParserCtxt*>(parser)->_private);
    }

    static int OnRead(void* self, char* buffer, int size) {
        Parse& parse = *static_cast<Parse*>(self);
        if (!parse.reason_.empty()) return 0;
        const std::size_t count = std::min(static_cast<std::size_t>(size), parse.text_.size());
        std::memcpy(buffer, parse.text_.data(), count);
        parse.text_.remove_prefix(count);
        return static_cast<int>(count);
    }

    static void OnError(void* parser, XmlErrorArgument error) {
        const bool isHarmless = error->level < XML_ERR_FATAL && error->domain != XML_FROM_NAMESPACE;
        if (error->level < XML_ERR_ERROR || isHarmless) return;
        Of(parser).Note(error->line, error->int2, ReasonOf(error));
    }

    /// Accepts the one that names the root and nothing else.
    static void OnDocumentType(void* parser, const xmlChar* name, const xmlChar* publicId,
                               const xmlChar* systemId) {
        Parse& parse = Of(parser);
        const bool endsHere = *static_cast<xmlParserCtxt*>(parser)->input->cur == '>';
        if (publicId || systemId || !endsHere)
            return parse.Stop("a document type declaration may name the root and nothing else");
        parse.internalSubset_(parser, name, nullptr, nullptr);
    }

    static void OnCData(void* parser, const xmlChar* text, int length) {
        // The library would join neighbouring sections, copying all of them each time.
        const auto* context = static_cast<xmlParserCtxt*>(parser);
        xmlNode* section = xmlNewCDataBlock(context->myDoc, text, length);
        if (section && !xmlAddChild(context->node, section)) xmlFreeNode(section);
    }

    static void OnStartElement(void* parser, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri,
                               int namespaceCount, const xmlChar** namespaces, int attributeCount,
                               int defaultedCount, const xmlChar** attributes) {
        Parse& parse = Of(parser);
        parse.namespaceCounts_.push_back(namespaceCount);
        parse.namespacesInScope_ += namespaceCount;
        if (parse.namespaceCounts_.size() > static_cast<std::size_t>(XmlDocument::MaximumDepth))
            return parse.Stop("elements are nested more than " + std::to_string(XmlDocument::MaximumDepth) +
                              " levels deep");
        if (parse.namespacesInScope_ > XmlDocument::MaximumNamespaces)
            return parse.Stop("more than " + std::to_string(XmlDocument::MaximumNamespaces) +
                              " namespaces are in scope");
        if (parse.HasTooManyNames()) return;
        parse.startElement_(parser, name, prefix, uri, namespaceCount, namespaces, attributeCount,
                            defaultedCount, attributes);
    }

    static void OnEndElement(void* parser, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri) {
        Parse& parse = Of(parser);
        parse.namespacesInScope_ -= parse.namespaceCounts_.back();
        parse.namespaceCounts_.pop_back();
        parse.endElement_(parser, name, prefix, uri);
    }

    static void OnProcessingInstruction(void* parser, const xmlChar* target, const xmlChar* content) {
        Parse& parse = Of(parser);
        if (!parse.HasTooManyNames()) parse.processingInstruction_(parser, target, content);
    }

    /// Stops when the parser's table of names has outgrown its few lists.
    bool HasTooManyNames() {
        if (xmlDictSize(parser_->dict) <= XmlDocument::MaximumNames) return false;
        Stop("there are more than " + std::to_string(XmlDocument::MaximumNames) + " different names");
        return true;
    }

    void Note(int line, int column, std::string reason) {
        if (!reason_.empty()) return;
        line_ = line;
        column_ = column;
        reason_ = std::move(reason);
    }

    void Stop(std::string reason) {
        Note(xmlSAX2GetLineNumber(parser_), xmlSAX2GetColumnNumber(parser_), std::move(reason));
        xmlStopParser(parser_);
    }

    std::string_view text_; // what is still to be read
    xmlParserCtxt* parser_;
    internalSubsetSAXFunc internalSubset_ = nullptr;
    startElementNsSAX2Func startElement_ = nullptr;
    endElementNsSAX2Func endElement_ = nullptr;
    processingInstructionSAXFunc processingInstruction_ = nullptr;
    std::vector<int> namespaceCounts_; // of the open elements
    int namespacesInScope_ = 0;
    int line_ = 0;
    int column_ = 0;
    std::string reason_; // of the first fault
};

/// The offset behind the next `end` from `at` on, the end of the text when there is none.
std::size_t Behind(std::string_view text, std::string_view end, std::size_t at) {
    const std::size_t found = text.find(end, at);
    return found == std::string_view::npos ? text.size() : found + end.size();
}

/// The offset behind the start tag whose "<" stands at `at`.
std::size_t BehindStartTag(std::string_view text, std::size_t at) {
    const std::size_t begin = at;
    int attributes = 0;
    while ((at = text.find_first_of("=\"'>", at)) != std::string_view::npos) {
        const char found = text[at++];
        if (found == '>') return at;
        if (found == '=' && ++attributes > XmlDocument::MaximumAttributes)
            RaiseXmlFaultAt(text, begin,
                            "the element has more than " + std::to_string(XmlDocument::MaximumAttributes) +
                                " attributes");
        if (found != '=') at = Behind(text, std::string_view(&found, 1), at);
    }
    return text.size();
}

/// Refuses elements with very many attributes: the library compares each with each before it reports any.
/// Only the well-formed beginning of the text is read right, which is as far as the library gets.
void CheckAttributeCounts(std::string_view text) {
    std::size_t at = 0;
    while ((at = text.find('<', at)) != std::string_view::npos) {
        const std::string_view rest = text.substr(at, 9);
        if (rest.starts_with("<!--"))
            at = Behind(text, "-->", at + 4);
        else if (rest.starts_with("<![CDATA["))
            at = Behind(text, "]]>", at + 9);
        else if (rest.starts_with("<?"))
            at = Behind(text, "?>", at + 2);
        else if (rest.starts_with("<!") || rest.starts_with("</"))
            at += 2;
        else
            at = BehindStartTag(text, at);
    }
}

bool IsBlank(const xmlNode* node) {
    return node->type == XML_TEXT_NODE &&
           ViewOf(node->content).find_first_not_of(" \t\r\n") == std::string_view::npos;
}

bool IsCData(const xmlNode* node) {
    return node && node->type == XML_CDATA_SECTION_NODE;
}

bool HasElementChild(const xmlNode* element) {
    for (const xmlNode* child = element->children; child; child = child->next) {
        if (child->type == XML_ELEMENT_NODE) return true;
    }
    return false;
}

bool KeepsBlanks(const xmlNode* element, bool isInherited) {
    for (const xmlAttr* attribute = element->properties; attribute; attribute = attribute->next) {
        const bool isSpace =
            attribute->ns && IsXmlNamespace(*attribute->ns) && ViewOf(attribute->name) == "space";
        if (!isSpace || !attribute->children) continue;
        const std::string_view value = ViewOf(attribute->children->content);
        if (value == "preserve") return true;
        if (value == "default") return false;
    }
    return isInherited;
}

void DropBlankChildren(xmlNode* element) {
    for (xmlNode *child = element->children, *next = nullptr; child; child = next) {
        next = child->next;
        if (!IsBlank(child) || IsCData(child->prev) || IsCData(next)) continue;
        xmlUnlinkNode(child);
        xmlFreeNode(child);
    }
}

/// Drops the whitespace-only text between elements below `root`.
void DropBlanks(xmlNode* root) {
    std::vector<bool> keeps = {KeepsBlanks(root, false)}; // of the elements from the root to the one at hand
    xmlNode* element = root;
    while (element) {
        if (!keeps.back() && HasElementChild(element)) DropBlankChildren(element);
        if (xmlNode* child = xmlFirstElementChild(element)) {
            element = child;
            keeps.push_back(KeepsBlanks(element, keeps.back()));
            continue;
        }
        while (element != root && !xmlNextElementSibling(element)) {
            element = element->parent;
            keeps.pop_back();
        }
        if (element == root) return;
        element = xmlNextElementSibling(element);
        keeps.pop_back();
        keeps.push_back(KeepsBlanks(element, keeps.back()));
    }
}

} // namespace

std::shared_ptr<XmlTree> ReadXml(std::string_view text) {
    static const bool isReady = (xmlInitParser(), true);
    static_cast<void>(isReady);

    if (text.size() > XmlDocument::MaximumBytes)
        RaiseXmlFault(1, 1,
                      "the text is larger than " + std::to_string(XmlDocument::MaximumBytes) + " bytes");
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    if (text.empty()) RaiseXmlFault(1, 1, "the text is empty");
    if (const std::size_t at = text.find('\0'); at != std::string_view::npos)
        RaiseXmlFaultAt(text, at, "a NUL character");
    if (const std::size_t at = IllFormedUtf8At(text); at != std::string_view::npos)
        RaiseXmlFaultAt(text, at, "the bytes are not well-formed UTF-8");
    CheckAttributeCounts(text);

    const QuietLibrary quiet;
    auto tree = std::make_shared<XmlTree>(Parse(text).Run(), HasXmlDeclaration(text));
    DropBlanks(xmlDocGetRootElement(tree->Document()));
    return tree;
}

} // namespace base
