#include "base/XmlDocument.h"
#include "tests/base/RefusalOf.h"
#include "tests/base/XmlDump.h"
#include "tests/support/ProcessorTime.h"
#include "tests/support/TestFolder.h"

#include <random>
#include <string>

namespace {

using base::XmlDocument;
using namespace std::string_literals;

constexpr const char* sample =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- head -->\n<?pi some data?>\n"
    "<Options xmlns:p='urn:x' p:a=\"1 &amp; 2\" b='&#x1F600; &lt;'>\n"
    "  <Tool ID='é'><![CDATA[<raw> ]] ]]]]><![CDATA[>]]></Tool>\n"
    "  <p:Tool xml:space='preserve'> <x/> </p:Tool>\n"
    "  <Option><Name>cmb€</Name><Value>a&#13;&#10;b</Value></Option>\n</Options>\n<!-- tail -->";

std::string Repeated(std::string_view text, std::size_t times) {
    std::string repeated;
    repeated.reserve(text.size() * times);
    for (std::size_t i = 0; i < times; ++i)
        repeated += text;
    return repeated;
}

/// Loads and answers the reason of the refusal; empty when nothing was refused.
std::string ReasonFor(std::string_view text) {
    try {
        XmlDocument().LoadText(text);
    } catch (const base::ComponentError& error) {
        EXPECT_TRUE(error.Description().starts_with("line ")) << error.Description();
        EXPECT_EQ(error.Number(), base::errors::InvalidCall);
        return error.Description();
    }
    return {};
}

TEST(XmlBounds, AllowElementsToADepth) {
    const std::size_t depth = XmlDocument::MaximumDepth;
    EXPECT_EQ(ReasonFor(Repeated("<a>", depth) + Repeated("</a>", depth)), "");
    EXPECT_EQ(ReasonFor(Repeated("<a>", depth + 1) + Repeated("</a>", depth + 1)),
              "line 1, column 771: elements are nested more than 256 levels deep");
    EXPECT_EQ(ReasonFor("<r>" + Repeated(Repeated("<a>", 255) + Repeated("</a>", 255), 10) + "</r>"), "");
}

TEST(XmlBounds, EndVeryDeepTexts) {
    for (const char* level : {"<a>", "<a b='c'>", "<a>\n<b/>"})
        EXPECT_NE(ReasonFor(Repeated(level, 100'000)).find("nested"), std::string::npos);
    for (const char* level : {"<a xmlns:p='u'>", "<p:a xmlns:p='u'>"})
        EXPECT_NE(ReasonFor(Repeated(level, 100'000)).find("namespaces"), std::string::npos);
}

TEST(XmlBounds, EndElementsWithVeryManyAttributes) {
    const auto element = [](int count) {
        std::string text = "<a>\n<b";
        for (int i = 0; i < count; ++i)
            text += " a" + std::to_string(i) + "='>\"='";
        return text + "/></a>";
    };
    EXPECT_EQ(ReasonFor(element(XmlDocument::MaximumAttributes)), "");
    EXPECT_EQ(ReasonFor(element(XmlDocument::MaximumAttributes + 1)),
              "line 2, column 1: the element has more than 256 attributes");
    EXPECT_NE(ReasonFor(element(300'000)), "");
}

TEST(XmlBounds, CountAttributesOnlyWhereTheyAre) {
    const std::string attributes = Repeated(" a='b' ", 1000);
    for (const std::string& text :
         {"<a>" + attributes + "</a>", "<a><!-- <b" + attributes + "--></a>",
          "<a><![CDATA[<b" + attributes + "]]></a>", "<a><?p <b" + attributes + "?></a>",
          "<?p <b" + attributes + "?><a/>", "<a b=\"" + attributes + "\"/>",
          "<!-- <b" + attributes + "--><a b='&lt;" + "====" + "'/>"})
        EXPECT_EQ(ReasonFor(text), "");
}

TEST(XmlBounds, EndTextsWithVeryManyNamespaces) {
    std::string text = "<a";
    for (int i = 0; i < XmlDocument::MaximumNamespaces; ++i)
        text += " xmlns:p" + std::to_string(i) + "='u'";
    EXPECT_EQ(ReasonFor(text + "/>"), "");
    EXPECT_EQ(ReasonFor(text + "><b/><b/></a>"), "");
    EXPECT_NE(ReasonFor(text + "><b xmlns='v'/></a>").find("namespaces"), std::string::npos);
    const std::string inner = text.substr(2);
    EXPECT_EQ(ReasonFor("<r>" + Repeated("<b" + inner + "/>", 50) + "</r>"), "");
}

TEST(XmlBounds, EndTextsWithVeryManyNames) {
    const auto text = [](int count) {
        std::string names = "<a>";
        for (int i = 0; i < count; ++i)
            names += "<name" + std::to_string(i) + "/>";
        return names + "</a>";
    };
    EXPECT_EQ(ReasonFor(text(50'000)), "");
    EXPECT_NE(ReasonFor(text(1'000'000)).find("different names"), std::string::npos);
    std::string instructions = "<a>";
    for (int i = 0; i < 200'000; ++i)
        instructions += "<?name" + std::to_string(i) + "?>";
    EXPECT_NE(ReasonFor(instructions + "</a>").find("different names"), std::string::npos);
}

TEST(XmlBounds, AllowLargeTextsOfEveryKind) {
    const std::string content = Repeated("0123456789", 1'200'000); // beyond the parser's own ten megabytes
    for (const std::string& text :
         {"<a>" + content + "</a>", "<a><![CDATA[" + content + "]]></a>", "<a b='" + content + "'/>",
          "<!--" + content + "--><a/>", "<a><?p " + content + "?></a>"}) {
        XmlDocument document;
        ASSERT_NO_THROW(document.LoadText(text)) << text.substr(0, 20);
        EXPECT_GE(document.Text().size(), content.size());
        XmlDocument again;
        again.LoadText(document.Text());
        EXPECT_TRUE(again.Text() == document.Text());
    }
}

TEST(XmlBounds, AllowNamesOfAMegabyte) {
    const std::string name(std::size_t{1} << 20, 'n');
    XmlDocument document;
    document.LoadText("<" + name + " " + name + "='1'/>");
    EXPECT_TRUE(document.Root().Name() == name);
    EXPECT_EQ(document.Root().Attribute(name.c_str()), "1");
    const std::string reason = ReasonFor("<" + name + "></b>");
    EXPECT_NE(reason, "");
    EXPECT_LT(reason.size(), 500u);
}

TEST(XmlBounds, TakeTimeInProportionToTheText) {
    constexpr std::size_t size = 3'000'000;
    const auto filled = [](const char* piece) {
        return Repeated(piece, size / std::string_view(piece).size());
    };
    for (const char* piece : {"<![CDATA[x]]>", "<!--x-->", "<?x?>", "&#65;", "&amp;", "x<b/>", "<b/> ", "]]",
                              "\r\n", "<b xml:id='x'/>", "<b>abc</b>"})
        EXPECT_LT(ProcessorSecondsOf([&] { EXPECT_EQ(ReasonFor("<a>" + filled(piece) + "</a>"), ""); }),
                  InProportion)
            << piece;
    for (const char* piece : {"<", "&", "<a b='", "<a", "<!--", "<![CDATA[", "<?", "</", "\xC3\xA9"})
        EXPECT_LT(ProcessorSecondsOf([&] { EXPECT_NE(ReasonFor(filled(piece)), ""); }), InProportion)
            << piece;
}

TEST(XmlBounds, TakeTimeInProportionWithManyLevelsAndNamespaces) {
    std::string text = "<a xmlns:p='u'";
    for (int i = 1; i < XmlDocument::MaximumNamespaces; ++i)
        text += " xmlns:p" + std::to_string(i) + "='u" + std::to_string(i) + "'";
    const std::size_t levels = XmlDocument::MaximumDepth - 2;
    text +=
        ">" + Repeated("<b>", levels) + Repeated("<c p:d=''/>", 200'000) + Repeated("</b>", levels) + "</a>";
    EXPECT_LT(ProcessorSecondsOf([&] { EXPECT_EQ(ReasonFor(text), ""); }), InProportion);
}

TEST(XmlBounds, RefuseTextsBeyondTheMaximum) {
    EXPECT_EQ(ReasonFor(std::string(XmlDocument::MaximumBytes + 1, ' ')),
              "line 1, column 1: the text is larger than 268435456 bytes");
}

TEST(XmlBounds, RefuseEveryTruncation) {
    const std::string text = sample;
    const std::size_t rootEnd = text.find("</Options>") + std::string_view("</Options>").size();
    ASSERT_EQ(ReasonFor(text), "");
    for (std::size_t length = 0; length < text.size(); ++length) {
        // Behind the root only blanks may be missing.
        const bool isComplete = length >= rootEnd && length <= text.find("<!-- tail");
        EXPECT_EQ(ReasonFor(text.substr(0, length)).empty(), isComplete) << "after " << length << " bytes";
    }
}

TEST(XmlBounds, SurviveChangedBytes) {
    std::mt19937 random(314159);
    int accepted = 0;
    for (int i = 0; i < 20'000; ++i) {
        std::string text = sample;
        for (unsigned changes = 1 + random() % 3; changes > 0; --changes) {
            const std::size_t at = random() % text.size();
            switch (random() % 4) {
            case 0:
                text[at] = static_cast<char>(random());
                break;
            case 1:
                text.erase(at, 1 + random() % 8);
                break;
            case 2:
                text.insert(at, text, random() % text.size(), random() % 16);
                break;
            default:
                text.insert(at, 1, "<>&\"'=/!?[]-\0 "[random() % 15]);
            }
        }
        XmlDocument document;
        try {
            document.LoadText(text);
        } catch (const base::ComponentError& error) {
            ASSERT_TRUE(error.Description().starts_with("line ")) << error.Description();
            continue;
        }
        ++accepted;
        XmlDocument again;
        ASSERT_NO_THROW(again.LoadText(document.Text())) << text;
        ASSERT_EQ(Dump(again), Dump(document)) << text;
    }
    EXPECT_GT(accepted, 500);
}

class DocumentType : public testing::TestWithParam<const char*> {};

TEST_P(DocumentType, IsRefusedBeforeAnythingItDeclares) {
    const TestFolder folder;
    const std::string secret = "the-secret-content";
    const std::string path = folder.Write("secret.txt", secret).generic_string();
    std::string text = GetParam();
    for (std::size_t at; (at = text.find("FILE")) != std::string::npos;)
        text.replace(at, 4, path);
    const std::string reason = ReasonFor(text);
    EXPECT_NE(reason.find("a document type declaration may name the root and nothing else"),
              std::string::npos)
        << reason;
    EXPECT_EQ(reason.find(secret), std::string::npos);
    XmlDocument document;
    const auto file = folder.Write("document.xml", text);
    EXPECT_EQ(RefusalOf([&] { document.LoadFile(file); }).description.find(secret), std::string::npos);
    EXPECT_TRUE(document.IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Xml, DocumentType,
    testing::Values(
        "<!DOCTYPE a []><a/>", "<!DOCTYPE a \n [\n]><a/>", "<!DOCTYPE a SYSTEM 'FILE'><a/>",
        "<!DOCTYPE a SYSTEM 'FILE' []><a/>", "<!DOCTYPE a SYSTEM 'file://FILE'><a/>",
        "<!DOCTYPE a PUBLIC '-//x' 'http://localhost:1/x.dtd'><a/>",
        "<!DOCTYPE a [<!ENTITY x SYSTEM 'FILE'>]><a>&x;</a>",
        "<!DOCTYPE a [<!ENTITY x SYSTEM 'FILE'>]><a b='&x;'/>",
        "<!DOCTYPE a [<!ENTITY % x SYSTEM 'FILE'>%x;]><a/>",
        "<!DOCTYPE a [<!ATTLIST a b CDATA 'default'>]><a/>", "<!DOCTYPE a [<!ENTITY x 'y'>]><a>&x;</a>",
        "<!DOCTYPE a [<!ENTITY a0 'xxxxxxxxxx'><!ENTITY a1 '&a0;&a0;&a0;&a0;&a0;&a0;&a0;&a0;'>"
        "<!ENTITY a2 '&a1;&a1;&a1;&a1;&a1;&a1;&a1;&a1;'><!ENTITY a3 '&a2;&a2;&a2;&a2;&a2;&a2;&a2;&a2;'>"
        "<!ENTITY a4 '&a3;&a3;&a3;&a3;&a3;&a3;&a3;&a3;'>]><a>&a4;&a4;&a4;&a4;&a4;&a4;&a4;&a4;</a>",
        "<?xml version='1.0' standalone='no'?><!DOCTYPE a SYSTEM 'FILE'><a>&x;</a>",
        "<!-- c --><!DOCTYPE a [<!ENTITY x SYSTEM 'FILE'>]><a>&x;</a>"));

TEST(XmlBounds, IncludeNoOtherFile) {
    const TestFolder folder;
    const std::string path = folder.Write("secret.txt", "the-secret-content").generic_string();
    XmlDocument document;
    document.LoadText("<?xml-stylesheet href='" + path + "'?><a xmlns:xi='http://www.w3.org/2001/XInclude'>" +
                      "<xi:include href='" + path + "' parse='text'/></a>");
    EXPECT_EQ(document.Root().Text(), "");
    EXPECT_EQ(document.Text().find("the-secret-content"), std::string::npos);
}

TEST(XmlBounds, KnowTheFivePredefinedEntitiesOnly) {
    EXPECT_EQ(ReasonFor("<a b='&lt;&gt;&amp;&quot;&apos;'>&lt;&gt;&amp;&quot;&apos;</a>"), "");
    for (const char* entity : {"&nbsp;", "&LT;", "&x;", "&#;", "&#x;", "&;", "&lt", "&a4;"}) {
        EXPECT_NE(ReasonFor("<a>" + std::string(entity) + "</a>"), "") << entity;
        EXPECT_NE(ReasonFor("<a b='" + std::string(entity) + "'/>"), "") << entity;
    }
}

TEST(XmlBounds, AreKeptInSilence) {
    testing::internal::CaptureStderr();
    for (const std::string& text : {""s,
                                    "x"s,
                                    "<a>"s,
                                    "<a></b>"s,
                                    "<a>&x;</a>"s,
                                    "<!DOCTYPE a><a/>"s,
                                    "<!DOCTYPE a SYSTEM 'x'><a/>"s,
                                    "<!DOCTYPE a><a>&x;</a>"s,
                                    "<p:a/>"s,
                                    "<a>\xFF</a>"s,
                                    "<a b='1' b='2'/>"s,
                                    "<a xml:id='1 2'/>"s,
                                    "<a xmlns='relative'/>"s,
                                    "<?xml version='9.9'?><a/>"s,
                                    "<?xml version='1.1'?><a/>"s,
                                    "<a xmlns:xml='x'/>"s,
                                    "<a xmlns:p=''/>"s,
                                    "<a xmlns='http://www.w3.org/2000/xmlns/'/>"s,
                                    Repeated("<a>", 1000),
                                    "<a xml:lang='?'/>"s,
                                    "<?xml?><a/>"s,
                                    "<?XML x?><a/>"s})
        ReasonFor(text);
    XmlDocument document;
    document.LoadText("<a/>");
    for (const char* name : {"\xFF", "\xC3", "", "a b"})
        RefusalOf([&] { document.Root().AppendElement(name); });
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

} // namespace
