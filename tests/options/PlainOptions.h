#pragma once

#include "base/XmlDocument.h"
#include "options/OptionAddress.h"

#include <string>
#include <string_view>

namespace kvtm::test {

/// What OptionsDocument does, by the plain paths over a plain document.
struct PlainOptions {
    base::XmlDocument document;

    void LoadText(std::string_view text) { document.LoadText(text); }
    std::string Text() const { return document.Text(); }

    base::XmlNode Option(std::string_view toolId, std::string_view name) const {
        return document.SelectSingle(optionAddress::Of(toolId, name));
    }
    base::XmlNode Tool(std::string_view toolId) const {
        return document.SelectSingle(optionAddress::OfTool(toolId));
    }
    base::XmlNode FirstOption(std::string_view name) const {
        return document.SelectSingle(optionAddress::OfName(name));
    }
    base::XmlNode FirstInOptions(std::string_view name, const char* child) const {
        return document.SelectSingle(optionAddress::OfName(name) + "/" + child);
    }

    base::XmlNode AppendOption(base::XmlNode tool, std::string_view name) const {
        base::XmlNode option = tool.AppendElement("Option");
        option.AppendElement("Name").SetText(name);
        option.AppendElement("Value");
        return option;
    }
    base::XmlNode AppendElement(base::XmlNode parent, const char* name) const {
        return parent.AppendElement(name);
    }
    void SetText(base::XmlNode node, std::string_view text) const { node.SetText(text); }
};

} // namespace kvtm::test
