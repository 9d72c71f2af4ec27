#include "desktop/controls/OptionSheet.h"

#include "base/ComponentError.h"
#include "base/XmlDocument.h"
#include "tests/desktop_controls/OptionTexts.h"

#include <gmock/gmock.h>

#include <numeric>
#include <random>

namespace desktop::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string Tool(const std::string& id, const std::string& options) {
    return "<Tool ID=\"" + id + "\">" + options + "</Tool>";
}

std::vector<std::string> Labels(const OptionSheet& sheet, std::size_t page) {
    std::vector<std::string> labels;
    for (const OptionField& field : sheet.Pages()[page].fields)
        labels.push_back(field.label.toStdString());
    return labels;
}

} // namespace

TEST(OptionNames, KindFollowsThePrefixOfTheName) {
    EXPECT_EQ(KindOfOption("chkSnap"), OptionKind::Check);
    EXPECT_EQ(KindOfOption("cmbSheet"), OptionKind::Choice);
    EXPECT_EQ(KindOfOption("lblHint"), OptionKind::Note);
    EXPECT_EQ(KindOfOption("optOrder"), OptionKind::Radio);
    EXPECT_EQ(KindOfOption("txtSpacing"), OptionKind::Text);
    EXPECT_EQ(KindOfOption("Spacing"), OptionKind::Text);
    EXPECT_EQ(KindOfOption("CHKSnap"), OptionKind::Text);
    EXPECT_EQ(KindOfOption(""), OptionKind::Text);
}

TEST(OptionNames, CaptionIsTheNameInWords) {
    EXPECT_EQ(CaptionOfOption("chkSnapToGrid"), "Snap to grid");
    EXPECT_EQ(CaptionOfOption("lblShowPricingUI"), "Show pricing UI");
    EXPECT_EQ(CaptionOfOption("chkWärmebrücken"), "Wärmebrücken");
    EXPECT_EQ(CaptionOfOption("txtXYScale"), "XY scale");
    EXPECT_EQ(CaptionOfOption("chk"), "chk");
    EXPECT_EQ(CaptionOfOption("cmb_sheet_size"), " sheet size");
}

TEST(OptionNames, AStoredValueIsShownAsTheChoiceThatItMeans) {
    for (const char* stored : {"lastupdated", "LastUpdated", "LASTUPDATED"}) {
        EXPECT_EQ(ChoiceOfValue("cmbToolSortKey", stored), "lastupdated");
        EXPECT_EQ(LabelOfValue("cmbToolSortKey", stored), "Last updated");
    }
    for (const char* stored : {"", "name", "Name"})
        EXPECT_EQ(ChoiceOfValue("cmbToolSortKey", stored), "name") << stored;
    EXPECT_EQ(ChoiceOfValue("cmbToolSortKey", "Brand"), "Brand") << "another property";
    for (const char* stored : {"", "0", "False", "false", " 0 ", "0.0"})
        EXPECT_EQ(ChoiceOfValue("optToolSortOrder", stored), "0") << stored;
    for (const char* stored : {"1", "-1", "True", "TRUE", "2"})
        EXPECT_EQ(ChoiceOfValue("optToolSortOrder", stored), "1") << stored;
    EXPECT_EQ(ChoiceOfValue("optToolSortOrder", "down"), "down") << "what is no direction";
    EXPECT_EQ(ChoiceOfValue("cmbSheet", "Name"), "Name");
    EXPECT_EQ(LabelOfValue("cmbSheet", "Name"), "Name");
}

TEST(OptionSheet, AnOptionWithChoicesOfItsOwnIsNoSwitch) {
    const OptionSheet sheet = Sheet("<Options>" +
                                    Tool("A", Option("optToolSortOrder", "False") + Option("optOne", "True") +
                                                  Option("optTwo", "False")) +
                                    "</Options>");
    EXPECT_EQ(sheet.Field(0, 0).radioGroup, -1);
    EXPECT_EQ(sheet.Field(0, 1).radioGroup, 0);
    EXPECT_EQ(sheet.Field(0, 2).radioGroup, 0);
}

TEST(OptionSheet, IsSearchedWithoutCaseAndMarks) {
    const OptionSheet sheet =
        Sheet("<Options>" +
              Tool("A", Option("chkWärmebrücken", "ON") + Option("txtStrasse", "Hauptstraße") +
                            Option("cmbŁożysko", "Ø 12") + Option("txtVille", "Orléans")) +
              "</Options>");
    EXPECT_THAT(sheet.Matching(0, "warmebrucken"), ElementsAre(0));
    EXPECT_THAT(sheet.Matching(0, "WÄRME"), ElementsAre(0));
    EXPECT_THAT(sheet.Matching(0, "hauptstrasse"), ElementsAre(1));
    EXPECT_THAT(sheet.Matching(0, "STRASSE"), ElementsAre(1));
    EXPECT_THAT(sheet.Matching(0, "lozysko"), ElementsAre(2));
    EXPECT_THAT(sheet.Matching(0, "orleans"), ElementsAre(3));
    EXPECT_THAT(sheet.Matching(0, "orléans"), ElementsAre(3));
}

TEST(OptionSheet, ReadsBothFormsOfTheOptionsText) {
    const std::string tool = Tool("A", Option("txtOne", "1"));
    for (const std::string& text : {"<Options>" + tool + "</Options>",
                                    "<Options><ToolOptions>" + tool + "</ToolOptions></Options>", tool}) {
        const OptionSheet sheet = Sheet(text);
        ASSERT_EQ(sheet.Pages().size(), 1U) << text;
        EXPECT_EQ(sheet.Pages()[0].toolId, "A");
        EXPECT_EQ(sheet.Pages()[0].title, "A");
        EXPECT_EQ(sheet.Field(0, 0).value, "1");
    }
}

TEST(OptionSheet, APageHasTheToolsDisplayName) {
    EXPECT_EQ(Sheet("<Options>" +
                    Tool("Vn21", "<DisplayName>Beam &amp; Frame</DisplayName>" + Option("a", "")) +
                    "</Options>")
                  .Pages()[0]
                  .title,
              "Beam & Frame");
}

TEST(OptionSheet, HiddenOptionsAndToolsWithoutOptionsHaveNoPlace) {
    const OptionSheet sheet = Sheet(
        "<Options>" +
        Tool("A",
             "<Option><Name>chkA</Name><Value>ON</Value><Visible>0</Visible></Option>" +
                 std::string("<Option><Name>chkB</Name><Value>ON</Value><Visible>-1</Visible></Option>")) +
        Tool("B", "<DisplayName>B</DisplayName>") +
        Tool("C", "<Option><Name>chkA</Name><Value>ON</Value><Visible> 0 </Visible></Option>") +
        "</Options>");
    ASSERT_EQ(sheet.Pages().size(), 1U);
    EXPECT_THAT(Labels(sheet, 0), ElementsAre("B"));
}

TEST(OptionSheet, ALabelOfTheSameStemNamesItsOption) {
    const OptionSheet sheet =
        Sheet("<Options>" +
              Tool("A", Option("txtGridSpacing", "2") + Option("lblGridSpacing", "Grid spacing in mm") +
                            Option("lblHint", "Read this") + "<Option><Name>lblOrder</Name></Option>") +
              "</Options>");
    EXPECT_THAT(Labels(sheet, 0), ElementsAre("Grid spacing in mm", "Hint", "Order"));
    EXPECT_EQ(sheet.Field(0, 0).name, "txtGridSpacing");
}

TEST(OptionSheet, ALabelThatIsASwitchWordNamesNothing) {
    for (const char* word : {"OFF", "off", "ON", "0", "False"}) {
        const OptionSheet sheet =
            Sheet("<Options>" + Tool("A", Option("chkShowPricing", "ON") + Option("lblShowPricing", word)) +
                  "</Options>");
        EXPECT_THAT(Labels(sheet, 0), ElementsAre("Show pricing", "Show pricing")) << word;
    }
}

TEST(OptionSheet, AHiddenLabelNamesNothing) {
    const OptionSheet sheet =
        Sheet("<Options>" +
              Tool("A", Option("txtA", "2") +
                            "<Option><Name>lblA</Name><Value>No</Value><Visible>0</Visible></Option>") +
              "</Options>");
    EXPECT_THAT(Labels(sheet, 0), ElementsAre("A"));
}

TEST(OptionSheet, NothingChangedIsTheTextByteForByte) {
    const std::string text =
        "<Options>\n <Tool ID='A' >\n  " + Option("a", "1") + "<!-- c --></Tool>\n</Options>\n";
    OptionSheet sheet = Sheet(text);
    EXPECT_EQ(sheet.Text(), text);
    sheet.SetValue(0, 0, "2");
    sheet.SetValue(0, 0, "1");
    EXPECT_EQ(sheet.Text(), text);
    EXPECT_EQ(sheet.Changes(), 0U);
}

TEST(OptionSheet, OnlyTheChangedValueDiffers) {
    const std::string before =
        "<Options version=\"3\"><!-- kept --><ToolOptions>"
        "<Tool ID=\"A\" extra=\"x\"><Note>n</Note><Option kind=\"k\"><Name>a</Name><Value "
        "unit=\"mm\">1</Value>"
        "<Visible>-1</Visible></Option><Option><Name>a</Name><Value>second</Value></Option></Tool>"
        "<Tool ID=\"B\"><Option><Name>a</Name><Value>1</Value></Option></Tool></ToolOptions></Options>";
    OptionSheet sheet = Sheet(before);
    sheet.SetValue(0, 0, "<2 & 3>");
    std::string after = before;
    after.replace(after.find(">1<"), 3, ">&lt;2 &amp; 3&gt;<");
    EXPECT_EQ(sheet.Text(), after);
}

TEST(OptionSheet, AnyChangesToAnyTextChangeThoseValuesOnly) {
    std::mt19937 random(11);
    const auto below = [&](int limit) { return std::uniform_int_distribution(0, limit - 1)(random); };
    const std::vector<std::string> values{"", "ON", "0", "2.5", "a b ", "\u20ac", "&amp;&lt;", "x\ny"};
    for (int round = 0; round < 300; ++round) {
        // the text in pieces: those at odd places are values that can be seen
        std::vector<std::string> pieces{"<Options><!-- kept -->"};
        for (int tool = below(4); tool >= 0; --tool) {
            pieces.back() += "<Tool ID=\"" + std::to_string(below(3)) + "\" a=\"1\">";
            for (int option = below(6); option > 0; --option) {
                const bool hidden = below(4) == 0;
                pieces.back() += "<Option><Name>txt" + std::to_string(below(3)) + "</Name><Value>";
                const std::string value = values[static_cast<std::size_t>(below(8))];
                if (hidden) {
                    pieces.back() += "hidden</Value><Visible>0</Visible></Option><Plain>p</Plain>";
                } else {
                    pieces.push_back(value);
                    pieces.emplace_back("</Value></Option>");
                }
            }
            pieces.back() += "</Tool>";
        }
        pieces.back() += "</Options>";
        const auto join = [&] { return std::accumulate(pieces.begin(), pieces.end(), std::string()); };
        OptionSheet sheet = Sheet(join());
        std::size_t piece = 1;
        for (std::size_t page = 0; page < sheet.Pages().size(); ++page) {
            for (std::size_t field = 0; field < sheet.Pages()[page].fields.size(); ++field, piece += 2) {
                if (below(2) == 0) continue;
                const std::string value = "new" + std::to_string(below(100));
                sheet.SetValue(page, field, value);
                pieces[piece] = value;
            }
        }
        ASSERT_EQ(piece, pieces.size());
        base::XmlDocument expected, found;
        expected.LoadText(join());
        found.LoadText(sheet.Text());
        ASSERT_EQ(found.Text(), expected.Text());
    }
}

TEST(OptionSheet, EachOfTwoOptionsOfOneNameKeepsItsOwnValue) {
    OptionSheet sheet = Sheet("<Options>" + Tool("A", Option("a", "1") + Option("a", "2")) + "</Options>");
    sheet.SetValue(0, 1, "3");
    EXPECT_EQ(sheet.Text(), "<Options>" + Tool("A", Option("a", "1") + Option("a", "3")) + "</Options>");
}

TEST(OptionSheet, ValuesThatHaveNoPlaceCannotBeChanged) {
    OptionSheet sheet = Sheet("<Options>" +
                              Tool("A", "<Option><Name>txtA</Name></Option>"
                                        "<Option><Name>txtB</Name><Value><Deep>1</Deep></Value></Option>") +
                              "</Options>");
    for (std::size_t field : {0U, 1U}) {
        EXPECT_FALSE(sheet.Field(0, field).editable);
        sheet.SetValue(0, field, "x");
    }
    EXPECT_EQ(sheet.Changes(), 0U);
}

TEST(OptionSheet, ResetTakesBackOneOrAPage) {
    OptionSheet sheet = Sheet("<Options>" + Tool("A", Option("a", "1") + Option("b", "2")) +
                              Tool("B", Option("a", "1")) + "</Options>");
    sheet.SetValue(0, 0, "x");
    sheet.SetValue(0, 1, "x");
    sheet.SetValue(1, 0, "x");
    EXPECT_EQ(sheet.Changes(), 3U);
    sheet.Reset(0, 0);
    EXPECT_EQ(sheet.Field(0, 0).value, "1");
    EXPECT_EQ(sheet.Pages()[0].changes, 1U);
    sheet.ResetPage(0);
    EXPECT_EQ(sheet.Pages()[0].changes, 0U);
    EXPECT_EQ(sheet.Changes(), 1U);
}

TEST(OptionSheet, RadioOptionsInWordsAreOnOneAtATime) {
    OptionSheet sheet = Sheet("<Options>" +
                              Tool("A", Option("optA", "ON") + Option("optB", "OFF") + Option("txtX", "") +
                                            Option("optC", "ON") + Option("optN", "1")) +
                              "</Options>");
    sheet.SetValue(0, 1, "ON");
    EXPECT_EQ(sheet.Field(0, 0).value, "OFF");
    EXPECT_EQ(sheet.Field(0, 3).value, "ON") << "another group";
    EXPECT_EQ(sheet.Field(0, 4).radioGroup, -1) << "a number is a choice of its own";
    sheet.Reset(0, 1);
    EXPECT_EQ(sheet.Field(0, 0).value, "ON");
    EXPECT_EQ(sheet.Changes(), 0U);
}

TEST(OptionSheet, FindsWordsInLabelNameAndValue) {
    const OptionSheet sheet =
        Sheet("<Options>" +
              Tool("Tobr43", "<DisplayName>Layout</DisplayName>" + Option("txtGridSpacing", "2.5") +
                                 Option("cmbSheet", "A3 landscape") + Option("cmbLanguage", "1031")) +
              "</Options>");
    EXPECT_THAT(sheet.Matching(0, "spacing GRID"), ElementsAre(0));
    EXPECT_THAT(sheet.Matching(0, "landscape"), ElementsAre(1));
    EXPECT_THAT(sheet.Matching(0, "deutsch"), ElementsAre(2)) << "what is shown for the value";
    EXPECT_THAT(sheet.Matching(0, "layout"), ElementsAre(0, 1, 2)) << "the page itself";
    EXPECT_THAT(sheet.Matching(0, " "), ElementsAre(0, 1, 2));
    EXPECT_THAT(sheet.Matching(0, "grid landscape"), IsEmpty());
}

TEST(OptionSheet, SaysWhyAValueCannotBeSaved) {
    OptionSheet sheet =
        Sheet("<Options>" + Tool("A", Option("cmbLanguage", "1033") + Option("txtA", "x")) + "</Options>");
    EXPECT_THAT(sheet.Troubles(), IsEmpty());
    sheet.SetValue(0, 0, "English");
    sheet.SetValue(0, 1, std::string("a\x01"));
    const auto troubles = sheet.Troubles();
    ASSERT_EQ(troubles.size(), 2U);
    EXPECT_THAT(troubles[0].text.toStdString(),
                HasSubstr("number of a language, such as 1033, found \u201cEnglish"));
    EXPECT_THAT(troubles[1].text.toStdString(), HasSubstr("code 1"));
}

TEST(OptionSheet, WarnsWhenANumberBecomesNone) {
    OptionSheet sheet = Sheet("<Options>" + Tool("A", Option("txtA", "2.5")) + "</Options>");
    sheet.SetValue(0, 0, "3");
    EXPECT_EQ(sheet.WarningOf(sheet.Field(0, 0)), "");
    sheet.SetValue(0, 0, "2,5");
    EXPECT_NE(sheet.WarningOf(sheet.Field(0, 0)), "");
    EXPECT_THAT(sheet.Troubles(), IsEmpty());
}

TEST(OptionSheet, RefusesABrokenTextAndKeepsWhatItHas) {
    OptionSheet sheet = Sheet("<Options>" + Tool("A", Option("a", "1")) + "</Options>");
    EXPECT_THROW(sheet.Load("<Options><Tool>"), base::ComponentError);
    EXPECT_THROW(sheet.Load(""), base::ComponentError);
    EXPECT_EQ(sheet.Pages().size(), 1U);
}

} // namespace desktop::test
