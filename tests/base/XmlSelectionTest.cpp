#include "base/XmlDocument.h"
#include "tests/base/Loaded.h"
#include "tests/base/RefusalOf.h"
#include "tests/support/ProcessorTime.h"

#include <string>
#include <vector>

namespace {

using base::XmlDocument;
using base::XmlNode;
using namespace std::string_literals;

constexpr const char* options =
    "<Options><Tool ID='SOV02'>"
    "<Option><Name>cmbToolSortKey</Name><Value>Name</Value></Option>"
    "<Option><Name>optToolSortOrder</Name><Value>0</Value></Option></Tool>"
    "<Tool ID='KvTM10'><Option><Name>cmbLanguage</Name><Value/></Option></Tool></Options>";

class XmlSelection : public testing::Test {
protected:
    XmlSelection() { document.LoadText(options); }

    std::vector<std::string> TextsOf(const std::string& xpath) {
        std::vector<std::string> texts;
        for (const XmlNode& node : document.Select(xpath))
            texts.push_back(node.Text());
        return texts;
    }

    XmlDocument document;
};

using Texts = std::vector<std::string>;

TEST_F(XmlSelection, FindsAnOptionByToolAndName) {
    const XmlNode option = document.SelectSingle("//Tool[@ID='SOV02']/Option[Name='optToolSortOrder']");
    ASSERT_TRUE(option);
    EXPECT_EQ(option.SelectSingle("Value").Text(), "0");
    EXPECT_FALSE(document.SelectSingle("//Tool[@ID='sov02']/Option[Name='optToolSortOrder']"));
    EXPECT_FALSE(document.SelectSingle("//Tool[@ID='SOV02']/Option[Name='optToolSortorder']"));
    EXPECT_FALSE(document.SelectSingle("Tool"));
}

TEST_F(XmlSelection, StartsAtItsNode) {
    const XmlNode tool = document.SelectSingle("//Tool[2]");
    EXPECT_EQ(tool.Select("Option").size(), 1u);
    EXPECT_EQ(tool.Select(".//Name").size(), 1u);
    EXPECT_EQ(tool.Select("//Name").size(), 3u);
    EXPECT_EQ(tool.SelectSingle("..").Name(), "Options");
    EXPECT_EQ(tool.SelectSingle("@ID").Text(), "KvTM10");
    EXPECT_EQ(tool.SelectSingle("."), tool);
}

TEST_F(XmlSelection, KeepsDocumentOrder) {
    EXPECT_EQ(TextsOf("//Tool[2]//Name | //Tool[1]//Name"),
              (Texts{"cmbToolSortKey", "optToolSortOrder", "cmbLanguage"}));
    EXPECT_EQ(TextsOf("//Name[.='cmbLanguage']/preceding::Name"),
              (Texts{"cmbToolSortKey", "optToolSortOrder"}));
    EXPECT_EQ(document.SelectSingle("//Name[.='cmbLanguage']/preceding::Name").Text(), "cmbToolSortKey");
    EXPECT_EQ(document.SelectSingle("//Tool[2]|//Tool[1]").Attribute("ID"), "SOV02");
    std::vector<std::string> ancestors;
    for (const XmlNode& node : document.Select("//Value[.='0']/ancestor-or-self::*"))
        ancestors.push_back(node.Name());
    EXPECT_EQ(ancestors, (Texts{"Options", "Tool", "Option", "Value"}));
}

TEST_F(XmlSelection, KeepsDocumentOrderAmongChangedNodes) {
    document.Root().RemoveChild(document.SelectSingle("//Tool"));
    for (int i = 0; i < 300; ++i)
        document.Root().AppendElement(i % 2 == 0 ? "x" : "y").SetText(std::to_string(i));
    const Texts texts = TextsOf("//y|//x");
    ASSERT_EQ(texts.size(), 300u);
    for (std::size_t i = 0; i < texts.size(); ++i)
        EXPECT_EQ(texts[i], std::to_string(i));
}

TEST_F(XmlSelection, SelectsEveryKindOfNodeButNamespaces) {
    EXPECT_EQ(document.Select("//@*").size(), 2u);
    EXPECT_EQ(document.Select("//text()").size(), 5u);
    EXPECT_EQ(document.Select("/").size(), 1u);
    document.LoadText("<a xmlns:p='u'/>");
    EXPECT_TRUE(document.Select("//namespace::*").empty());
    EXPECT_FALSE(document.SelectSingle("//namespace::*"));
}

TEST_F(XmlSelection, SeesNoNamespacedElementUnderItsBareName) {
    document.LoadText("<a xmlns='u'><b/></a>");
    EXPECT_TRUE(document.Select("//b").empty());
    EXPECT_EQ(document.Select("//*[local-name()='b']").size(), 1u);
}

TEST_F(XmlSelection, FindsTextInAnyQuotes) {
    document.LoadText("<a><b c='it&apos;s'/><b c='\"'/><b c='a &amp; b é'/></a>");
    EXPECT_EQ(document.Select("//b[@c=\"it's\"]").size(), 1u);
    EXPECT_EQ(document.Select("//b[@c='\"']").size(), 1u);
    EXPECT_EQ(document.Select("//b[@c='a & b é']").size(), 1u);
}

class WrongXPath : public testing::TestWithParam<std::string> {};

TEST_P(WrongXPath, IsRefusedInSilence) {
    XmlDocument document;
    document.LoadText(options);
    testing::internal::CaptureStderr();
    const Refusal refusal = RefusalOf([&] { document.SelectSingle(GetParam()); });
    RefusalOf([&] { document.Root().Select(GetParam()); });
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(refusal.number, base::errors::InvalidCall);
    EXPECT_EQ(refusal.source, "XmlDocument");
    EXPECT_TRUE(refusal.description.starts_with("the XPath \"" + GetParam() + "\" was refused: "))
        << refusal.description;
    EXPECT_EQ(document.Select("//Tool").size(), 2u);
}

INSTANTIATE_TEST_SUITE_P(Malformed, WrongXPath,
                         testing::Values("", " ", "//", "//Tool[", "//Tool[@ID='x']]", "//Tool[@ID='x",
                                         "//Tool[@ID='a'b']", "//Tool a", "Tool/", "@", "::", "$",
                                         "a:", "[1]", "()", "foo::a", "1a", "//Tool[@ID=]", "//Tool['x'",
                                         "a|", "a | ", "a|'x'|", "///a", "a///b", "!", "é é", "\\"));
INSTANTIATE_TEST_SUITE_P(Unknown, WrongXPath,
                         testing::Values("foo()", "p:foo()", "p:a", "//p:*", "$x", "$p:x", "//Tool[foo()]",
                                         "document('/etc/passwd')", "//Tool[$x]", "count(1)", "count()",
                                         "//Tool[last(1)]", "'a'/b", "id()", "key('a','b')", "(1)[1]"));
INSTANTIATE_TEST_SUITE_P(NoNodes, WrongXPath,
                         testing::Values("1", "'text'", "1+1", "count(//Tool)", "//Tool='x'",
                                         "string(//Tool)", "true()", "not(//Tool)", "-//Tool"));

TEST_F(XmlSelection, SaysWhatIsWrongWithAnExpression) {
    const auto reasonOf = [this](const std::string& xpath) {
        const std::string description = RefusalOf([&] { document.Select(xpath); }).description;
        return description.substr(description.find("refused: ") + 9);
    };
    EXPECT_EQ(reasonOf("//Tool["), "it is malformed (at character 8)");
    EXPECT_EQ(reasonOf("count(//Tool)"), "it gives a number where nodes are wanted");
    EXPECT_EQ(reasonOf("'x'"), "it gives a text where nodes are wanted");
    EXPECT_EQ(reasonOf("true()"), "it gives a boolean where nodes are wanted");
    EXPECT_EQ(reasonOf("foo()"), "there is no such function");
    EXPECT_EQ(reasonOf("p:a"), "there are no namespace prefixes");
    EXPECT_EQ(reasonOf("$x"), "there are no variables");
    EXPECT_EQ(reasonOf("//Tool[@ID='"), "a quote is not closed (at character 13)");
}

TEST_F(XmlSelection, RefusesExpressionsThatAreNoXmlText) {
    for (const std::string& xpath : {"//Tool\0"s, "\x01"s, "//Tool[@ID='\xFF']"s, "\uFFFE"s}) {
        const Refusal refusal = RefusalOf([&] { document.Select(xpath); });
        EXPECT_EQ(refusal.number, base::errors::InvalidCall);
        EXPECT_NE(refusal.description.find("it is no text of XML characters"), std::string::npos);
    }
}

TEST_F(XmlSelection, RefusesExpressionsThatAreTooLong) {
    const std::string longest = "//Tool[@ID='" + std::string(XmlDocument::MaximumExpression - 14, 'x') + "']";
    EXPECT_TRUE(document.Select(longest).empty());
    const Refusal refusal = RefusalOf([&] { document.Select(longest + " "); });
    EXPECT_EQ(refusal.number, base::errors::InvalidCall);
    EXPECT_LT(refusal.description.size(), 1000u);
}

std::string Repeated(const std::string& text, int times) {
    std::string repeated;
    for (int i = 0; i < times; ++i)
        repeated += text;
    return repeated;
}

TEST_F(XmlSelection, SurvivesEveryKindOfNesting) {
    constexpr int times = 10'000;
    for (const std::string& xpath :
         {Repeated("(", times) + "Tool" + Repeated(")", times),
          Repeated("Tool[", times) + "1" + Repeated("]", times), Repeated("-", times) + "1",
          Repeated("Tool/", times) + "Tool", Repeated("Tool|", times) + "Tool",
          "Tool" + Repeated("[1]", times), "Tool[1" + Repeated("+1", times) + "]",
          Repeated("../", times) + "..", "Tool[" + Repeated("1=", times) + "1]",
          "Tool[" + Repeated("not(", times) + "1" + Repeated(")", times) + "]",
          "Tool[" + Repeated("1 or ", times) + "1]", Repeated("Tool//", times) + "Tool"}) {
        try {
            EXPECT_TRUE(document.Select(xpath).empty()) << xpath.substr(0, 20);
        } catch (const base::ComponentError& error) {
            EXPECT_EQ(error.Number(), base::errors::InvalidCall) << xpath.substr(0, 20);
        }
        EXPECT_EQ(document.Select("//Tool").size(), 2u);
    }
}

/// A document of so many tools with 20 options each. Options files have 20 tools, the largest 1,000.
XmlDocument WithTools(int count) {
    std::string text = "<Options>";
    for (int tool = 0; tool < count; ++tool) {
        text += "<Tool ID='T" + std::to_string(tool) + "'>";
        for (int option = 0; option < 20; ++option)
            text += "<Option><Name>n" + std::to_string(option) + "</Name><Value>v</Value></Option>";
        text += "</Tool>";
    }
    return Loaded(text + "</Options>");
}

TEST(XmlSelectionSteps, SufficeForOrdinaryExpressions) {
    const XmlDocument document = WithTools(20);
    EXPECT_EQ(document.Select("//Option[Name='n3']/..").size(), 20u);
    EXPECT_EQ(document.Select("//Tool//Name").size(), 400u);
    EXPECT_EQ(document.Select("//Name|//Value|//@ID").size(), 820u);
    EXPECT_EQ(document.Select("//Name/ancestor::Tool").size(), 20u);
    EXPECT_EQ(document.Select("//Option/following-sibling::Option").size(), 380u);
    EXPECT_EQ(document.Select("//Tool[Option[Name='n3' and Value='v']]").size(), 20u);
}

class HostileXPath : public testing::TestWithParam<const char*> {};

const XmlDocument& Large() {
    static const XmlDocument document = WithTools(1000);
    return document;
}

TEST_P(HostileXPath, IsRefusedBeforeTheUsersPatienceEnds) {
    Refusal refusal;
    // left alone these take minutes to hours
    EXPECT_LT(ProcessorSecondsOf([&] { refusal = RefusalOf([] { Large().Select(GetParam()); }); }),
              InProportion);
    EXPECT_TRUE(refusal.description.ends_with("was refused: it takes too many steps")) << refusal.description;
    EXPECT_EQ(Large().Select("//Tool[@ID='T999']/Option[Name='n19']").size(), 1u);
}

INSTANTIATE_TEST_SUITE_P(OfManySteps, HostileXPath,
                         testing::Values("//*[count(//*)>1]", "//*[count(//*[count(//*)>3])>3]", "//*[.=//*]",
                                         "//*[//*[//*='q']='q']",
                                         "//Tool[@ID='' or //Option[Name='' or //Value='q']]",
                                         "(//*)[(//*)[(//*)[1=2]]]", "//@*[.=//@*[.=//@*]]"));
INSTANTIATE_TEST_SUITE_P(OfLargeSets, HostileXPath,
                         testing::Values("//*/following::*", "//*/preceding::*/following::*",
                                         "//Option/following-sibling::Option/..", "//*/..//*/..//*/..//*",
                                         "//Name/../*/../*/../*/../*", "//*//*//*//*",
                                         "//Value/ancestor-or-self::*/descendant::*"));
INSTANTIATE_TEST_SUITE_P(OfTheWholeText, HostileXPath,
                         testing::Values("//*[contains(string(/),'q')]", "//*[contains(concat(/,/,/),'q')]",
                                         "//*[translate(/,'abc','def')='q']", "//*[/=/*]", "//*[/<1]",
                                         "//*[2* /=1]", "//*[1 or/=2 and/=3]", "//Tool[string(..)='q']",
                                         "//Option[contains(ancestor::*[last()],'q')]", "//*[string(/)]",
                                         "//Tool[@ID='' or starts-with(/,'q')]"));

TEST(XmlSelectionSteps, GrowWithTheDocument) {
    XmlDocument document;
    XmlNode root = document.CreateRoot("a");
    for (int i = 0; i < 500'000; ++i)
        root.AppendElement("b");
    EXPECT_EQ(document.Select("//b|/a").size(), 500'001u);
}

} // namespace
