#include "base/XmlDocument.h"

#include "base/Text.h"
#include "tests/base/Loaded.h"
#include "tests/base/RefusalOf.h"
#include "tests/base/XmlDump.h"

#include <functional>
#include <string>

namespace {

using base::XmlDocument;
using base::XmlNode;

/// A text and what its document is written as.
struct Rewriting {
    const char* source;
    const char* written;
};

void PrintTo(const Rewriting& each, std::ostream* out) {
    *out << each.source;
}

class Rewritten : public testing::TestWithParam<Rewriting> {};

TEST_P(Rewritten, KeepsItsContent) {
    EXPECT_EQ(Loaded(GetParam().source).Text(), GetParam().written);
    EXPECT_EQ(Loaded(GetParam().written).Text(), GetParam().written);
}

INSTANTIATE_TEST_SUITE_P(
    Blanks, Rewritten,
    testing::Values(Rewriting{"<a>\n  <b/>\n</a>\n", "<a><b/></a>"}, Rewriting{"<a>   </a>", "<a>   </a>"},
                    Rewriting{"<a> <b>  </b> </a>", "<a><b>  </b></a>"},
                    Rewriting{"<a> x <b/> y </a>", "<a> x <b/> y </a>"},
                    Rewriting{"<a>x <b/> <c/></a>", "<a>x <b/><c/></a>"},
                    Rewriting{"<a> <!-- c --> </a>", "<a> <!-- c --> </a>"},
                    Rewriting{"<a> <!--c--> <b/> </a>", "<a><!--c--><b/></a>"},
                    Rewriting{"<a xml:space='preserve'> <b/> </a>", "<a xml:space=\"preserve\"> <b/> </a>"},
                    Rewriting{"<a xml:space='preserve'> <b> <c/> </b> </a>",
                              "<a xml:space=\"preserve\"> <b> <c/> </b> </a>"},
                    Rewriting{"<a xml:space='preserve'> <b xml:space='default'> <c/> </b> </a>",
                              "<a xml:space=\"preserve\"> <b xml:space=\"default\"><c/></b> </a>"},
                    Rewriting{"<a> <b xml:space='preserve'> <c/> </b> <d> <e/> </d> </a>",
                              "<a><b xml:space=\"preserve\"> <c/> </b><d><e/></d></a>"},
                    Rewriting{"<a xml:space='other'> <b/> </a>", "<a xml:space=\"other\"><b/></a>"},
                    Rewriting{"<a> <b/> <![CDATA[ ]]> <c/></a>", "<a><b/> <![CDATA[ ]]> <c/></a>"},
                    Rewriting{"<a><b/>\xC2\xA0</a>", "<a><b/>\xC2\xA0</a>"},
                    Rewriting{"<a><b/>\t\r\n </a>", "<a><b/></a>"}));
INSTANTIATE_TEST_SUITE_P(
    Declarations, Rewritten,
    testing::Values(
        Rewriting{"<?xml version='1.0'?><a/>", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a/>"},
        Rewriting{"<?xml version='1.0' standalone='yes'?><a/>",
                  "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n<a/>"},
        Rewriting{"<?xml version='1.0' encoding='utf-8' standalone='no'?><a/>",
                  "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>\n<a/>"},
        Rewriting{"<?xml\tversion='1.1'?>\n<a/>", "<?xml version=\"1.1\" encoding=\"UTF-8\"?>\n<a/>"},
        Rewriting{"<?xml-stylesheet href='x'?><a/>", "<?xml-stylesheet href='x'?><a/>"},
        Rewriting{"\xEF\xBB\xBF<a/>", "<a/>"}, Rewriting{"<a/>\n\n", "<a/>"}));
INSTANTIATE_TEST_SUITE_P(
    Content, Rewritten,
    testing::Values(Rewriting{"<a></a>", "<a/>"}, Rewriting{"<a>&#13;\r\n&#10;</a>", "<a>&#13;\n\n</a>"},
                    Rewriting{"<a>&lt;&gt;&amp;&quot;&apos;</a>", "<a>&lt;&gt;&amp;\"'</a>"},
                    Rewriting{"<a b='&lt;&gt;&amp;&quot;&apos;'/>", "<a b=\"&lt;&gt;&amp;&quot;'\"/>"},
                    Rewriting{"<a b='&#9;&#10;&#13;\t\n'/>", "<a b=\"&#9;&#10;&#13;  \"/>"},
                    Rewriting{"<a b='&#38;lt; &amp;#38;'/>", "<a b=\"&amp;lt; &amp;#38;\"/>"},
                    Rewriting{"<a>&#x1F600;😀é</a>", "<a>😀😀é</a>"}, Rewriting{"<é ü='ß'/>", "<é ü=\"ß\"/>"},
                    Rewriting{"<a><![CDATA[<&]]></a>", "<a><![CDATA[<&]]></a>"},
                    Rewriting{"<a><![CDATA[]]]]><![CDATA[>]]></a>", "<a><![CDATA[]]]]><![CDATA[>]]></a>"},
                    Rewriting{"<a>x<![CDATA[y]]>z</a>", "<a>x<![CDATA[y]]>z</a>"},
                    Rewriting{"<a><![CDATA[]]></a>", "<a><![CDATA[]]></a>"},
                    Rewriting{"<!--x--><a><!-- <&> --></a><?p q?>", "<!--x--><a><!-- <&> --></a><?p q?>"},
                    Rewriting{"<a><?p?><?q  r s ?></a>", "<a><?p?><?q r s ?></a>"},
                    Rewriting{"<a\n b = '1'\n c=\"2\" />", "<a b=\"1\" c=\"2\"/>"},
                    Rewriting{"<a xml:id='1 2'/>", "<a xml:id=\"1 2\"/>"}));
INSTANTIATE_TEST_SUITE_P(
    Namespaces, Rewritten,
    testing::Values(Rewriting{"<a xmlns='u'><b xmlns=''><c/></b></a>",
                              "<a xmlns=\"u\"><b xmlns=\"\"><c/></b></a>"},
                    Rewriting{"<p:a xmlns:p='u&amp;v' p:x='1'/>", "<p:a xmlns:p=\"u&amp;v\" p:x=\"1\"/>"},
                    Rewriting{"<a xmlns:p='u'><p:b xmlns:p='v' p:c='1'/><p:d/></a>",
                              "<a xmlns:p=\"u\"><p:b xmlns:p=\"v\" p:c=\"1\"/><p:d/></a>"}));

struct Fault {
    const char* source;
    int line;
    int column;
};

void PrintTo(const Fault& each, std::ostream* out) {
    *out << each.source;
}

class Faulty : public testing::TestWithParam<Fault> {};

TEST_P(Faulty, IsRefusedWithItsPlace) {
    XmlDocument document = Loaded("<before/>");
    const Refusal refusal = RefusalOf([&] { document.LoadText(GetParam().source); });
    EXPECT_EQ(refusal.number, base::errors::InvalidCall);
    EXPECT_EQ(refusal.source, "XmlDocument");
    const std::string place =
        "line " + std::to_string(GetParam().line) + ", column " + std::to_string(GetParam().column) + ": ";
    EXPECT_TRUE(refusal.description.starts_with(place)) << refusal.description;
    EXPECT_GT(refusal.description.size(), place.size());
    EXPECT_EQ(refusal.description.find('\n'), std::string::npos);
    EXPECT_EQ(document.Text(), "<before/>");
}

INSTANTIATE_TEST_SUITE_P(
    Texts, Faulty,
    testing::Values(Fault{"", 1, 1}, Fault{"\xEF\xBB\xBF", 1, 1}, Fault{"x", 1, 1}, Fault{"<a>", 1, 4},
                    Fault{"<a>\n<b></a>", 2, 8}, Fault{"<a/><b/>", 1, 5}, Fault{"<a/>x", 1, 5},
                    Fault{"<a b='1' b='2'/>", 1, 15}, Fault{"<a b=1/>", 1, 6}, Fault{"<a>&x;</a>", 1, 7},
                    Fault{"<a>\n\n\xFF</a>", 3, 1}, Fault{"<a>é\xC3</a>", 1, 5}, Fault{"<a>]]></a>", 1, 4},
                    Fault{"<p:a/>", 1, 5}, Fault{"<!DOCTYPE a []><a/>", 1, 13}, Fault{"<!DOCTYPE a", 1, 12},
                    Fault{"<!DOCTYPE ><a/>", 1, 11}, Fault{"<!doctype a><a/>", 1, 2},
                    Fault{"<a/><!DOCTYPE a>", 1, 5}, Fault{"<!DOCTYPE a><!DOCTYPE a><a/>", 1, 14},
                    Fault{"<!DOCTYPE a><a>&x;</a>", 1, 19}, Fault{"<!DOCTYPE a><a b='&x;'/>", 1, 22},
                    Fault{"<!DOCTYPE a %x;><a/>", 1, 13}, Fault{"<a><!-- -- --></a>", 1, 9},
                    Fault{" <?xml version='1.0'?><a/>", 1, 7}));

TEST(XmlDocument, KeepsADocumentTypeThatNamesTheRootAlone) {
    const XmlDocument document = Loaded(
        "<?xml version='1.0'?><!-- c --><!DOCTYPE\n Options \r\n><?p d?><Options a='&lt;'> <b/> </Options>");
    EXPECT_EQ(document.Text(),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- c --><!DOCTYPE Options><?p d?>"
              "<Options a=\"&lt;\"><b/></Options>");
    EXPECT_EQ(Loaded(document.Text()).Text(), document.Text());
    EXPECT_EQ(Loaded("<!DOCTYPE é:ü><a/>").Text(), "<!DOCTYPE é:ü><a/>") << "it need not be the root's name";
}

TEST(XmlDocument, ReadsADocumentTypeWhereverThePiecesOfItsTextEnd) {
    for (const std::size_t nameLength : {1U, 249U, 250U, 251U, 1000U, 5000U})
        for (std::size_t padding = 3000; padding < 4200; padding += nameLength < 1000 ? 1 : 7) {
            const std::string text =
                "<!--" + std::string(padding, 'x') + "--><!DOCTYPE " + std::string(nameLength, 'n') + "><a/>";
            XmlDocument document;
            ASSERT_NO_THROW(document.LoadText(text)) << nameLength << " " << padding;
            ASSERT_EQ(document.Text(), text);
            const std::string refused = base::Replace(text, "><a/>", "[<!ENTITY x 'y'>]><a>&x;</a>");
            ASSERT_NE(RefusalOf([&] { document.LoadText(refused); }).description.find("nothing else"),
                      std::string::npos)
                << nameLength << " " << padding;
        }
}

TEST(XmlDocument, SelectsAroundADocumentType) {
    const XmlDocument document = Loaded("<!-- c --><!DOCTYPE a><a><b/>text</a>");
    EXPECT_EQ(document.Root().Name(), "a");
    EXPECT_EQ(document.Select("//node()").size(), 4u) << "a comment, two elements, a text";
    EXPECT_EQ(document.Select("/comment()/following-sibling::*").size(), 1u);
    const XmlNode type = document.Root().Parent().FirstChild().NextSibling();
    EXPECT_EQ(type.Name(), "a");
    EXPECT_EQ(type.Text(), "");
    EXPECT_EQ(type.Xml(), "<!DOCTYPE a>");
    EXPECT_FALSE(type.IsElement());
    EXPECT_TRUE(type.Children().empty());
    EXPECT_TRUE(type.Attributes().empty());
    EXPECT_FALSE(type.HasAttribute("b"));
    for (const auto& change : std::vector<std::function<void(XmlNode)>>{
             [](XmlNode node) { node.SetText("x"); }, [](XmlNode node) { node.AppendElement("x"); },
             [](XmlNode node) { node.SetAttribute("x", "y"); }})
        EXPECT_EQ(RefusalOf([&] { change(type); }).number, base::errors::InvalidCall);
    type.Parent().RemoveChild(type);
    EXPECT_EQ(document.Text(), "<!-- c --><a><b/>text</a>");
    EXPECT_EQ(type.Name(), "a");
}

TEST(XmlDocument, RefusesNulCharactersWithTheirPlace) {
    using namespace std::string_literals;
    const Refusal refusal = RefusalOf([] { XmlDocument().LoadText("<a>\né\0</a>"s); });
    EXPECT_EQ(refusal.description, "line 2, column 2: a NUL character");
    EXPECT_EQ(RefusalOf([] { XmlDocument().LoadText("<a/>\0"s); }).number, base::errors::InvalidCall);
    EXPECT_EQ(RefusalOf([] { XmlDocument().LoadText("\0"s); }).number, base::errors::InvalidCall);
}

TEST(XmlDocument, RefusesEveryCharacterThatXmlCannotHold) {
    for (char32_t character = 1; character < 0x20; ++character) {
        const bool isAllowed = character == '\t' || character == '\n' || character == '\r';
        const std::string raw = base::FromCodePoints(std::u32string_view(&character, 1));
        const std::string reference = "&#" + std::to_string(static_cast<unsigned>(character)) + ";";
        for (const std::string& content : {raw, reference}) {
            XmlDocument document;
            if (isAllowed) {
                EXPECT_NO_THROW(document.LoadText("<a>" + content + "</a>"));
            } else {
                RefusalOf([&] { document.LoadText("<a>" + content + "</a>"); });
            }
        }
    }
    for (const char* content : {"\uFFFE", "\uFFFF", "&#xFFFE;", "&#xD800;", "&#x110000;", "&#0;"})
        RefusalOf([&] { XmlDocument().LoadText("<a>" + std::string(content) + "</a>"); });
}

TEST(XmlDocument, ReadsTextAsUtf8WhateverItsDeclarationNames) {
    for (const char* encoding :
         {"ISO-8859-1", "UTF-16", "windows-1252", "US-ASCII", "no-such-thing", "EBCDIC"}) {
        const XmlDocument document =
            Loaded("<?xml version=\"1.0\" encoding=\"" + std::string(encoding) + "\"?><a>é€😀</a>");
        EXPECT_EQ(document.Root().Text(), "é€😀");
        EXPECT_EQ(document.Text(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a>é€😀</a>");
    }
}

TEST(XmlDocument, IsEmptyBeforeAnythingIsLoaded) {
    const XmlDocument document;
    EXPECT_TRUE(document.IsEmpty());
    EXPECT_FALSE(document.Root());
    EXPECT_EQ(document.Text(), "");
    EXPECT_EQ(document.Raw(), nullptr);
    EXPECT_FALSE(document.SelectSingle("//a"));
    EXPECT_TRUE(document.Select("//a").empty());
    EXPECT_FALSE(Loaded("<a/>").IsEmpty());
}

TEST(XmlDocument, KeepsItsContentWhenALoadFails) {
    XmlDocument document = Loaded("<a>1</a>");
    const XmlNode root = document.Root();
    RefusalOf([&] { document.LoadText("<b>"); });
    EXPECT_EQ(document.Text(), "<a>1</a>");
    EXPECT_EQ(document.Root(), root);
}

TEST(XmlDocument, ForgetsItsOldDeclaration) {
    XmlDocument document = Loaded("<?xml version='1.0'?><a/>");
    document.LoadText("<b/>");
    EXPECT_EQ(document.Text(), "<b/>");
}

TEST(XmlDocument, MakesANewRoot) {
    XmlDocument document = Loaded("<?xml version='1.0'?><old/>");
    XmlNode root = document.CreateRoot("Request");
    root.SetAttribute("Type", "LaunchTool");
    EXPECT_EQ(document.Text(), "<Request Type=\"LaunchTool\"/>");
    EXPECT_EQ(document.Root(), root);
}

TEST(XmlDocument, RefusesWrongNamesOfARoot) {
    XmlDocument document = Loaded("<a/>");
    for (const char* name : {"", " ", "1a", "a b", "a:b", ":a", "<", "\xFF", "a\x01"})
        EXPECT_EQ(RefusalOf([&] { document.CreateRoot(name); }).number, base::errors::InvalidCall) << name;
    EXPECT_EQ(document.Text(), "<a/>");
}

TEST(XmlDocument, SharesItsTreeWithCopies) {
    XmlDocument document = Loaded("<a/>");
    const XmlDocument copy = document;
    document.Root().SetText("x");
    EXPECT_EQ(copy.Text(), "<a>x</a>");
    document.LoadText("<b/>");
    EXPECT_EQ(copy.Text(), "<a>x</a>");
}

TEST(XmlDocument, LosesNothingOfAnOptionsFile) {
    const XmlDocument document = Loaded("<?xml version=\"1.0\"?>\r\n<!-- options -->\r\n<Options>\r\n"
                                        "  <ToolOptions>\r\n    <Tool ID=\"SOV02\">\r\n"
                                        "      <Option><Name>a</Name><Value>  </Value></Option>\r\n"
                                        "    </Tool>\r\n  </ToolOptions>\r\n</Options>\r\n");
    EXPECT_EQ(Dump(document),
              "#document\n #comment [ options ]\n Options\n  ToolOptions\n   Tool ID=[SOV02]\n"
              "    Option\n     Name\n      #text [a]\n     Value\n      #text [  ]\n");
}

} // namespace
