#include "options/OptionsDocument.h"

#include "base/ComponentError.h"
#include "tests/support/ProcessorTime.h"

#include <gtest/gtest.h>

namespace kvtm::test {
namespace {

using base::ComponentError;
using Reading = OptionsDocument::Reading;

std::string Value(const OptionsDocument& document, std::string_view tool, std::string_view name) {
    std::string text;
    switch (document.ReadValue(tool, name, text)) {
    case Reading::NoOption:
        return "no option";
    case Reading::NoValue:
        return "no value";
    case Reading::Read:
        return "=" + text;
    }
    return {};
}

OptionsDocument Loaded(std::string_view text) {
    OptionsDocument document;
    document.LoadText(text);
    return document;
}

std::string ManyTools(int tools, int options) {
    std::string text = "<Options><ToolOptions>";
    for (int tool = 0; tool < tools; ++tool) {
        text += "<Tool ID=\"T" + std::to_string(tool) + "\">";
        for (int option = 0; option < options; ++option) {
            text += "<Option><Name>option" + std::to_string(option) + "</Name><Value>value " +
                    std::to_string(tool * options + option) + "</Value></Option>";
        }
        text += "</Tool>";
    }
    return text + "</ToolOptions></Options>";
}

TEST(OptionsDocument, IsEmptyUntilLoaded) {
    const OptionsDocument document;
    EXPECT_TRUE(document.IsEmpty());
    EXPECT_EQ(*document.Text(), "");
    EXPECT_FALSE(document.Option("a", "b"));
    EXPECT_FALSE(document.Option("it's", "b"));
    EXPECT_FALSE(document.Tool("a"));
    EXPECT_FALSE(document.FirstOption("cmbLanguage"));
    EXPECT_EQ(Value(document, "a", "b"), "no option");
}

TEST(OptionsDocument, KeepsItsContentWhenATextCannotBeLoaded) {
    OptionsDocument document =
        Loaded("<Options><Tool ID=\"a\"><Option><Name>n</Name><Value>1</Value></Option>"
               "</Tool></Options>");
    EXPECT_EQ(Value(document, "a", "n"), "=1");
    EXPECT_THROW(document.LoadText("<Options>"), ComponentError);
    EXPECT_EQ(Value(document, "a", "n"), "=1");
}

TEST(OptionsDocument, FindsByExactIdentifierAndName) {
    const OptionsDocument document = Loaded(
        "<Options><Tool ID=\"a\"><Option><Name>n</Name><Value>1</Value></Option>"
        "<Option><Name>empty</Name><Value/></Option><Option><Name>none</Name></Option></Tool></Options>");
    EXPECT_EQ(Value(document, "a", "n"), "=1");
    EXPECT_EQ(Value(document, "a", "empty"), "=");
    EXPECT_EQ(Value(document, "a", "none"), "no value");
    EXPECT_EQ(Value(document, "A", "n"), "no option");
    EXPECT_EQ(Value(document, "a", "N"), "no option");
    EXPECT_EQ(Value(document, "a", " n"), "no option");
    EXPECT_EQ(Value(document, "", ""), "no option");
}

TEST(OptionsDocument, LetsThePathDecideWhereAQuoteEndsIt) {
    const OptionsDocument document =
        Loaded("<Options><Tool ID=\"a\"><Option><Name>n</Name><Value>1</Value></Option></Tool>"
               "<Tool ID=\"b\"><Option><Name>m</Name><Value>2</Value></Option></Tool></Options>");
    EXPECT_THROW(Value(document, "it's", "n"), ComponentError);
    EXPECT_THROW(Value(document, "a", "'"), ComponentError);
    EXPECT_THROW(document.Tool("'"), ComponentError);
    EXPECT_EQ(Value(document, "x' or @ID='b", "m"), "=2");
    EXPECT_EQ(Value(document, "a", "x' or 'y'='y"), "=1");
}

TEST(OptionsDocument, RefusesWhatXmlCannotHold) {
    const OptionsDocument document = Loaded("<Options><Tool ID=\"a\"/></Options>");
    EXPECT_THROW(Value(document, "a", "\x01"), ComponentError);
    EXPECT_THROW(Value(document, std::string("a\0b", 3), "n"), ComponentError);
    EXPECT_THROW(Value(document, "\xC3", "n"), ComponentError);
    EXPECT_THROW(document.Tool("\xEF\xBF\xBF"), ComponentError);
}

TEST(OptionsDocument, FindsNamesOfAMebibyte) {
    const std::string name(std::size_t{1} << 20, 'n');
    const OptionsDocument document = Loaded("<Options><Tool ID=\"" + name + "\"><Option><Name>" + name +
                                            "</Name><Value>" + name + "</Value></Option></Tool></Options>");
    EXPECT_EQ(Value(document, name, name), "=" + name);
    EXPECT_EQ(Value(document, name, name + "n"), "no option");
}

TEST(OptionsDocument, AnAppendedOptionIsFoundAtOnce) {
    OptionsDocument document = Loaded(ManyTools(3, 3));
    EXPECT_EQ(Value(document, "T1", "new"), "no option");
    document.AppendOption(document.Tool("T1"), "new");
    EXPECT_EQ(Value(document, "T1", "new"), "=");
    EXPECT_EQ(Value(document, "T2", "new"), "no option");
}

TEST(OptionsDocument, AnOptionWhoseNameXmlCannotHoldIsNotMade) {
    OptionsDocument document = Loaded("<Options><Tool ID=\"a\"/></Options>");
    EXPECT_FALSE(document.Option("a", ""));
    EXPECT_THROW(document.AppendOption(document.Tool("a"), "\x02"), ComponentError);
    EXPECT_EQ(*document.Text(), "<Options><Tool ID=\"a\"/></Options>");
    EXPECT_EQ(Value(document, "a", ""), "no option");
}

TEST(OptionsDocument, ATextThatSomebodyHoldsStays) {
    OptionsDocument document =
        Loaded("<Options><Tool ID=\"a\"><Option><Name>n</Name><Value>1</Value></Option>"
               "</Tool></Options>");
    const auto before = document.Text();
    const std::string copy = *before;
    document.SetText(document.Option("a", "n").SelectSingle("Value"), "a longer value than before");
    const auto after = document.Text();
    EXPECT_EQ(*before, copy);
    EXPECT_NE(*after, copy);
}

TEST(OptionsDocument, ReturnsTheSameTextWhileNothingChanges) {
    OptionsDocument document = Loaded(ManyTools(2, 2));
    const auto text = document.Text();
    document.SetText(document.Option("T1", "option1").SelectSingle("Value"), "value 3");
    EXPECT_EQ(document.Text(), text);
}

TEST(OptionsDocument, WritesToolsUnderNamespacesOfTheirAncestorsRight) {
    OptionsDocument document =
        Loaded("<Options xmlns:n=\"urn:n\"><Tool ID=\"a\" n:x=\"1\"><Option><Name>n</Name><Value>1</Value>"
               "</Option></Tool></Options>");
    document.Text();
    document.SetText(document.Option("a", "n").SelectSingle("Value"), "2");
    EXPECT_EQ(*document.Text(),
              "<Options xmlns:n=\"urn:n\"><Tool ID=\"a\" n:x=\"1\"><Option><Name>n</Name><Value>2</Value>"
              "</Option></Tool></Options>");
}

TEST(OptionsDocument, TheIndexCostsAtMost64BytesAnOption) {
    for (const int tools : {1, 3, 10, 77, 100, 313, 1000}) {
        constexpr int options = 20;
        const OptionsDocument document = Loaded(ManyTools(tools, options));
        ASSERT_TRUE(document.Option("T0", "option0"));
        EXPECT_LE(document.IndexBytes(), std::size_t{64} * tools * options) << tools << " tools";
    }
}

TEST(OptionsDocument, OptionsThatAllRepeatAreIndexedInTime) {
    std::string text = "<Options>";
    for (int i = 0; i < 200'000; ++i)
        text +=
            "<Tool ID=\"a\"><Option><Name>n</Name><Value>" + std::to_string(i) + "</Value></Option></Tool>";
    text += "</Options>";
    EXPECT_LT(ProcessorSecondsOf([&] { EXPECT_EQ(Value(Loaded(text), "a", "n"), "=0"); }), InProportion);
}

} // namespace
} // namespace kvtm::test
