#include "tests/options/OptionsFixture.h"

#include "core/Names.h"
#include "options/OptionErrors.h"
#include "options/ToolOptions.h"

#include <gmock/gmock.h>

namespace kvtm::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class OptionsView : public OptionsTest {
protected:
    static std::string With(std::string_view value, std::string_view more = {}) {
        return Options(SortOptions() + Tool("a", Option("n", value) + std::string(more)));
    }
    std::vector<std::string> Pointers() const { return CallsOf("SetMousePointer"); }
    bool IsOpen() const {
        for (const auto& window : host->Model().Windows()) {
            if (window.key == "ocxToolOptions") return true;
        }
        return false;
    }
};

TEST_F(OptionsView, IsAddedOnceHoweverOftenItIsShown) {
    LoadWithTools("");
    Probe().ShowOptionsView();
    Probe().ShowOptionsView();
    EXPECT_EQ(CallsOf("Views.Add").size(), 1u);
    const auto windows = host->Model().Windows();
    ASSERT_EQ(windows.size(), 1u);
    EXPECT_EQ(windows[0].key, "ocxToolOptions");
    EXPECT_EQ(windows[0].kind, 5);
    EXPECT_EQ(windows[0].owner, "KvTM10");
    EXPECT_EQ(windows[0].control, "KvTMU110.ctlOptions");
    EXPECT_EQ(windows[0].caption, "text 35");
    EXPECT_EQ(windows[0].widthTwips, 7800);
    EXPECT_EQ(windows[0].heightTwips, 9500);
    EXPECT_EQ(windows[0].mode, 3);
}

TEST_F(OptionsView, IsOpenedByTheMenuAndInitialisedWithTheWholeText) {
    LoadWithTools(Tool("a", Option("chkShowPricing", "ON")), 1);
    Event(arvon::EventObject::Menu, menu::ToolOptions);
    ASSERT_TRUE(IsOpen());
    const std::string text = Probe().getOptionData("");
    EXPECT_EQ(Probe().OptionsXml(), text);
    EXPECT_THAT(text, HasSubstr("<Value>OFF</Value>"));
    ASSERT_TRUE(Probe().Options());
    EXPECT_EQ(Probe().Options()->XML(), text);
    EXPECT_EQ(Request(request::InitializeOptions), "");
    EXPECT_EQ(host->ControlOf("ocxToolOptions")->Get("Options").ToText(), text);
}

TEST_F(OptionsView, IsShownWithoutOptionsWhenThereAreNone) {
    LoadWithTools("");
    std::filesystem::remove(installation.File(file));
    Event(arvon::EventObject::Menu, menu::ToolOptions);
    ClaimReport("cToolMain.getOptionData");
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(Probe().OptionsXml(), "");
    EXPECT_FALSE(Probe().LoadOptionsForView());
    ClaimReport("cToolMain.getOptionData");
}

TEST_F(OptionsView, IsClosedOnRequest) {
    LoadWithTools("");
    Probe().ShowOptionsView();
    EXPECT_EQ(Request(request::UnloadOptionsTool), "");
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Request(request::UnloadOptionsTool), "");
}

TEST_F(OptionsView, InitializeWithoutAnOpenViewIsNoError) {
    LoadWithTools("");
    EXPECT_EQ(Request(request::InitializeOptions), "");
}

TEST_F(OptionsView, AnUpdateReplacesFileAndDocumentAndTellsTheSubscribers) {
    LoadWithTools(Tool("a", Option("n", "1")));
    const auto subscriber = Subscribe("S");
    ForgetCalls();
    EXPECT_EQ(Request(request::UpdateOptions, {{"Options", With("2")}}), "");
    EXPECT_EQ(FileText(), With("2"));
    EXPECT_EQ(Get("a", "n"), "2");
    EXPECT_THAT(subscriber->notices, ElementsAre(With("2")));
    ASSERT_TRUE(Probe().Options());
    EXPECT_EQ(Probe().Options()->XML(), With("2"));
}

TEST_F(OptionsView, AnUpdateShowsTheHourglassWhileItWorks) {
    LoadWithTools("");
    Request(request::UpdateOptions, {{"Options", With("2")}});
    EXPECT_THAT(Pointers(), ElementsAre("SetMousePointer(11)", "SetMousePointer(0)"));
    ForgetCalls();
    Request(request::UpdateOptions, {{"Options", "no xml"}});
    ClaimReport("HandleRequest");
    EXPECT_THAT(Pointers(), ElementsAre("SetMousePointer(11)", "SetMousePointer(0)"));
}

TEST_F(OptionsView, AnUpdateClosesTheViewFirstWhenAsked) {
    LoadWithTools("");
    for (const std::string_view no : {"0", "True", ""}) {
        Probe().ShowOptionsView();
        Request(request::UpdateOptions, {{"UnloadOptionsTool", no}, {"Options", With("2")}});
        EXPECT_TRUE(IsOpen());
    }
    Request(request::UpdateOptions, {{"UnloadOptionsTool", "-1"}, {"Options", With("3")}});
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(FileText(), With("3"));
    Request(request::UpdateOptions, {{"UnloadOptionsTool", "-1"}, {"Options", With("4")}});
    EXPECT_EQ(FileText(), With("4"));
}

TEST_F(OptionsView, AnUpdateThatIsNotWellFormedChangesNothing) {
    LoadWithTools(Tool("a", Option("n", "1")));
    const std::string before = FileText();
    const auto subscriber = Subscribe("S");
    for (const std::string_view bad : {"", "<Options>", "text", "<a/><b/>"}) {
        EXPECT_EQ(Request(request::UpdateOptions, {{"Options", bad}}), "");
        ClaimReport("HandleRequest");
    }
    EXPECT_EQ(Request(request::UpdateOptions), "");
    ClaimReport("HandleRequest");
    EXPECT_EQ(FileText(), before);
    EXPECT_EQ(Get("a", "n"), "1");
    EXPECT_TRUE(subscriber->notices.empty());
}

TEST_F(OptionsView, AnUpdateByATextThatIsNoOptionsFileChangesNothing) {
    LoadWithTools(Tool("a", Option("n", "1")));
    const std::string before = FileText();
    const auto subscriber = Subscribe("S");
    for (const std::string_view other :
         {"<Config/>", "<Options/>", "<Options><ToolOptions/></Options>", "<Options>text</Options>",
          "<Tool ID=\"a\"/>", "<ToolOptions><Tool ID=\"a\"/></ToolOptions>",
          "<Options><Other><Tool ID=\"a\"/></Other></Options>"}) {
        EXPECT_EQ(Request(request::UpdateOptions, {{"Options", other}}), "");
        EXPECT_EQ(ClaimReport("HandleRequest").number,
                  base::errors::ObjectErrorBase + optionError::NoOptionsText)
            << other;
        EXPECT_TRUE(ClaimReports().empty());
    }
    EXPECT_EQ(FileText(), before);
    EXPECT_EQ(Get("a", "n"), "1");
    EXPECT_TRUE(subscriber->notices.empty());
}

TEST_F(OptionsView, AnUpdateWithToolsDirectlyUnderTheRootIsTakenOver) {
    LoadWithTools(Tool("a", Option("n", "1")));
    const std::string direct = "<Options>" + SortOptions() + Tool("a", Option("n", "2")) + "</Options>";
    EXPECT_EQ(Request(request::UpdateOptions, {{"Options", direct}}), "");
    EXPECT_EQ(FileText(), direct);
    EXPECT_EQ(Get("a", "n"), "2");
}

TEST_F(OptionsView, AnUpdateThatCannotBeSavedChangesNothing) {
    LoadWithTools(Tool("a", Option("n", "1")));
    const auto subscriber = Subscribe("S");
    std::filesystem::remove(installation.File(file));
    std::filesystem::create_directory(installation.File(file));
    EXPECT_EQ(Request(request::UpdateOptions, {{"Options", With("2")}}), "");
    EXPECT_EQ(ClaimReport("HandleRequest").number, base::errors::FileAccess);
    EXPECT_EQ(Get("a", "n"), "1");
    EXPECT_TRUE(subscriber->notices.empty());
}

TEST_F(OptionsView, AnUpdateSortsTheToolsAnewWhileNoneIsLoaded) {
    installation.Write(file, Options(SortOptions()));
    LoadWith({{.name = "A"}, {.name = "B"}});
    const auto first = [&] { return Probe().ListedTools().Item(1)->Name(); };
    EXPECT_EQ(first(), "A");
    const auto sorted = [](std::string_view descending) {
        return Options(
            Tool("SOV02", Option("cmbToolSortKey", "Name") + Option("optToolSortOrder", descending)));
    };
    Request(request::UpdateOptions, {{"Options", sorted("True")}});
    EXPECT_EQ(first(), "B");
    Probe().LoadedTools().Add("A");
    Request(request::UpdateOptions, {{"Options", sorted("False")}});
    EXPECT_EQ(first(), "B");
}

TEST_F(OptionsView, AnUpdateSwitchesTheLanguageWhenItChanged) {
    LoadWithTools("");
    const auto with = [](std::string_view language) { return With("1", Option("cmbLanguage", language)); };
    Request(request::UpdateOptions, {{"Options", with("1033")}}); // the one in force
    EXPECT_THAT(CallsOf("SwitchLanguage"), ElementsAre());
    host->SetLanguageAnswer("1031");
    Request(request::UpdateOptions, {{"Options", with("1031")}});
    EXPECT_THAT(CallsOf("SwitchLanguage"), ElementsAre("SwitchLanguage(\"1031\")"));
    EXPECT_EQ(ClaimBox().text, "text 1034");
    EXPECT_EQ(Probe().LocaleId(), "1031");
}

TEST_F(OptionsView, ALanguageOptionWithoutValueSwitchesNothing) {
    LoadWithTools("");
    Request(request::UpdateOptions, {{"Options", With("1", "<Option><Name>cmbLanguage</Name></Option>")}});
    EXPECT_THAT(CallsOf("SwitchLanguage"), ElementsAre());
}

TEST_F(OptionsView, TheSubscribersHearOfAnUpdateBeforeTheLanguageIsSwitched) {
    LoadWithTools("");
    const auto subscriber = Subscribe("S");
    bool isSwitched = true;
    subscriber->onNotice = [&] { isSwitched = !CallsOf("SwitchLanguage").empty(); };
    host->SetLanguageAnswer("yes");
    Request(request::UpdateOptions, {{"Options", With("1", Option("cmbLanguage", "1031"))}});
    EXPECT_FALSE(isSwitched);
    ClaimBox();
}

} // namespace
} // namespace kvtm::test
