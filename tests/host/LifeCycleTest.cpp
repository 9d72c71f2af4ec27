// Opening an installation, the order in which a host goes, and one host after another.

#include "tests/host/HostFixture.h"

#include "platform/FilePaths.h"

#include <fstream>

namespace arvon::host::test {
namespace {

using LifeCycle = HostTest;

TEST_F(LifeCycle, NeedsAnInstallation) {
    const auto refusalOf = [](const std::filesystem::path& folder) {
        return RefusalOf([&] { ReferenceHost host(folder); });
    };
    const auto folder = installation.Folder();
    EXPECT_EQ(refusalOf(folder / "none").number, base::errors::PathNotFound);
    EXPECT_THAT(refusalOf(folder / "none").description, HasSubstr("none is no folder"));
    EXPECT_EQ(refusalOf("").number, base::errors::PathNotFound);
    EXPECT_EQ(refusalOf(folder / "registry.reg").number, base::errors::PathNotFound);
    std::filesystem::rename(folder / "registry.reg", folder / "kept.reg");
    EXPECT_EQ(refusalOf(folder).number, base::errors::FileNotFound);
    EXPECT_THAT(refusalOf(folder).description, HasSubstr("holds no file registry.reg"));
    std::filesystem::rename(folder / "drive_c", folder / "drive_e");
    EXPECT_THAT(refusalOf(folder).description, HasSubstr("holds no folder drive_c"));
}

TEST_F(LifeCycle, NamesTheInstallationInTheEnvironment) {
    Open();
    const auto folder = std::filesystem::canonical(installation.Folder());
    EXPECT_EQ(Host().Installation(), folder);
    EXPECT_EQ(std::getenv(platform::InstallationVariable), folder.string());
}

TEST_F(LifeCycle, ReleasesListenersAndToolManagerBeforeTheModelGoes) {
    class Last final : public IMessageListener {
    public:
        Last(std::shared_ptr<IFramework> framework, std::string& told)
            : framework_(std::move(framework)), told_(told) {}
        ~Last() override {
            framework_->Menus().Add("last", "", "", "me", {}, {}, 0, 0, true); // the model is whole
            told_ += std::to_string(framework_->Router()->IsRegistered("last"));
        }
        std::string id() const override { return "last"; }
        std::string ReceiveMessage(const std::shared_ptr<IMessage>&) override { return ""; }

    private:
        std::shared_ptr<IFramework> framework_; // holds the host's framework, which holds this listener
        std::string& told_;
    };
    std::string told;
    Framework().RegisterListener(std::make_shared<Last>(Host().Framework(), told), "last");
    Close();
    EXPECT_EQ(told, "0");
}

TEST_F(LifeCycle, LetsTheFrameworkGoWithTheLastWhoHoldsIt) {
    std::weak_ptr<IFramework> watched;
    {
        Host().OpenComponent(GOOD_TOOL);
        Host().Load(); // the tool registers itself and holds the framework
        watched = Host().Framework();
    }
    Close();
    EXPECT_TRUE(watched.expired());
}

TEST_F(LifeCycle, LeavesTheFrameworkUsableToWhoStillHoldsIt) {
    const auto framework = Host().Framework();
    Host().Listen("a", "x");
    Close();
    recorder.Forget();
    EXPECT_FALSE(framework->Router()->IsRegistered("a"));
    framework->Menus().Add("m", "", "", "me", {}, {}, 0, 0, true)->Items().Add("i", "", "", "me");
    framework->ShowMessage("nobody sees it", 0, "");
    EXPECT_EQ(framework->Loader().Load("anything", nullptr), false);
    EXPECT_THAT(recorder.calls, IsEmpty()); // no observer is told any more
    EXPECT_THAT(recorder.problems, IsEmpty());
}

TEST_F(LifeCycle, StartsAfreshInASecondHost) {
    const TestInstallation other;
    other.WriteTools({{.name = "only here"}});
    Host().SetProfileId(3);
    Host().AddProfileTask("Can Launch", "x");
    Host().Listen("a", "x");
    Host().FailNext("Update");
    Framework().Menus().Add("m", "", "", "me", {}, {}, 0, 0, true);
    Host().OpenComponent(GOOD_TOOL);
    Host().Load();
    Close();

    ReferenceHost second(other.Folder());
    EXPECT_EQ(std::getenv(platform::InstallationVariable),
              std::filesystem::canonical(other.Folder()).string());
    EXPECT_THAT(second.Model().Listeners(), ElementsAre("SnapIn"));
    EXPECT_EQ(second.Model().Menus().size(), 1u);
    ASSERT_EQ(second.Model().Tools().size(), 1u);
    EXPECT_EQ(second.Model().Tools()[0].name, "only here");
    EXPECT_NO_THROW(second.Framework()->Update());
    EXPECT_EQ(second.Component(), nullptr);
    second.OpenComponent(GOOD_TOOL); // the library is in the process already
    EXPECT_TRUE(second.Load());
    EXPECT_EQ(second.SendMessage(0, "profile", "me", "GoodTool"), "/0/Arvon110");
}

TEST_F(LifeCycle, TakesUpAnInstallationWhereTheLastHostLeftIt) {
    OpenWith({{.name = "a"}, {.name = "b"}});
    Framework().Tools().Remove(Framework().Tools().Item("a"));
    Framework().Tools().Save();
    Close();
    Open();
    ASSERT_EQ(Model().Tools().size(), 1u);
    EXPECT_EQ(Model().Tools()[0].name, "b");
}

TEST_F(LifeCycle, KeepsTheNewestBenchmarksOfRecordersThatAreSwitchedOn) {
    const auto recorderOfTexts = Host().Support().NewBenchmarkRecorder();
    recorderOfTexts->Record("off");
    recorderOfTexts->SetEnabled(true);
    recorderOfTexts->Record("on");
    EXPECT_THAT(Host().Benchmarks(), ElementsAre("on"));
    for (int index = 0; index < 10'500; ++index)
        recorderOfTexts->Record(std::to_string(index));
    EXPECT_EQ(Host().Benchmarks().size(), 10'000u);
    EXPECT_EQ(Host().Benchmarks().front(), "500");
    recorderOfTexts->SetEnabled(false);
    recorderOfTexts->Record("off again");
    EXPECT_EQ(Host().Benchmarks().back(), "10499");
    Close();
    recorderOfTexts->SetEnabled(true);
    recorderOfTexts->Record("to nobody");
}

TEST_F(LifeCycle, ShowsBannerPageAndPointer) {
    Framework().SetBanner("Caption", "C:\\x.bmp", 2);
    Framework().BringPageForward("KvTM10");
    Framework().SetMousePointer(pointer::Hourglass);
    EXPECT_EQ(Model().Banner().caption, "Caption");
    EXPECT_EQ(Model().Banner().picture, "C:\\x.bmp");
    EXPECT_EQ(Model().Banner().pictureFlag, 2);
    EXPECT_EQ(Model().Page(), "KvTM10");
    EXPECT_EQ(Model().Pointer(), 11);
}

} // namespace
} // namespace arvon::host::test
