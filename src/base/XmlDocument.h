#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

struct _xmlDoc;
struct _xmlNode;

namespace base {

class XmlDocument;

/// A node of an XmlDocument, or no node. Copies are cheap and keep the whole document alive. A node that was
/// removed from its tree stays valid but belongs to nobody: it is freed with the document.
class XmlNode {
public:
    XmlNode() = default;
    explicit operator bool() const noexcept { return node_ != nullptr; }
    friend bool operator==(const XmlNode& a, const XmlNode& b) noexcept { return a.node_ == b.node_; }

    bool IsElement() const noexcept;
    std::string Name() const;
    /// The text of the node and everything below it, in document order.
    std::string Text() const;
    /// Replaces everything below the node by this text. Throws for text that XML cannot hold (control
    /// characters, ill-formed UTF-8); the node is then unchanged.
    void SetText(std::string_view text);

    /// Empty text when the attribute is missing; HasAttribute tells the two apart. Names are exact.
    std::string Attribute(const char* name) const;
    bool HasAttribute(const char* name) const;
    void SetAttribute(const char* name, std::string_view value);
    /// Name and value of every attribute, in document order.
    std::vector<std::pair<std::string, std::string>> Attributes() const;

    XmlNode Parent() const;
    /// First and next node of any kind; whitespace-only text between elements was dropped at parsing.
    XmlNode FirstChild() const;
    XmlNode NextSibling() const;
    std::vector<XmlNode> Children() const;

    /// First node in document order that the XPath 1.0 expression selects, evaluated at this node; no node
    /// when there is none. Throws ComponentError for an expression that is malformed or selects no node set.
    XmlNode SelectSingle(const std::string& xpath) const;
    std::vector<XmlNode> Select(const std::string& xpath) const;

    XmlNode AppendElement(const char* name);
    /// Takes a child out of this node. Throws InvalidCall when it is no child of this node.
    void RemoveChild(const XmlNode& child);

    /// XML text of this node and everything below it, no indentation added.
    std::string Xml() const;

    /// The underlying node, for indexes and writers over the tree.
    _xmlNode* Raw() const noexcept { return node_; }

private:
    friend class XmlDocument;
    XmlNode(std::shared_ptr<_xmlDoc> document, _xmlNode* node)
        : document_(std::move(document)), node_(node) {}
    std::shared_ptr<_xmlDoc> document_;
    _xmlNode* node_ = nullptr;
};

/// An XML document in memory. Reading is hardened: no network, no document type declarations (so no entities
/// of its own), bounded depth and size. Whitespace-only text between elements is dropped, except under
/// xml:space="preserve".
class XmlDocument {
public:
    /// Bounds of what is read: bytes of source, and levels of nested elements.
    static constexpr std::size_t MaximumBytes = std::size_t{256} << 20;
    static constexpr int MaximumDepth = 256;

    XmlDocument() = default;

    /// Replace the content. On failure a ComponentError that names line and column (and the file), content
    /// unchanged.
    void LoadText(std::string_view text);
    void LoadFile(const std::filesystem::path& file);
    /// Replaces the content by a single empty element.
    XmlNode CreateRoot(const char* name);

    bool IsEmpty() const noexcept { return !document_; }
    XmlNode Root() const;
    XmlNode SelectSingle(const std::string& xpath) const; // evaluated at the document node
    std::vector<XmlNode> Select(const std::string& xpath) const;

    /// XML text of the document: UTF-8, no indentation added, an XML declaration only when the source had
    /// one. Empty text for an empty document.
    std::string Text() const;

    _xmlDoc* Raw() const noexcept { return document_.get(); }

private:
    std::shared_ptr<_xmlDoc> document_;
};

} // namespace base
