#include "options/PricingRules.h"

#include "options/OptionNames.h"
#include "options/OptionsDocument.h"

#include <gtest/gtest.h>

namespace kvtm::test {
namespace {

/// A document of one tool with these options, the rules applied to it.
struct Applied {
    Applied(std::string_view options, bool permitted) {
        document.LoadText("<Options><Tool ID=\"a\">" + std::string(options) + "</Tool></Options>");
        unfinished = ApplyPricingRules(document, permitted);
    }
    std::string Options() const {
        const std::string text = *document.Text();
        const std::size_t start = std::string_view("<Options><Tool ID=\"a\">").size();
        return text.substr(start, text.size() - start - std::string_view("</Tool></Options>").size());
    }
    OptionsDocument document;
    std::string unfinished;
};

std::string Option(std::string_view name, std::string_view rest) {
    return "<Option><Name>" + std::string(name) + "</Name>" + std::string(rest) + "</Option>";
}

std::string AllPricing(std::string_view rest) {
    std::string all;
    for (const std::string_view name : optionName::Pricing)
        all += Option(name, rest);
    return all;
}

TEST(PricingRules, PermittedOptionsAreShownAndKeepTheirValues) {
    const Applied applied(AllPricing("<Value>ON</Value><Visible>0</Visible>"), true);
    EXPECT_EQ(applied.Options(), AllPricing("<Value>ON</Value><Visible>-1</Visible>"));
    EXPECT_EQ(applied.unfinished, "");
}

TEST(PricingRules, OtherOptionsAreHiddenAndSwitchedOff) {
    const Applied applied(AllPricing("<Value>ON</Value><Visible>-1</Visible>"), false);
    EXPECT_EQ(applied.Options(), AllPricing("<Value>OFF</Value><Visible>0</Visible>"));
}

TEST(PricingRules, AbsentOptionsAreNotMade) {
    const std::string others = Option("cmbCurrency", "<Value>x</Value>");
    EXPECT_EQ(Applied(others, false).Options(), others);
    EXPECT_EQ(Applied("", true).document.Text()->find("Visible"), std::string::npos);
}

TEST(PricingRules, AMissingVisibleIsAppendedBehindTheOtherChildren) {
    const Applied applied(Option("lblShowPricing", "<Value>a</Value><More/>"), true);
    EXPECT_EQ(applied.Options(), Option("lblShowPricing", "<Value>a</Value><More/><Visible>-1</Visible>"));
}

TEST(PricingRules, WithPricesPermittedAMissingValueIsNoFault) {
    const Applied applied(Option("chkShowPricing", ""), true);
    EXPECT_EQ(applied.unfinished, "");
    EXPECT_EQ(applied.Options(), Option("chkShowPricing", "<Visible>-1</Visible>"));
}

TEST(PricingRules, AMissingValueEndsThemWithTheChangesBeforeIt) {
    const Applied applied(Option("chkShowPricing", "<Value>ON</Value>") + Option("lblShowPricing", "") +
                              Option("chkShowPricingUI", "<Value>ON</Value>") +
                              Option("cmbUnitOfMeasure", "<Value/>"),
                          false);
    EXPECT_EQ(applied.unfinished, "lblShowPricing");
    EXPECT_EQ(applied.Options(), Option("chkShowPricing", "<Value>OFF</Value><Visible>0</Visible>") +
                                     Option("lblShowPricing", "<Visible>0</Visible>") +
                                     Option("chkShowPricingUI", "<Value>ON</Value>") +
                                     Option("cmbUnitOfMeasure", "<Value/>"));
}

TEST(PricingRules, AnEmptyUnitOfMeasureBecomesEnglish) {
    EXPECT_EQ(Applied(Option("cmbUnitOfMeasure", "<Value/>"), true).Options(),
              Option("cmbUnitOfMeasure", "<Value>English</Value>"));
    EXPECT_EQ(Applied(Option("cmbUnitOfMeasure", "<Value><!--none--></Value>"), true).Options(),
              Option("cmbUnitOfMeasure", "<Value>English</Value>"));
}

TEST(PricingRules, AnyOtherUnitOfMeasureIsLeft) {
    for (const std::string_view value : {"Metric", " ", "0", "<![CDATA[x]]>"}) {
        const std::string option = Option("cmbUnitOfMeasure", "<Value>" + std::string(value) + "</Value>");
        EXPECT_EQ(Applied(option, false).Options(), option);
    }
}

TEST(PricingRules, AUnitOfMeasureWithoutValueEndsThem) {
    EXPECT_EQ(Applied(Option("cmbUnitOfMeasure", ""), true).unfinished, "cmbUnitOfMeasure");
}

// Option, "Visible" and "Value" are looked for in the whole document, each for itself.
TEST(PricingRules, OfOptionsOfOneNameTheFirstOfEachElementCounts) {
    const Applied applied(Option("chkShowPricing", "") +
                              Option("chkShowPricing", "<Value>ON</Value><Visible>-1</Visible>") +
                              Option("chkShowPricing", "<Value>ON</Value>"),
                          false);
    EXPECT_EQ(applied.unfinished, "");
    EXPECT_EQ(applied.Options(), Option("chkShowPricing", "") +
                                     Option("chkShowPricing", "<Value>OFF</Value><Visible>0</Visible>") +
                                     Option("chkShowPricing", "<Value>ON</Value>"));
}

TEST(PricingRules, OptionsOutsideOfToolsCountToo) {
    OptionsDocument document;
    document.LoadText("<Options><Option><Name>chkShowPricing</Name><Value>ON</Value></Option>"
                      "<Tool ID=\"a\"><Option><Name>chkShowPricing</Name><Value>ON</Value></Option></Tool>"
                      "</Options>");
    ASSERT_EQ(ApplyPricingRules(document, false), "");
    EXPECT_EQ(
        *document.Text(),
        "<Options><Option><Name>chkShowPricing</Name><Value>OFF</Value><Visible>0</Visible></Option>"
        "<Tool ID=\"a\"><Option><Name>chkShowPricing</Name><Value>ON</Value></Option></Tool></Options>");
}

} // namespace
} // namespace kvtm::test
