// Programs that the host loads: the suite's real libraries, and broken ones.

#include "tests/launch/LaunchFixture.h"

#include <algorithm>
#include <cstdlib>

using namespace kvtm;
using namespace kvtm::test;

namespace {

class InProcessLaunch : public LaunchingTest {
protected:
    /// "Beam" and "Heat" are Vantors, "Units" is none, "Layout" is an outside program.
    void LoadVantors(const char* brand = " veltrane ") {
        LoadSuite({{.name = "Beam",
                    .vrex = "Vn21",
                    .identifier = "BMF21",
                    .kind = "3",
                    .brand = brand,
                    .path = Put(BEAM_LIBRARY, "Vn21/Vn21.dll")},
                   {.name = "Heat",
                    .vrex = "Vn34",
                    .identifier = "WRM34",
                    .kind = "3",
                    .brand = brand,
                    .path = Put(HEAT_LIBRARY, "Vn34/Vn34.dll")},
                   {.name = "Units",
                    .vrex = "Qx07",
                    .identifier = "UNI07",
                    .kind = "2",
                    .brand = brand,
                    .path = Put(UNITS_LIBRARY, "Qx07/Qx07.dll")},
                   LongRunning("Layout", "Tobr43")});
    }
    /// A Vantor "V" of this library.
    void LoadVantor(const std::string& path, const char* vrex = "Vn99") {
        LoadSuite({{.name = "V", .vrex = vrex, .identifier = "VVV99", .kind = "3", .path = path},
                   LongRunning("Layout", "Tobr43")});
    }
    void ExpectVantorInTheWay() {
        const Box box = ClaimBox();
        EXPECT_EQ(box.text, "text 37\r\n\tUnload the current Vantor before starting a new one.");
        EXPECT_EQ(box.style, 0);
        EXPECT_EQ(box.title, "KvTM10");
    }
    void ExpectRefusal(const char* name) {
        EXPECT_EQ(Launch(name), "-1");
        const Box box = ClaimBox();
        EXPECT_EQ(box.text, std::string("text 40\r\n\ttext 47") + name);
        EXPECT_EQ(box.style, 0);
        EXPECT_EQ(box.title, "KvTM10");
        EXPECT_EQ(LoadedVantors(), Strings{});
        EXPECT_TRUE(Sent().empty());
    }
    /// That a launch is possible again: neither busy nor refused.
    void ExpectReady() {
        EXPECT_FALSE(Probe().Busy());
        ForgetCalls();
        EXPECT_EQ(Launch("Layout"), "False");
        End(ProcessOf("Tobr43"));
    }
    std::string LogoSetting() const {
        const std::string keys = installation.Read("Arvon/Bin/UIKeys.txt");
        return keys.substr(0, keys.find("\r\n"));
    }
};

} // namespace

TEST_F(InProcessLaunch, LoadsAVantorAndTellsLauncherAndShell) {
    LoadVantors();
    EXPECT_EQ(Launch("Beam"), "False");
    EXPECT_EQ(CallsOf("Loader.Load").front().substr(0, 19), "Loader.Load(\"Beam\",");
    EXPECT_EQ(LoadedVantors(), Strings{"Beam"});
    EXPECT_EQ(CallsOf("Tab.BringForward"), Strings{"Tab.BringForward(\"tabQRV\")"});
    EXPECT_EQ(Sent(), (Strings{"Zarn11:Tool_Load{event 1/9}(ToolName:2=\"Beam\", vrex:2=\"Vn21\")",
                               "SnapIn:Tool_Load{event 1/9}(ToolName:2=\"Beam\", vrex:2=\"Vn21\")"}));
    ASSERT_EQ(host->Model().Loaded().size(), 1u);
    EXPECT_EQ(host->Model().Loaded()[0].key, "Vn21");
    EXPECT_EQ(Request("LoadedVantors"), "Beam");
    EXPECT_TRUE(Probe().Processes().IsEmpty());
    EXPECT_FALSE(Probe().Busy());
}

TEST_F(InProcessLaunch, DisablesTheToolItemsBeforeTheLoadAndEnablesThemAfterARefusal) {
    LoadVantor("");
    Launch("V");
    ClaimBox();
    EXPECT_EQ(Calls(),
              (Strings{"NewRequest()", "Tools.Item(\"V\")", "Menus.Item(\"mnuTool\")",
                       "MenuItems.Item(\"mnuVVV99\")", "MenuItem.SetEnabled(\"mnuVVV99\", false)",
                       "MenuItems.Item(\"mnuToolsSep1\")", "MenuItem.SetEnabled(\"mnuToolsSep1\", false)",
                       "Tools.Item(\"V\")", "Loader.Load(\"V\", \"KvTM10\")",
                       "ShowMessage(\"text 40\r\n\ttext 47V\", 0, \"KvTM10\")", "Menus.Item(\"mnuTool\")",
                       "MenuItems.Item(\"mnuVVV99\")", "MenuItem.SetEnabled(\"mnuVVV99\", true)",
                       "MenuItems.Item(\"mnuToolsSep1\")", "MenuItem.SetEnabled(\"mnuToolsSep1\", true)",
                       "SetMousePointer(0)"}));
}

TEST_F(InProcessLaunch, BringsTheTabForwardBeforeItTellsOfAVantor) {
    LoadVantors();
    Launch("Beam");
    const Strings& calls = Calls();
    EXPECT_EQ(Strings(std::find(calls.begin(), calls.end(), "Tabs.Item(\"tabQRV\")"), calls.end()),
              (Strings{"Tabs.Item(\"tabQRV\")", "Tab.BringForward(\"tabQRV\")", "NewEvent()",
                       "Router.IsRegistered(\"Zarn11\")", "NewMessage()", "Router.IsRegistered(\"SnapIn\")",
                       "NewMessage()", "SetMousePointer(0)"}));
}

TEST_F(InProcessLaunch, KeepsTheToolItemsDisabledUntilTheVantorIsUnloaded) {
    LoadVantors();
    ASSERT_EQ(EnabledToolItems(), (Strings{"mnuBMF21", "mnuWRM34", "mnuUNI07", "mnuToolsSep1"}));
    Launch("Beam");
    EXPECT_EQ(EnabledToolItems(), Strings{});
    Request("UnloadTool", {{"vrex", "Vn21"}, {"toolID", "BMF21"}});
    EXPECT_EQ(EnabledToolItems(), (Strings{"mnuBMF21", "mnuWRM34", "mnuUNI07", "mnuToolsSep1"}));
}

TEST_F(InProcessLaunch, KeepsTheToolItemsDisabledThroughALoadOfTheComponentUnderAVantor) {
    LoadVantors();
    Launch("Beam");
    host->Unload();
    ASSERT_TRUE(Load());
    EXPECT_EQ(EnabledToolItems(), Strings{});
    host->UnloadTool("Beam");
    EXPECT_EQ(EnabledToolItems(), (Strings{"mnuBMF21", "mnuWRM34", "mnuUNI07", "mnuToolsSep1"}));
}

TEST_F(InProcessLaunch, ForgetsTheFirstEntryOfAnUnloadedVantorInAnyLetterCase) {
    LoadVantors();
    Launch("Beam");
    const std::string vrex = host->Framework()->LoadedTools().Item(1)->ProductDataKey();
    Probe().LoadedTools().Clear();
    for (const char* name : {"Other", "bEAM", "Beam"})
        Probe().LoadedTools().Add(name);
    Request("UnloadTool", {{"vrex", vrex}, {"toolID", ""}});
    EXPECT_EQ(LoadedVantors(), (Strings{"Other", "Beam"}));
}

TEST_F(InProcessLaunch, TellsAWorkflowOfAnUnloadedVantorBeforeTheOthers) {
    LoadVantors();
    host->Listen("WORKFLOW", "");
    Launch("Beam");
    const std::string vrex = host->Framework()->LoadedTools().Item(1)->ProductDataKey();
    ForgetCalls();
    Request("UnloadTool", {{"vrex", "  " + base::UpperCase(vrex) + " "}, {"toolID", "T"}});
    const std::string unload =
        "Tool_Unload{event 2/9}(vrex:2=\"" + base::UpperCase(vrex) + "\", toolID:2=\"T\")";
    EXPECT_EQ(Sent(), (Strings{"WORKFLOW:ToolUnloaded{event 10/9}(ToolName:2=\"Beam\")", "Zarn11:" + unload,
                               "SnapIn:" + unload}));
}

TEST_F(InProcessLaunch, StopsAnUnloadThatTheWorkflowCannotBeToldOf) {
    LoadVantors();
    host->Listen("WORKFLOW", "");
    Launch("Beam");
    ForgetCalls();
    host->FailNext("Router.Send");
    Request("UnloadTool", {{"vrex", "Vn21"}, {"toolID", "T"}});
    EXPECT_EQ(ClaimReport("Request_UnloadTool").description, "Router.Send failed");
    EXPECT_EQ(Sent(), Strings{});
    EXPECT_EQ(LoadedVantors(), Strings{"Beam"});
    EXPECT_TRUE(CallsOf("Tab.Update").empty());
    EXPECT_EQ(EnabledToolItems(), Strings{});
}

TEST_F(InProcessLaunch, RefusesEveryFurtherLaunchWhileAVantorIsLoaded) {
    LoadVantors();
    Launch("Beam");
    for (const char* further : {"Heat", "Units", "Layout", "Beam", "Unknown"}) {
        ForgetCalls();
        EXPECT_EQ(Launch(further), "False");
        ExpectVantorInTheWay();
        EXPECT_EQ(CallsOf("Tab.BringForward"), Strings{"Tab.BringForward(\"tabQRV\")"});
        EXPECT_TRUE(Sent().empty());
    }
    EXPECT_EQ(host->Model().Loaded().size(), 1u);
    EXPECT_TRUE(host->Model().Processes().empty());
}

TEST_F(InProcessLaunch, LoadsTheOtherVantorAfterUnloadingTheFirst) {
    LoadVantors();
    Launch("Beam");
    host->UnloadTool("Beam");
    Request("UnloadTool", {{"vrex", "Vn21"}, {"toolID", "BMF21"}});
    if (!LoadedVantors().empty()) GTEST_FAIL() << "still there: " << LoadedVantors().front();
    EXPECT_EQ(Launch("Heat"), "False");
    EXPECT_EQ(LoadedVantors(), Strings{"Heat"});
}

TEST_F(InProcessLaunch, WritesTheLogoOfTheVantorsBrand) {
    LoadVantors("  veltrane ");
    Launch("Beam");
    EXPECT_EQ(LogoSetting(), "ReportsLogoFile=C:\\QUARRA\\Enviro\\logo-v3.jpg");
}

namespace {

/// The system's own registry, in which a value of this name cannot be read the next time.
class RegistryWithout final : public platform::Registry {
public:
    RegistryWithout(std::unique_ptr<platform::Registry> real, const std::string& name)
        : real_(std::move(real)), name_(name) {}
    bool fails = false;
    std::int32_t OpenKey(std::uint32_t hive, std::string_view subKey, std::uint32_t access,
                         platform::RegistryKey& key) override {
        return real_->OpenKey(hive, subKey, access, key);
    }
    std::int32_t QueryValue(platform::RegistryKey key, std::string_view name, std::uint32_t& type,
                            std::span<char> buffer, std::uint32_t& size) override {
        if (name == name_ && std::exchange(fails, false)) return platform::registryResult::NotFound;
        return real_->QueryValue(key, name, type, buffer, size);
    }
    std::int32_t SetValue(platform::RegistryKey key, std::string_view name, std::uint32_t type,
                          std::span<const char> data) override {
        return real_->SetValue(key, name, type, data);
    }
    std::int32_t CloseKey(platform::RegistryKey key) override { return real_->CloseKey(key); }

private:
    std::unique_ptr<platform::Registry> real_;
    std::string name_;
};

struct ComponentAt final : platform::SystemInfo {
    explicit ComponentAt(std::filesystem::path file) : file_(std::move(file)) {}
    std::int32_t PlatformId() override { return 2; }
    std::filesystem::path ModuleFile() override { return file_; }
    std::filesystem::path file_;
};

} // namespace

TEST_F(InProcessLaunch, PutsTheLogoOnTheComponentsDriveWhereTheBinFolderIsUnknown) {
    const std::filesystem::path ownFile = installation.Folder() / "drive_d/x/KvTM10.so";
    std::filesystem::create_directories(ownFile.parent_path());
    installation.WriteTools({{.name = "V",
                              .vrex = "Vn21",
                              .kind = "3",
                              .brand = "Ormond",
                              .path = Put(BEAM_LIBRARY, "Vn21/Vn21.dll")}});
    CreateHost();
    platform::Services services = platform::Services::Create();
    auto registry = std::make_unique<RegistryWithout>(std::move(services.registry), "BinPath");
    bool& fails = registry->fails;
    services.registry = std::move(registry);
    services.systemInfo = std::make_unique<ComponentAt>(ownFile);
    CreateTool(std::move(services));
    ASSERT_TRUE(Load());
    fails = true;
    EXPECT_EQ(Launch("V"), "False");
    EXPECT_EQ(LogoSetting(), "ReportsLogoFile=D:\\QUARRA\\Enviro\\logo-o3.jpg");
}

TEST_F(InProcessLaunch, WritesNoLogoForAnUnknownBrand) {
    LoadVantors("Nordhain");
    Launch("Beam");
    EXPECT_EQ(LogoSetting(), "ReportsLogoFile=");
    EXPECT_EQ(LoadedVantors(), Strings{"Beam"});
}

TEST_F(InProcessLaunch, WritesNoLogoForAToolThatIsNoVantor) {
    LoadVantors("Veltrane");
    Launch("Units");
    EXPECT_EQ(LogoSetting(), "ReportsLogoFile=");
}

TEST_F(InProcessLaunch, LoadsEvenWhereTheLogoCannotBeWritten) {
    installation.WriteRegistry({{"Brand", "Halcrest"}}); // no "BinPath"
    LoadVantors("Veltrane");
    Launch("Beam");
    EXPECT_EQ(LogoSetting(), "ReportsLogoFile=");
    EXPECT_EQ(Sent().size(), 2u);
}

TEST_F(InProcessLaunch, LoadsEvenWithoutAUiValueFile) {
    LoadVantors("Veltrane");
    std::filesystem::remove(installation.File("Arvon/Bin/UIKeys.txt"));
    Launch("Beam");
    EXPECT_EQ(LoadedVantors(), Strings{"Beam"});
    EXPECT_EQ(Sent().size(), 2u);
}

TEST_F(InProcessLaunch, KeepsNoRecordOfAToolThatIsNoVantor) {
    LoadVantors();
    EXPECT_EQ(Launch("Units"), "False");
    EXPECT_EQ(host->Model().Loaded().size(), 1u);
    EXPECT_EQ(LoadedVantors(), Strings{});
    EXPECT_TRUE(Sent().empty());
    EXPECT_TRUE(CallsOf("Tab.BringForward").empty());
    EXPECT_EQ(EnabledToolItems(), (Strings{"mnuBMF21", "mnuWRM34", "mnuUNI07", "mnuToolsSep1"}));
    EXPECT_EQ(Launch("Heat"), "False");
    EXPECT_EQ(LoadedVantors(), Strings{"Heat"});
}

TEST_F(InProcessLaunch, TellsOfAToolThatIsLoadedAlready) {
    LoadVantors();
    Launch("Units");
    EXPECT_EQ(Launch("Units"), "False");
    const Box box = ClaimBox();
    EXPECT_EQ(box.text, "text 41");
    EXPECT_EQ(box.style, 64);
    EXPECT_EQ(box.title, "text 48");
    EXPECT_EQ(CallsOf("Loader.Load").size(), 1u);
}

TEST_F(InProcessLaunch, TakesAnotherLetterCaseOfThePrefixForAToolInTheHost) {
    LoadSuite({LongRunning("Layout", "tobr43")});
    ExpectRefusal("Layout"); // a program is no tool library
    EXPECT_TRUE(CallsOf("StartProcess").empty());
}

TEST_F(InProcessLaunch, TellsOfARefusalAndStaysReady) {
    LoadVantors();
    host->Refuse("Beam");
    ExpectRefusal("Beam");
    EXPECT_EQ(EnabledToolItems(), (Strings{"mnuBMF21", "mnuWRM34", "mnuUNI07", "mnuToolsSep1"}));
    EXPECT_EQ(LogoSetting(), "ReportsLogoFile=");
    ExpectReady();
}

TEST_F(InProcessLaunch, IsRefusedForBrokenLibraries) {
    for (const char* broken : {NO_ENTRY_POINT, MAKES_NOTHING, THROWS_WHILE_LOADING, DECLINES_TO_LOAD}) {
        SCOPED_TRACE(broken);
        // under a name of its own: a library that is still mapped must not be written over
        LoadVantor(Put(broken, "Vn99/" + std::filesystem::path(broken).filename().string()));
        ExpectRefusal("V");
        ExpectReady();
        if (HasFatalFailure()) return;
        host->Unsubscribe(*this);
        tool.reset();
        host.reset();
    }
}

TEST_F(InProcessLaunch, IsRefusedForAMissingLibraryAndAFolder) {
    LoadVantor("C:\\QUARRA\\Vn99\\Vn99.dll");
    ExpectRefusal("V");
    std::filesystem::create_directories(installation.File("Vn99/Vn99.dll"));
    ForgetCalls();
    ExpectRefusal("V");
    ExpectReady();
}

TEST_F(InProcessLaunch, IsRefusedForAFileThatIsNoLibrary) {
    installation.Write("Vn99/Vn99.dll", "MZ, but not for this system");
    LoadVantor("C:\\QUARRA\\Vn99\\Vn99.dll");
    ExpectRefusal("V");
    ExpectReady();
}

TEST_F(InProcessLaunch, ReportsALoaderThatFailsAndStaysReady) {
    LoadVantors();
    host->FailNext("Loader.Load");
    EXPECT_EQ(Launch("Beam"), "False");
    EXPECT_EQ(ClaimReport("LaunchTool").description, "Loader.Load failed");
    EXPECT_EQ(LoadedVantors(), Strings{});
    EXPECT_EQ(EnabledToolItems(), (Strings{"mnuBMF21", "mnuWRM34", "mnuUNI07", "mnuToolsSep1"}));
    ExpectReady();
}

TEST_F(InProcessLaunch, StaysReadyWhenAFailureCannotEvenBeReported) {
    LoadVantors();
    host->FailNext("Loader.Load");
    host->FailNext("Router.Send", 4); // the report, and the reports of that
    EXPECT_EQ(Launch("Beam"), "");
    EXPECT_EQ(EnabledToolItems(), (Strings{"mnuBMF21", "mnuWRM34", "mnuUNI07", "mnuToolsSep1"}));
    ExpectReady();
}

TEST_F(InProcessLaunch, RemembersAVantorEvenWhenTheTabCannotBeBroughtForward) {
    LoadVantors();
    host->FailNext("Tab.BringForward");
    EXPECT_EQ(Launch("Beam"), "False");
    EXPECT_EQ(ClaimReport("LaunchTool").description, "Tab.BringForward failed");
    EXPECT_EQ(LoadedVantors(), Strings{"Beam"}) << "a second Vantor could be loaded beside it";
    EXPECT_FALSE(Probe().Busy());
}

TEST_F(InProcessLaunch, KeepsASecondLaunchOutWhileTheHostLoads) {
    unsetenv("KVTM_TEST_ANSWER");
    LoadVantor(Put(REENTRANT_LIBRARY, "Vn99/Vn99.dll"));
    EXPECT_EQ(Launch("V"), "False");

    const Box box = ClaimBox(); // the nested launch
    EXPECT_EQ(box.text, "text 41");
    EXPECT_STREQ(getenv("KVTM_TEST_ANSWER"), "False");
    EXPECT_TRUE(host->Model().Processes().empty());
    EXPECT_EQ(LoadedVantors(), Strings{"V"}) << "what was recorded is not what was loaded";
    EXPECT_EQ(Sent(), (Strings{"Zarn11:Tool_Load{event 1/9}(ToolName:2=\"V\", vrex:2=\"Vn99\")",
                               "SnapIn:Tool_Load{event 1/9}(ToolName:2=\"V\", vrex:2=\"Vn99\")"}));
    EXPECT_FALSE(Probe().Busy());
}

TEST_F(InProcessLaunch, StaysAtTheNodeThatWasOpenedWhateverIsAskedForDuringTheLoad) {
    LoadVantor(Put(REENTRANT_LIBRARY, "Vn99/Vn99.dll"));
    host->NodeEvent("tabQRV", "nodTools", arvon::eventKind::Expanded);
    host->NodeEvent("tabQRV", "V", arvon::eventKind::Opened);
    ClaimBox(); // the nested launch of "Layout"
    EXPECT_EQ(LoadedVantors(), Strings{"V"});
    EXPECT_EQ(Request("LoadedVantors"), "V");
}

TEST_F(InProcessLaunch, ReadsTheKindAnewAtEveryLaunch) {
    LoadVantors();
    host->Framework()->Tools().Item("Beam")->Set("Kind", base::Value(2));
    Launch("Beam");
    EXPECT_EQ(LoadedVantors(), Strings{});
}
