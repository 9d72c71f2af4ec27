#include "host/ToolsXml.h"

#include "base/Text.h"
#include "base/XmlEncoding.h"

#include <algorithm>
#include <map>
#include <utility>

namespace arvon::host::toolsXml {

namespace {

struct Range {
    std::size_t begin = 0, end = 0;
};

struct AttributePlace {
    std::string_view name;
    Range value; // without the quotes
};

struct ToolPlace {
    Range startTag;
    Range element;
    std::vector<AttributePlace> attributes;
    std::size_t attributesEnd = 0; // where another attribute can be written
};

constexpr std::string_view blanks = " \t\r\n";

/// Finds the Tool elements of a well-formed text without building a tree.
class Scanner {
public:
    explicit Scanner(std::string_view text) : text_(text) {}

    std::vector<ToolPlace> Tools() {
        while ((at_ = text_.find('<', at_)) != std::string_view::npos) {
            if (Skip("<!--", "-->") || Skip("<![CDATA[", "]]>") || Skip("<?", "?>") || Skip("<!", ">"))
                continue;
            if (text_.substr(at_).starts_with("</")) {
                EndTag();
            } else {
                StartTag();
            }
        }
        return std::move(tools_);
    }

private:
    bool Skip(std::string_view open, std::string_view close) {
        if (!text_.substr(at_).starts_with(open)) return false;
        const std::size_t end = text_.find(close, at_ + open.size());
        at_ = end == std::string_view::npos ? text_.size() : end + close.size();
        return true;
    }

    void EndTag() {
        at_ = text_.find('>', at_);
        at_ = at_ == std::string_view::npos ? text_.size() : at_ + 1;
        if (open_.empty()) return;
        if (open_.back() != none) tools_[open_.back()].element.end = at_;
        open_.pop_back();
    }

    void StartTag() {
        const std::size_t begin = at_;
        const std::size_t nameEnd = std::min(text_.find_first_of(" \t\r\n/>", at_), text_.size());
        const std::string_view name = text_.substr(at_ + 1, nameEnd - at_ - 1);
        at_ = nameEnd;
        ToolPlace tool;
        tool.attributesEnd = nameEnd;
        bool empty = false;
        while (at_ < text_.size() && text_[at_] != '>') {
            if (text_[at_] == '/') {
                empty = true;
                ++at_;
            } else if (blanks.find(text_[at_]) != std::string_view::npos) {
                ++at_;
            } else {
                ReadAttribute(tool);
            }
        }
        at_ = std::min(at_ + 1, text_.size());
        tool.startTag = tool.element = {begin, at_};
        if (!empty) open_.push_back(name == "Tool" ? tools_.size() : none);
        if (name == "Tool") tools_.push_back(std::move(tool));
    }

    void ReadAttribute(ToolPlace& tool) {
        const std::size_t nameBegin = at_;
        const std::size_t quote = text_.find_first_of("\"'", at_);
        const std::size_t close =
            quote == std::string_view::npos ? std::string_view::npos : text_.find(text_[quote], quote + 1);
        if (close == std::string_view::npos) {
            at_ = text_.size();
            return;
        }
        const std::string_view name =
            text_.substr(nameBegin, text_.find_first_of(" \t\r\n=", nameBegin) - nameBegin);
        tool.attributes.push_back({name, {quote + 1, close}});
        at_ = tool.attributesEnd = close + 1;
    }

    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    std::string_view text_;
    std::size_t at_ = 0;
    std::vector<ToolPlace> tools_;
    std::vector<std::size_t> open_; // elements around this place: index of a Tool, or none
};

std::string Escaped(std::string_view value) {
    std::string escaped;
    for (const char character : value) {
        switch (character) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        case '\'':
            escaped += "&apos;";
            break;
        case '\t':
            escaped += "&#9;";
            break;
        case '\n':
            escaped += "&#10;";
            break;
        case '\r':
            escaped += "&#13;";
            break;
        default:
            escaped += character;
        }
    }
    return escaped;
}

/// Replacements by where they begin; they do not overlap.
struct Replacement {
    std::size_t end;
    std::string text;
};
using Replacements = std::map<std::size_t, Replacement>;

void CutOut(Replacements& replacements, Range range) {
    const auto [place, isNew] = replacements.try_emplace(range.begin, Replacement{range.end, std::string()});
    if (!isNew && place->second.end < range.end) place->second = {range.end, std::string()};
}

void SetAttribute(Replacements& replacements, const ToolPlace& tool, const Edit& edit) {
    for (const AttributePlace& attribute : tool.attributes) {
        if (attribute.name != edit.attribute) continue;
        replacements.insert_or_assign(attribute.value.begin,
                                      Replacement{attribute.value.end, Escaped(edit.value)});
        return;
    }
    const std::string added = " " + edit.attribute + "=\"" + Escaped(edit.value) + "\"";
    const auto [place, isNew] =
        replacements.try_emplace(tool.attributesEnd, Replacement{tool.attributesEnd, std::string()});
    place->second.text += added;
}

/// The range and the rest of its line, where there is only blank space around it.
Range WithItsLine(std::string_view text, Range range) {
    const std::size_t before = text.find_last_not_of(" \t", range.begin == 0 ? 0 : range.begin - 1);
    if (range.begin == 0 || before == std::string_view::npos || text[before] != '\n') return range;
    const std::size_t after = text.find_first_not_of(" \t\r", range.end);
    if (after == std::string_view::npos || text[after] != '\n') return range;
    return {before + 1, after + 1};
}

void Cut(Replacements& replacements, std::string_view text, const std::vector<ToolPlace>& tools,
         std::size_t index, const std::vector<bool>& isCut) {
    const Range all = tools[index].element;
    std::size_t from = all.begin;
    bool whole = true;
    for (std::size_t inner = index + 1; inner < tools.size() && tools[inner].element.begin < all.end;
         ++inner) {
        if (isCut[inner] || tools[inner].element.begin < from) continue;
        CutOut(replacements, {from, tools[inner].element.begin});
        from = tools[inner].element.end;
        whole = false;
    }
    CutOut(replacements, whole ? WithItsLine(text, all) : Range{from, all.end});
}

/// The encoding in the XML declaration becomes what the text is in.
void SetEncoding(Replacements& replacements, std::string_view text) {
    const auto name = base::FindXmlEncoding(text);
    if (!name || base::EqualIgnoringCase(text.substr(name->offset, name->length), "UTF-8")) return;
    replacements.insert_or_assign(name->offset, Replacement{name->offset + name->length, "UTF-8"});
}

} // namespace

std::optional<std::string> Apply(std::string_view text, std::size_t toolCount, const std::vector<Edit>& edits,
                                 const std::vector<std::size_t>& cuts) {
    const std::vector<ToolPlace> tools = Scanner(text).Tools();
    if (tools.size() != toolCount) return {};

    std::vector<bool> isCut(tools.size());
    for (const std::size_t index : cuts)
        isCut.at(index) = true;
    Replacements replacements;
    SetEncoding(replacements, text);
    for (const Edit& edit : edits)
        if (!isCut.at(edit.tool)) SetAttribute(replacements, tools[edit.tool], edit);
    for (std::size_t index = 0; index < tools.size(); ++index)
        if (isCut[index]) Cut(replacements, text, tools, index, isCut);

    std::string result;
    result.reserve(text.size());
    std::size_t done = 0;
    for (const auto& [begin, replacement] : replacements) {
        if (begin < done) continue; // inside an element that was cut as a whole
        result.append(text, done, begin - done).append(replacement.text);
        done = replacement.end;
    }
    result.append(text, done);
    return result;
}

} // namespace arvon::host::toolsXml
