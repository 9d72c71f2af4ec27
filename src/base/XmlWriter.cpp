#include "base/XmlWriter.h"

#include "base/Text.h"
#include "base/XmlText.h"

#include <string_view>

namespace base {

namespace {

constexpr std::string_view textSpecials = "&<>\r";
constexpr std::string_view attributeSpecials = "&<>\"\t\n\r";

std::string_view ReferenceTo(char character) {
    switch (character) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\t':
        return "&#9;";
    case '\n':
        return "&#10;";
    default:
        return "&#13;";
    }
}

/// Whether a namespace stands under its prefix at `element`, looking no further up than `top`.
bool IsDeclared(const xmlNs* space, const xmlNode* element, const xmlNode* top) {
    if (IsXmlNamespace(*space)) return true;
    for (; element && element->type == XML_ELEMENT_NODE; element = element->parent) {
        for (const xmlNs* each = element->nsDef; each; each = each->next) {
            if (ViewOf(each->prefix) == ViewOf(space->prefix))
                return ViewOf(each->href) == ViewOf(space->href);
        }
        if (element == top) break;
    }
    return false;
}

class Writer {
public:
    Writer(const xmlNode* top, XmlPlaces* places) : top_(top), places_(places) {}

    /// Writes what stands before the node's children.
    void Open(const xmlNode* node) {
        switch (node->type) {
        case XML_ELEMENT_NODE:
            return OpenElement(node);
        case XML_TEXT_NODE:
            return AppendEscaped(ViewOf(node->content), textSpecials);
        case XML_CDATA_SECTION_NODE:
            text_ += "<![CDATA[";
            text_ += Replace(ViewOf(node->content), "]]>", "]]]]><![CDATA[>");
            text_ += "]]>";
            return;
        case XML_COMMENT_NODE:
            text_.append("<!--").append(ViewOf(node->content)).append("-->");
            return;
        case XML_PI_NODE:
            text_.append("<?").append(ViewOf(node->name));
            if (node->content) text_.append(" ").append(ViewOf(node->content));
            text_ += "?>";
            return;
        case XML_DTD_NODE:
            text_.append("<!DOCTYPE ").append(ViewOf(node->name)).append(">");
            return;
        default:
            return;
        }
    }

    /// Writes what stands behind the node's children.
    void Close(const xmlNode* node) {
        if (node->type != XML_ELEMENT_NODE) return;
        if (node->children) {
            text_ += "</";
            AppendName(node->ns, node->name);
            text_ += '>';
        }
        if (places_) places_->OnEnd(node, text_.size());
    }

    std::string Take() { return std::move(text_); }

private:
    void OpenElement(const xmlNode* element) {
        if (places_) places_->OnBegin(element, text_.size());
        text_ += '<';
        AppendName(element->ns, element->name);
        for (const xmlNs* space = element->nsDef; space; space = space->next)
            AppendDeclaration(space);
        AppendMissingDeclarations(element);
        for (const xmlAttr* attribute = element->properties; attribute; attribute = attribute->next) {
            text_ += ' ';
            AppendName(attribute->ns, attribute->name);
            text_ += "=\"";
            for (const xmlNode* part = attribute->children; part; part = part->next)
                AppendEscaped(ViewOf(part->content), attributeSpecials);
            text_ += '"';
        }
        text_ += element->children ? ">" : "/>";
    }

    /// Declares the namespaces that this element and its attributes take from above the written part.
    void AppendMissingDeclarations(const xmlNode* element) {
        std::vector<const xmlNs*> declared;
        const auto declare = [&](const xmlNs* space) {
            if (!space || IsDeclared(space, element, top_)) return;
            for (const xmlNs* each : declared) {
                if (ViewOf(each->prefix) == ViewOf(space->prefix)) return;
            }
            declared.push_back(space);
            AppendDeclaration(space);
        };
        declare(element->ns);
        for (const xmlAttr* attribute = element->properties; attribute; attribute = attribute->next)
            declare(attribute->ns);
    }

    void AppendDeclaration(const xmlNs* space) {
        text_ += " xmlns";
        if (space->prefix) text_.append(":").append(ViewOf(space->prefix));
        text_ += "=\"";
        AppendEscaped(ViewOf(space->href), attributeSpecials);
        text_ += '"';
    }

    void AppendName(const xmlNs* space, const xmlChar* name) {
        if (space && space->prefix) text_.append(ViewOf(space->prefix)).append(":");
        text_ += ViewOf(name);
    }

    void AppendEscaped(std::string_view content, std::string_view specials) {
        std::size_t begin = 0;
        for (std::size_t found; (found = content.find_first_of(specials, begin)) != std::string_view::npos;
             begin = found + 1) {
            text_.append(content, begin, found - begin);
            text_ += ReferenceTo(content[found]);
        }
        text_ += content.substr(begin);
    }

    const xmlNode* top_;
    XmlPlaces* places_;
    std::string text_;
};

} // namespace

std::string WriteXml(xmlNode* top, XmlPlaces* places) {
    Writer writer(top, places);
    xmlNode* node = top;
    while (true) {
        writer.Open(node);
        if (node->children) {
            node = node->children;
            continue;
        }
        while (node != top && !node->next) {
            writer.Close(node);
            node = node->parent;
        }
        writer.Close(node);
        if (node == top) return writer.Take();
        node = node->next;
    }
}

std::string WriteXmlDeclaration(const xmlDoc& document) {
    std::string declaration = "<?xml version=\"";
    declaration += document.version ? ViewOf(document.version) : std::string_view("1.0");
    declaration += "\" encoding=\"UTF-8\"";
    if (document.standalone == 0 || document.standalone == 1)
        declaration += document.standalone == 1 ? " standalone=\"yes\"" : " standalone=\"no\"";
    return declaration + "?>\n";
}

} // namespace base
