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

TEST_F(Programs, AreGoneEverywhereAfterTheirRemoval) {
    const std::filesystem::path program = File("drive_c/QUARRA/Jx355");
    ASSERT_TRUE(std::filesystem::exists(program));
    const Transcript run = Run(
        "load\nitem 'Grid Check' 5\ntask tskRemoveTool\nshow list\nshow menus\nshow toolbar\nshow tools\n");
    EXPECT_FALSE(std::filesystem::exists(program));
    EXPECT_THAT(Column(run.State("list"), "text"), Not(Contains("Grid Check")));
    EXPECT_THAT(Column(run.State("tools"), "Name"), Not(Contains("Grid Check")));
    EXPECT_THAT(run.State("menus").dump(), Not(HasSubstr("Grid Check")));
    EXPECT_THAT(run.State("toolbar").dump(), Not(HasSubstr("Grid Check")));
    EXPECT_THAT(run.Reports(), IsEmpty());
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
