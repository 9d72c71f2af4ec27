#include "host/Messages.h"

#include "tests/base/RefusalOf.h"

#include <gtest/gtest.h>

#include <string>

namespace arvon::host {
namespace {

constexpr auto text = ParameterType::Text;
constexpr auto integer = ParameterType::Integer;

TEST(MessageParameters, AreFoundByPositionFromOneAndByExactName) {
    Request request;
    IParameters& parameters = request.Parameters();
    parameters.Add(text, "a", "1", true);
    parameters.Add(text, "A", "2", true);
    EXPECT_EQ(parameters.Count(), 2u);
    EXPECT_EQ(parameters.Item(1)->Name(), "a");
    EXPECT_EQ(parameters.Item("A")->GetValue().ToText(), "2");
    EXPECT_EQ(parameters.Item("b"), nullptr);
    EXPECT_EQ(parameters.Item(""), nullptr);
    for (const std::size_t outside : {0u, 3u})
        EXPECT_EQ(RefusalOf([&] { parameters.Item(outside); }).number, base::errors::OutOfRange);
}

TEST(MessageParameters, OfARepeatedNameAnswerTheFirst) {
    Request request;
    for (int index = 0; index < 40; ++index) { // enough to be indexed
        request.Parameters().Add(integer, "n" + std::to_string(index % 20), index, true);
        EXPECT_EQ(request.Parameters().Item("n0")->GetValue().ToInteger(), 0);
        EXPECT_EQ(request.Parameters().Item("n" + std::to_string(index % 20))->GetValue().ToInteger(),
                  index % 20);
    }
    EXPECT_EQ(request.Parameters().Item("n20"), nullptr);
}

TEST(MessageParameters, AreTakenInTheirType) {
    Event event;
    event.Parameters().Add(text, "t", 5, true);
    event.Parameters().Add(text, "b", true, true);
    event.Parameters().Add(text, "e", Value(), true);
    event.Parameters().Add(integer, "i", " 17 ", true);
    event.Parameters().Add(integer, "r", 2.5, true);
    EXPECT_EQ(*event.Parameters().Item("t")->GetValue().TextIfAny(), "5");
    EXPECT_EQ(*event.Parameters().Item("b")->GetValue().TextIfAny(), "True");
    EXPECT_EQ(*event.Parameters().Item("e")->GetValue().TextIfAny(), "");
    EXPECT_EQ(event.Parameters().Item("i")->GetValue().ToInteger(), 17);
    EXPECT_EQ(event.Parameters().Item("r")->GetValue().ToInteger(), 2);
}

TEST(MessageParameters, ThatDoNotFitTheirTypeAreRefused) {
    Event event;
    IParameters& parameters = event.Parameters();
    EXPECT_EQ(RefusalOf([&] { parameters.Add(integer, "a", "x", true); }).number, base::errors::TypeMismatch);
    EXPECT_EQ(RefusalOf([&] { parameters.Add(integer, "a", 3e9, true); }).number, base::errors::Overflow);
    EXPECT_EQ(RefusalOf([&] { parameters.Add(text, "a", std::shared_ptr<base::Object>(), true); }).number,
              base::errors::TypeMismatch);
    EXPECT_EQ(parameters.Count(), 0u);
}

TEST(Messages, AreWrittenAndReadWhole) {
    Event sent;
    sent.SetObjectType(4);
    sent.SetName("lvTools");
    sent.SetCategory(13);
    sent.SetLevel(9);
    sent.Parameters().Add(text, "Text", "a<b", true);
    Event received;
    received.SetXml(sent.Xml());
    EXPECT_EQ(received.ObjectType(), 4);
    EXPECT_EQ(received.Name(), "lvTools");
    EXPECT_EQ(received.Category(), 13);
    EXPECT_EQ(received.Level(), 9);
    EXPECT_EQ(received.Parameters().Item("Text")->GetValue().ToText(), "a<b");
}

TEST(Messages, KeepWhatTheyHadWhenATextIsRefused) {
    Request request;
    request.SetType("T");
    request.SetMode(2);
    request.Parameters().Add(text, "a", "1", true);
    const std::string before = request.Xml();
    for (const auto* wrong : {"", "<Event/>",
                              "<Request Type=\"U\"><Parameters><Parameter Type=\"3\">x</Parameter>"
                              "</Parameters></Request>"}) {
        EXPECT_EQ(RefusalOf([&] { request.SetXml(wrong); }).number, base::errors::InvalidCall);
        EXPECT_EQ(request.Xml(), before);
    }
    Event event;
    event.SetName("N");
    const std::string eventBefore = event.Xml();
    EXPECT_EQ(RefusalOf([&] { event.SetXml("<Request/>"); }).number, base::errors::InvalidCall);
    EXPECT_EQ(event.Xml(), eventBefore);
}

TEST(Messages, ReplaceTheirParametersWhenATextIsRead) {
    Request request;
    for (int index = 0; index < 20; ++index)
        request.Parameters().Add(text, "old" + std::to_string(index), "x", true);
    EXPECT_NE(request.Parameters().Item("old19"), nullptr);
    const std::shared_ptr<IParameter> held = request.Parameters().Item("old3");
    request.SetXml(
        "<Request><Parameters><Parameter Name=\"new\" Type=\"2\">y</Parameter></Parameters></Request>");
    EXPECT_EQ(request.Parameters().Count(), 1u);
    EXPECT_EQ(request.Parameters().Item("old3"), nullptr);
    EXPECT_EQ(request.Parameters().Item("new")->GetValue().ToText(), "y");
    EXPECT_EQ(held->Name(), "old3");
}

TEST(Messages, StartEmpty) {
    EXPECT_EQ(Request().Xml(), "<Request Type=\"\" Mode=\"0\"><Parameters></Parameters></Request>");
    EXPECT_EQ(
        Event().Xml(),
        "<Event ObjectType=\"0\" Name=\"\" Category=\"0\" Level=\"0\"><Parameters></Parameters></Event>");
    const Message message;
    EXPECT_EQ(message.Type(), 0);
    EXPECT_EQ(message.Source(), "");
    EXPECT_TRUE(message.Body().IsEmpty());
}

} // namespace
} // namespace arvon::host
