// Loading real libraries, good and broken ones.

#include "tests/host/HostFixture.h"

#include <cstdlib>

namespace arvon::host::test {
namespace {

class LoaderOfTheHost : public HostTest {
protected:
    LoaderOfTheHost() {
        ::unsetenv("TEST_TOOLS_ALIVE");
        ::unsetenv("TEST_TOOL_ANSWERS");
    }
    /// A catalogue of one record for each of the libraries.
    void OpenWithTools() {
        std::vector<CatalogueTool> tools;
        for (const auto& entry : std::filesystem::directory_iterator(TEST_TOOLS)) {
            const std::string name = entry.path().stem().string();
            const std::string file = entry.path().filename().string();
            std::filesystem::create_directories(installation.File("Tools"));
            std::filesystem::copy_file(entry.path(), installation.File("Tools/" + file));
            tools.push_back({.name = name, .path = "C:\\QUARRA\\tools\\" + file});
            if (name == "LoadsOthers") tools.back().vrex = "LO1";
            if (name == "LoadsOthers") tools.back().identifier = "{lo}";
        }
        tools.push_back({.name = "NoPath"});
        tools.push_back({.name = "NoFile", .path = "C:\\QUARRA\\None.so"});
        tools.push_back({.name = "NoDrive", .path = "Q:\\x.so"});
        tools.push_back({.name = "NoLibrary", .path = "C:\\QUARRA\\Arvon\\Tools.xml"});
        OpenWith(tools);
    }
    bool Load(std::string_view name) { return Framework().Loader().Load(name, nullptr); }
    bool IsLoaded(std::string_view name) { return Framework().Loader().IsLoaded(name); }
    /// Why it was refused, which must also have been told as a problem.
    std::string RefusalOfTool(const std::string& name) {
        recorder.Forget();
        EXPECT_FALSE(Load(name));
        EXPECT_FALSE(IsLoaded(name));
        EXPECT_THAT(recorder.problems,
                    ElementsAre("tool \"" + name + "\" was not loaded: " + Host().ProblemOf(name)));
        EXPECT_THAT(Model().Loaded(), IsEmpty());
        EXPECT_THAT(Model().Listeners(), ElementsAre("SnapIn"));
        return Host().ProblemOf(name);
    }
    static int Alive() {
        const char* alive = std::getenv("TEST_TOOLS_ALIVE");
        return alive ? std::atoi(alive) : 0;
    }
};

TEST_F(LoaderOfTheHost, LoadsATool) {
    OpenWithTools();
    EXPECT_FALSE(IsLoaded("GoodTool"));
    ASSERT_TRUE(Load("GoodTool")) << Host().ProblemOf("GoodTool");
    EXPECT_TRUE(IsLoaded("GoodTool"));
    EXPECT_EQ(Send("GoodTool"), "hello from GoodTool");
    EXPECT_EQ(Framework().LoadedTools().Count(), 1u);
    EXPECT_EQ(Framework().LoadedTools().Item(1)->Name(), "GoodTool");
    EXPECT_EQ(Framework().LoadedTools().Item(1)->ProductDataKey(), "GoodTool");
    EXPECT_EQ(Host().ProblemOf("GoodTool"), "");
    EXPECT_EQ(RefusalOf([&] { Framework().LoadedTools().Item(2); }).number, base::errors::OutOfRange);
    EXPECT_EQ(Alive(), 1);
}

TEST_F(LoaderOfTheHost, GivesAToolTheProfileAndTheKeyBeforeLoadingIt) {
    OpenWithTools();
    Host().SetProfileId(5);
    Host().AddProfileTask("Can Launch", "x");
    Host().AddProfileTask("Can Update", "x");
    Host().SetKey("secret");
    Load("GoodTool");
    EXPECT_EQ(Framework().Router()->Send(NewMessage("GoodTool", 0, "profile")), "5/2/secret");
}

TEST_F(LoaderOfTheHost, LoadsAToolOnce) {
    OpenWithTools();
    EXPECT_TRUE(Load("GoodTool"));
    EXPECT_TRUE(Load("GoodTool"));
    EXPECT_EQ(Alive(), 1);
    EXPECT_EQ(Framework().LoadedTools().Count(), 1u);
}

TEST_F(LoaderOfTheHost, KnowsAToolByNameVrexAndIdentifier) {
    OpenWithTools();
    for (const auto* name : {"LoadsOthers", "LO1", "{lo}"}) {
        ASSERT_TRUE(Load(name)) << Host().ProblemOf(name);
        EXPECT_TRUE(IsLoaded("LoadsOthers"));
        EXPECT_TRUE(IsLoaded("LO1"));
        EXPECT_TRUE(IsLoaded("{lo}"));
        EXPECT_FALSE(IsLoaded("lo1"));
        EXPECT_EQ(Model().Loaded().back().name, "LoadsOthers");
        EXPECT_EQ(Model().Loaded().back().key, "LO1");
        Host().UnloadTool(name);
        EXPECT_FALSE(IsLoaded("LO1"));
    }
}

TEST_F(LoaderOfTheHost, RefusesToLoadAToolThatIsBeingLoaded) {
    OpenWithTools();
    EXPECT_TRUE(Load("LO1"));
    EXPECT_STREQ(std::getenv("TEST_TOOL_ANSWERS"),
                 "nnny"); // under no name of its own; the other tool is loaded
    for (const auto* name : {"LoadsOthers", "LO1", "{lo}"})
        EXPECT_TRUE(Load(name));
    EXPECT_EQ(Host().ProblemOf("{lo}"), "is being loaded already");
    EXPECT_THAT(Model().Loaded().size(), 2u);
    EXPECT_EQ(Alive(), 2);
}

TEST_F(LoaderOfTheHost, LoadsAComponentOfTheComponentFolder) {
    OpenWithTools();
    std::filesystem::copy_file(GOOD_TOOL, installation.File("Arvon/Bin/Qillo110.so"));
    ASSERT_TRUE(Load("Qillo110")) << Host().ProblemOf("Qillo110");
    EXPECT_TRUE(IsLoaded("Qillo110"));
    EXPECT_EQ(Model().Loaded()[0].name, "Qillo110");
    EXPECT_EQ(Model().Loaded()[0].key, "Qillo110");
}

TEST_F(LoaderOfTheHost, RefusesWhatIsNoNameOfAComponent) {
    OpenWithTools();
    for (const auto* name : {"", "..", ".hidden", "../GoodTool", "C:\\x", "a/b", "a\\b", "Unknown"})
        EXPECT_NE(RefusalOfTool(name), "") << name;
    EXPECT_EQ(RefusalOfTool("a/b"), "no record and no component of that name");
}

TEST_F(LoaderOfTheHost, SaysWhyALibraryIsNoTool) {
    OpenWithTools();
    EXPECT_THAT(RefusalOfTool("NoEntryPoint"),
                HasSubstr("NoEntryPoint.so has no entry point ArvonCreateTool"));
    EXPECT_THAT(RefusalOfTool("MakesNoTool"), HasSubstr("MakesNoTool.so made no tool"));
    EXPECT_THAT(RefusalOfTool("ThrowsWhenMade"),
                HasSubstr("ThrowsWhenMade.so made no tool: no memory for a tool"));
    EXPECT_EQ(RefusalOfTool("NoPath"), "its record names no path");
    EXPECT_THAT(RefusalOfTool("NoFile"), HasSubstr("no tool library "));
    EXPECT_THAT(RefusalOfTool("NoDrive"), HasSubstr("drive"));
    EXPECT_THAT(RefusalOfTool("NoLibrary"), HasSubstr("not loadable: "));
    EXPECT_EQ(Alive(), 0);
}

TEST_F(LoaderOfTheHost, TakesBackAToolThatFailsOrDeclines) {
    OpenWithTools();
    EXPECT_EQ(RefusalOfTool("ThrowsInLoad"), "the licence file is missing");
    EXPECT_EQ(RefusalOfTool("ThrowsOddly"), "failed for an unknown reason");
    EXPECT_EQ(RefusalOfTool("Declines"), "declined to load");
    EXPECT_EQ(Alive(), 0);
}

TEST_F(LoaderOfTheHost, ForgetsAProblemOnceTheToolLoads) {
    OpenWithTools();
    EXPECT_FALSE(Load("NoFile"));
    std::filesystem::copy_file(GOOD_TOOL, installation.File("None.so"));
    EXPECT_TRUE(Load("NoFile"));
    EXPECT_EQ(Host().ProblemOf("NoFile"), "");
}

TEST_F(LoaderOfTheHost, RefusesAToolUnderAllItsNamesOnceTold) {
    OpenWithTools();
    Host().Refuse("LO1");
    for (const auto* name : {"LoadsOthers", "LO1", "{lo}"}) {
        EXPECT_FALSE(Load(name));
        EXPECT_EQ(Host().ProblemOf(name), "refused");
    }
    EXPECT_TRUE(Load("GoodTool"));
    Host().Refuse("GoodTool"); // is loaded by now
    EXPECT_TRUE(Load("GoodTool"));
    Host().UnloadTool("GoodTool");
    EXPECT_FALSE(Load("GoodTool"));
    EXPECT_EQ(Alive(), 0);
}

TEST_F(LoaderOfTheHost, RefusesASecondToolOfTheSameName) {
    std::filesystem::copy_file(GOOD_TOOL, installation.File("A.so"));
    OpenWith({{.name = "Twin", .vrex = "V1", .path = "C:\\QUARRA\\A.so"},
              {.name = "Twin", .vrex = "V2", .path = "C:\\QUARRA\\A.so"}});
    EXPECT_TRUE(Load("V2"));
    EXPECT_FALSE(Load("V1"));
    EXPECT_EQ(Host().ProblemOf("V1"), "another tool of that name is loaded");
    EXPECT_EQ(Alive(), 1);
    EXPECT_EQ(Model().Loaded()[0].key, "V2");
}

TEST_F(LoaderOfTheHost, UnloadsAToolOnTheEventOfItsOwner) {
    OpenWithTools();
    Load("GoodTool");
    const std::vector<ParameterRecord> parameters{{"vrex", 2, "GOODTOOL"}, {"toolID", 2, ""}};
    Host().SendEvent({0, "Tool_Unload", 2, 9}, parameters, "KvTM10", "SnapIn");
    EXPECT_FALSE(IsLoaded("GoodTool"));
    EXPECT_EQ(Send("GoodTool"), "");
    EXPECT_EQ(Alive(), 0);
}

TEST_F(LoaderOfTheHost, KeepsAToolAliveThatHasItselfUnloadedUntilItHasAnswered) {
    OpenWithTools();
    Load("GoodTool");
    EXPECT_EQ(Framework().Router()->Send(NewMessage("GoodTool", 0, "unload me")), "unloaded, and still here");
    EXPECT_EQ(Alive(), 0);
    EXPECT_TRUE(Load("GoodTool"));
    EXPECT_EQ(Alive(), 1);
}

TEST_F(LoaderOfTheHost, UnloadsOnlyWhatIsLoaded) {
    OpenWithTools();
    EXPECT_EQ(RefusalOf([&] { Host().UnloadTool("GoodTool"); }).description, "no loaded tool \"GoodTool\"");
    EXPECT_EQ(RefusalOf([&] { Host().UnloadTool(""); }).number, base::errors::InvalidCall);
    const std::vector<ParameterRecord> parameters{{"vrex", 2, "GoodTool"}};
    EXPECT_EQ(Host().SendEvent({0, "Tool_Unload", 2, 9}, parameters, "KvTM10", "SnapIn"), "");
    EXPECT_EQ(Host().SendEvent({0, "Tool_Unload", 2, 9}, {}, "KvTM10", "SnapIn"), "");
}

TEST_F(LoaderOfTheHost, AsksTheToolManagerToUnloadATool) {
    OpenWithTools();
    Load("LO1");
    std::string asked;
    const auto manager = Listen("KvTM10", [&](const auto&) {
        asked = recorder.messages.back();
        return "";
    });
    Host().UnloadTool("LO1");
    EXPECT_EQ(asked, "SnapIn>KvTM10 request UnloadTool(vrex=LO1, toolID={lo}) mode 0");
    EXPECT_FALSE(IsLoaded("LO1")); // for the tool manager did nothing about it
}

TEST_F(LoaderOfTheHost, TellsOfAToolThatFailsToUnloadAndReleasesItAllTheSame) {
    OpenWithTools();
    Load("ThrowsInUnload");
    recorder.Forget();
    Host().UnloadTool("ThrowsInUnload");
    EXPECT_THAT(recorder.problems,
                ElementsAre("tool \"ThrowsInUnload\" failed to unload: something is in use"));
    EXPECT_FALSE(IsLoaded("ThrowsInUnload"));
    EXPECT_EQ(Alive(), 0);
}

TEST_F(LoaderOfTheHost, UnloadsEverythingWhenTheHostGoes) {
    OpenWithTools();
    Load("GoodTool");
    Load("ThrowsInUnload");
    EXPECT_EQ(Alive(), 2);
    Close();
    EXPECT_EQ(Alive(), 0);
}

TEST_F(LoaderOfTheHost, LoadsNothingAnyMoreWhileTheHostGoes) {
    OpenWithTools();
    Load("LO1");
    Host().UnloadTool("GoodTool");
    const std::shared_ptr<IFramework> framework = Host().Framework();
    Close(); // LoadsOthers asks for GoodTool once more
    EXPECT_STREQ(std::getenv("TEST_TOOL_ANSWERS"), "nnnyn");
    EXPECT_EQ(Alive(), 0);
    EXPECT_FALSE(framework->Loader().Load("GoodTool", nullptr));
}

TEST_F(LoaderOfTheHost, TellsWhoAsksForATool) {
    OpenWithTools();
    const auto listener = Listen("KvTM10");
    recorder.Forget();
    Framework().Loader().Load("NoPath", listener);
    Framework().Loader().Load("NoPath", nullptr);
    EXPECT_THAT(recorder.calls,
                ElementsAre("Loader.Load(\"NoPath\", \"KvTM10\")", "Loader.Load(\"NoPath\", null)"));
}

class ToolManagerInTheHost : public HostTest {};

TEST_F(ToolManagerInTheHost, IsOpenedFromALibraryAndLoaded) {
    Host().SetProfileId("admin");
    EXPECT_EQ(Host().Component(), nullptr);
    Host().OpenComponent(GOOD_TOOL);
    ASSERT_NE(Host().Component(), nullptr);
    EXPECT_FALSE(Host().Component()->IsLoaded());
    EXPECT_TRUE(Host().Load());
    EXPECT_TRUE(Host().Component()->IsLoaded());
    EXPECT_EQ(Framework().Router()->Send(NewMessage("GoodTool", 0, "profile")), "admin/0/Arvon110");
    EXPECT_THAT(Model().Loaded(), IsEmpty()); // it is none of the tools
    Host().Unload();
    EXPECT_FALSE(Host().Component()->IsLoaded());
}

TEST_F(ToolManagerInTheHost, MustBeOpenedFirst) {
    EXPECT_EQ(RefusalOf([&] { Host().Load(); }).number, base::errors::ObjectNotSet);
    EXPECT_EQ(RefusalOf([&] { Host().Unload(); }).number, base::errors::ObjectNotSet);
}

TEST_F(ToolManagerInTheHost, IsNotOpenedFromWhatIsNoTool) {
    const std::string tools = TEST_TOOLS;
    EXPECT_EQ(RefusalOf([&] { Host().OpenComponent(tools + "/None.so"); }).number,
              base::errors::FileNotFound);
    EXPECT_THAT(RefusalOf([&] { Host().OpenComponent(tools + "/NoEntryPoint.so"); }).description,
                HasSubstr("no entry point"));
    EXPECT_THAT(RefusalOf([&] { Host().OpenComponent(tools + "/ThrowsWhenMade.so"); }).description,
                HasSubstr("no memory for a tool"));
    EXPECT_EQ(Host().Component(), nullptr);
}

TEST_F(ToolManagerInTheHost, LetsThroughWhatItsLoadingThrows) {
    Host().OpenComponent(std::string(TEST_TOOLS) + "/ThrowsInLoad.so");
    const Refusal refusal = RefusalOf([&] { Host().Load(); });
    EXPECT_EQ(refusal.number, 1002);
    EXPECT_EQ(refusal.source, "ThrowsInLoad");
    Host().OpenComponent(std::string(TEST_TOOLS) + "/Declines.so");
    EXPECT_FALSE(Host().Load());
}

} // namespace
} // namespace arvon::host::test
