#include "options/ToolOption.h"

namespace kvtm {

using base::ComponentError;
using base::XmlNode;

namespace {

constexpr const char* source = "ToolOption";
constexpr const char* optionElement = "Option";

/// Only their position tells name and value apart; either may be missing.
struct OptionChildren {
    XmlNode name;
    XmlNode value;
};

OptionChildren ChildrenOf(const XmlNode& option) {
    const XmlNode name = option.FirstChild();
    return {name, name ? name.NextSibling() : XmlNode()};
}

} // namespace

void ToolOption::ReadProperties() {
    if (!XMLObject) return;
    for (XmlNode child = XMLObject.FirstChild(); child; child = child.NextSibling()) {
        if (!child.IsElement()) continue;
        auto property = std::make_shared<DataProperty>();
        if (child.Name() == optionElement) {
            const OptionChildren option = ChildrenOf(child);
            if (!option.name) continue;
            property->Name = option.name.Text();
            if (option.value) property->Value = option.value.Text();
        } else {
            property->Name = child.Name();
            property->Value = child.Text();
        }
        Properties.AddKeyed(property, property->Name);
    }
}

void ToolOption::WriteProperties() {
    if (!XMLObject) return;
    for (XmlNode child = XMLObject.FirstChild(); child; child = child.NextSibling()) {
        if (!child.IsElement() || child.Name() != optionElement) continue;
        OptionChildren option = ChildrenOf(child);
        if (!option.value) continue;
        const std::string name = option.name.Text();
        const std::shared_ptr<DataProperty>* property = Properties.Find(name);
        if (!property) {
            throw ComponentError(base::errors::InvalidCall, source,
                                 "the option set \"" + Key + "\" has no property \"" + name + "\"");
        }
        option.value.SetText((*property)->Value.ToText());
    }
}

} // namespace kvtm
