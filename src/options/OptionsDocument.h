#pragma once

#include "base/XmlDocument.h"
#include "options/DocumentText.h"
#include "options/NamedOptions.h"
#include "options/OptionIndex.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace kvtm {

/// The whole options text in memory, found and changed by option.
///
/// Beside the tree stand an index of its options and its text. Both are made when first needed and follow
/// every change, which therefore has to be made by the operations here. What is found is what the path of
/// optionAddress selects, and where an identifier or name makes that path say something else, the path is
/// asked.
class OptionsDocument {
public:
    /// Replaces the content. Throws for a text that is not well-formed, content unchanged.
    void LoadText(std::string_view text);
    bool IsEmpty() const noexcept { return document_.IsEmpty(); }
    /// XML text of the document; empty text for an empty document. Stays as it is when the document changes.
    std::shared_ptr<const std::string> Text() const;

    /// The first option at optionAddress::Of; no node when there is none. Throws for a malformed address.
    base::XmlNode Option(std::string_view toolId, std::string_view optionName) const;
    /// The first tool at optionAddress::OfTool; no node when there is none. Throws for a malformed address.
    base::XmlNode Tool(std::string_view toolId) const;

    enum class Reading { NoOption, NoValue, Read };
    /// The text of the first "Value" of Option(toolId, optionName), for Reading::Read. Throws as Option does.
    Reading ReadValue(std::string_view toolId, std::string_view optionName, std::string& text) const;

    /// The first option of that name of any tool; no node when there is none.
    base::XmlNode FirstOption(std::string_view optionName) const;
    /// The first child of that name of any option of that name, which need not be the first option's.
    base::XmlNode FirstInOptions(std::string_view optionName, const char* child) const;

    /// Appends an option with that name and an empty value to a tool. Throws for a name that XML cannot hold,
    /// content unchanged.
    base::XmlNode AppendOption(base::XmlNode tool, std::string_view optionName);
    base::XmlNode AppendElement(base::XmlNode parent, const char* name);
    /// Throws for a text that XML cannot hold, content unchanged.
    void SetText(base::XmlNode node, std::string_view text);

    /// Whether there is a tool where options files have theirs: under "Options", directly or in
    /// "ToolOptions".
    bool HoldsTools() const;

    /// Whether ToolOptions, given the text of this document, would read and save all of it; without any
    /// option sets it would. A false may be too strict.
    bool HasSoundSets() const;

    /// What stands beside the tree.
    std::size_t IndexBytes() const noexcept { return index_.Bytes(); }

private:
    void MakeIndex() const;
    _xmlNode* FindOption(std::string_view toolId, std::string_view optionName) const;
    void ForgetMeans() noexcept;

    base::XmlDocument document_;
    mutable OptionIndex index_;
    mutable NamedOptions named_;
    mutable bool isIndexed_ = false;
    mutable DocumentText text_;
    enum class Soundness { Unknown, Sound, Unsound };
    mutable Soundness sets_ = Soundness::Unknown;
};

} // namespace kvtm
