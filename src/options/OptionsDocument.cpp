#include "options/OptionsDocument.h"

#include "options/OptionAddress.h"
#include "options/ToolOptions.h"
#include "options/TreeNodes.h"

#include <utility>

namespace kvtm {

using base::XmlNode;
using namespace treeNodes;

namespace {

/// Whether a text means itself between the quotes of an XPath.
bool IsLiteral(std::string_view text) {
    return text.find('\'') == std::string_view::npos && base::IsXmlText(text);
}

bool HasElements(const xmlNode* node) {
    return xmlFirstElementChild(const_cast<xmlNode*>(node)) != nullptr;
}

/// Whether a node lies within the child of an "Option" that names it.
bool LiesInName(const xmlNode* node) {
    for (; node->parent; node = node->parent) {
        if (node->parent->type != XML_ELEMENT_NODE || base::ViewOf(node->parent->name) != "Option") continue;
        if (IsNamed(node, "Name") || !node->prev) return true;
    }
    return false;
}

} // namespace

void OptionsDocument::LoadText(std::string_view text) {
    document_.LoadText(text);
    ForgetMeans();
    text_.Clear();
}

std::shared_ptr<const std::string> OptionsDocument::Text() const {
    if (IsEmpty()) return std::make_shared<std::string>();
    return text_.Of(document_);
}

// A hit needs no look at its characters but for the quote: whatever else is no literal is no name in a tree.
xmlNode* OptionsDocument::FindOption(std::string_view toolId, std::string_view optionName) const {
    constexpr char quote = '\'';
    MakeIndex();
    const bool isQuoted =
        toolId.find(quote) != std::string_view::npos || optionName.find(quote) != std::string_view::npos;
    if (!isQuoted) {
        if (xmlNode* option = index_.FindOption(toolId, optionName)) return option;
        if (base::IsXmlText(toolId) && base::IsXmlText(optionName)) return nullptr;
    }
    return document_.SelectSingle(optionAddress::Of(toolId, optionName)).Raw();
}

XmlNode OptionsDocument::Option(std::string_view toolId, std::string_view optionName) const {
    return document_.NodeAt(FindOption(toolId, optionName));
}

XmlNode OptionsDocument::Tool(std::string_view toolId) const {
    if (!IsLiteral(toolId)) return document_.SelectSingle(optionAddress::OfTool(toolId));
    MakeIndex();
    return document_.NodeAt(index_.FindTool(toolId));
}

OptionsDocument::Reading OptionsDocument::ReadValue(std::string_view toolId, std::string_view optionName,
                                                    std::string& text) const {
    const xmlNode* option = FindOption(toolId, optionName);
    if (!option) return Reading::NoOption;
    const xmlNode* value = FirstChildNamed(option, "Value");
    if (!value) return Reading::NoValue;
    text = treeNodes::Text(value);
    return Reading::Read;
}

XmlNode OptionsDocument::FirstOption(std::string_view optionName) const {
    MakeIndex();
    const std::vector<xmlNode*>* options = named_.Of(optionName);
    if (!options) return document_.SelectSingle(optionAddress::OfName(optionName));
    return options->empty() ? XmlNode() : document_.NodeAt(options->front());
}

XmlNode OptionsDocument::FirstInOptions(std::string_view optionName, const char* child) const {
    MakeIndex();
    const std::vector<xmlNode*>* options = named_.Of(optionName);
    if (!options) return document_.SelectSingle(optionAddress::OfName(optionName) + "/" + child);
    for (const xmlNode* option : *options) {
        if (xmlNode* found = FirstChildNamed(option, child)) return document_.NodeAt(found);
    }
    return XmlNode();
}

XmlNode OptionsDocument::AppendOption(XmlNode tool, std::string_view optionName) {
    base::RequireXmlText(optionName);
    // one of that name further down, under a tool of the same identifier, would no longer be the first
    const bool isRepeated = isIndexed_ && index_.FindOption(tool.Attribute("ID"), optionName);
    if (isRepeated || AncestorNamed(tool.Raw(), "Option")) ForgetMeans();
    XmlNode option = tool.AppendElement("Option");
    text_.OnChanged(tool.Raw());
    option.AppendElement("Name").SetText(optionName);
    option.AppendElement("Value");
    if (isIndexed_) {
        index_.AddOption(option.Raw());
        named_.Insert(option.Raw());
    }
    const bool staysSound = sets_ == Soundness::Sound && ToolOptions::IsSound(tool);
    sets_ = staysSound ? Soundness::Sound : Soundness::Unknown;
    return option;
}

XmlNode OptionsDocument::AppendElement(XmlNode parent, const char* name) {
    XmlNode element = parent.AppendElement(name);
    text_.OnChanged(parent.Raw());
    return element;
}

void OptionsDocument::SetText(XmlNode node, std::string_view text) {
    if (TextInOnePiece(node.Raw()) == text) return;
    const bool changesMore = HasElements(node.Raw()) || LiesInName(node.Raw());
    node.SetText(text);
    if (changesMore) ForgetMeans();
    if (sets_ == Soundness::Unsound) sets_ = Soundness::Unknown;
    text_.OnChanged(node.Raw());
}

bool OptionsDocument::HoldsTools() const {
    return static_cast<bool>(document_.SelectSingle("//Options/Tool | //Options/ToolOptions/Tool"));
}

bool OptionsDocument::HasSoundSets() const {
    if (sets_ == Soundness::Unknown) {
        const XmlNode sets = document_.SelectSingle("//ToolOptions");
        sets_ = !sets || ToolOptions::AreSound(sets) ? Soundness::Sound : Soundness::Unsound;
    }
    return sets_ == Soundness::Sound;
}

void OptionsDocument::MakeIndex() const {
    if (std::exchange(isIndexed_, true)) return;
    index_.Clear();
    named_.Clear();
    xmlNode* root = document_.Root().Raw();
    for (xmlNode* node = root; node; node = base::NextInTree(node, root)) {
        if (IsNamed(node, "Tool")) {
            index_.AddTool(node);
        } else if (IsNamed(node, "Option")) {
            index_.AddOption(node);
            named_.Add(node);
        }
    }
}

void OptionsDocument::ForgetMeans() noexcept {
    isIndexed_ = false;
    sets_ = Soundness::Unknown;
}

} // namespace kvtm
