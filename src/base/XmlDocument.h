#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

struct _xmlDoc;
struct _xmlNode;

namespace base {

class XmlTree;

/// A node of an XmlDocument, or no node: an element, attribute, text, CDATA section, comment, processing
/// instruction, document type declaration, or the document itself. Copies are cheap and keep the whole
/// document alive. A node that was removed from its tree stays valid but belongs to nobody: it is freed with
/// the document (text that SetText replaced and that nobody holds: at once).
///
/// What is asked of no node answers neutrally (false, empty, no node). Changing it, or selecting from it,
/// raises ObjectNotSet; InvalidCall is raised for names that XML cannot hold and for nodes of a wrong kind.
class XmlNode {
public:
    XmlNode() = default;
    XmlNode(const XmlNode& other);
    XmlNode(XmlNode&& other) noexcept;
    XmlNode& operator=(XmlNode other) noexcept;
    ~XmlNode();
    explicit operator bool() const noexcept { return node_ != nullptr; }
    friend bool operator==(const XmlNode& a, const XmlNode& b) noexcept { return a.node_ == b.node_; }

    bool IsElement() const noexcept;
    /// With its prefix, when it has one. "#text", "#cdata-section", "#comment" and "#document" for what has
    /// no name.
    std::string Name() const;
    /// The text of the node and everything below it, in document order.
    std::string Text() const;
    /// Replaces everything below the node by this text. Throws for text that XML cannot hold (control
    /// characters, ill-formed UTF-8); the node is then unchanged. Elements, attributes, text and CDATA only.
    void SetText(std::string_view text);

    /// Empty text when the attribute is missing; HasAttribute tells the two apart. Names are exact.
    std::string Attribute(const char* name) const;
    bool HasAttribute(const char* name) const;
    void SetAttribute(const char* name, std::string_view value);
    /// Name and value of every attribute, in document order. Namespace declarations are none.
    std::vector<std::pair<std::string, std::string>> Attributes() const;

    XmlNode Parent() const;
    /// First and next node of any kind; whitespace-only text between elements was dropped at parsing.
    XmlNode FirstChild() const;
    XmlNode NextSibling() const;
    std::vector<XmlNode> Children() const;

    /// First node in document order that the XPath 1.0 expression selects, evaluated at this node; no node
    /// when there is none. Throws ComponentError for an expression that is malformed, selects no node set or
    /// takes more than a bounded number of steps. Namespace nodes are left out.
    XmlNode SelectSingle(const std::string& xpath) const;
    std::vector<XmlNode> Select(const std::string& xpath) const;

    /// Appends an empty element, in the default namespace that stands here or in that of its prefix.
    XmlNode AppendElement(const char* name);
    /// Takes a child out of this node. Throws InvalidCall when it is no child of this node.
    void RemoveChild(const XmlNode& child);

    /// XML text of this node and everything below it, no indentation added; namespaces that were declared
    /// further up are declared anew. The text alone for an attribute.
    std::string Xml() const;

    /// The underlying node, for indexes and writers over the tree. Its `_private` counts the handles.
    _xmlNode* Raw() const noexcept { return node_; }

private:
    friend class XmlDocument;
    XmlNode(std::shared_ptr<XmlTree> tree, _xmlNode* node);
    XmlNode At(_xmlNode* node) const;
    void Require() const;
    void RequireElement() const;

    std::shared_ptr<XmlTree> tree_;
    _xmlNode* node_ = nullptr;
};

/// An XML document in memory. Reading is hardened: no network, no document type declarations but those that
/// name the root and nothing else (so no entities of its own), bounded depth and size. Whitespace-only text
/// between elements is dropped, except under xml:space="preserve" and next to a CDATA section; the text of an
/// element without child elements is kept as it is. Copies share one tree.
class XmlDocument {
public:
    /// Bounds of what is read: bytes of source, and levels of nested elements.
    static constexpr std::size_t MaximumBytes = std::size_t{256} << 20;
    static constexpr int MaximumDepth = 256;
    /// Further bounds of what is read: attributes of one element, namespaces in scope at one place, different
    /// names (and texts of up to three bytes). The parser takes quadratic time in each of them, and looks for
    /// a namespace at every attribute, level by level.
    static constexpr int MaximumAttributes = 256;
    static constexpr int MaximumNamespaces = 32;
    static constexpr int MaximumNames = 65536;
    /// Bytes of an XPath expression.
    static constexpr std::size_t MaximumExpression = std::size_t{64} << 10;

    XmlDocument() = default;

    /// Replaces the content. On failure an InvalidCall that names line and column, content unchanged. The
    /// text is UTF-8, whatever its XML declaration names.
    void LoadText(std::string_view text);
    /// As LoadText, for a file in any encoding that the system's library reads, as its byte order mark or its
    /// declaration says (see DecodeXml). Descriptions name the file. FileNotFound when it is missing,
    /// FileAccess for what cannot be read or is no regular file.
    void LoadFile(const std::filesystem::path& file);
    /// Replaces the content by a single empty element.
    XmlNode CreateRoot(const char* name);

    bool IsEmpty() const noexcept { return !tree_; }
    XmlNode Root() const;
    XmlNode SelectSingle(const std::string& xpath) const; // evaluated at the document node
    std::vector<XmlNode> Select(const std::string& xpath) const;

    /// XML text of the document: UTF-8, no indentation added, an XML declaration only when the source had
    /// one. Empty text for an empty document.
    std::string Text() const;

    /// Whether the source had an XML declaration.
    bool HasDeclaration() const noexcept;

    _xmlDoc* Raw() const noexcept;
    /// The node for one of this document's underlying nodes, found by an index; no node for null.
    XmlNode NodeAt(_xmlNode* node) const;

private:
    XmlNode DocumentNode() const;

    std::shared_ptr<XmlTree> tree_;
};

} // namespace base
