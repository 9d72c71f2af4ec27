#pragma once

#include "base/XmlDocument.h"

#include <string>
#include <string_view>

namespace kvtm {

/// The whole options text in memory, found and changed by option.
class OptionsDocument {
public:
    /// Replaces the content. Throws for a text that is not well-formed, content unchanged.
    void LoadText(std::string_view text);
    bool IsEmpty() const noexcept { return document_.IsEmpty(); }
    /// XML text of the document; empty text for an empty document.
    std::string Text() const;

    /// The first option at optionAddress::Of; no node when there is none. Throws for a malformed address.
    base::XmlNode Option(std::string_view toolId, std::string_view optionName) const;
    /// The first tool at optionAddress::OfTool; no node when there is none. Throws for a malformed address.
    base::XmlNode Tool(std::string_view toolId) const;
    /// The first option of that name of any tool; no node when there is none.
    base::XmlNode FirstOption(std::string_view optionName) const;
    /// The first child of that name of any option of that name, which need not be the first option's.
    base::XmlNode FirstInOptions(std::string_view optionName, const char* child) const;

    /// Appends an option with that name and an empty value to a tool. Throws for a name that XML cannot hold:
    /// the option then stays, without a name.
    base::XmlNode AppendOption(base::XmlNode tool, std::string_view optionName);
    base::XmlNode AppendElement(base::XmlNode parent, const char* name);
    /// Throws for a text that XML cannot hold, content unchanged.
    void SetText(base::XmlNode node, std::string_view text);

private:
    base::XmlDocument document_;
};

} // namespace kvtm
