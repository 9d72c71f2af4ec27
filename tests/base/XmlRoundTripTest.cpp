#include "base/Text.h"
#include "base/XmlDocument.h"
#include "tests/base/XmlDump.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using base::XmlDocument;
using base::XmlNode;

/// A tree as it is meant, apart from any XML library.
struct Meant {
    enum class Kind { Element, Text, CData, Comment, Instruction } kind = Kind::Element;
    std::string name = {};    // of an element or instruction
    std::string content = {}; // of anything else
    std::vector<std::pair<std::string, std::string>> attributes = {};
    std::vector<Meant> children = {};
};

class Generator {
public:
    explicit Generator(unsigned seed) : random_(seed) {}

    Meant Element(int depth) {
        Meant element{.name = Name()};
        for (int i = Below(4); i > 0; --i) {
            const std::string name = Name();
            bool isNew = true;
            for (const auto& attribute : element.attributes)
                isNew = isNew && attribute.first != name;
            if (isNew) element.attributes.emplace_back(name, Characters(8));
        }
        for (int i = depth > 0 ? Below(6) : Below(2); i > 0; --i)
            AddChild(element, depth);
        MarkBlanks(element);
        return element;
    }

    /// XML text of a tree in one of its many spellings.
    std::string Spell(const Meant& node) {
        switch (node.kind) {
        case Meant::Kind::Text:
            return Escape(node.content, '<');
        case Meant::Kind::CData:
            return "<![CDATA[" + node.content + "]]>";
        case Meant::Kind::Comment:
            return "<!--" + node.content + "-->";
        case Meant::Kind::Instruction:
            return "<?" + node.name + " " + node.content + "?>";
        case Meant::Kind::Element:
            break;
        }
        std::string text = "<" + node.name;
        for (const auto& [name, value] : node.attributes) {
            const char quote = Below(2) == 0 ? '"' : '\'';
            text += Gap(true) + name + Gap(false) + "=" + Gap(false) + quote + Escape(value, quote) + quote;
        }
        text += Gap(false);
        if (node.children.empty() && Below(2) == 0) return text + "/>";
        text += ">";
        for (std::size_t i = 0; i <= node.children.size(); ++i) {
            if (MayTakeBlanks(node, i)) text += Gap(false);
            if (i < node.children.size()) text += Spell(node.children[i]);
        }
        return text + "</" + node.name + Gap(false) + ">";
    }

    int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

private:
    static bool IsTextual(const Meant& node) {
        return node.kind == Meant::Kind::Text || node.kind == Meant::Kind::CData;
    }

    static bool HasElement(const Meant& node) {
        for (const Meant& child : node.children) {
            if (child.kind == Meant::Kind::Element) return true;
        }
        return false;
    }

    static bool IsPreserving(const Meant& node) {
        for (const auto& attribute : node.attributes) {
            if (attribute.first == "xml:space") return attribute.second == "preserve";
        }
        return false;
    }

    /// Whether blanks in front of the child at `index` mean nothing.
    static bool MayTakeBlanks(const Meant& node, std::size_t index) {
        const bool followsText = index > 0 && IsTextual(node.children[index - 1]);
        const bool precedesText = index < node.children.size() && IsTextual(node.children[index]);
        return HasElement(node) && !IsPreserving(node) && !followsText && !precedesText;
    }

    void AddChild(Meant& parent, int depth) {
        const bool followsText = !parent.children.empty() && parent.children.back().kind == Meant::Kind::Text;
        switch (Below(8)) {
        case 0:
            parent.children.push_back({.kind = Meant::Kind::CData, .content = CData()});
            break;
        case 1:
            parent.children.push_back({.kind = Meant::Kind::Comment, .content = Comment()});
            break;
        case 2:
            parent.children.push_back(
                {.kind = Meant::Kind::Instruction, .name = Name(), .content = "a  <b>&amp; ?"});
            break;
        case 3:
        case 4:
            if (!followsText)
                parent.children.push_back({.kind = Meant::Kind::Text, .content = Characters(20)});
            break;
        default:
            if (depth > 0) parent.children.push_back(Element(depth - 1));
        }
    }

    /// Says explicitly, for each element whose blank text counts or not, that it does; an element would else
    /// take over what its parent says.
    void MarkBlanks(Meant& element) {
        bool hasBlank = false;
        for (const Meant& child : element.children) {
            hasBlank = hasBlank || (child.kind == Meant::Kind::Text &&
                                    child.content.find_first_not_of(" \t\r\n") == std::string::npos);
        }
        element.attributes.emplace_back("xml:space", hasBlank ? "preserve" : "default");
    }

    std::string Name() {
        static const std::vector<std::string> names = {"a", "Tool", "Option", "x-1.2", "_",
                                                       "é", "名前", "𐐀x",     "A"};
        return names[static_cast<std::size_t>(Below(static_cast<int>(names.size())))];
    }

    std::string Characters(int limit) {
        static const std::u32string some =
            U"ab Z09 \t\n\r&<>\"'\u0085\u00A0\u00E9\u2028\u20AC\uD7FF\uE000\uFFFD"
            U"\U00010000\U0001F600\U0010FFFF]]>--?=/";
        std::u32string text;
        for (int i = 1 + Below(limit); i > 0; --i)
            text += some[static_cast<std::size_t>(Below(static_cast<int>(some.size())))];
        return base::FromCodePoints(text);
    }

    // Sections, comments and instructions have no escapes, and their line breaks are read as \n.
    std::string CData() {
        std::string text = base::Replace(base::Replace(Characters(12), "\r", ""), "]]>", "");
        while (text.ends_with(']'))
            text.pop_back();
        return text.empty() ? "c" : text;
    }
    std::string Comment() { return base::Replace(base::Replace(Characters(12), "\r", ""), "-", "") + "x"; }

    std::string Gap(bool isNeeded) {
        static const std::vector<std::string> gaps = {"", " ", "\n", "\t ", "\r\n  "};
        return gaps[static_cast<std::size_t>(isNeeded ? 1 + Below(4) : Below(5))];
    }

    std::string Escape(std::string_view content, char quote) {
        std::string text;
        for (const char32_t character : base::ToCodePoints(content)) {
            const bool isSpecial = std::u32string_view(U"&<>\r").find(character) != std::u32string_view::npos;
            const bool isBroken = quote != '<' && (character == '\n' || character == '\t');
            const bool isQuote = character == static_cast<unsigned char>(quote);
            if (!isSpecial && !isBroken && !isQuote && Below(10) != 0)
                base::FromCodePoints(std::u32string_view(&character, 1)).swap(piece_);
            else
                piece_ = "&#" + std::to_string(static_cast<unsigned>(character)) + ";";
            if (Below(2) == 0 && character == '&') piece_ = "&amp;";
            if (Below(2) == 0 && character == '<') piece_ = "&lt;";
            text += piece_;
        }
        return text;
    }

    std::mt19937 random_;
    std::string piece_;
};

void ExpectTree(const XmlNode& node, const Meant& meant) {
    switch (meant.kind) {
    case Meant::Kind::Text:
        ASSERT_EQ(node.Name(), "#text");
        break;
    case Meant::Kind::CData:
        ASSERT_EQ(node.Name(), "#cdata-section");
        break;
    case Meant::Kind::Comment:
        ASSERT_EQ(node.Name(), "#comment");
        break;
    default:
        ASSERT_EQ(node.Name(), meant.name);
    }
    if (meant.kind != Meant::Kind::Element) {
        ASSERT_EQ(node.Text(), meant.content);
        return;
    }
    ASSERT_EQ(node.Attributes(), meant.attributes);
    const std::vector<XmlNode> children = node.Children();
    ASSERT_EQ(children.size(), meant.children.size()) << node.Xml();
    for (std::size_t i = 0; i < children.size(); ++i)
        ASSERT_NO_FATAL_FAILURE(ExpectTree(children[i], meant.children[i]));
}

class RoundTrip : public testing::TestWithParam<unsigned> {};

TEST_P(RoundTrip, ReadsWhatIsMeantAndWritesItBack) {
    Generator generator(GetParam());
    for (int i = 0; i < 300; ++i) {
        const Meant meant = generator.Element(5);
        const std::string source = generator.Spell(meant);
        XmlDocument document;
        ASSERT_NO_THROW(document.LoadText(source)) << source;
        ASSERT_NO_FATAL_FAILURE(ExpectTree(document.Root(), meant)) << source;
        XmlDocument again;
        ASSERT_NO_THROW(again.LoadText(document.Text())) << document.Text();
        ASSERT_NO_FATAL_FAILURE(ExpectTree(again.Root(), meant)) << document.Text();
        ASSERT_EQ(again.Text(), document.Text());
        ASSERT_EQ(again.Root().Xml(), document.Text());
    }
}

/// Builds the same tree by hand, as far as it can be built: elements, attributes and their only text.
void Build(XmlNode node, const Meant& meant) {
    for (const auto& [name, value] : meant.attributes)
        node.SetAttribute(name.c_str(), value);
    bool hasElements = false;
    for (const Meant& child : meant.children) {
        if (child.kind != Meant::Kind::Element) continue;
        hasElements = true;
        Build(node.AppendElement(child.name.c_str()), child);
    }
    if (!hasElements && !meant.children.empty()) node.SetText(meant.children.front().content);
}

TEST_P(RoundTrip, WritesWhatWasBuiltByHand) {
    Generator generator(GetParam() + 1000);
    for (int i = 0; i < 100; ++i) {
        const Meant meant = generator.Element(4);
        XmlDocument document;
        Build(document.CreateRoot(meant.name.c_str()), meant);
        XmlDocument again;
        ASSERT_NO_THROW(again.LoadText(document.Text())) << document.Text();
        ASSERT_EQ(Dump(again), Dump(document));
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RoundTrip, testing::Range(1u, 11u));

} // namespace
