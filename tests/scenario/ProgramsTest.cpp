#include "tests/scenario/ConsoleRun.h"

#include <filesystem>

namespace scenario {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

/// The suite's real programs: started, followed, loaded, removed.
class Programs : public Scenario {
protected:
    static std::string Parameter(const Json& message, std::string_view name) {
        const Json parameter = Find(message["parameters"], "name", name);
        if (parameter.is_null()) return "(none)";
        const Json& value = parameter["value"];
        return value.is_string() ? value.get<std::string>() : value.dump();
    }
};

TEST_F(Programs, AreFollowedToTheirEnds) {
    const Transcript run = Run("listen Zarn11\nload\nrequest LaunchTool ToolName=Layout\n"
                               "request LaunchTool ToolName='Load Tables'\nwait 60\nshow processes\n");
    EXPECT_EQ(run.ExitStatus(), 0);
    const std::vector<Json> started = run.Messages("Tool_Load");
    const std::vector<Json> ended = run.Messages("Tool_UnLoad");
    ASSERT_THAT(started, SizeIs(2));
    ASSERT_THAT(ended, SizeIs(2));
    EXPECT_EQ(Parameter(started[0], "vrex"), "Tobr43");
    EXPECT_EQ(Parameter(started[1], "vrex"), "Jx310");
    EXPECT_THAT(
        (std::vector<std::string>{Parameter(ended[0], "ProcessID"), Parameter(ended[1], "ProcessID")}),
        testing::UnorderedElementsAre(Parameter(started[0], "ProcessID"),
                                      Parameter(started[1], "ProcessID")));
    EXPECT_THAT(run.State("processes"), IsEmpty());
}

TEST_F(Programs, AreShownWithTheirRecordsTimesAndEnds) {
    const Transcript run = Run("load\nshow runs\nrequest LaunchTool 'ToolName=Grid Check'\nwait\nshow runs\n"
                               "request LaunchTool ToolName=Layout\nshow runs\n");
    EXPECT_THAT(run.Errors(), IsEmpty());
    const Json runs = run.State("runs");
    ASSERT_EQ(runs.size(), 2u);
    EXPECT_EQ(runs[0].at("name"), "Grid Check");
    EXPECT_EQ(runs[0].at("vrex"), "Jx355");
    EXPECT_EQ(runs[0].at("commandLine"), "C:\\QUARRA\\Jx355\\Grid Check\\Jx355 Grid.exe --seconds 2");
    EXPECT_EQ(runs[0].at("exitCode"), 0);
    EXPECT_TRUE(runs[0].at("signal").is_null());
    EXPECT_THAT(runs[0].at("ended").get<std::string>(),
                testing::MatchesRegex("[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{3}Z"));
    EXPECT_LT(runs[0].at("started").get<std::string>(), runs[0].at("ended").get<std::string>());
    EXPECT_EQ(runs[1].at("name"), "Layout");
    EXPECT_TRUE(runs[1].at("ended").is_null());
    EXPECT_TRUE(runs[1].at("exitCode").is_null());
    std::vector<std::string> members;
    for (const auto& [member, value] : runs[0].items())
        members.push_back(member);
    EXPECT_THAT(members,
                ElementsAre("name", "vrex", "id", "commandLine", "started", "ended", "exitCode", "signal"));
}

TEST_F(Programs, MayEndInAnyOrder) {
    const std::string longer = "'Plot Queue'", shorter = "'Grid Check'"; // three seconds and two
    for (const auto& [first, second] : {std::pair(longer, shorter), std::pair(shorter, longer)}) {
        const Transcript run = Run("listen Zarn11\nload\nrequest LaunchTool ToolName=" + first +
                                   "\nrequest LaunchTool ToolName=" + second + "\nwait 60\n");
        const std::vector<Json> changes = run.Of("process");
        ASSERT_THAT(changes, SizeIs(4));
        const std::size_t sooner = first == shorter ? 0 : 1;
        EXPECT_THAT(changes[sooner].at("commandLine").get<std::string>(), HasSubstr("Jx355 Grid.exe"));
        EXPECT_EQ(changes[2].at("id"), changes[sooner].at("id"));
        EXPECT_EQ(changes[3].at("id"), changes[1 - sooner].at("id"));
        const std::vector<Json> told = run.Messages("Tool_UnLoad");
        ASSERT_THAT(told, SizeIs(2));
        EXPECT_EQ(Parameter(told[0], "ProcessID"), changes[2].at("id").dump());
        EXPECT_EQ(Parameter(told[1], "ProcessID"), changes[3].at("id").dump());
    }
}

TEST_F(Programs, AreNewInTheCatalogueOnceTheGeneratorHasRunAndToldOfOnce) {
    namespace fs = std::filesystem;
    fs::create_directory(File("drive_c/QUARRA/Jx388"));
    fs::copy_file(File("drive_c/QUARRA/Jx377/Jx377.exe"), File("drive_c/QUARRA/Jx388/Jx388.exe"));
    Write("drive_c/QUARRA/Jx388/Program.xml",
          "<Program><Tool Name=\"Gantry\" VREX=\"Jx388\" Identifier=\"GAN88\" Classification=\"Site\" "
          "version=\"1.0\" LastUpdated=\"2024-05-01\" Path=\"C:\\QUARRA\\Jx388\\Jx388.exe\" "
          "CommandLine=\"--seconds 0\"/></Program>");
    const std::string generate = "request LaunchTool ToolName='Catalogue Builder'\nwait 60\n";
    const Transcript run =
        Run("load\ntask tskUpdateTool\nshow tools\n" + generate + generate +
            "node nodTools\nnode nodTools 14\ntask tskShowAll\ntask tskShowAll\nshow tools\nshow list\n"
            "show tabs\nshow menus\nshow toolbar\nbutton btnGAN88\nwait 60\n");
    EXPECT_EQ(run.ExitStatus(), 0);
    EXPECT_THAT(run.Reports(), IsEmpty());
    EXPECT_THAT(run.Boxes(), ElementsAre(HasSubstr("New programs have been added")));

    EXPECT_THAT(Column(run.Of("state").front().at("value"), "Name"), Not(Contains("Gantry")));
    EXPECT_THAT(Column(run.State("tools"), "Name"), Contains("Gantry"));
    EXPECT_THAT(Column(run.State("list"), "key"), Contains("Jx388"));
    const Json node = Find(Find(run.State("tabs"), "key", "tabQRV").at("nodes"), "key", "nodTools");
    EXPECT_THAT(Column(node.at("nodes"), "key"), Contains("Gantry"));
    EXPECT_THAT(Column(Find(run.State("menus"), "key", "mnuTool").at("items"), "key"), Contains("mnuGAN88"));
    EXPECT_THAT(Column(run.State("toolbar"), "key"), Contains("btnGAN88"));
    EXPECT_EQ(Parameter(run.Messages("ShellProcessComplete").back(), "sApplicationNameAndPath"),
              R"(C:\QUARRA\Jx388\Jx388.exe --seconds 0)");
}

TEST_F(Programs, OfTheVantorKindAreAloneWhileOneIsLoaded) {
    const Transcript run = Run("load\nrequest LaunchTool ToolName='Beam & Frame'\nrequest LoadedVantors\n"
                               "request LaunchTool ToolName=Wärmebedarf\nrequest LaunchTool ToolName=Layout\n"
                               "request UnloadTool vrex=vn21 toolID=BMF\nrequest LoadedVantors\n"
                               "request LaunchTool ToolName=Wärmebedarf\nrequest LoadedVantors\n");
    EXPECT_THAT(run.Replies(), ElementsAre("True", "False", "Beam & Frame", "False", "False", "", "", "False",
                                           "Wärmebedarf"));
    EXPECT_THAT(run.Boxes(), ElementsAre(HasSubstr("Unload the current Vantor before starting a new one."),
                                         HasSubstr("Unload the current Vantor before starting a new one.")));
    EXPECT_THAT(run.Of("process"), IsEmpty());
}

TEST_F(Programs, OfTheVantorKindHoldTheMenuAndAreToldOfWhileTheyAreLoaded) {
    const std::string show = "show loaded\nshow menus\n";
    const std::string script = "load\nlisten Zarn11\nlisten WORKFLOW\n"
                               "request LaunchTool ToolName='Beam & Frame'\n";
    const auto item = [](const Transcript& run) {
        return Find(Find(run.State("menus"), "key", "mnuTool").at("items"), "key", "mnuLAY43");
    };
    const Transcript held = Run(script + show);
    EXPECT_THAT(Column(held.State("loaded"), "name"), ElementsAre("Beam & Frame"));
    EXPECT_EQ(item(held).at("enabled"), false);
    EXPECT_THAT(held.Messages("Tool_Load"), SizeIs(2)); // Zarn11, SnapIn
    EXPECT_THAT(Read("drive_c/QUARRA/Arvon/Bin/UIKeys.txt"),
                HasSubstr(R"(ReportsLogoFile=C:\QUARRA\Enviro\logo-v3.jpg)"));

    const Transcript run = Run(script + "unload-tool 'Beam & Frame'\n" + show +
                               "request LaunchTool ToolName=Wärmebedarf\nshow loaded\n");
    EXPECT_EQ(item(run).at("enabled"), true);
    EXPECT_THAT(run.Boxes(), IsEmpty());
    EXPECT_THAT(run.Messages("ToolUnloaded"), SizeIs(1));
    EXPECT_THAT(run.Messages("Tool_Unload"), SizeIs(2));
    EXPECT_THAT(Column(run.State("loaded"), "name"), ElementsAre("Wärmebedarf"));
    EXPECT_THAT(Read("drive_c/QUARRA/Arvon/Bin/UIKeys.txt"),
                HasSubstr(R"(ReportsLogoFile=C:\QUARRA\Enviro\logo-h3.jpg)"));
}

TEST_F(Programs, AreGoneEverywhereAfterTheirRemoval) {
    const std::filesystem::path program = File("drive_c/QUARRA/Jx355");
    ASSERT_TRUE(std::filesystem::exists(program));
    const std::string show = "show list\nshow menus\nshow toolbar\nshow tabs\nshow tools\n";
    const auto places = [this](const Transcript& run) {
        const Json node = Find(Find(run.State("tabs"), "key", "tabQRV").at("nodes"), "key", "nodTools");
        const Json menu = Find(run.State("menus"), "key", "mnuTool").at("items");
        return std::vector<std::vector<std::string>>{
            Column(run.State("list"), "key"),    Column(run.State("tools"), "VREX"),
            Column(node.at("nodes"), "key"),     Column(menu, "key"),
            Column(run.State("toolbar"), "key"),
        };
    };
    const std::vector<std::string> keys{"Jx355", "Jx355", "Grid Check", "mnuGRD55", "btnGRD55"};

    const auto before = places(Run("load\nnode nodTools 14\n" + show));
    const Transcript run = Run("load\nnode nodTools 14\nitem 'Grid Check' 5\ntask tskRemoveTool\n" + show);
    const auto after = places(run);
    for (std::size_t place = 0; place < keys.size(); ++place) {
        EXPECT_THAT(before[place], Contains(keys[place]));
        EXPECT_THAT(after[place], Not(Contains(keys[place])));
        EXPECT_EQ(after[place].size() + 1, before[place].size()) << keys[place]; // and nothing else
    }
    EXPECT_FALSE(std::filesystem::exists(program));
    EXPECT_THAT(Read("drive_c/QUARRA/Arvon/Tools.xml"), Not(HasSubstr("Jx355")));
    EXPECT_TRUE(std::filesystem::exists(File("drive_c/QUARRA/Jx320/Jx320.exe")));
    EXPECT_THAT(run.Boxes(), IsEmpty());
    EXPECT_THAT(run.Reports(), IsEmpty());
    EXPECT_THAT(Column(Run("load\nshow list\n").State("list"), "key"), Not(Contains("Jx355")));
}

TEST_F(Programs, ThatAreKilledAreNoticedLikeThoseThatEnd) {
    // one program ends the other, as a user would from a task list
    std::string catalogue = Read("drive_c/QUARRA/Arvon/Tools.xml");
    const std::string path = R"(Path="C:\QUARRA\Tobr43\Tobr43.exe" CommandLine="")";
    ASSERT_NE(catalogue.find(path), std::string::npos);
    catalogue.replace(catalogue.find(path), path.size(),
                      "Path=\"/usr/bin/timeout\" CommandLine=\"-s KILL 0.2 sleep 60\"");
    Write("drive_c/QUARRA/Arvon/Tools.xml", catalogue);
    const Transcript run =
        Run("listen Zarn11\nload\nrequest LaunchTool ToolName=Layout\nwait 60\nshow processes\nshow runs\n");
    EXPECT_EQ(run.ExitStatus(), 0);
    ASSERT_THAT(run.Of("process"), SizeIs(2));
    EXPECT_EQ(run.Of("process").back().at("exitCode"), 137);
    const Json ended = run.State("runs").at(0);
    EXPECT_EQ(ended.at("signal"), 9);
    EXPECT_TRUE(ended.at("exitCode").is_null());
    EXPECT_THAT(run.Messages("Tool_UnLoad"), SizeIs(1));
    EXPECT_THAT(run.State("processes"), IsEmpty());
}

TEST_F(Programs, ReadAndWriteTheirOptionsThroughTheFile) {
    const Transcript run =
        Run("load\nlisten Tobr43\n"
            "request GetOptionValue ToolID=Tobr43 OptionName=cmbSheet AddSubscriber=-1 "
            "SubscriberID=Tobr43\n"
            "request SetOptionValue ToolID=Tobr43 OptionName=cmbSheet OptionValue='A1 portrait'\n"
            "request GetOptionValue ToolID=Tobr43 OptionName=cmbSheet\n");
    EXPECT_THAT(run.Replies(), ElementsAre("True", "A3 landscape", "True", "A1 portrait"));
    EXPECT_THAT(run.Messages("NewOptions"), SizeIs(1));
    EXPECT_THAT(Read("drive_c/QUARRA/Arvon/OPTIONS.XML"), HasSubstr("<Value>A1 portrait</Value>"));
    const Transcript again = Run("load\nrequest GetOptionValue ToolID=Tobr43 OptionName=cmbSheet\n");
    EXPECT_EQ(again.Replies().back(), "A1 portrait");
}

} // namespace scenario
