// Random messages are written and read again; and random bytes are read.

#include "base/Utf8.h"
#include "host/MessageXml.h"

#include "base/ComponentError.h"
#include "tests/support/TestRandom.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace arvon::host {
namespace {

using messageXml::Content;
using messageXml::Root;

class Random : public TestRandom {
public:
    using TestRandom::TestRandom;

    std::int32_t Integer() {
        if (Below(4) == 0) return Below(2) == 0 ? INT32_MIN : INT32_MAX;
        return std::uniform_int_distribution<std::int32_t>(-100, 100)(engine_);
    }
    /// A character that XML can hold; often one with a meaning in it.
    char32_t Character() {
        constexpr std::u32string_view special = U"<>&\"'\t\n\r ]=/!-?;#\u0085\u00A0\uFEFF\uFFFD\U0010FFFF";
        if (Below(3) > 0) return special[Below(special.size())];
        const char32_t any[] = {
            static_cast<char32_t>(0x20 + Below(0x5F)), static_cast<char32_t>(0x80 + Below(0x780)),
            static_cast<char32_t>(0x800 + Below(0xD000)), static_cast<char32_t>(0x10000 + Below(0x100000))};
        return any[Below(4)];
    }
    std::string Text() {
        std::string text;
        for (std::size_t left = Below(4) == 0 ? 0 : Below(30); left > 0; --left)
            base::AppendUtf8(text, Character());
        return text;
    }
};

std::vector<std::shared_ptr<Parameter>> RandomParameters(Random& random) {
    std::vector<std::shared_ptr<Parameter>> parameters;
    for (std::size_t left = random.Below(6); left > 0; --left) {
        const bool isNumber = random.Below(3) == 0;
        Value value = isNumber ? Value(random.Integer()) : Value(random.Text());
        parameters.push_back(std::make_shared<Parameter>(isNumber ? 3 : 2, random.Text(), std::move(value)));
    }
    return parameters;
}

void ExpectSame(const std::vector<std::shared_ptr<Parameter>>& left,
                const std::vector<std::shared_ptr<Parameter>>& right) {
    ASSERT_EQ(left.size(), right.size());
    for (std::size_t index = 0; index < left.size(); ++index) {
        EXPECT_EQ(left[index]->NameText(), right[index]->NameText());
        EXPECT_EQ(left[index]->Type(), right[index]->Type());
        EXPECT_EQ(left[index]->Content().GetKind(), right[index]->Content().GetKind());
        EXPECT_EQ(left[index]->Content().ToText(), right[index]->Content().ToText());
    }
}

TEST(RandomMessages, AreReadAsTheyWereWritten) {
    for (unsigned seed = 1; seed <= 2000; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Random random(seed);
        const std::string name = random.Text();
        const auto parameters = RandomParameters(random);
        const std::int32_t numbers[] = {random.Integer(), random.Integer(), random.Integer()};

        const std::string request = messageXml::WriteRequest(name, numbers[0], parameters);
        const Content readRequest = messageXml::Read(Root::Request, request);
        EXPECT_EQ(readRequest.name, name);
        EXPECT_EQ(readRequest.numbers[0], numbers[0]);
        ExpectSame(readRequest.parameters, parameters);
        EXPECT_EQ(messageXml::WriteRequest(readRequest.name, readRequest.numbers[0], readRequest.parameters),
                  request);

        const std::string event =
            messageXml::WriteEvent(numbers[0], name, numbers[1], numbers[2], parameters);
        const Content readEvent = messageXml::Read(Root::Event, event);
        EXPECT_EQ(readEvent.name, name);
        EXPECT_TRUE(std::equal(readEvent.numbers.begin(), readEvent.numbers.end(), numbers));
        ExpectSame(readEvent.parameters, parameters);
        if (HasFailure()) return;
    }
}

TEST(RandomMessages, ThatWereDamagedAreRefusedOrReadWhole) {
    std::size_t refused = 0;
    for (unsigned seed = 1; seed <= 3000; ++seed) {
        Random random(seed);
        std::string xml = messageXml::WriteRequest(random.Text(), random.Integer(), RandomParameters(random));
        for (std::size_t left = 1 + random.Below(3); left > 0; --left) {
            const std::size_t at = random.Below(xml.size());
            switch (random.Below(3)) {
            case 0:
                xml[at] = static_cast<char>(random.Below(256));
                break;
            case 1:
                xml.erase(at, 1 + random.Below(10));
                break;
            default:
                xml.insert(at, xml.substr(random.Below(xml.size()), random.Below(20)));
            }
            if (xml.empty()) break;
        }
        try {
            const Content content = messageXml::Read(Root::Request, xml);
            const std::string again =
                messageXml::WriteRequest(content.name, content.numbers[0], content.parameters);
            EXPECT_EQ(messageXml::Read(Root::Request, again).name, content.name) << "seed " << seed;
        } catch (const base::ComponentError& error) {
            EXPECT_EQ(error.Number(), base::errors::InvalidCall);
            ++refused;
        }
    }
    EXPECT_GT(refused, 1000u); // else little was damaged
}

TEST(WrittenMessages, HaveTheDocumentedForm) {
    const std::vector<std::shared_ptr<Parameter>> parameters{
        std::make_shared<Parameter>(2, "ToolName", Value("Layout")),
        std::make_shared<Parameter>(3, "id", Value(4711))};
    EXPECT_EQ(messageXml::WriteRequest("LaunchTool", 0, parameters),
              "<Request Type=\"LaunchTool\" Mode=\"0\"><Parameters><Parameter Name=\"ToolName\" "
              "Type=\"2\">Layout</Parameter><Parameter Name=\"id\" "
              "Type=\"3\">4711</Parameter></Parameters></Request>");
    EXPECT_EQ(
        messageXml::WriteEvent(4, "a", 13, -9, {}),
        "<Event ObjectType=\"4\" Name=\"a\" Category=\"13\" Level=\"-9\"><Parameters></Parameters></Event>");
}

TEST(WrittenMessages, EscapeWhatHasAMeaningInXml) {
    const std::vector<std::shared_ptr<Parameter>> parameters{
        std::make_shared<Parameter>(2, "<\"&\t\n\r'>", Value("<\"&\t\n\r'>]]>"))};
    EXPECT_EQ(messageXml::WriteRequest("\"<>&", 0, parameters),
              "<Request Type=\"&quot;&lt;&gt;&amp;\" Mode=\"0\"><Parameters><Parameter "
              "Name=\"&lt;&quot;&amp;&#9;&#10;&#13;'&gt;\" "
              "Type=\"2\">&lt;&quot;&amp;\t\n&#13;'&gt;]]&gt;</Parameter>"
              "</Parameters></Request>");
}

TEST(WrittenMessages, HoldOneReplacementForEachCharacterThatXmlCannotHold) {
    using namespace std::string_literals;
    const std::pair<std::string, std::string> cases[] = {
        {"a\x01"
         "b\x1F",
         "a\uFFFD"
         "b\uFFFD"},
        {"\0"s, "\uFFFD"},
        {"\x7F", "\x7F"},
        {"\xEF\xBF\xBE|\xEF\xBF\xBF", "\uFFFD|\uFFFD"}, // U+FFFE and U+FFFF
        {"\xE4|\xC3", "\uFFFD|\uFFFD"},                 // no UTF-8
        {"\xE2\x82|", "\uFFFD|"},                       // a character cut short
        {"\xED\xA0\x80|", "\uFFFD\uFFFD\uFFFD|"},       // a surrogate
        {"\xF0\x9F\x98\x80", "\U0001F600"},
    };
    for (const auto& [text, expected] : cases) {
        const std::string xml = messageXml::WriteRequest(text, 0, {});
        EXPECT_EQ(messageXml::Read(Root::Request, xml).name, expected);
    }
}

TEST(WrittenMessages, EscapeALongTextAsItsCharactersOneByOne) {
    const auto written = [](const std::string& text) {
        const std::string xml = messageXml::WriteRequest(text, 0, {});
        const std::size_t start = std::string_view("<Request Type=\"").size();
        return xml.substr(start, xml.find("\" Mode=") - start);
    };
    std::vector<std::string> characters{"\u00E4", "\u20AC", "\U0001F600"};
    for (char byte = 0; byte < 0x7F; ++byte)
        characters.emplace_back(1, byte);
    characters.emplace_back("\x7F");

    std::string text, expected;
    for (std::size_t plain = 0; plain < 20; ++plain) {
        for (const std::string& character : characters) {
            text += std::string(plain, 'x') + character;
            expected += std::string(plain, 'x') + written(character);
        }
    }
    EXPECT_EQ(written(text), expected);
}

} // namespace
} // namespace arvon::host
