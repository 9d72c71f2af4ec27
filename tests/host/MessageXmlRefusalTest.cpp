#include "host/MessageXml.h"

#include "tests/base/RefusalOf.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

/// What stands behind a refused value is never looked at. The parser lets go of its text once it is stopped,
/// so that a careless look behind is a read of freed memory: told by a sanitizer at any size, and by the
/// system where the text was large.
namespace arvon::host {
namespace {

using messageXml::Root;
using testing::HasSubstr;
using testing::StartsWith;

struct RefusalPlace {
    const char* description;
    Root root;
    std::string before, after; // the attributes that are tried
    std::vector<std::string> numbers;
    std::string text; // an attribute that takes any text
};

const std::vector<RefusalPlace>& RefusalPlaces() {
    static const std::string parameterBefore = "<Parameters><Parameter";
    static const std::string parameterAfter = ">x</Parameter></Parameters>";
    static const std::vector<RefusalPlace> all{
        {"Request", Root::Request, "<Request", "/>", {"Mode"}, "Type"},
        {"Event", Root::Event, "<Event", "/>", {"ObjectType", "Category", "Level"}, "Name"},
        {"Parameter of a request",
         Root::Request,
         "<Request>" + parameterBefore,
         parameterAfter + "</Request>",
         {"Type"},
         "Name"},
        {"Parameter of an event",
         Root::Event,
         "<Event>" + parameterBefore,
         parameterAfter + "</Event>",
         {"Type"},
         "Name"},
    };
    return all;
}

constexpr std::size_t sizesBehind[] = {0, 1024, 1024 * 1024};

std::string Attribute(const std::string& name, const std::string& value) {
    return " " + name + "=\"" + value + "\"";
}

std::string ReasonFor(Root root, const std::string& xml) {
    return RefusalOf([&] { messageXml::Read(root, xml); }).description;
}

/// Tries `wrong` among the other attributes of a place, in every order, with `size` bytes behind it.
void TryInEveryOrder(const RefusalPlace& place, const std::string& wrong, const std::string& leftOut,
                     std::size_t size, const std::string& reason) {
    std::vector<std::string> attributes{wrong, Attribute(place.text, std::string(size, 'y'))};
    for (const std::string& number : place.numbers)
        if (number != leftOut) attributes.push_back(Attribute(number, "7"));
    std::sort(attributes.begin(), attributes.end());
    do {
        std::string xml = place.before;
        for (const std::string& attribute : attributes)
            xml += attribute;
        xml += place.after + std::string(size, ' ');
        EXPECT_THAT(ReasonFor(place.root, xml), HasSubstr(reason))
            << place.description << ", " << size << " bytes behind " << wrong;
    } while (std::next_permutation(attributes.begin(), attributes.end()));
}

TEST(MessageXmlRefusal, StopsAtANumberThatIsNone) {
    for (const RefusalPlace& place : RefusalPlaces())
        for (const std::string& number : place.numbers)
            for (const std::size_t size : sizesBehind)
                TryInEveryOrder(place, Attribute(number, "x"), number, size,
                                "\"" + number + "\" is no 32-bit integer: \"x\"");
}

TEST(MessageXmlRefusal, StopsAtANumberWithManyDigits) {
    for (const RefusalPlace& place : RefusalPlaces()) {
        const std::string& number = place.numbers.front();
        for (const std::size_t size : sizesBehind)
            TryInEveryOrder(place, Attribute(number, std::string(size + 20, '1')), number, size,
                            "\"" + number + "\" is no 32-bit integer: \"" + std::string(20, '1'));
    }
}

TEST(MessageXmlRefusal, StopsAtAnUnknownAttribute) {
    for (const RefusalPlace& place : RefusalPlaces())
        for (const std::size_t size : sizesBehind)
            TryInEveryOrder(place, Attribute("Other", "1"), "", size, "unexpected attribute \"Other\"");
}

TEST(MessageXmlRefusal, StopsAtAPrefixedAttribute) {
    for (const RefusalPlace& place : RefusalPlaces())
        for (const std::size_t size : sizesBehind)
            TryInEveryOrder(place, Attribute("xml:id", "a"), "", size, "unexpected attribute \"id\"");
}

TEST(MessageXmlRefusal, TellsTheFirstOfSeveral) {
    const std::string rest(1024 * 1024, 'y');
    EXPECT_THAT(ReasonFor(Root::Event, "<Event Name=\"" + rest +
                                           "\" Level=\"a\" Category=\"b\" Other=\"c\" ObjectType=\"d\"/>"),
                StartsWith("malformed event, line 1: \"Level\" is no 32-bit integer: \"a\""));
    EXPECT_THAT(ReasonFor(Root::Request, "<Request Other=\"1\" Mode=\"x\" Type=\"" + rest + "\"/>"),
                HasSubstr("unexpected attribute \"Other\""));
}

TEST(MessageXmlRefusal, StopsInContentWhateverFollows) {
    const std::vector<std::pair<std::string, std::string>> contents{
        {"x", "text between elements"},
        {"<!-- x -->", "unexpected comment"},
        {"<?x y?>", "unexpected processing instruction"},
        {"<![CDATA[x]]>", "text between elements"},
        {"<Other/>", "unexpected element \"Other\""},
        {"<Parameters Count=\"1\"/>", "unexpected element \"Parameters\""},
        {"<Parameters><Parameter Name=\"n\" Type=\"3\">x</Parameter></Parameters>",
         "\"n\" is no 32-bit integer: \"x\""},
        {"<Parameters><Parameter><a/></Parameter></Parameters>", "unexpected element \"a\""},
        {"<Parameters xmlns=\"urn:x\"/>", "unexpected namespace"},
    };
    for (const std::size_t size : sizesBehind) {
        const std::string rest = std::string(size, 'y') + "<a b='" + std::string(size, 'z') + "'/>";
        for (const auto& [content, reason] : contents) {
            EXPECT_THAT(ReasonFor(Root::Request, "<Request>" + content + rest + "</Request>"),
                        HasSubstr(reason))
                << content << ", " << size << " bytes behind it";
        }
    }
}

} // namespace
} // namespace arvon::host
