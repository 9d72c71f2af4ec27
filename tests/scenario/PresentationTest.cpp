#include "base/Value.h"
#include "base/XmlDocument.h"
#include "tests/scenario/ConsoleRun.h"

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace scenario {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using Texts = std::vector<std::string>;

/// The suite's tools as the user meets them: list, menu, toolbar, context menu and tree, and the clicks on
/// each, compared with the catalogue itself.
class Presentation : public Scenario {
protected:
    struct CatalogueTool {
        std::string name, vrex, identifier, classification, version, lastUpdated;
        bool ofFramework = false, listed = false;
    };

    /// The catalogue file, read without the host.
    std::vector<CatalogueTool> Catalogue() const {
        base::XmlDocument document;
        document.LoadFile(File("drive_c/QUARRA/Arvon/Tools.xml"));
        std::vector<CatalogueTool> tools;
        for (const base::XmlNode& element : document.Select("//Tool")) {
            CatalogueTool tool{element.Attribute("Name"),       element.Attribute("VREX"),
                               element.Attribute("Identifier"), element.Attribute("Classification"),
                               element.Attribute("version"),    element.Attribute("LastUpdated")};
            const std::string show = element.Attribute("ShowInList");
            tool.ofFramework = tool.classification == "Manager" || tool.classification == "Core Tool";
            tool.listed = !tool.ofFramework && (show.empty() || base::Value(show).ToBoolean());
            tools.push_back(std::move(tool));
        }
        return tools;
    }
    std::vector<CatalogueTool> ListedTools() const {
        std::vector<CatalogueTool> tools = Catalogue();
        std::erase_if(tools, [](const CatalogueTool& tool) { return !tool.listed; });
        return tools;
    }
    using Before = std::function<bool(const CatalogueTool&, const CatalogueTool&)>;
    static std::vector<CatalogueTool> Sorted(std::vector<CatalogueTool> tools, const Before& before) {
        std::stable_sort(tools.begin(), tools.end(), before);
        return tools;
    }
    std::vector<CatalogueTool> ListedByName() const {
        return Sorted(ListedTools(), [](const auto& a, const auto& b) { return a.name < b.name; });
    }

    static Texts Names(const std::vector<CatalogueTool>& tools) {
        Texts names;
        for (const CatalogueTool& tool : tools)
            names.push_back(tool.name);
        return names;
    }
    /// `before` and the identifier, for tools that have one.
    static Texts Keys(const std::string& before, const std::vector<CatalogueTool>& tools) {
        Texts keys;
        for (const CatalogueTool& tool : tools)
            if (!tool.identifier.empty()) keys.push_back(before + tool.identifier);
        return keys;
    }

    static Json ToolMenuItems(const Transcript& run) {
        return Find(run.State("menus"), "key", "mnuTool").at("items");
    }
    static Texts OwnButtons(const Transcript& run) {
        Texts keys;
        for (const Json& button : run.State("toolbar"))
            if (button.at("owner") == "KvTM10") keys.push_back(button.at("key"));
        return keys;
    }
    static Json ToolsNode(const Transcript& run) {
        return Find(Find(run.State("tabs"), "key", "tabQRV").at("nodes"), "key", "nodTools");
    }
    static std::string Selected(const Transcript& run) {
        return Find(run.State("tabs"), "key", "tabQRV").at("selected");
    }
    /// A word of a script.
    static std::string Quoted(const std::string& word) { return "'" + word + "'"; }

    /// A run in which nothing goes wrong.
    Transcript GoodRun(const std::string& script) const {
        Transcript run = Run("load\nnode nodTools 14\n" + script);
        EXPECT_THAT(run.Reports(), IsEmpty());
        EXPECT_THAT(run.Errors(), IsEmpty());
        EXPECT_EQ(run.ExitStatus(), 0);
        return run;
    }
    Texts RowsAfter(const std::string& script) const {
        return Column(GoodRun(script + "\nshow list").State("list"), "text");
    }
};

TEST_F(Presentation, IsOfTheSameToolsInTheSameOrderEverywhere) {
    const Transcript run = GoodRun("show list\nshow menus\nshow toolbar\nshow tabs");
    const std::vector<CatalogueTool> tools = ListedByName();
    ASSERT_GT(tools.size(), 10u);

    EXPECT_EQ(Column(run.State("list"), "text"), Names(tools));
    EXPECT_EQ(Column(ToolsNode(run).at("nodes"), "key"), Names(tools));
    EXPECT_EQ(Column(ToolsNode(run).at("nodes"), "caption"), Names(tools));
    Texts items = Keys("mnu", tools);
    items.insert(items.end(), {"mnuToolsSep1", "mnuToolOptions"});
    EXPECT_EQ(Column(ToolMenuItems(run), "key"), items);
    Texts buttons = Keys("btn", tools);
    buttons.insert(buttons.begin(), "KvTM10_Sep1");
    buttons.push_back("KvTM10_Sep2");
    EXPECT_EQ(OwnButtons(run), buttons);
}

TEST_F(Presentation, ShowsEachToolsOwnTexts) {
    const Transcript run = GoodRun("show list\nshow menus\nshow toolbar");
    for (const CatalogueTool& tool : ListedTools()) {
        const Json row = Find(run.State("list"), "key", tool.vrex);
        ASSERT_FALSE(row.is_null()) << tool.vrex;
        EXPECT_EQ(row.at("text"), tool.name);
        EXPECT_EQ(row.at("checked"), true);
        EXPECT_EQ(row.at("version"), tool.version);
        EXPECT_EQ(row.at("classification"), tool.classification);
        EXPECT_NE(row.at("lastupdated"), "");
        if (tool.identifier.empty()) continue;
        const Json item = Find(ToolMenuItems(run), "key", "mnu" + tool.identifier);
        EXPECT_EQ(item.at("caption"), "&" + tool.name);
        EXPECT_EQ(item.at("owner"), "KvTM10");
        const Json button = Find(run.State("toolbar"), "key", "btn" + tool.identifier);
        EXPECT_THAT(button.at("toolTip").get<std::string>(), testing::EndsWith(" " + tool.name));
        EXPECT_EQ(button.at("picture"), tool.identifier.substr(0, 3));
    }
}

TEST_F(Presentation, SortsTheListByEachColumnBothWays) {
    const std::vector<CatalogueTool> tools = ListedByName(); // the order that a load leaves
    struct Column {
        const char* key;
        std::string CatalogueTool::*text;
    };
    for (const auto& [key, text] :
         {Column{"name", &CatalogueTool::name}, Column{"version", &CatalogueTool::version},
          Column{"classification", &CatalogueTool::classification}}) {
        EXPECT_EQ(RowsAfter(std::string("column ") + key + " 0"),
                  Names(Sorted(tools, [&](const auto& a, const auto& b) { return a.*text < b.*text; })))
            << key;
        EXPECT_EQ(RowsAfter(std::string("column ") + key + " 1"),
                  Names(Sorted(tools, [&](const auto& a, const auto& b) { return a.*text > b.*text; })))
            << key;
    }
}

TEST_F(Presentation, SortsTheListByDateOneWayAndLeavesItTheOther) {
    const auto earlier = [](const CatalogueTool& a, const CatalogueTool& b) {
        return base::Value(a.lastUpdated).ToDate() < base::Value(b.lastUpdated).ToDate();
    };
    const Texts byDate = Names(Sorted(ListedByName(), earlier));
    EXPECT_EQ(RowsAfter("column lastupdated 0"), byDate);
    EXPECT_EQ(RowsAfter("column lastupdated 0\ncolumn lastupdated 1"), byDate);
}

TEST_F(Presentation, SortsByTheItemsOfTheMenu) {
    EXPECT_EQ(RowsAfter("column name 1\nmenu mnuToolsSortName"), RowsAfter("column name 0"));
    EXPECT_EQ(RowsAfter("menu mnuToolsSortVersion"), RowsAfter("column version 0"));
    EXPECT_EQ(RowsAfter("menu mnuToolsSortUPDATED"), RowsAfter("column lastupdated 0"));
    EXPECT_EQ(RowsAfter("menu mnuToolsSortType"), RowsAfter("column classification 0"));
}

TEST_F(Presentation, SelectsTheToolsNodeWhenTheListIsSorted) {
    const Transcript run = GoodRun("node 'Layout'\ncolumn version 1\nshow tabs");
    EXPECT_EQ(Selected(run), "nodTools");
}

TEST_F(Presentation, RebuildsListMenuAndToolbarWhenAllToolsAreShown) {
    const std::string show = "show list\nshow menus\nshow toolbar\n";
    const std::vector<CatalogueTool> all = Catalogue();
    Texts visible;
    for (const CatalogueTool& tool : all)
        if (!tool.ofFramework) visible.push_back(tool.name);

    const Transcript shown = GoodRun("task tskShowAll\n" + show);
    EXPECT_EQ(Column(shown.State("list"), "text"), visible); // hidden ones too, as the catalogue has them
    for (const Json& row : shown.State("list")) {
        const auto tool =
            std::find_if(all.begin(), all.end(), [&](const auto& t) { return t.vrex == row.at("key"); });
        EXPECT_EQ(row.at("checked"), tool->listed) << tool->name;
    }
    const Texts items = Column(ToolMenuItems(shown), "key");
    for (const CatalogueTool& tool : all) {
        const bool expected = tool.listed && !tool.identifier.empty();
        if (tool.ofFramework) continue;
        EXPECT_EQ(std::count(items.begin(), items.end(), "mnu" + tool.identifier), expected ? 1 : 0)
            << tool.name;
    }

    const Transcript back = GoodRun("task tskShowAll\ntask tskShowAll\n" + show);
    const Texts names = Names(ListedTools()); // listed anew, in the catalogue's order
    EXPECT_EQ(Column(back.State("list"), "text"), names);
    Texts buttons = Keys("btn", ListedTools());
    buttons.insert(buttons.begin(), "KvTM10_Sep1");
    buttons.push_back("KvTM10_Sep2");
    EXPECT_EQ(OwnButtons(back), buttons);
}

TEST_F(Presentation, ShowsEachToolAtTheClickOnItsItem) {
    std::string script;
    for (const std::string& key : Keys("mnu", ListedTools()))
        script += "menu " + key + "\nshow tabs\n";
    const Transcript run = GoodRun(script);
    Texts selected;
    for (const Json& state : run.Of("state"))
        selected.push_back(Find(state.at("value"), "key", "tabQRV").at("selected"));
    Texts expected;
    for (const CatalogueTool& tool : ListedTools())
        if (!tool.identifier.empty()) expected.push_back(tool.name);
    EXPECT_EQ(selected, expected);
}

TEST_F(Presentation, LaunchesAtTheClickOnAButton) {
    const Transcript run = GoodRun("button btnLAY43\nbutton btnRMT50\nbutton btnUNI07\nbutton btnBMF21\n"
                                   "show processes\nshow loaded\nwait\n");
    EXPECT_THAT(Column(run.State("processes"), "commandLine"),
                ElementsAre("C:\\QUARRA\\Tobr43\\Tobr43.exe")); // Remote Assistance has no program
    EXPECT_THAT(Column(run.State("loaded"), "name"), ElementsAre("Unit Converter", "Beam & Frame"));
    EXPECT_THAT(run.Boxes(), IsEmpty());
}

TEST_F(Presentation, ShowsTheUpdatesAtTheClickOnTheirButton) {
    const Transcript run = GoodRun("node 'Layout'\nbutton btnUpdateTools\nshow tabs");
    EXPECT_EQ(Selected(run), "nodTools");
    EXPECT_EQ(ToolsNode(run).at("view"), "ocxToolsUpdate");
    const Transcript back = GoodRun("button btnUpdateTools\nnode nodTools\nshow tabs");
    EXPECT_EQ(ToolsNode(back).at("view"), "");
}

TEST_F(Presentation, AsksTheUpdatesComponentAtTheClickOnTheUpdateItems) {
    const Transcript run =
        GoodRun("menu mnuInstallTools\nmenu mnuUpdateTools\nmenu mnuUpdateSettings\nshow loaded");
    Texts flags;
    for (const Json& request : run.Messages("ShowUpdates")) {
        EXPECT_EQ(request.at("destination"), "Qillo110");
        flags.push_back(request.at("parameters").at(0).at("value"));
    }
    EXPECT_THAT(flags, ElementsAre("True", "False"));
    EXPECT_EQ(run.Messages("ShowOptions").size(), 1u);
    EXPECT_THAT(Column(run.State("loaded"), "key"), Contains("Qillo110"));
}

TEST_F(Presentation, OpensTheOptionsAtTheClickOnTheirItem) {
    const Transcript run = GoodRun("menu mnuToolOptions\nmenu mnuToolOptions\nshow windows");
    EXPECT_THAT(Column(run.State("windows"), "key"), ElementsAre("ocxToolOptions"));
}

TEST_F(Presentation, AnswersEveryKindOfNodeEvent) {
    const Transcript properties = GoodRun("node 'Beam & Frame'\nshow tabs");
    EXPECT_EQ(Selected(properties), "Beam & Frame");
    EXPECT_EQ(Find(ToolsNode(properties).at("nodes"), "key", "Beam & Frame").at("view"), "ocxToolProperties");

    const Transcript menu = GoodRun("node 'Beam & Frame' 7\nshow contextmenu\nmenu mnuLaunch\nshow loaded");
    EXPECT_THAT(Column(menu.State("contextmenu"), "key"), ElementsAre("mnuToolContextTask"));
    EXPECT_THAT(Column(menu.State("contextmenu").at(0).at("items"), "key"), ElementsAre("mnuLaunch"));
    EXPECT_THAT(Column(menu.State("loaded"), "name"), ElementsAre("Beam & Frame"));

    const Transcript opened = GoodRun("node 'Wärmebedarf' 13\nshow loaded");
    EXPECT_THAT(Column(opened.State("loaded"), "name"), ElementsAre("Wärmebedarf"));

    const Transcript expanded = GoodRun("column name 1\nnode nodTools 14\nshow tabs\nshow list");
    EXPECT_EQ(Column(ToolsNode(expanded).at("nodes"), "key"), Column(expanded.State("list"), "text"));
}

TEST_F(Presentation, ShowsNoNodeTheContextMenuOfAnother) {
    const Transcript run = Run("listen Zarn11\nload\nnode nodTools 14\nnode Layout 7\nnode nodTools\nnode "
                               "nodTools 7\nshow contextmenu\n"
                               "menu mnuLaunch\nnode 'Grid Check' 7\nmenu mnuLaunch\nwait\n");
    EXPECT_THAT(run.State("contextmenu"), IsEmpty());
    EXPECT_THAT(run.Errors(), ElementsAre("no menu item \"mnuLaunch\""));
    EXPECT_THAT(run.Boxes(), IsEmpty());
    EXPECT_THAT(run.Reports(), IsEmpty());
    const std::vector<Json> loads = run.Messages("Tool_Load");
    ASSERT_EQ(loads.size(), 1u);
    EXPECT_EQ(loads.front().at("parameters").at(0).at("value"), "Grid Check");
}

TEST_F(Presentation, LaunchesEveryToolFromItsNodeByTheNameItHas) {
    std::string script;
    for (const CatalogueTool& tool : ListedTools())
        if (tool.vrex.rfind("Jx3", 0) == 0) script += "node " + Quoted(tool.name) + " 13\n";
    const Transcript run = GoodRun(script + "wait\n");
    const auto count = [&](std::string_view change) {
        const std::vector<Json> processes = run.Of("process");
        return std::count_if(processes.begin(), processes.end(),
                             [&](const Json& process) { return process.at("change") == change; });
    };
    EXPECT_EQ(count("started"), 5);
    EXPECT_EQ(count("ended"), 5);
}

TEST_F(Presentation, ComesBackToTheLastNodeWithTheTab) {
    const Transcript run = GoodRun("node 'Layout'\ntab\nshow tabs");
    EXPECT_EQ(Selected(run), "Layout");
    const Transcript first = Run("load\ntab\nshow tabs");
    EXPECT_EQ(Selected(first), "nodTools");
}

TEST_F(Presentation, TellsTheConsoleOfClicksOnWhatIsNotThere) {
    const Transcript run = Run("load\nmenu mnuNobody\nbutton btnNobody\nnode Nobody\nmenu mnuToolsSep1\n");
    EXPECT_EQ(run.Errors().size(), 4u);
    EXPECT_EQ(run.ExitStatus(), 1);
    EXPECT_THAT(run.Reports(), IsEmpty());
}

} // namespace scenario
