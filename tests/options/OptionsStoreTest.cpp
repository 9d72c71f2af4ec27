#include "tests/options/OptionsFixture.h"
#include "tests/support/DebugLines.h"

#include "base/XmlDocument.h"
#include "core/Names.h"
#include "core/Parameters.h"
#include "options/OptionErrors.h"

#include <gmock/gmock.h>

namespace kvtm::test {
namespace {

using base::Value;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::int32_t own = base::errors::ObjectErrorBase;

class OptionsStore : public OptionsTest {};

// reading

TEST_F(OptionsStore, AnswersTheValueOfAnOption) {
    LoadWithTools(Tool("Vn34", Option("cmbKlimazone", "Südwest – Höhe") + Option("empty", "") +
                                   Option("blanks", "  ")));
    EXPECT_EQ(Get("Vn34", "cmbKlimazone"), "Südwest – Höhe");
    EXPECT_EQ(Get("Vn34", "empty"), "");
    EXPECT_EQ(Get("Vn34", "blanks"), "  ");
}

TEST_F(OptionsStore, AnswersForToolsDirectlyUnderTheRoot) {
    LoadWithFile("<Options>" + SortOptions() + Tool("a", Option("n", "1")) + "</Options>");
    EXPECT_EQ(Get("a", "n"), "1");
}

TEST_F(OptionsStore, AMissingOptionIsReportedAndChangesNothing) {
    LoadWithTools(Tool("a", Option("n", "1")));
    const std::string before = FileText();
    EXPECT_EQ(Get("a", "m"), "False");
    const Report report = ClaimReport("GetOptionValue");
    EXPECT_EQ(report.number, own + optionError::NoOption);
    EXPECT_EQ(report.source, report.procedure);
    EXPECT_EQ(report.description, "the tool \"a\" has no option \"m\"");
    EXPECT_EQ(FileText(), before);
}

TEST_F(OptionsStore, AFailingReadIsWrittenToTheDebuggerOutput) {
    std::vector<std::string> lines;
    installation.Write(file, Options(SortOptions()));
    CreateHost();
    platform::Services services = platform::Services::Create();
    services.debugOutput = std::make_unique<DebugLines>(lines);
    CreateTool(std::move(services));
    ASSERT_TRUE(Load());
    EXPECT_THAT(lines, ElementsAre());
    Get("a", "m");
    EXPECT_THAT(lines, ElementsAre("Error in GetOptionValue"));
    ClaimReport("GetOptionValue");
}

TEST_F(OptionsStore, AnOptionWithoutValueIsReported) {
    LoadWithTools("<Tool ID=\"a\"><Option><Name>n</Name></Option></Tool>");
    EXPECT_EQ(Get("a", "n"), "False");
    EXPECT_EQ(ClaimReport("GetOptionValue").number, own + optionError::NoValue);
}

TEST_F(OptionsStore, ARequestWithoutParametersIsReported) {
    LoadWithTools("");
    EXPECT_EQ(Request(request::GetOptionValue), "False");
    ClaimReport("GetOptionValue");
    EXPECT_EQ(Request(request::SetOptionValue), "False");
    EXPECT_EQ(ClaimReport("SetOptionValue").number, own + optionError::NoParameter);
}

TEST_F(OptionsStore, AMissingSortOptionIsMadeForTheNextRead) {
    LoadWithTools(Tool("a", ""));
    for (const std::string_view name : {"optToolSortOrder", "cmbToolSortKey"}) {
        EXPECT_EQ(Get("a", name), "False");
        EXPECT_EQ(ClaimReport("GetOptionValue").number, own + optionError::NoOption);
        EXPECT_THAT(FileText(), HasSubstr(Option(name, "") + "</Tool></ToolOptions>"));
        EXPECT_EQ(Get("a", name), "");
    }
}

TEST_F(OptionsStore, LoadingTheToolManagerMakesTheMissingSortOptions) {
    LoadWithFile(Options(Tool("SOV02", "")));
    ClaimReport("GetOptionValue");
    ClaimReport("GetOptionValue");
    EXPECT_EQ(FileText(), Options(SortOptions()));
}

TEST_F(OptionsStore, ASortOptionOfAToolWithoutOptionsIsNotMade) {
    LoadWithTools("");
    const std::string before = FileText();
    EXPECT_EQ(Get("other", "optToolSortOrder"), "False");
    EXPECT_EQ(ClaimReport("SetOptionValue").number, own + optionError::NoTool);
    EXPECT_EQ(ClaimReport("GetOptionValue").number, own + optionError::NoOption);
    EXPECT_EQ(FileText(), before);
}

TEST_F(OptionsStore, ReadsTheFileOnce) {
    LoadWithTools(Tool("a", Option("n", "1")));
    installation.Write(file, Options(SortOptions() + Tool("a", Option("n", "2"))));
    EXPECT_EQ(Get("a", "n"), "1");
}

// quotes and other characters

TEST_F(OptionsStore, QuotesMeanWhatThePathThenSays) {
    LoadWithTools(Tool("a", Option("n", "1")) + Tool("b", Option("m", "2") + Option("\"q\"", "3")));
    EXPECT_EQ(Get("b", "\"q\""), "3");
    EXPECT_EQ(Get("x' or @ID='b", "m"), "2");
    ExpectNoRead("it's", "n", "refused");
    ExpectNoRead("a", "n']", "refused");
    ExpectNoRead("a", "[1]", "has no option");
    EXPECT_EQ(Set("it's", "n", "1", "True"), "False");
    ClaimReport("SetOptionValue");
}

TEST_F(OptionsStore, AMebibyteOfNameOrIdentifierIsJustMissing) {
    LoadWithTools(Tool("a", Option("n", "1")));
    const std::string large(std::size_t{1} << 20, 'x');
    ExpectNoRead("a", large, "has no option");
    ExpectNoRead(large, "n", "has no option");
    ExpectNoRead("a", large + "'", "refused");
}

TEST_F(OptionsStore, AMebibyteOfValueIsKept) {
    LoadWithTools(Tool("a", Option("n", "1")));
    const std::string large(std::size_t{1} << 20, 'x');
    EXPECT_EQ(Set("a", "n", large), "True");
    EXPECT_EQ(Get("a", "n"), large);
    EXPECT_THAT(FileText(), HasSubstr(large));
}

TEST_F(OptionsStore, ATextThatXmlCannotHoldIsRefused) {
    LoadWithTools(Tool("a", Option("n", "1")));
    const std::string before = FileText();
    const auto set = [&](std::string_view name, std::string_view value) {
        const RequestRef request = Probe().NewRequest(request::SetOptionValue);
        AddText(request->Parameters(), "ToolID", "a");
        AddText(request->Parameters(), "OptionName", name);
        AddText(request->Parameters(), "OptionValue", value);
        AddText(request->Parameters(), "AddMissing", "True");
        return Probe().SetOptionValue(request);
    };
    EXPECT_EQ(set("n", "\x01"), "False");
    ClaimReport("SetOptionValue");
    EXPECT_EQ(set("\x01", "1"), "False");
    ClaimReport("SetOptionValue");
    EXPECT_EQ(FileText(), before);
    EXPECT_EQ(Get("a", "n"), "1");
    EXPECT_EQ(set("n", "2"), "True");
    EXPECT_EQ(Get("a", "n"), "2");
}

// writing

TEST_F(OptionsStore, AWriteSavesTheWholeDocument) {
    LoadWithTools(Tool("a", Option("n", "1") + Option("m", "2")));
    EXPECT_EQ(Set("a", "n", "Süd & <Nord>"), "True");
    EXPECT_EQ(Get("a", "n"), "Süd & <Nord>");
    EXPECT_EQ(FileText(),
              Options(SortOptions() + Tool("a", Option("n", "Süd &amp; &lt;Nord&gt;") + Option("m", "2"))));
}

TEST_F(OptionsStore, AWriteToToolsDirectlyUnderTheRootIsSavedToo) {
    LoadWithFile("<?xml version=\"1.0\"?>\n<Options>" + SortOptions() + Tool("a", Option("n", "1")) +
                 "</Options>");
    EXPECT_EQ(Set("a", "n", "2"), "True");
    EXPECT_EQ(FileText(), "<Options>" + SortOptions() + Tool("a", Option("n", "2")) + "</Options>");
}

TEST_F(OptionsStore, AFileInAnotherEncodingIsReadAndSavedAsUtf8) {
    LoadWithFile("<?xml version=\"1.0\" encoding=\"windows-1250\"?>\n<Options>" + SortOptions() +
                 Tool("a", Option("n", "\xA3\xF3"
                                       "d\x9F")) +
                 "</Options>");
    EXPECT_EQ(Get("a", "n"), "Łódź");
    EXPECT_EQ(Set("a", "n", "Łódź, 語"), "True");
    EXPECT_EQ(FileText(), "<Options>" + SortOptions() + Tool("a", Option("n", "Łódź, 語")) + "</Options>");
}

TEST_F(OptionsStore, AFileMayNameItsRootInADocumentType) {
    LoadWithFile("<!DOCTYPE Options>\n<Options>" + SortOptions() + Tool("a", Option("n", "1")) +
                 "</Options>");
    EXPECT_EQ(Get("a", "n"), "1");
    EXPECT_EQ(Set("a", "n", "2"), "True");
    EXPECT_EQ(Get("a", "n"), "2");
}

TEST_F(OptionsStore, TextsOfAnyKindComeBackFromTheFile) {
    LoadWithTools(Tool("a", Option("n", "1")));
    for (const std::string_view value :
         {"line\nbreak", "carriage\rreturn", "\t", " ", "\"'", "\U0001F600", "]]>"}) {
        ASSERT_EQ(Set("a", "n", value), "True");
        base::XmlDocument saved;
        saved.LoadText(FileText());
        EXPECT_EQ(saved.SelectSingle("//Tool[@ID='a']/Option/Value").Text(), value);
    }
}

TEST_F(OptionsStore, AMissingOptionIsMadeOnlyOnDemand) {
    LoadWithTools(Tool("a", Option("n", "1")));
    const std::string before = FileText();
    for (const std::string_view no : {"False", "0", "", "perhaps"}) {
        EXPECT_EQ(Set("a", "new", "x", no), "False");
        EXPECT_EQ(ClaimReport("SetOptionValue").number, own + optionError::NoOption);
    }
    EXPECT_EQ(FileText(), before);
    EXPECT_EQ(
        Request(request::SetOptionValue, {{"ToolID", "a"}, {"OptionName", "new"}, {"OptionValue", "x"}}),
        "False");
    ClaimReport("SetOptionValue");
    EXPECT_EQ(Set("a", "new", "x", "True"), "True");
    EXPECT_EQ(Set("a", "newer", "y", "-1"), "True");
    EXPECT_EQ(FileText(), Options(SortOptions() +
                                  Tool("a", Option("n", "1") + Option("new", "x") + Option("newer", "y"))));
}

TEST_F(OptionsStore, EmptyNamesAndIdentifiersAreWrittenAndReadLikeOthers) {
    LoadWithTools(Tool("", Option("n", "1")) + Tool("a", Option("", "2")));
    EXPECT_EQ(Get("", "n"), "1");
    EXPECT_EQ(Get("a", ""), "2");
    EXPECT_EQ(Set("", "n", "3"), "True");
    EXPECT_EQ(Set("a", "", "4"), "True");
    EXPECT_EQ(Set("", "", "5", "True"), "True");
    EXPECT_EQ(Set("a", "m", "6", "True"), "True");
    const auto unnamed = [](std::string_view value) {
        return "<Option><Name/><Value>" + std::string(value) + "</Value></Option>";
    };
    EXPECT_EQ(FileText(), Options(SortOptions() + Tool("", Option("n", "3") + unnamed("5")) +
                                  Tool("a", unnamed("4") + Option("m", "6"))));
}

TEST_F(OptionsStore, AnOptionWithoutChildrenKeepsNoWriteFromTheFile) {
    LoadWithTools(Tool("a", "<Option/>" + Option("n", "1")) + Tool("b", Option("m", "2")));
    EXPECT_EQ(Set("b", "m", "3"), "True");
    EXPECT_EQ(FileText(), Options(SortOptions() + Tool("a", "<Option/>" + Option("n", "1")) +
                                  Tool("b", Option("m", "3"))));
}

TEST_F(OptionsStore, ANewOptionThatCannotBeFinishedIsNotBegun) {
    LoadWithTools(Tool("a", Option("n", "1")));
    const auto make = [&](std::string_view name, std::string_view value) {
        return Probe().SetOptionDefault("a", name, value);
    };
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(make("\x01", "1"), "False");
        ClaimReport("SetOptionValue");
        EXPECT_EQ(make("new", "\x01"), "False");
        ClaimReport("SetOptionValue");
    }
    EXPECT_EQ(Set("a", "n", "2"), "True");
    EXPECT_EQ(FileText(), Options(SortOptions() + Tool("a", Option("n", "2"))));
}

TEST_F(OptionsStore, AToolIsNeverMade) {
    LoadWithTools("");
    const std::string before = FileText();
    EXPECT_EQ(Set("a", "n", "1", "True"), "False");
    const Report report = ClaimReport("SetOptionValue");
    EXPECT_EQ(report.number, own + optionError::NoTool);
    EXPECT_EQ(report.description, "there are no options of a tool \"a\"");
    EXPECT_EQ(FileText(), before);
}

TEST_F(OptionsStore, AWriteToAnOptionWithoutValueIsRefused) {
    LoadWithTools("<Tool ID=\"a\"><Option><Name>n</Name></Option></Tool>");
    EXPECT_EQ(Set("a", "n", "1", "True"), "False");
    EXPECT_EQ(ClaimReport("SetOptionValue").number, own + optionError::NoValue);
}

TEST_F(OptionsStore, SetOptionDefaultMakesWhatIsMissing) {
    LoadWithTools(Tool("a", ""));
    EXPECT_EQ(Probe().SetOptionDefault("a", "n", "x"), "True");
    EXPECT_EQ(Get("a", "n"), "x");
    EXPECT_EQ(Probe().SetOptionDefault("b", "n", "x"), "False");
    ClaimReport("SetOptionValue");
}

TEST_F(OptionsStore, AWriteUnderAProfileWithoutPricesSwitchesThemOff) {
    LoadWithTools(
        Tool("a", Option("chkShowPricing", "ON") + Option("n", "1") + Option("cmbUnitOfMeasure", "")), 1);
    EXPECT_EQ(Set("a", "n", "2"), "True");
    EXPECT_EQ(FileText(), Options(SortOptions() +
                                  Tool("a", "<Option><Name>chkShowPricing</Name><Value>OFF</Value>"
                                            "<Visible>0</Visible></Option>" +
                                                Option("n", "2") + Option("cmbUnitOfMeasure", "English"))));
    EXPECT_EQ(Set("a", "chkShowPricing", "ON"), "True"); // the rules have the last word
    EXPECT_EQ(Get("a", "chkShowPricing"), "OFF");
}

TEST_F(OptionsStore, AWriteUnderAProfileWithPricesKeepsThem) {
    LoadWithTools(Tool("a", Option("chkShowPricing", "ON") + Option("n", "1")), 5);
    EXPECT_EQ(Set("a", "n", "2"), "True");
    EXPECT_THAT(FileText(), HasSubstr("<Value>ON</Value><Visible>-1</Visible>"));
}

TEST_F(OptionsStore, APricingOptionWithoutValueIsReportedAndTheWriteGoesOn) {
    LoadWithFile(Options(SortOptions() + "<Tool ID=\"a\"><Option><Name>chkShowPricing</Name></Option>" +
                         Option("n", "1") + "</Tool>"),
                 1);
    EXPECT_EQ(ClaimReport("SetSecureOptions").number, own + optionError::NoValue); // while it was read
    EXPECT_EQ(Set("a", "n", "2"), "True");
    ClaimReport("SetSecureOptions");
    EXPECT_THAT(FileText(), HasSubstr(Option("n", "2")));
}

TEST_F(OptionsStore, AWriteThatRecordsWouldNotSaveIsRefused) {
    // a set behind one that cannot be read is in no record
    LoadWithTools(Tool("a", Option("n", "1")) + Tool("a", "") + Tool("b", ""));
    const std::string before = FileText();
    EXPECT_EQ(Set("a", "n", "2"), "False");
    EXPECT_EQ(ClaimReport("SetOptionValue").number, own + optionError::UnknownSet);
    EXPECT_EQ(FileText(), before);
    EXPECT_EQ(Get("a", "n"), "2"); // in memory it stays
}

TEST_F(OptionsStore, ARepeatedSetBehindAllOthersIsSaved) {
    LoadWithTools(Tool("a", Option("n", "1")) + Tool("b", "<x/>") + Tool("a", ""));
    EXPECT_EQ(Set("a", "n", "2"), "True");
    EXPECT_THAT(FileText(), HasSubstr(Option("n", "2")));
}

TEST_F(OptionsStore, AWriteThatCannotReachTheFileIsRefusedAndStaysInMemory) {
    LoadWithTools(Tool("a", Option("n", "1")));
    std::filesystem::remove(installation.File(file));
    std::filesystem::create_directory(installation.File(file));
    const auto subscriber = Subscribe("S");
    EXPECT_EQ(Set("a", "n", "2"), "False");
    EXPECT_EQ(ClaimReport("SetOptionValue").number, base::errors::FileAccess);
    EXPECT_TRUE(subscriber->notices.empty());
    EXPECT_EQ(Get("a", "n"), "2");
    std::filesystem::remove(installation.File(file));
    EXPECT_EQ(Set("a", "n", "3"), "True");
    EXPECT_EQ(FileText(), Options(SortOptions() + Tool("a", Option("n", "3"))));
}

TEST_F(OptionsStore, AWriteKeepsLinkAndMode) {
    LoadWithTools(Tool("a", Option("n", "1")));
    const auto real = installation.Folder() / "elsewhere.xml";
    std::filesystem::rename(installation.File(file), real);
    std::filesystem::create_symlink(real, installation.File(file));
    std::filesystem::permissions(real, std::filesystem::perms(0640));
    EXPECT_EQ(Set("a", "n", "2"), "True");
    EXPECT_TRUE(std::filesystem::is_symlink(installation.File(file)));
    EXPECT_EQ(std::filesystem::status(real).permissions(), std::filesystem::perms(0640));
    EXPECT_THAT(FileText(), HasSubstr(Option("n", "2")));
}

TEST_F(OptionsStore, WritesGoToTheFileWhateverTheCaseOfItsName) {
    LoadWithTools(Tool("a", Option("n", "1")));
    std::filesystem::rename(installation.File(file), installation.File("Arvon/options.xml"));
    EXPECT_EQ(Set("a", "n", "2"), "True");
    EXPECT_FALSE(std::filesystem::exists(installation.File(file)));
    EXPECT_THAT(installation.Read("Arvon/options.xml"), HasSubstr(Option("n", "2")));
}

// handing out

TEST_F(OptionsStore, GetOptionDataAnswersWithoutWhatTheDialogDraws) {
    LoadWithTools(
        Tool("a", "<DisplayName>A</DisplayName>" + Option("n", "1") + "<UIRenderer>r</UIRenderer>"));
    const std::string before = FileText();
    // the first tool of the whole text is the one that loses them
    installation.Write(file, Options(Tool("a", "<DisplayName>A</DisplayName>" + Option("n", "1") +
                                                   "<UIRenderer>r</UIRenderer>")));
    EXPECT_EQ(Request(request::GetOptionData, {{"ToolID", "a"}}), Options(Tool("a", Option("n", "1"))));
    EXPECT_THAT(FileText(), HasSubstr("<DisplayName>A</DisplayName>"));
}

TEST_F(OptionsStore, GetOptionDataTakesOnlyTheFirstOfEachFromTheFirstToolAlone) {
    LoadWithTools("");
    const std::string two = "<DisplayName>1</DisplayName><UIRenderer>1</UIRenderer>"
                            "<DisplayName>2</DisplayName><UIRenderer>2</UIRenderer>";
    installation.Write(file, Options(Tool("a", two) + Tool("b", two)));
    EXPECT_EQ(Request(request::GetOptionData, {{"ToolID", "b"}}),
              Options(Tool("a", "<DisplayName>2</DisplayName><UIRenderer>2</UIRenderer>") + Tool("b", two)));
}

TEST_F(OptionsStore, GetOptionDataKeepsTheOtherChildrenOfATool) {
    LoadWithTools("");
    for (const std::string_view drawn : {"", "<DisplayName/>", "<UIRenderer/>"}) {
        installation.Write(file, Options(Tool("a", std::string(drawn) + Option("n", "1"))));
        EXPECT_EQ(Request(request::GetOptionData, {{"ToolID", "a"}}), Options(Tool("a", Option("n", "1"))));
    }
}

TEST_F(OptionsStore, GetOptionDataOfAToolWithoutOptionsIsEmptyAndSubscribesItOnce) {
    LoadWithTools("");
    EXPECT_EQ(Request(request::GetOptionData, {{"ToolID", "none"}}), "");
    EXPECT_EQ(Request(request::GetOptionData, {{"ToolID", "none"}}), "");
    EXPECT_THAT(Probe().Subscribers(), ElementsAre("", "none"));
}

TEST_F(OptionsStore, HandedOutOptionsFollowThePricingRulesAndTheFileDoesNot) {
    LoadWithTools(Tool("a", Option("chkShowPricing", "ON")), 1);
    const std::string before = FileText();
    EXPECT_THAT(
        Probe().getOptionData(""),
        HasSubstr("<Option><Name>chkShowPricing</Name><Value>OFF</Value><Visible>0</Visible></Option>"));
    EXPECT_EQ(FileText(), before);
}

TEST_F(OptionsStore, GetOptionDataReadsTheFileEveryTime) {
    LoadWithTools(Tool("a", Option("n", "1")));
    installation.Write(file, Options(Tool("a", Option("n", "2"))));
    EXPECT_EQ(Probe().getOptionData("a"), Options(Tool("a", Option("n", "2"))));
}

TEST_F(OptionsStore, AnswersOfTheDataServiceThatDoNotComeAreReported) {
    LoadWithTools("");
    for (const std::string_view operation : {"Messaging", "Messaging.CreateRequest", "DataService.Send"}) {
        host->FailNext(operation);
        EXPECT_EQ(Probe().getOptionData("a"), "");
        EXPECT_EQ(ClaimReport("cToolMain.getOptionData").number, 1001);
    }
}

TEST_F(OptionsStore, AsksTheDataServiceForTheToolAndThenForAll) {
    LoadWithTools(Tool("a", ""));
    ForgetCalls();
    Probe().getOptionData("");
    EXPECT_THAT(CallsOf("DataService.AddParameter"),
                ElementsAre("DataService.AddParameter(\"vrex\", \"KvTM10\")",
                            "DataService.AddParameter(\"path\", \"C:\\QUARRA\\Arvon\\OPTIONS.XML\")",
                            "DataService.AddParameter(\"query\", \"\")",
                            "DataService.AddParameter(\"vrex\", \"KvTM10\")",
                            "DataService.AddParameter(\"path\", \"C:\\QUARRA\\Arvon\\OPTIONS.XML\")",
                            "DataService.AddParameter(\"query\", \"//Options\")"));
    ForgetCalls();
    Probe().getOptionData("a");
    EXPECT_THAT(CallsOf("DataService.AddParameter"),
                ElementsAre("DataService.AddParameter(\"vrex\", \"KvTM10\")",
                            "DataService.AddParameter(\"path\", \"C:\\QUARRA\\Arvon\\OPTIONS.XML\")",
                            "DataService.AddParameter(\"query\", \"//Tool[@ID='a']\")",
                            "DataService.AddParameter(\"vrex\", \"KvTM10\")",
                            "DataService.AddParameter(\"path\", \"C:\\QUARRA\\Arvon\\OPTIONS.XML\")",
                            "DataService.AddParameter(\"query\", \"//Options\")"));
}

} // namespace
} // namespace kvtm::test
