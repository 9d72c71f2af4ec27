#include "options/OptionsDocument.h"

#include "options/OptionAddress.h"

namespace kvtm {

using base::XmlNode;

void OptionsDocument::LoadText(std::string_view text) {
    document_.LoadText(text);
}

std::string OptionsDocument::Text() const {
    return document_.Text();
}

XmlNode OptionsDocument::Option(std::string_view toolId, std::string_view optionName) const {
    return document_.SelectSingle(optionAddress::Of(toolId, optionName));
}

XmlNode OptionsDocument::Tool(std::string_view toolId) const {
    return document_.SelectSingle(optionAddress::OfTool(toolId));
}

XmlNode OptionsDocument::FirstOption(std::string_view optionName) const {
    return document_.SelectSingle(optionAddress::OfName(optionName));
}

XmlNode OptionsDocument::FirstInOptions(std::string_view optionName, const char* child) const {
    return document_.SelectSingle(optionAddress::OfName(optionName) + "/" + child);
}

XmlNode OptionsDocument::AppendOption(XmlNode tool, std::string_view optionName) {
    XmlNode option = AppendElement(tool, "Option");
    SetText(AppendElement(option, "Name"), optionName);
    AppendElement(option, "Value");
    return option;
}

XmlNode OptionsDocument::AppendElement(XmlNode parent, const char* name) {
    return parent.AppendElement(name);
}

void OptionsDocument::SetText(XmlNode node, std::string_view text) {
    node.SetText(text);
}

} // namespace kvtm
