#include "options/DocumentText.h"

#include "base/XmlWriter.h"
#include "options/TreeNodes.h"

#include <algorithm>

namespace kvtm {

using treeNodes::IsNamed;

/// Notes the topmost tools while the whole text is written.
class DocumentText::PartFinder final : public base::XmlPlaces {
public:
    PartFinder(std::vector<Part>& parts, std::size_t offset) : parts_(parts), offset_(offset) {}

    void OnBegin(const xmlNode* element, std::size_t at) override {
        if (open_ || !IsNamed(element, "Tool")) return;
        open_ = element;
        parts_.push_back({const_cast<xmlNode*>(element), at + offset_, 0, false});
    }
    void OnEnd(const xmlNode* element, std::size_t at) override {
        if (element != open_) return;
        open_ = nullptr;
        parts_.back().end = at + offset_;
    }

private:
    std::vector<Part>& parts_;
    const std::size_t offset_; // what stands before the document's first node
    const xmlNode* open_ = nullptr;
};

namespace {

constexpr std::size_t spareShare = 32; // of a text's size, kept free for it to grow

/// The topmost "Tool" at or above a node, null where there is none. Null too where an element above it
/// declares namespaces: the tool's own text then depends on where it stands.
const xmlNode* TopmostTool(const xmlNode* node) {
    const xmlNode* tool = nullptr;
    bool isDependent = false;
    for (; node; node = node->parent) {
        if (IsNamed(node, "Tool")) {
            tool = node;
            isDependent = false;
        } else if (node->type == XML_ELEMENT_NODE && node->nsDef) {
            isDependent = true;
        }
    }
    return isDependent ? nullptr : tool;
}

} // namespace

std::shared_ptr<const std::string> DocumentText::Of(const base::XmlDocument& document) {
    if (!text_)
        WriteWhole(document);
    else if (isChanged_)
        WriteChangedParts();
    isChanged_ = false;
    return text_;
}

void DocumentText::OnChanged(const xmlNode* node) {
    if (!text_) return;
    const xmlNode* tool = TopmostTool(node);
    const auto part =
        std::find_if(parts_.begin(), parts_.end(), [&](const Part& p) { return p.tool == tool; });
    if (!tool || part == parts_.end()) return Clear();
    part->isChanged = true;
    isChanged_ = true;
}

void DocumentText::Clear() noexcept {
    text_.reset();
    parts_ = {};
}

void DocumentText::WriteWhole(const base::XmlDocument& document) {
    std::string text;
    if (document.HasDeclaration()) text = base::WriteXmlDeclaration(*document.Raw());
    parts_.clear();
    PartFinder finder(parts_, text.size());
    text += base::WriteXml(reinterpret_cast<xmlNode*>(document.Raw()), &finder);
    text_ = std::make_shared<std::string>(std::move(text));
}

// All that may fail comes first: a text half changed would go to the file.
void DocumentText::WriteChangedParts() {
    std::vector<std::string> written;
    std::size_t size = text_->size();
    for (const Part& part : parts_) {
        if (!part.isChanged) continue;
        written.push_back(base::WriteXml(part.tool));
        size += written.back().size() - (part.end - part.begin);
    }
    if (text_.use_count() > 1) text_ = std::make_shared<std::string>(*text_);
    if (size > text_->capacity()) text_->reserve(size + size / spareShare);

    std::size_t shift = 0; // wraps around for a text that shrinks
    auto next = written.begin();
    for (Part& part : parts_) {
        part.begin += shift;
        part.end += shift;
        if (!part.isChanged) continue;
        const std::size_t length = part.end - part.begin;
        text_->replace(part.begin, length, *next);
        part.end = part.begin + next->size();
        shift += next->size() - length;
        part.isChanged = false;
        ++next;
    }
}

} // namespace kvtm
