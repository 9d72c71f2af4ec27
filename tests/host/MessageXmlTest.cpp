#include "host/MessageXml.h"

#include "tests/base/RefusalOf.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace arvon::host {
namespace {

using messageXml::Content;
using messageXml::Read;
using messageXml::Root;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using namespace std::string_literals;

/// `name:type=value` of every parameter.
std::vector<std::string> Parameters(const Content& content) {
    std::vector<std::string> texts;
    for (const auto& parameter : content.parameters) {
        texts.push_back(parameter->NameText() + ":" + std::to_string(parameter->Type()) + "=" +
                        parameter->Content().ToText());
    }
    return texts;
}

std::string RefusalOfRequest(std::string_view xml) {
    const Refusal refusal = RefusalOf([&] { Read(Root::Request, xml); });
    EXPECT_EQ(refusal.number, base::errors::InvalidCall);
    EXPECT_EQ(refusal.source, "Arvon110");
    EXPECT_THAT(refusal.description, StartsWith("malformed request, line "));
    return refusal.description;
}

/// A request around some text in the place of its parameters.
std::string Around(std::string_view content) {
    return "<Request Type=\"T\" Mode=\"0\">" + std::string(content) + "</Request>";
}

std::string Repeated(std::string_view piece, std::size_t times) {
    std::string text;
    text.reserve(piece.size() * times);
    for (std::size_t index = 0; index < times; ++index)
        text += piece;
    return text;
}

TEST(MessageXml, ReadsARequest) {
    const Content content = Read(
        Root::Request, "<Request Type=\"LaunchTool\" Mode=\"3\"><Parameters>"
                       "<Parameter Name=\"ToolName\" Type=\"2\">Layout</Parameter>"
                       "<Parameter Name=\"lProcessID\" Type=\"3\">-17</Parameter></Parameters></Request>");
    EXPECT_EQ(content.name, "LaunchTool");
    EXPECT_EQ(content.numbers[0], 3);
    EXPECT_THAT(Parameters(content), ElementsAre("ToolName:2=Layout", "lProcessID:3=-17"));
    EXPECT_EQ(content.parameters[1]->Content().GetKind(), Value::Kind::Integer);
}

TEST(MessageXml, ReadsAnEvent) {
    const Content content =
        Read(Root::Event, "<Event ObjectType=\"4\" Name=\"lvTools\" Category=\"13\" Level=\"9\"/>");
    EXPECT_EQ(content.name, "lvTools");
    EXPECT_THAT(content.numbers, ElementsAre(4, 13, 9));
    EXPECT_TRUE(content.parameters.empty());
}

TEST(MessageXml, TakesMissingAttributesAsZeroOrEmptyText) {
    const Content request = Read(Root::Request, "<Request/>");
    EXPECT_EQ(request.name, "");
    EXPECT_EQ(request.numbers[0], 0);
    const Content event = Read(Root::Event, "<Event><Parameters><Parameter/></Parameters></Event>");
    EXPECT_THAT(event.numbers, ElementsAre(0, 0, 0));
    EXPECT_THAT(Parameters(event), ElementsAre(":0="));
}

TEST(MessageXml, TakesAttributesInAnyOrder) {
    const Content event =
        Read(Root::Event, "<Event Level=\"1\" Category=\"2\" Name=\"n\" ObjectType=\"3\"/>");
    EXPECT_EQ(event.name, "n");
    EXPECT_THAT(event.numbers, ElementsAre(3, 2, 1));
}

TEST(MessageXml, TakesBlanksBetweenElementsAndAnXmlDeclaration) {
    const Content content =
        Read(Root::Request, "<?xml version=\"1.0\"?>\n<Request Type='T' >\r\n\t<Parameters >\n"
                            "<Parameter Name='a'>  x </Parameter >\n </Parameters>\n</Request>\n\n");
    EXPECT_THAT(Parameters(content), ElementsAre("a:0=  x "));
}

TEST(MessageXml, IsUtf8WhateverTheDeclarationNames) {
    const Content content = Read(
        Root::Request, "<?xml version=\"1.0\" encoding=\"windows-1252\"?><Request Type=\"K\xC3\xA4se\"/>");
    EXPECT_EQ(content.name, "K\xC3\xA4se");
}

TEST(MessageXml, ReadsEscapesEntitiesAndSections) {
    const Content content =
        Read(Root::Request,
             "<Request Type=\"&lt;&amp;&quot;&apos;&#228;&#xE4;\"><Parameters><Parameter Name=\"a\" "
             "Type=\"2\">&gt;&amp;&#10;<![CDATA[<b> & ]]>c</Parameter></Parameters></Request>");
    EXPECT_EQ(content.name, "<&\"'\xC3\xA4\xC3\xA4");
    EXPECT_THAT(Parameters(content), ElementsAre("a:2=>&\n<b> & c"));
}

TEST(MessageXml, KeepsEveryParameterOfARepeatedName) {
    const std::string xml = Around("<Parameters><Parameter Name=\"a\" Type=\"2\">1</Parameter>"
                                   "<Parameter Name=\"a\" Type=\"2\">2</Parameter></Parameters>");
    EXPECT_THAT(Parameters(Read(Root::Request, xml)), ElementsAre("a:2=1", "a:2=2"));
}

TEST(MessageXml, KeepsTypesThatItDoesNotKnowAsText) {
    const std::string xml =
        Around("<Parameters><Parameter Name=\"a\" Type=\"-8\">7</Parameter></Parameters>");
    const Content content = Read(Root::Request, xml);
    EXPECT_THAT(Parameters(content), ElementsAre("a:-8=7"));
    EXPECT_EQ(content.parameters[0]->Content().GetKind(), Value::Kind::Text);
}

TEST(MessageXml, TakesTheSmallestAndTheLargestInteger) {
    const std::string xml = Around("<Parameters><Parameter Type=\"3\">-2147483648</Parameter>"
                                   "<Parameter Type=\"3\">2147483647</Parameter></Parameters>");
    EXPECT_THAT(Parameters(Read(Root::Request, xml)), ElementsAre(":3=-2147483648", ":3=2147483647"));
}

TEST(MessageXml, RefusesTheWrongRoot) {
    EXPECT_THAT(RefusalOfRequest("<Event Name=\"a\"/>"),
                HasSubstr("expected the root \"Request\", found \"Event\""));
    EXPECT_THAT(RefusalOfRequest("<request/>"), HasSubstr("found \"request\""));
    EXPECT_THAT(RefusalOf([] { Read(Root::Event, "<Request/>"); }).description,
                StartsWith("malformed event, line 1: expected the root \"Event\""));
}

TEST(MessageXml, RefusesUnknownElements) {
    EXPECT_THAT(RefusalOfRequest(Around("<Other/>")), HasSubstr("unexpected element \"Other\""));
    EXPECT_THAT(RefusalOfRequest(Around("<Parameter/>")), HasSubstr("unexpected element \"Parameter\""));
    EXPECT_THAT(RefusalOfRequest(Around("<Parameters><Parameters/></Parameters>")),
                HasSubstr("unexpected element \"Parameters\""));
    EXPECT_THAT(RefusalOfRequest(Around("<Parameters><Parameter>a<b/></Parameter></Parameters>")),
                HasSubstr("unexpected element \"b\""));
}

TEST(MessageXml, RefusesASecondParametersElement) {
    EXPECT_THAT(RefusalOfRequest(Around("<Parameters/><Parameters/>")),
                HasSubstr("unexpected element \"Parameters\""));
}

TEST(MessageXml, RefusesUnknownAttributes) {
    EXPECT_THAT(RefusalOfRequest("<Request type=\"a\"/>"), HasSubstr("unexpected attribute \"type\""));
    EXPECT_THAT(RefusalOfRequest("<Request Name=\"a\"/>"), HasSubstr("unexpected attribute \"Name\""));
    EXPECT_THAT(RefusalOfRequest("<Request xml:space=\"preserve\"/>"),
                HasSubstr("unexpected attribute \"space\""));
    EXPECT_THAT(RefusalOfRequest(Around("<Parameters Count=\"0\"/>")), HasSubstr("unexpected element"));
    EXPECT_THAT(RefusalOfRequest(Around("<Parameters><Parameter Value=\"\"/></Parameters>")),
                HasSubstr("unexpected attribute \"Value\""));
    EXPECT_THAT(RefusalOf([] { Read(Root::Event, "<Event Mode=\"0\"/>"); }).description,
                HasSubstr("unexpected attribute \"Mode\""));
}

TEST(MessageXml, RefusesARepeatedAttribute) {
    RefusalOfRequest("<Request Type=\"a\" Type=\"b\"/>");
}

TEST(MessageXml, RefusesNamespaces) {
    EXPECT_THAT(RefusalOfRequest("<Request xmlns=\"urn:x\"/>"), HasSubstr("unexpected namespace"));
    EXPECT_THAT(RefusalOfRequest("<a:Request xmlns:a=\"urn:x\"/>"), HasSubstr("unexpected namespace"));
    RefusalOfRequest("<a:Request/>");
    RefusalOfRequest("<Request a:Type=\"x\"/>");
}

TEST(MessageXml, RefusesTextBetweenElements) {
    for (const auto* content :
         {"x", "<Parameters>x</Parameters>", "<Parameters/>x", "<![CDATA[x]]>", "&#65;"})
        EXPECT_THAT(RefusalOfRequest(Around(content)), HasSubstr("text between elements")) << content;
    RefusalOfRequest("x<Request/>");
    RefusalOfRequest("<Request/>x");
}

TEST(MessageXml, RefusesWhatIsNo32BitInteger) {
    for (const auto* number :
         {"", " ", "x", "1x", "1.5", "0x10", "+1", " 1", "2147483648", "-2147483649", "True"}) {
        EXPECT_THAT(RefusalOfRequest("<Request Mode=\""s + number + "\"/>"),
                    HasSubstr("\"Mode\" is no 32-bit integer: \""s + number + "\""));
        EXPECT_THAT(RefusalOfRequest(Around("<Parameters><Parameter Name=\"n\" Type=\"3\">"s + number +
                                            "</Parameter></Parameters>")),
                    HasSubstr("\"n\" is no 32-bit integer: \""s + number + "\""));
        EXPECT_THAT(
            RefusalOfRequest(Around("<Parameters><Parameter Type=\""s + number + "\"/></Parameters>")),
            HasSubstr("\"Type\" is no 32-bit integer"));
    }
}

TEST(MessageXml, RefusesDocumentTypesCommentsAndInstructions) {
    EXPECT_THAT(RefusalOfRequest("<!DOCTYPE Request><Request/>"), HasSubstr("document type"));
    EXPECT_THAT(RefusalOfRequest("<!DOCTYPE Request [<!ENTITY a \"b\">]><Request Type=\"&a;\"/>"),
                HasSubstr("document type"));
    EXPECT_THAT(RefusalOfRequest("<!DOCTYPE Request SYSTEM \"file:///etc/hostname\"><Request/>"),
                HasSubstr("document type"));
    EXPECT_THAT(RefusalOfRequest("<!-- c --><Request/>"), HasSubstr("unexpected comment"));
    EXPECT_THAT(RefusalOfRequest(Around("<Parameters><!-- c --></Parameters>")),
                HasSubstr("unexpected comment"));
    EXPECT_THAT(RefusalOfRequest("<Request/><!-- c -->"), HasSubstr("unexpected comment"));
    EXPECT_THAT(RefusalOfRequest("<?p?><Request/>"), HasSubstr("unexpected processing instruction"));
    RefusalOfRequest(Around("&unknown;"));
    RefusalOfRequest("<Request Type=\"&unknown;\"/>");
}

TEST(MessageXml, RefusesWhatIsNotWellFormed) {
    for (const auto* xml :
         {"", " ", "LaunchTool", "<", "<Request", "<Request>", "<Request></Event>", "</Request>",
          "<Request/><Request/>", "<Request Type=a/>", "<Request Type=\"<\"/>", "<Request Type=\"&\"/>",
          "<Request><Parameters></Request>", "<Request Type=\"a/>"})
        RefusalOfRequest(xml);
}

TEST(MessageXml, NamesTheLineOfWhatIsWrong) {
    EXPECT_THAT(RefusalOfRequest("<Request>\n<Parameters>\n<Wrong/>\n</Parameters></Request>"),
                StartsWith("malformed request, line 3: "));
    EXPECT_THAT(RefusalOfRequest("<Request>\n\n\n</Reques>"), StartsWith("malformed request, line 4: "));
}

TEST(MessageXml, RefusesBytesThatAreNoUtf8) {
    for (const auto* bytes : {"\xE4", "\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF"}) {
        EXPECT_THAT(RefusalOfRequest("<Request Type=\"\n"s + bytes + "\"/>"),
                    HasSubstr("line 2: the bytes are not well-formed UTF-8"));
        RefusalOfRequest(Around("<Parameters><Parameter>"s + bytes + "</Parameter></Parameters>"));
    }
    // what the first bytes would make another encoding of
    RefusalOfRequest("\xFF\xFE<\0R\0"s);
    RefusalOfRequest("\x4C\x6F\xA7\x94\x93");
}

TEST(MessageXml, RefusesNulWhereverItStands) {
    for (const std::string& xml :
         {"\0"s, "<Request/>\0"s, "<Request/>\0<Request/>"s, "<Request Type=\"a\0b\"/>"s, "\0<Request/>"s,
          Around("<Parameters><Parameter>a\0</Parameter></Parameters>"s), "<\0R\0/\0>\0"s})
        EXPECT_THAT(RefusalOfRequest(xml), HasSubstr("unexpected NUL"));
}

TEST(MessageXml, RefusesControlCharactersEvenAsReferences) {
    RefusalOfRequest("<Request Type=\"\x01\"/>");
    RefusalOfRequest("<Request Type=\"&#1;\"/>");
    RefusalOfRequest("<Request Type=\"&#0;\"/>");
    RefusalOfRequest("<Request Type=\"&#xD800;\"/>");
}

TEST(MessageXml, RefusesMoreThanItsMostBytes) {
    const std::string fits =
        Around("<Parameters><Parameter Name=\"a\" Type=\"2\">" +
               std::string(messageXml::MaximumBytes - 200, 'x') + "</Parameter></Parameters>");
    ASSERT_LE(fits.size(), messageXml::MaximumBytes);
    EXPECT_EQ(Read(Root::Request, fits).parameters[0]->Content().ToText().size(),
              messageXml::MaximumBytes - 200);
    const std::string larger = fits + std::string(messageXml::MaximumBytes + 1 - fits.size(), ' ');
    EXPECT_THAT(RefusalOfRequest(larger), HasSubstr("16777217 bytes, more than 16777216"));
}

/// What grows faster than the text in a careless reader.
TEST(MessageXml, RefusesHugeStructuresAtOnce) {
    const auto start = std::chrono::steady_clock::now();
    constexpr std::size_t many = 100'000;
    EXPECT_THAT(RefusalOfRequest(Repeated("<Request>", many) + Repeated("</Request>", many)),
                HasSubstr("unexpected element \"Request\""));
    RefusalOfRequest(Repeated("<Request>", many));
    std::string attributes;
    for (std::size_t index = 0; index < many; ++index)
        attributes += " a" + std::to_string(index) + "=''";
    EXPECT_THAT(RefusalOfRequest("<Request" + attributes + "/>"), HasSubstr("more than 8 attributes"));
    RefusalOfRequest(Around("<Parameters><Parameter" + attributes + "/></Parameters>"));
    RefusalOfRequest("<Request " + std::string(1'000'000, 'a') + "=\"\"/>");
    RefusalOfRequest("<" + std::string(1'000'000, 'a') + "/>");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST(MessageXml, ReadsManyParameters) {
    constexpr std::size_t many = 50'000;
    const std::string xml =
        Around("<Parameters>" + Repeated("<Parameter Name=\"a\" Type=\"2\">=\"'&gt;</Parameter>", many) +
               "</Parameters>");
    const Content content = Read(Root::Request, xml);
    ASSERT_EQ(content.parameters.size(), many);
    EXPECT_EQ(content.parameters.back()->Content().ToText(), "=\"'>");
}

TEST(MessageXml, ReadsSectionsThatLookLikeElements) {
    const std::string xml = Around("<Parameters><Parameter Type=\"2\"><![CDATA[<a = = = = = = = = = = >'\"]]>"
                                   "</Parameter></Parameters>");
    EXPECT_THAT(Parameters(Read(Root::Request, xml)), ElementsAre(":2=<a = = = = = = = = = = >'\""));
}

TEST(MessageXml, ReadsOnAfterARefusal) {
    RefusalOfRequest("<Request><");
    EXPECT_EQ(Read(Root::Request, "<Request Type=\"T\"/>").name, "T");
    RefusalOfRequest("<Request Type=\"U\" Other=\"\"/>");
    EXPECT_EQ(Read(Root::Event, "<Event Name=\"N\"/>").name, "N");
}

} // namespace
} // namespace arvon::host
