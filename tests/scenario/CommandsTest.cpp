#include "tests/scenario/ConsoleRun.h"

#include <algorithm>

namespace scenario {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

/// Every command, on the whole suite.
class Commands : public Scenario {
protected:
    static std::vector<std::string> MembersOf(const Json& entry) {
        std::vector<std::string> names;
        for (const auto& member : entry.items())
            names.push_back(member.key());
        return names;
    }
};

TEST_F(Commands, LoadAndUnloadBringKvTM10InAndOut) {
    const Transcript run = Run("load\nshow menus\nunload\nshow tabs\nshow views\n");
    EXPECT_THAT(run.Replies(), ElementsAre("True"));
    EXPECT_THAT(Column(run.State("menus"), "key"), Contains("mnuTool"));
    EXPECT_THAT(Find(run.State("tabs"), "key", "tabQRV").at("nodes"), IsEmpty());
    EXPECT_THAT(Column(run.State("views"), "key"), ElementsAre("ocxToolsUpdate"));
}

TEST_F(Commands, LoadMayFollowUnload) {
    const Transcript run = Run("load\nunload\nload\nshow menus\n");
    EXPECT_EQ(run.ExitStatus(), 0);
    EXPECT_THAT(run.Replies(), ElementsAre("True", "True"));
    EXPECT_THAT(Column(run.State("menus"), "key"), Contains("mnuTool"));
}

TEST_F(Commands, LoadAndUnloadAreRefusedWhereTheyMakeNoSense) {
    const Transcript run = Run("unload\nload\nload\nunload\nunload\n");
    EXPECT_THAT(run.Errors(), ElementsAre("KvTM10 is not loaded", "KvTM10 is loaded already"));
}

TEST_F(Commands, BeforeLoadAreErrorsWhereTheyNeedKvTM10) {
    const Transcript run =
        Run("request LoadedVantors\nevent 0 x\nmessage 2 x\nmenu mnuLAY43\nbutton btnLAY43\n"
            "task tskLaunchTool\ntask tskAddTool\nnode nodTools\ntab\nitem Layout\n"
            "column version 0\n");
    EXPECT_EQ(run.ExitStatus(), 1);
    EXPECT_THAT(run.Errors(), SizeIs(11));
    EXPECT_THAT(run.Of("done"), IsEmpty());
    EXPECT_THAT(run.Of("message"), IsEmpty());
}

TEST_F(Commands, ThatShowAHostWithoutKvTM10Work) {
    const Transcript run = Run("show tools\nshow listeners\nshow list\n");
    EXPECT_EQ(run.ExitStatus(), 0);
    EXPECT_THAT(Column(run.State("tools"), "VREX"), Contains("Tobr43"));
    EXPECT_THAT(run.State("listeners"), ElementsAre("SnapIn"));
    EXPECT_THAT(run.State("list"), IsEmpty());
}

TEST_F(Commands, NeedAsManyWordsAsTheyHave) {
    const Transcript run =
        Run("load now\nrequest\nevent 0\nmenu\nitem\nshow\nshow a b\nmessage 2\ntask-permission x\n");
    EXPECT_THAT(run.Errors(), SizeIs(9));
    EXPECT_THAT(run.Errors(), testing::Each(StartsWith("expected: ")));
}

TEST_F(Commands, ReadNumbersAndParametersStrictly) {
    const Transcript run =
        Run("load\nevent menu x\nnode nodTools five\ntab x\nitem Layout x\n"
            "item Layout 1 checked=maybe\nrequest LaunchTool Layout\nwait soon\nwait -1\n");
    EXPECT_THAT(run.Errors(), ElementsAre(HasSubstr("OBJECTTYPE"), HasSubstr("KIND"), HasSubstr("KIND"),
                                          HasSubstr("KIND"), HasSubstr("checked"), HasSubstr("name=value"),
                                          HasSubstr("SECONDS"), HasSubstr("SECONDS")));
}

TEST_F(Commands, ItemTakesOneKindAndOneCheck) {
    const Transcript run = Run("load\nitem Layout 1 5\nitem Layout checked=True checked=False\n"
                               "item Layout checked=False 1\nshow tools\n");
    EXPECT_THAT(run.Errors(),
                ElementsAre(StartsWith("expected: item NAME"), StartsWith("expected: item NAME")));
    EXPECT_EQ(Find(run.State("tools"), "Name", "Layout").at("ShowInList"), false);
}

TEST_F(Commands, OfAUserAreRefusedForThingsThatAreNotThere) {
    const Transcript run =
        Run("load\nmenu mnuX\nbutton btnX\ntask tskX\nnode nodX\nitem X\ncolumn X 0\nclose X\n"
            "unload-tool X\nunlisten X\nshow X\n");
    EXPECT_THAT(run.Errors(), ElementsAre("no menu item \"mnuX\"", "no button \"btnX\"", "no task \"tskX\"",
                                          "no node \"nodX\"", "no row \"X\"", "no column \"X\"",
                                          "no window \"X\"", "no loaded tool \"X\"", "no listener \"X\"",
                                          StartsWith("nothing to show under \"X\"")));
}

TEST_F(Commands, ShowThePartsInTheirFixedShapes) {
    const Transcript run =
        Run("load\nshow tools\nshow list\nshow columns\nshow menus\nshow toolbar\nshow tabs\n"
            "show views\nshow taskviews\n");
    const auto first = [&](const char* part) { return MembersOf(run.State(part).front()); };
    EXPECT_THAT(first("tools"),
                ElementsAre("Name", "VREX", "Identifier", "Classification", "ShowInList", "version",
                            "LastUpdated", "Kind", "Brand", "ProgramType", "Path", "CommandLine"));
    EXPECT_THAT(first("list"),
                ElementsAre("key", "text", "checked", "version", "lastupdated", "classification"));
    EXPECT_THAT(first("columns"), ElementsAre("key", "caption", "width"));
    EXPECT_THAT(first("menus"), ElementsAre("key", "caption", "visible", "items"));
    EXPECT_THAT(MembersOf(run.State("menus").front().at("items").front()),
                ElementsAre("key", "caption", "description", "enabled", "separator", "owner"));
    EXPECT_THAT(first("toolbar"), ElementsAre("key", "owner", "visible", "toolTip", "picture", "separator"));
    EXPECT_THAT(first("tabs"), ElementsAre("key", "caption", "nodes", "selected"));
    EXPECT_THAT(MembersOf(run.State("tabs").front().at("nodes").front()),
                ElementsAre("key", "caption", "image", "view", "taskView", "nodes"));
    EXPECT_THAT(first("views"),
                ElementsAre("key", "kind", "owner", "control", "caption", "width", "height", "mode"));
    EXPECT_THAT(first("taskviews"), ElementsAre("key", "kind", "owner", "title", "texts", "listControl",
                                                "resourceBase", "visible", "tasks"));
    EXPECT_THAT(MembersOf(run.State("taskviews").front().at("tasks").front()),
                ElementsAre("key", "caption", "icon", "description"));
}

TEST_F(Commands, ButtonStartsAProgramAndWaitDeliversItsEnd) {
    const Transcript run =
        Run("load\nlisten Zarn11\nbutton btnLAY43\nshow processes\nwait 60\nshow processes\n");
    EXPECT_EQ(run.ExitStatus(), 0);
    const std::vector<Json> changes = run.Of("process");
    ASSERT_THAT(changes, SizeIs(2));
    EXPECT_EQ(changes[0].at("change"), "started");
    EXPECT_EQ(changes[0].at("commandLine"), R"(C:\QUARRA\Tobr43\Tobr43.exe)");
    EXPECT_EQ(changes[1].at("change"), "ended");
    EXPECT_EQ(changes[1].at("id"), changes[0].at("id"));
    EXPECT_THAT(run.Messages("Tool_Load"), SizeIs(1));
    EXPECT_THAT(run.Messages("ShellProcessComplete"), SizeIs(1));
    EXPECT_THAT(run.Messages("Tool_UnLoad"), SizeIs(1));
    EXPECT_THAT(run.State("processes"), IsEmpty());
}

TEST_F(Commands, WaitGivesUpAfterItsSeconds) {
    const Transcript run = Run("load\nbutton btnPLQ44\nwait 0.05\nwait 60\n");
    EXPECT_THAT(run.Errors(), ElementsAre(StartsWith("after 0.05 s still running: 1")));
    EXPECT_THAT(run.Of("process"), SizeIs(2));
}

TEST_F(Commands, WaitIsOverAtOnceWhenNothingRuns) {
    EXPECT_EQ(Run("wait\nwait 5\n").ExitStatus(), 0);
}

TEST_F(Commands, ItemWithKind1ChangesTheCheckOfARow) {
    const Transcript run = Run("load\nitem Layout 1 checked=False\nshow tools\n");
    EXPECT_EQ(Find(run.State("tools"), "Name", "Layout").at("ShowInList"), false);
    EXPECT_THAT(run.Reports(), IsEmpty());
}

TEST_F(Commands, ColumnSortsTheListBothWays) {
    const auto names = [&](const char* script) { return Column(Run(script).State("list"), "text"); };
    std::vector<std::string> ascending = names("load\ncolumn name 0\nshow list\n");
    ASSERT_GT(ascending.size(), 2u);
    EXPECT_TRUE(std::is_sorted(ascending.begin(), ascending.end()));
    std::reverse(ascending.begin(), ascending.end());
    EXPECT_EQ(names("load\ncolumn name 1\nshow list\n"), ascending);
}

TEST_F(Commands, ListenAnswersUntilUnlisten) {
    const std::string write = "request SetOptionValue ToolID=Tobr43 OptionName=cmbSheet OptionValue=";
    const Transcript run =
        Run("load\nlisten Jx310 yes\nshow listeners\nrequest GetOptionData ToolID=Jx310\n" + write +
            "A1\nunlisten Jx310\n" + write + "A2\n");
    EXPECT_EQ(run.ExitStatus(), 0);
    EXPECT_THAT(run.State("listeners"), Contains("Jx310"));
    const std::vector<Json> notices = run.Messages("NewOptions");
    ASSERT_THAT(notices, SizeIs(1));
    EXPECT_EQ(notices.front().at("destination"), "Jx310");
    EXPECT_EQ(notices.front().at("reply"), "yes");
    EXPECT_THAT(Run("listen A\nunlisten A\nshow listeners\n").State("listeners"), Not(Contains("A")));
}

TEST_F(Commands, TaskPermissionEnablesTheButtonsOfATool) {
    const auto enabled = [this](const std::string& permissions) {
        std::vector<std::string> buttons;
        const Transcript run = Run(permissions + "load\nnode nodTools 14\nnode Layout\nrequest Initialize\n");
        for (const Json& call : run.Of("call"))
            if (call.at("operation") == "Control.Set") buttons.push_back(call.at("arguments").dump());
        return buttons;
    };
    EXPECT_THAT(enabled(""),
                ElementsAre(R"(["GetUpdateButton.Enabled",false])", R"(["GetLaunchButton.Enabled",false])"));
    EXPECT_THAT(enabled("task-permission 'Can Launch' Layout\ntask-permission 'Can Update' Other\n"),
                ElementsAre(R"(["GetUpdateButton.Enabled",false])", R"(["GetLaunchButton.Enabled",true])"));
}

TEST_F(Commands, TaskLaunchesRemovesEditsOrUpdatesTheCurrentRow) {
    const Transcript run = Run("load\nitem 'Unit Converter' 5\ntask tskLaunchTool\nshow loaded\n"
                               "task tskEditTool\ntask tskAddTool\ntask tskUpdateTool\n"
                               "item 'Remote Assistance' 5\ntask tskRemoveTool\nshow tools\n");
    EXPECT_EQ(run.ExitStatus(), 0);
    EXPECT_THAT(run.Reports(), IsEmpty());
    EXPECT_THAT(Column(run.State("loaded"), "name"), ElementsAre("Unit Converter"));
    std::vector<std::string> edited;
    for (const Json& call : run.Of("call"))
        if (call.at("operation") == "Tools.Edit") edited.push_back(call.at("arguments").dump());
    EXPECT_THAT(edited, ElementsAre(R"(["Unit Converter","HandleTaskEvent"])"));
    std::vector<std::string> flags;
    for (const Json& request : run.Messages("ShowUpdates"))
        flags.push_back(request.at("parameters").front().at("value"));
    EXPECT_THAT(flags, ElementsAre("True", "False"));
    EXPECT_THAT(run.Boxes(), ElementsAre(StartsWith("Only programs whose Program Type is ")));
    EXPECT_THAT(Column(run.State("tools"), "Name"), Contains("Remote Assistance"));
}

TEST_F(Commands, ItemMakesTheRowTheCurrentOneAndOpensIt) {
    const Transcript run = Run("load\ntask tskLaunchTool\nshow loaded\nitem 'Unit Converter'\nshow loaded\n");
    EXPECT_THAT(run.Of("state").front().at("value"), IsEmpty()); // no row was current
    EXPECT_THAT(Column(run.State("loaded"), "name"), ElementsAre("Unit Converter"));
}

TEST_F(Commands, EventOfAProgramThatNobodyStartedIsToldAllTheSame) {
    const Transcript run =
        Run("load\nlisten Zarn11\n"
            "event 0 ShellProcessComplete sApplicationNameAndPath=x\\Jx399.exe lProcessID=12\n"
            "event 0 ShellProcessComplete lProcessID=0\nevent 7 Anything\n");
    ASSERT_THAT(run.Messages("Tool_UnLoad"), SizeIs(1));
    const Json parameters = run.Messages("Tool_UnLoad").front().at("parameters");
    EXPECT_EQ(Find(parameters, "name", "vrex").at("value"), "Jx399");
    EXPECT_EQ(Find(parameters, "name", "ProcessID").at("value"), 12);
}

TEST_F(Commands, CloseTakesAWindowAwayAndLeavesItsView) {
    const Transcript run =
        Run("load\nmenu mnuToolOptions\nshow windows\nclose ocxToolOptions\nshow windows\nshow views\n");
    EXPECT_EQ(run.ExitStatus(), 0);
    EXPECT_THAT(Column(run.Of("state").front().at("value"), "key"), ElementsAre("ocxToolOptions"));
    EXPECT_THAT(run.State("windows"), IsEmpty());
    EXPECT_THAT(Column(run.State("views"), "key"), Contains("lvTools"));
}

TEST_F(Commands, UnloadToolAsksTheToolManagerAndClosesTheTool) {
    const Transcript run =
        Run("load\nitem 'Beam & Frame'\nrequest LoadedVantors\nunload-tool 'Beam & Frame'\nshow loaded\n"
            "request LoadedVantors\nitem 'Unit Converter'\nunload-tool Qx07\nshow loaded\n");
    EXPECT_EQ(run.ExitStatus(), 0);
    EXPECT_THAT(run.Replies(), ElementsAre("True", "Beam & Frame", ""));
    EXPECT_THAT(run.Messages("UnloadTool"), SizeIs(2));
    EXPECT_THAT(run.State("loaded"), IsEmpty());
}

TEST_F(Commands, RefuseKeepsAToolOutUnderAnyOfItsNames) {
    for (const char* name : {"'Unit Converter'", "Qx07", "UNI07"}) {
        const Transcript run = Run(std::string("refuse ") + name +
                                   "\nload\nitem 'Unit Converter'\n"
                                   "request LaunchTool ToolName='Unit Converter'\nshow loaded\n");
        EXPECT_THAT(run.State("loaded"), IsEmpty()) << name;
        EXPECT_EQ(run.Replies().back(), "-1") << name;
        EXPECT_THAT(run.Boxes(), SizeIs(2)) << name;
    }
}

TEST_F(Commands, LanguageIsTheAnswerToTheNextSwitchAlone) {
    const std::string update = "request UpdateOptions 'Options=<Options><Tool ID=\"SOV02\"><Option>"
                               "<Name>cmbLanguage</Name><Value>LANGUAGE</Value></Option></Tool></Options>'\n";
    const auto updateTo = [&](const std::string& language) {
        std::string request = update;
        return request.replace(request.find("LANGUAGE"), 8, language);
    };
    const Transcript run = Run("load\nlanguage Polski\n" + updateTo("1045") + "request GetResourcePath\n" +
                               "language ''\n" + updateTo("1031") + "request GetResourcePath\n");
    EXPECT_THAT(run.Boxes(), SizeIs(2));
    const std::vector<std::string> replies = run.Replies();
    ASSERT_THAT(replies, SizeIs(5));
    EXPECT_EQ(replies[2], R"(C:\QUARRA\Arvon\resources\1045)");
    EXPECT_EQ(replies[4], R"(C:\QUARRA\Arvon\resources\1045)");
}

TEST_F(Commands, QuitLeavesTheRestUndone) {
    const Transcript run = Run("load\nquit\nmenu mnuX\n");
    EXPECT_EQ(run.ExitStatus(), 0);
    EXPECT_THAT(run.Errors(), IsEmpty());
    EXPECT_EQ(run.Of("done").size(), 2u);
}

TEST_F(Commands, HelpExplainsAllOrOne) {
    const Transcript run = Run("help\nhelp menu\nhelp dance\n");
    EXPECT_THAT(run.Of("help"), SizeIs(testing::Gt(20u)));
    EXPECT_EQ(run.Of("help").back().at("command"), "menu");
    EXPECT_EQ(run.Of("help").back().at("arguments"), "KEY");
    EXPECT_THAT(run.Errors(), ElementsAre(StartsWith("unknown command \"dance\"")));
}

TEST_F(Commands, EndWithDoneOrAnErrorEach) {
    const Transcript run = Run("load\nmenu mnuX\nrequest LoadedVantors\nunload\n");
    EXPECT_THAT(run.Story(),
                ElementsAre("event tabQRV", "reply True", "done load", "error menu", "request LoadedVantors",
                            "pointer", "reply ", "done request", "done unload"));
}

} // namespace scenario
