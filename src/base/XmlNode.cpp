#include "base/ComponentError.h"
#include "base/Text.h"
#include "base/XmlDocument.h"
#include "base/XmlText.h"
#include "base/XmlTree.h"
#include "base/XmlWriter.h"

#include <cstring>
#include <new>

namespace base {

namespace {

[[noreturn]] void Refuse(const std::string& reason) {
    throw ComponentError(errors::InvalidCall, "XmlDocument", reason);
}

bool IsTextual(const xmlNode* node) {
    return node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE;
}

bool HasName(const xmlAttr* attribute, std::string_view name) {
    if (attribute->ns && attribute->ns->prefix) {
        const std::string_view prefix = ViewOf(attribute->ns->prefix);
        return name.size() > prefix.size() && name.starts_with(prefix) && name[prefix.size()] == ':' &&
               name.substr(prefix.size() + 1) == ViewOf(attribute->name);
    }
    return name == ViewOf(attribute->name);
}

const xmlAttr* FindAttribute(const xmlNode* node, const char* name) {
    if (!node || node->type != XML_ELEMENT_NODE) return nullptr;
    for (const xmlAttr* attribute = node->properties; attribute; attribute = attribute->next) {
        if (HasName(attribute, name)) return attribute;
    }
    return nullptr;
}

std::string ValueOf(const xmlAttr* attribute) {
    std::string value;
    for (const xmlNode* part = attribute->children; part; part = part->next)
        value += ViewOf(part->content);
    return value;
}

void CheckName(const char* name) {
    if (!IsXmlName(name))
        Refuse("\"" + FromCodePoints(ToCodePoints(name)) + "\" is no name of an element or attribute");
}

/// The namespace that the name of a child with this prefix (or none, when empty) has at an element.
xmlNs* NamespaceAt(xmlNode* node, const std::string& prefix) {
    // An element without a prefix is itself in the namespace that names without one have here.
    const bool isPlain = prefix.empty() && !(node->ns && node->ns->prefix);
    if (isPlain) return node->ns;
    xmlNs* space = xmlSearchNs(node->doc, node, prefix.empty() ? nullptr : XmlText(prefix.c_str()));
    if (!space && !prefix.empty()) Refuse("the prefix \"" + prefix + "\" is not declared here");
    return space;
}

std::string PrefixOf(const char* name) {
    const char* colon = std::strchr(name, ':');
    return colon ? std::string(name, colon) : std::string();
}

const char* LocalName(const char* name) {
    const char* colon = std::strchr(name, ':');
    return colon ? colon + 1 : name;
}

xmlNode* NewText(xmlDoc* document, std::string_view text) {
    const std::string terminated(text);
    xmlNode* node =
        xmlNewDocTextLen(document, XmlText(terminated.c_str()), static_cast<int>(terminated.size()));
    if (!node) throw std::bad_alloc();
    return node;
}

} // namespace

XmlNode::XmlNode(std::shared_ptr<XmlTree> tree, _xmlNode* node) : tree_(std::move(tree)), node_(node) {
    if (node_) AddHandle(node_);
}

XmlNode::XmlNode(const XmlNode& other) : XmlNode(other.tree_, other.node_) {}

XmlNode::XmlNode(XmlNode&& other) noexcept
    : tree_(std::move(other.tree_)), node_(std::exchange(other.node_, nullptr)) {}

XmlNode& XmlNode::operator=(XmlNode other) noexcept {
    std::swap(tree_, other.tree_);
    std::swap(node_, other.node_);
    return *this;
}

XmlNode::~XmlNode() {
    if (node_) DropHandle(node_);
}

XmlNode XmlNode::At(_xmlNode* node) const {
    return node ? XmlNode(tree_, node) : XmlNode();
}

void XmlNode::Require() const {
    if (!node_) throw ComponentError(errors::ObjectNotSet, "XmlDocument", "there is no node");
}

void XmlNode::RequireElement() const {
    Require();
    if (!IsElement()) Refuse("\"" + Name() + "\" is no element");
}

bool XmlNode::IsElement() const noexcept {
    return node_ && node_->type == XML_ELEMENT_NODE;
}

std::string XmlNode::Name() const {
    if (!node_) return {};
    switch (node_->type) {
    case XML_ELEMENT_NODE:
    case XML_ATTRIBUTE_NODE:
        return QualifiedName(node_->ns, node_->name);
    case XML_TEXT_NODE:
        return "#text";
    case XML_CDATA_SECTION_NODE:
        return "#cdata-section";
    case XML_COMMENT_NODE:
        return "#comment";
    case XML_DOCUMENT_NODE:
        return "#document";
    default:
        return std::string(ViewOf(node_->name));
    }
}

std::string XmlNode::Text() const {
    std::string text;
    if (!node_) return text;
    if (node_->type == XML_COMMENT_NODE || node_->type == XML_PI_NODE)
        return std::string(ViewOf(node_->content));
    for (xmlNode* node = node_; node; node = NextInTree(node, node_)) {
        if (IsTextual(node)) text += ViewOf(node->content);
    }
    return text;
}

void XmlNode::SetText(std::string_view text) {
    Require();
    RequireXmlText(text);
    if (IsTextual(node_)) {
        const std::string terminated(text);
        xmlNodeSetContentLen(node_, XmlText(terminated.c_str()), static_cast<int>(terminated.size()));
        return;
    }
    if (node_->type == XML_ATTRIBUTE_NODE) {
        XmlNode(tree_, node_->parent).SetAttribute(Name().c_str(), text);
        return;
    }
    RequireElement();
    xmlNode* added = text.empty() ? nullptr : NewText(node_->doc, text);
    while (node_->children)
        tree_->Remove(node_->children, IsTextual(node_->children));
    if (!added) return;
    xmlAddChild(node_, added);
    tree_->Selection().NoteAdded();
}

std::string XmlNode::Attribute(const char* name) const {
    const xmlAttr* attribute = FindAttribute(node_, name);
    return attribute ? ValueOf(attribute) : std::string();
}

bool XmlNode::HasAttribute(const char* name) const {
    return FindAttribute(node_, name) != nullptr;
}

void XmlNode::SetAttribute(const char* name, std::string_view value) {
    RequireElement();
    CheckName(name);
    RequireXmlText(value);
    const std::string prefix = PrefixOf(name);
    if (prefix == "xmlns" || std::string_view(name) == "xmlns")
        Refuse("a namespace declaration is no attribute");
    xmlNs* space = prefix.empty() ? nullptr : NamespaceAt(node_, prefix);
    if (!xmlSetNsProp(node_, space, XmlText(LocalName(name)), XmlText(std::string(value).c_str())))
        throw std::bad_alloc();
}

std::vector<std::pair<std::string, std::string>> XmlNode::Attributes() const {
    std::vector<std::pair<std::string, std::string>> attributes;
    if (!IsElement()) return attributes;
    for (const xmlAttr* attribute = node_->properties; attribute; attribute = attribute->next)
        attributes.emplace_back(QualifiedName(attribute->ns, attribute->name), ValueOf(attribute));
    return attributes;
}

XmlNode XmlNode::Parent() const {
    return node_ ? At(node_->parent) : XmlNode();
}

XmlNode XmlNode::FirstChild() const {
    const bool hasChildren = node_ && node_->type != XML_ATTRIBUTE_NODE;
    return hasChildren ? At(node_->children) : XmlNode();
}

XmlNode XmlNode::NextSibling() const {
    const bool hasSiblings = node_ && node_->type != XML_ATTRIBUTE_NODE;
    return hasSiblings ? At(node_->next) : XmlNode();
}

std::vector<XmlNode> XmlNode::Children() const {
    std::vector<XmlNode> children;
    for (XmlNode child = FirstChild(); child; child = child.NextSibling())
        children.push_back(child);
    return children;
}

XmlNode XmlNode::SelectSingle(const std::string& xpath) const {
    Require();
    const std::vector<xmlNode*> nodes = tree_->Selection().Select(node_, xpath);
    return nodes.empty() ? XmlNode() : At(nodes.front());
}

std::vector<XmlNode> XmlNode::Select(const std::string& xpath) const {
    Require();
    std::vector<XmlNode> selected;
    for (xmlNode* node : tree_->Selection().Select(node_, xpath))
        selected.push_back(At(node));
    return selected;
}

XmlNode XmlNode::AppendElement(const char* name) {
    RequireElement();
    CheckName(name);
    xmlNs* space = NamespaceAt(node_, PrefixOf(name));
    xmlNode* element = xmlNewDocNode(node_->doc, space, XmlText(LocalName(name)), nullptr);
    if (!element) throw std::bad_alloc();
    tree_->Selection().NoteAdded();
    return At(xmlAddChild(node_, element));
}

void XmlNode::RemoveChild(const XmlNode& child) {
    Require();
    child.Require();
    if (child.node_->parent != node_ || child.node_->type == XML_ATTRIBUTE_NODE)
        Refuse("\"" + child.Name() + "\" is no child of \"" + Name() + "\"");
    tree_->Remove(child.node_, false);
}

std::string XmlNode::Xml() const {
    if (!node_) return {};
    return node_->type == XML_ATTRIBUTE_NODE ? Text() : WriteXml(node_);
}

} // namespace base
