#pragma once

#include "base/XmlDocument.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace kvtm {

/// The XML text of a document, kept from one asking to the next: after a change only the tool that changed is
/// written again, into its place in the text.
class DocumentText {
public:
    /// The text as the document stands now. Later changes leave texts that somebody holds alone.
    std::shared_ptr<const std::string> Of(const base::XmlDocument& document);

    /// To be told after every change in the tree: the node that changed, or gained or lost something below
    /// it.
    void OnChanged(const _xmlNode* node);
    void Clear() noexcept;

private:
    /// A topmost "Tool" element and its place in the text.
    struct Part {
        _xmlNode* tool = nullptr;
        std::size_t begin = 0;
        std::size_t end = 0;
        bool isChanged = false;
    };
    class PartFinder;

    void WriteWhole(const base::XmlDocument& document);
    void WriteChangedParts();

    std::shared_ptr<std::string> text_; // null: to be written whole
    std::vector<Part> parts_;           // in document order
    bool isChanged_ = false;
};

} // namespace kvtm
