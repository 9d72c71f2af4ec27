#include "base/XmlDocument.h"
#include "tests/base/Loaded.h"
#include "tests/base/RefusalOf.h"
#include "tests/base/XmlDump.h"

#include <libxml/globals.h>
#include <libxml/tree.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using base::XmlDocument;
using base::XmlNode;
using namespace std::string_literals;

TEST(XmlNode, AnswersNeutrallyWhenThereIsNone) {
    const XmlNode none;
    EXPECT_FALSE(none);
    EXPECT_FALSE(none.IsElement());
    EXPECT_EQ(none.Name(), "");
    EXPECT_EQ(none.Text(), "");
    EXPECT_EQ(none.Xml(), "");
    EXPECT_EQ(none.Attribute("a"), "");
    EXPECT_FALSE(none.HasAttribute("a"));
    EXPECT_TRUE(none.Attributes().empty());
    EXPECT_TRUE(none.Children().empty());
    EXPECT_FALSE(none.Parent());
    EXPECT_FALSE(none.FirstChild());
    EXPECT_FALSE(none.NextSibling());
    EXPECT_EQ(none.Raw(), nullptr);
}

TEST(XmlNode, RefusesChangesWhenThereIsNone) {
    XmlNode none;
    const XmlDocument document = Loaded("<a/>");
    EXPECT_EQ(RefusalOf([&] { none.SetText("x"); }).number, base::errors::ObjectNotSet);
    EXPECT_EQ(RefusalOf([&] { none.SetAttribute("a", "x"); }).number, base::errors::ObjectNotSet);
    EXPECT_EQ(RefusalOf([&] { none.AppendElement("a"); }).number, base::errors::ObjectNotSet);
    EXPECT_EQ(RefusalOf([&] { none.RemoveChild(document.Root()); }).number, base::errors::ObjectNotSet);
    EXPECT_EQ(RefusalOf([&] { document.Root().RemoveChild(none); }).number, base::errors::ObjectNotSet);
    EXPECT_EQ(RefusalOf([&] { none.Select("a"); }).number, base::errors::ObjectNotSet);
    EXPECT_EQ(RefusalOf([&] { none.SelectSingle("a"); }).number, base::errors::ObjectNotSet);
}

TEST(XmlNode, NamesEveryKindOfNode) {
    const XmlDocument document = Loaded("<p:a xmlns:p='u' p:b='1'>t<![CDATA[c]]><!--d--><?e f?></p:a>");
    std::vector<std::string> names;
    for (const XmlNode& node : document.Select("/|//node()|//@*"))
        names.push_back(node.Name());
    EXPECT_EQ(names, (std::vector<std::string>{"#document", "p:a", "p:b", "#text", "#cdata-section",
                                               "#comment", "e"}));
}

TEST(XmlNode, JoinsTheTextBelowIt) {
    const XmlDocument document = Loaded("<a>1<b>2<c/><![CDATA[3]]></b><!--no--><?p no?>4</a>");
    EXPECT_EQ(document.Root().Text(), "1234");
    EXPECT_EQ(document.SelectSingle("//b").Text(), "23");
    EXPECT_EQ(document.SelectSingle("//c").Text(), "");
    EXPECT_EQ(document.SelectSingle("//comment()").Text(), "no");
    EXPECT_EQ(document.SelectSingle("//processing-instruction()").Text(), "no");
    EXPECT_EQ(document.SelectSingle("/").Text(), "1234");
}

TEST(XmlNode, DoesNotReadTheTextBehindIt) {
    const XmlDocument document = Loaded("<a><b>1</b><c>2</c></a>");
    EXPECT_EQ(document.SelectSingle("//b").Text(), "1");
    EXPECT_EQ(document.SelectSingle("//b").Xml(), "<b>1</b>");
    EXPECT_EQ(document.SelectSingle("//b/text()").Text(), "1");
}

TEST(XmlNode, SetsAnyTextThatXmlCanHold) {
    for (const std::string& text :
         {"plain"s, ""s, " "s, "a & b < c > d"s, "]]>"s, "&amp;"s, "<![CDATA[x]]>"s, "\r\n\t"s,
          "é€😀\u0085\u2028"s, "\uD7FF\uE000\uFFFD\U0010FFFF"s, std::string(1'000'000, 'x')}) {
        XmlDocument document = Loaded("<a><b/>old</a>");
        document.Root().SetText(text);
        EXPECT_EQ(document.Root().Text(), text);
        EXPECT_EQ(Loaded(document.Text()).Root().Text(), text) << document.Text().substr(0, 200);
    }
}

TEST(XmlNode, WritesAnEmptyElementAfterEmptyText) {
    XmlDocument document = Loaded("<a>old</a>");
    document.Root().SetText("");
    EXPECT_EQ(document.Text(), "<a/>");
    EXPECT_FALSE(document.Root().FirstChild());
}

TEST(XmlNode, RefusesTextThatXmlCannotHoldAndStaysAsItWas) {
    XmlDocument document = Loaded("<a b='1'>old<c/></a>");
    for (const std::string& text :
         {"\x01"s, "a\0b"s, "\x1F"s, "\xFF"s, "\xC3"s, "\xED\xA0\x80"s, "\uFFFE"s, "\uFFFF"s}) {
        EXPECT_EQ(RefusalOf([&] { document.Root().SetText(text); }).number, base::errors::InvalidCall);
        EXPECT_EQ(RefusalOf([&] { document.Root().SetAttribute("b", text); }).number,
                  base::errors::InvalidCall);
        EXPECT_EQ(RefusalOf([&] { document.SelectSingle("//text()").SetText(text); }).number,
                  base::errors::InvalidCall);
    }
    EXPECT_EQ(document.Text(), "<a b=\"1\">old<c/></a>");
}

TEST(XmlNode, SetsTheTextOfAttributesTextAndCData) {
    const XmlDocument document = Loaded("<a b='1'>x<![CDATA[y]]></a>");
    document.SelectSingle("//@b").SetText("<2>");
    document.SelectSingle("//text()").SetText("<3>");
    document.Select("//text()")[1].SetText("]]>");
    EXPECT_EQ(document.Text(), "<a b=\"&lt;2&gt;\">&lt;3&gt;<![CDATA[]]]]><![CDATA[>]]></a>");
    EXPECT_EQ(document.SelectSingle("//@b").Text(), "<2>");
}

TEST(XmlNode, SetsTextOnNothingElse) {
    const XmlDocument document = Loaded("<a><!--c--><?p q?></a>");
    for (const char* xpath : {"//comment()", "//processing-instruction()", "/"})
        EXPECT_EQ(RefusalOf([&] { document.SelectSingle(xpath).SetText("x"); }).number,
                  base::errors::InvalidCall);
    EXPECT_EQ(document.Text(), "<a><!--c--><?p q?></a>");
}

TEST(XmlNode, TellsAMissingAttributeFromAnEmptyOne) {
    const XmlNode root = Loaded("<a b='' ID='1'/>").Root();
    EXPECT_EQ(root.Attribute("b"), "");
    EXPECT_TRUE(root.HasAttribute("b"));
    EXPECT_EQ(root.Attribute("c"), "");
    EXPECT_FALSE(root.HasAttribute("c"));
    EXPECT_FALSE(root.HasAttribute("Id"));
    EXPECT_FALSE(root.HasAttribute(""));
}

TEST(XmlNode, TellsAttributesOfDifferentPrefixApart) {
    const XmlNode root = Loaded("<a xmlns:p='u' p:ID='2' xml:lang='en'/>").Root();
    EXPECT_FALSE(root.HasAttribute("ID"));
    EXPECT_EQ(root.Attribute("p:ID"), "2");
    EXPECT_EQ(root.Attribute("xml:lang"), "en");
    EXPECT_FALSE(root.HasAttribute("q:ID"));
    EXPECT_FALSE(root.HasAttribute("p:I"));
    EXPECT_FALSE(root.HasAttribute("xmlns:p"));
}

TEST(XmlNode, ListsAttributesInDocumentOrder) {
    using List = std::vector<std::pair<std::string, std::string>>;
    XmlDocument document = Loaded("<a z='1' xmlns='u' y='&lt;2' xmlns:p='v' p:x='3'/>");
    EXPECT_EQ(document.Root().Attributes(), (List{{"z", "1"}, {"y", "<2"}, {"p:x", "3"}}));
    document.Root().SetAttribute("w", "4");
    document.Root().SetAttribute("z", "5");
    EXPECT_EQ(document.Root().Attributes(), (List{{"z", "5"}, {"y", "<2"}, {"p:x", "3"}, {"w", "4"}}));
    EXPECT_TRUE(document.SelectSingle("//@y").Attributes().empty());
}

TEST(XmlNode, SetsAttributesThatReadBack) {
    XmlDocument document;
    XmlNode root = document.CreateRoot("a");
    for (const std::string& value : {""s, "plain"s, "\"'<>&"s, " \t\r\n "s, "é😀"s, "&amp;&#9;"s}) {
        root.SetAttribute("b", value);
        EXPECT_EQ(root.Attribute("b"), value);
        EXPECT_EQ(Loaded(document.Text()).Root().Attribute("b"), value);
    }
    root.SetAttribute("xml:space", "preserve");
    EXPECT_EQ(Loaded(document.Text()).Root().Attribute("xml:space"), "preserve");
}

TEST(XmlNode, RefusesWrongNames) {
    XmlDocument document = Loaded("<a/>");
    XmlNode root = document.Root();
    for (const char* name :
         {"", " ", "1", "a b", "a<", "a:", ":a", "a:b:c", "undeclared:a", "\xFF", "a\x01", "-a"}) {
        EXPECT_EQ(RefusalOf([&] { root.SetAttribute(name, "x"); }).number, base::errors::InvalidCall) << name;
        EXPECT_EQ(RefusalOf([&] { root.AppendElement(name); }).number, base::errors::InvalidCall) << name;
    }
    for (const char* name : {"xmlns", "xmlns:p"})
        EXPECT_EQ(RefusalOf([&] { root.SetAttribute(name, "x"); }).number, base::errors::InvalidCall) << name;
    EXPECT_EQ(document.Text(), "<a/>");
}

TEST(XmlNode, ChangesElementsOnly) {
    const XmlDocument document = Loaded("<a b='1'>x<!--c--></a>");
    for (const char* xpath : {"/", "//@b", "//text()", "//comment()"}) {
        XmlNode node = document.SelectSingle(xpath);
        EXPECT_EQ(RefusalOf([&] { node.SetAttribute("b", "x"); }).number, base::errors::InvalidCall) << xpath;
        EXPECT_EQ(RefusalOf([&] { node.AppendElement("b"); }).number, base::errors::InvalidCall) << xpath;
    }
}

TEST(XmlNode, AppendsElementsInOrder) {
    XmlDocument document = Loaded("<a>x</a>");
    document.Root().AppendElement("b").SetText("1");
    document.Root().AppendElement("é").AppendElement("c");
    EXPECT_EQ(document.Text(), "<a>x<b>1</b><é><c/></é></a>");
}

TEST(XmlNode, AppendsElementsInTheNamespaceThatStandsThere) {
    XmlDocument document = Loaded("<a xmlns='u' xmlns:p='v'/>");
    document.Root().AppendElement("b");
    document.Root().AppendElement("p:c").SetAttribute("p:d", "1");
    EXPECT_EQ(document.Text(), "<a xmlns=\"u\" xmlns:p=\"v\"><b/><p:c p:d=\"1\"/></a>");
    EXPECT_EQ(document.Select("//*[namespace-uri()='u']").size(), 2u);
}

TEST(XmlNode, WalksParentsAndSiblings) {
    const XmlDocument document = Loaded("<a><b/>x<!--c--><d/></a>");
    const XmlNode root = document.Root();
    std::vector<std::string> names;
    for (XmlNode child = root.FirstChild(); child; child = child.NextSibling()) {
        names.push_back(child.Name());
        EXPECT_EQ(child.Parent(), root);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"b", "#text", "#comment", "d"}));
    EXPECT_EQ(root.Children().size(), 4u);
    EXPECT_EQ(root.Parent().Name(), "#document");
    EXPECT_FALSE(root.Parent().Parent());
    EXPECT_EQ(root.Parent().FirstChild(), root);
}

TEST(XmlNode, WalksNoFurtherFromAnAttribute) {
    const XmlDocument document = Loaded("<a b='1' c='2'/>");
    const XmlNode attribute = document.SelectSingle("//@b");
    EXPECT_FALSE(attribute.FirstChild());
    EXPECT_FALSE(attribute.NextSibling());
    EXPECT_EQ(attribute.Parent(), document.Root());
    EXPECT_EQ(attribute.Text(), "1");
    EXPECT_EQ(attribute.Xml(), "1");
}

TEST(XmlNode, RemovesAChildThatStaysReadable) {
    XmlDocument document = Loaded("<a><b x='1'>t<c/></b><d/></a>");
    const XmlNode child = document.SelectSingle("//b");
    document.Root().RemoveChild(child);
    EXPECT_EQ(document.Text(), "<a><d/></a>");
    EXPECT_EQ(child.Xml(), "<b x=\"1\">t<c/></b>");
    EXPECT_FALSE(child.Parent());
    EXPECT_FALSE(child.NextSibling());
    EXPECT_EQ(child.SelectSingle("c").Name(), "c");
    EXPECT_TRUE(document.Select("//b").empty());
}

TEST(XmlNode, RefusesToRemoveWhatIsNoChild) {
    XmlDocument document = Loaded("<a x='1'><b><c/></b></a>");
    const XmlDocument other = Loaded("<a/>");
    XmlNode root = document.Root();
    const XmlNode removed = document.SelectSingle("//c");
    document.SelectSingle("//b").RemoveChild(removed);
    for (const XmlNode& node : {root, removed, document.SelectSingle("//@x"), other.Root()})
        EXPECT_EQ(RefusalOf([&] { root.RemoveChild(node); }).number, base::errors::InvalidCall);
    EXPECT_EQ(document.Text(), "<a x=\"1\"><b/></a>");
}

TEST(XmlNode, RemovesTheRootFromTheDocument) {
    const XmlDocument document = Loaded("<!--c--><a/>");
    const XmlNode root = document.Root();
    document.SelectSingle("/").RemoveChild(root);
    EXPECT_FALSE(document.Root());
    EXPECT_EQ(document.Text(), "<!--c-->");
    EXPECT_EQ(root.Xml(), "<a/>");
}

TEST(XmlNode, OutlivesItsDocument) {
    XmlNode child;
    XmlNode removed;
    {
        XmlDocument document = Loaded("<a><b>1</b><c>2</c></a>");
        child = document.SelectSingle("//b");
        removed = document.SelectSingle("//c");
        document.Root().RemoveChild(removed);
        document.LoadText("<other/>");
    }
    EXPECT_EQ(child.Parent().Xml(), "<a><b>1</b></a>");
    EXPECT_EQ(removed.Text(), "2");
}

TEST(XmlNode, StaysReadableWhenTextTakesItsPlace) {
    XmlDocument document = Loaded("<a>old<b>1</b></a>");
    const XmlNode text = document.Root().FirstChild();
    const XmlNode element = document.SelectSingle("//b");
    const XmlNode below = element.FirstChild();
    document.Root().SetText("new");
    document.Root().SetText("newer");
    EXPECT_EQ(document.Text(), "<a>newer</a>");
    EXPECT_EQ(text.Text(), "old");
    EXPECT_EQ(element.Xml(), "<b>1</b>");
    EXPECT_EQ(below.Text(), "1");
    EXPECT_FALSE(text.Parent());
}

TEST(XmlNode, CopiesAndMovesLikeAValue) {
    const XmlDocument document = Loaded("<a><b/></a>");
    XmlNode node = document.Root();
    XmlNode copy = node;
    EXPECT_EQ(copy, node);
    const XmlNode moved = std::move(copy);
    EXPECT_EQ(moved, node);
    node = node.FirstChild();
    EXPECT_NE(moved, node);
    XmlNode& same = node;
    node = same;
    EXPECT_EQ(node.Name(), "b");
    node = XmlNode();
    EXPECT_FALSE(node);
}

TEST(XmlNode, DeclaresAnewTheNamespacesThatItNeeds) {
    const XmlDocument document = Loaded(
        "<a xmlns='u' xmlns:p='v' xmlns:q='w'><b><p:c p:d='1' xml:lang='en'/><p:e xmlns:p='z'/></b></a>");
    const std::string xml = document.SelectSingle("//*[local-name()='b']").Xml();
    EXPECT_EQ(xml, "<b xmlns=\"u\"><p:c xmlns:p=\"v\" p:d=\"1\" xml:lang=\"en\"/><p:e xmlns:p=\"z\"/></b>");
    EXPECT_EQ(Loaded(xml).Root().Xml(), xml);
}

TEST(XmlNode, KeepsItsNamespacesWhenItIsRemoved) {
    XmlDocument document = Loaded("<a xmlns='u' xmlns:p='v'><p:b><c/></p:b></a>");
    const XmlNode child = document.Root().FirstChild();
    document.Root().RemoveChild(child);
    EXPECT_EQ(child.Xml(), "<p:b xmlns:p=\"v\"><c xmlns=\"u\"/></p:b>");
}

TEST(XmlNode, WritesTreesThatAreBuiltDeeperThanAnyThatIsRead) {
    XmlDocument document;
    XmlNode node = document.CreateRoot("a");
    constexpr int depth = 100'000;
    for (int i = 1; i < depth; ++i)
        node = node.AppendElement("a");
    node.SetText("x");
    EXPECT_EQ(document.Text().size(), depth * std::string("<a></a>").size() + 1);
    EXPECT_EQ(document.Root().Text(), "x");
}

/// Counts the library's nodes that come and go.
class NodeCount {
public:
    NodeCount()
        : created_(xmlRegisterNodeDefault([](xmlNode*) { ++living; })),
          freed_(xmlDeregisterNodeDefault([](xmlNode*) { --living; })) {
        living = 0;
    }
    NodeCount(const NodeCount&) = delete;
    NodeCount& operator=(const NodeCount&) = delete;
    ~NodeCount() {
        xmlRegisterNodeDefault(created_);
        xmlDeregisterNodeDefault(freed_);
    }

    inline static int living = 0;

private:
    xmlRegisterNodeFunc created_;
    xmlDeregisterNodeFunc freed_;
};

TEST(XmlNode, DoesNotGrowWhenTextIsSetAgainAndAgain) {
    const NodeCount count;
    XmlDocument document = Loaded("<a b=''/>");
    XmlNode root = document.Root();
    const int before = NodeCount::living;
    for (int i = 0; i < 1000; ++i) {
        root.SetText("x");
        root.SetText("y");
        root.SetText("");
        root.SetAttribute("b", "x");
        root.SetAttribute("b", "");
    }
    EXPECT_GT(before, 0);
    EXPECT_LE(NodeCount::living, before + 1);
}

TEST(XmlNode, IsFreedWithItsDocumentWhateverBecameOfIt) {
    const NodeCount count;
    {
        XmlDocument document = Loaded("<a>1<b>2<c>3</c></b><d/></a>");
        XmlNode b = document.SelectSingle("//b");
        const XmlNode text = document.Root().FirstChild();
        b.RemoveChild(document.SelectSingle("//c"));
        document.Root().RemoveChild(b);
        document.Root().SetText("new");
        EXPECT_GT(NodeCount::living, 0);
    }
    EXPECT_EQ(NodeCount::living, 0);
}

} // namespace
