// What observers are told, in which order, and what is not even made when nobody wants it.

#include "tests/host/HostFixture.h"

#include "host/Trace.h"

namespace arvon::host::test {
namespace {

class Recording : public HostTest {};

TEST_F(Recording, KeepsArgumentsInTheOrderOfTheCall) {
    Framework().Menus().Add("mnuTool", "&Tools", "text", "KvTM10", {}, "mnuHost", 1, -2, true);
    Framework().SetBanner("caption", "C:\\x.bmp", 7);
    Framework().Views().Add("v", ViewKind::Control, ControlViewDefinition{"Lib.ctl"}, "KvTM10");
    Framework().Views().Add("l", ViewKind::List, ListViewDefinition{}, "KvTM10");
    Framework().Tabs().Add(2, "t", "me", nullptr, false);
    Framework().Buttons().Add(99, "b", ButtonStyle::Separator);
    EXPECT_THAT(
        recorder.calls,
        ElementsAre(
            "Menus.Add(\"mnuTool\", \"&Tools\", \"text\", \"KvTM10\", null, \"mnuHost\", 1, -2, true)",
            "SetBanner(\"caption\", \"C:\\x.bmp\", 7)", "Views.Add(\"v\", 5, \"Lib.ctl\", \"KvTM10\")",
            "Views.Add(\"l\", 4, null, \"KvTM10\")", "Tabs.Add(2, \"t\", \"me\", null, false)",
            "Buttons.Add(99, \"b\", 1)"));
}

TEST_F(Recording, LeavesOutWhatIsSimplyReadUnlessReadsAreWanted) {
    IMenuItems& items = Framework().Menus().Item("mnuHost")->Items();
    recorder.Forget();
    const auto item = items.Item(1);
    item->Key();
    item->Caption();
    item->Owner();
    items.Count();
    Framework().Tools().Count();
    Framework().Tabs().Count();
    Framework().Router();
    EXPECT_THAT(recorder.calls, IsEmpty());
    items.Item("mnuInstallTools");
    EXPECT_THAT(recorder.calls, ElementsAre("MenuItems.Item(\"mnuInstallTools\")"));
}

class ReadRecorder final : public Recorder {
public:
    std::vector<std::string> reads;
    void OnCall(const CallRecord& call) override {
        Recorder::OnCall(call);
        if (call.isRead) reads.push_back(calls.back());
    }
    bool WantsReads() const override { return true; }
};

TEST_F(Recording, TellsReadsAmongTheCallsToWhoWantsThem) {
    OpenWith({{.name = "Layout", .identifier = "LAY"}});
    ReadRecorder all;
    Host().Subscribe(all);
    const auto record = Framework().Tools().Item(1);
    record->Name();
    record->Get("Identifier");
    Framework().GetSettings("Framework")->GetItem("LocaleID");
    Framework().Buttons().Item("btnUpdateTools")->Key();
    EXPECT_THAT(all.calls, ElementsAre("Tools()", "Tools.Item(1)", "Record.Name(\"Layout\")",
                                       "Record.Get(\"Layout\", \"Identifier\")", "GetSettings(\"Framework\")",
                                       "Settings.GetItem(\"Framework\", \"LocaleID\")", "Buttons()",
                                       "Buttons.Item(\"btnUpdateTools\")", "Button.Key(\"btnUpdateTools\")"));
    EXPECT_THAT(all.reads, ElementsAre("Tools()", "Tools.Item(1)", "Record.Name(\"Layout\")",
                                       "Record.Get(\"Layout\", \"Identifier\")",
                                       "Settings.GetItem(\"Framework\", \"LocaleID\")", "Buttons()",
                                       "Button.Key(\"btnUpdateTools\")"));
    EXPECT_THAT(recorder.calls,
                ElementsAre("GetSettings(\"Framework\")", "Buttons.Item(\"btnUpdateTools\")"));
    Host().Unsubscribe(all);
    Framework().Router();
    EXPECT_EQ(all.calls.size(), 9u);
}

TEST_F(Recording, TellsACallBeforeItIsCarriedOutAndAlsoOneThatIsRefused) {
    EXPECT_EQ(RefusalOf([&] { Framework().Views().Remove("none"); }).number, base::errors::InvalidCall);
    EXPECT_THAT(recorder.calls, ElementsAre("Views.Remove(\"none\")"));
}

TEST_F(Recording, MarksACallThatWasMadeToFail) {
    Host().FailNext("Update");
    Host().FailNext("Tools.Count");
    EXPECT_THROW(Framework().Update(), base::ComponentError);
    EXPECT_THROW(Framework().Tools().Count(), base::ComponentError);
    Framework().Update();
    EXPECT_THAT(recorder.calls, ElementsAre("Update() failed", "Tools.Count() failed", "Update()"));
}

TEST_F(Recording, TellsCallsMessagesBoxesAndPointersInTheirOrder) {
    class Order final : public IObserver {
    public:
        std::string told;
        void OnCall(const CallRecord& call) override { told += call.operation + " "; }
        void OnMessage(const MessageRecord& message) override { told += ">" + message.destination + " "; }
        void OnReply(const MessageRecord& message) override { told += "<" + message.destination + " "; }
        void OnMessageBox(const std::string& text, std::int32_t, const std::string&) override {
            told += text + " ";
        }
        void OnPointer(std::int32_t pointer) override { told += std::to_string(pointer) + " "; }
        void OnChanged(ModelPart part) override { told += part == ModelPart::Page ? "page " : "part "; }
    } order;
    Listen("a", [&](const auto&) {
        Framework().ShowMessage("box", boxStyle::Information, "title");
        Framework().SetMousePointer(pointer::Hourglass);
        Framework().BringPageForward("KvTM10");
        return "";
    });
    const auto message = NewMessage("a");
    Host().Subscribe(order);
    Framework().Router()->Send(message);
    Host().Unsubscribe(order);
    EXPECT_EQ(order.told, ">a ShowMessage box SetMousePointer 11 BringPageForward page <a ");
    EXPECT_THAT(recorder.boxes, ElementsAre("box/64/title"));
    EXPECT_THAT(recorder.pointers, ElementsAre(11));
}

TEST_F(Recording, ReachesEveryObserverOnce) {
    Recorder second;
    Host().Subscribe(second);
    Host().Subscribe(second);
    Framework().Update();
    EXPECT_EQ(second.calls.size(), 1u);
    EXPECT_EQ(recorder.calls.size(), 1u);
    Host().Unsubscribe(second);
    Host().Unsubscribe(second);
    Framework().Update();
    EXPECT_EQ(second.calls.size(), 1u);
    EXPECT_EQ(recorder.calls.size(), 2u);
}

TEST_F(Recording, LetsObserversComeAndGoWhileTheyAreBeingTold) {
    class Leaving final : public IObserver {
    public:
        Leaving(ReferenceHost& host, IObserver& next) : host_(host), next_(next) {}
        int count = 0;
        void OnCall(const CallRecord&) override {
            ++count;
            host_.Unsubscribe(*this);
            host_.Unsubscribe(next_);
            host_.Subscribe(next_); // comes again at the end, from the next call on
        }

    private:
        ReferenceHost& host_;
        IObserver& next_;
    };
    Recorder next;
    Leaving leaving(Host(), next);
    Host().Subscribe(leaving);
    Host().Subscribe(next);
    Framework().Update();
    EXPECT_EQ(leaving.count, 1);
    EXPECT_THAT(next.calls, IsEmpty());
    Framework().Update();
    EXPECT_EQ(leaving.count, 1);
    EXPECT_EQ(next.calls.size(), 1u);
    Host().Unsubscribe(next);
}

TEST_F(Recording, ToldObserversMayCallTheHost) {
    class Calling final : public IObserver {
    public:
        explicit Calling(IFramework& framework) : framework_(framework) {}
        void OnCall(const CallRecord& call) override {
            if (call.operation == "Update") framework_.RefreshViews(0);
        }

    private:
        IFramework& framework_;
    } calling(Framework());
    Host().Subscribe(calling);
    Framework().Update();
    Host().Unsubscribe(calling);
    EXPECT_THAT(recorder.calls, ElementsAre("Update()", "RefreshViews(0)"));
}

TEST_F(Recording, TellsOnlyWhatAnObserverWants) {
    class Picky final : public IObserver {
    public:
        bool calls = false, reads = false, messages = false, changes = false;
        int told = 0;
        bool WantsCalls() const override { return calls; }
        bool WantsReads() const override { return reads; }
        bool WantsMessages() const override { return messages; }
        bool WantsChanges() const override { return changes; }
        void OnCall(const CallRecord&) override { ++told; }
        void OnMessage(const MessageRecord&) override { ++told; }
        void OnReply(const MessageRecord&) override { ++told; }
        void OnChanged(ModelPart) override { ++told; }
    } picky;
    Listen("a");
    Host().Subscribe(picky);
    const auto everything = [&] {
        picky.told = 0;
        Framework().Update();                     // a call and a change
        Framework().Tools();                      // a read
        Host().SendRequest("Ask", {}, "me", "a"); // a message and its reply
        return picky.told;
    };
    EXPECT_EQ(everything(), 0);
    picky.calls = true;
    EXPECT_EQ(everything(), 1); // asked again each time, as long as another observer wants them
    picky.messages = true;
    EXPECT_EQ(everything(), 3);
    picky.changes = true;
    EXPECT_EQ(everything(), 4);
    picky.reads = true; // nobody else wants them: not asked before it subscribes again
    EXPECT_EQ(everything(), 4);
    Host().Subscribe(picky);
    EXPECT_EQ(everything(), 5);
    picky.reads = picky.calls = picky.messages = picky.changes = false;
    Host().Unsubscribe(recorder); // now nobody wants anything, and nobody is asked any more
    picky.calls = picky.messages = picky.changes = true;
    EXPECT_EQ(everything(), 0);
    Host().Subscribe(picky);
    EXPECT_EQ(everything(), 4);
    Host().Unsubscribe(picky);
}

TEST_F(Recording, TellsEveryPartThatChanges) {
    Host();
    const auto changesOf = [&](const auto& act) {
        recorder.changes.clear();
        act();
        return recorder.changes;
    };
    EXPECT_THAT(changesOf([&] { Framework().Menus().Remove("mnuHost"); }), ElementsAre(ModelPart::Menus));
    EXPECT_THAT(changesOf([&] { Framework().ContextMenu().Clear(); }), ElementsAre(ModelPart::ContextMenu));
    EXPECT_THAT(changesOf([&] { Framework().Buttons().Remove("btnUpdateTools"); }),
                ElementsAre(ModelPart::Toolbar));
    EXPECT_THAT(changesOf([&] { Framework().Tabs().Add(1, "t", "o", nullptr, true); }),
                ElementsAre(ModelPart::Tabs));
    const auto node = Framework().Tabs().Item("t")->Nodes().Add("n", "o", 3, "", nullptr, true, 0);
    EXPECT_THAT(changesOf([&] { node->Refresh(); }), ElementsAre(ModelPart::Tabs)); // is loaded now
    EXPECT_THAT(changesOf([&] { node->Refresh(); }), IsEmpty());
    EXPECT_THAT(changesOf([&] { Framework().Tools().Reload(); }), ElementsAre(ModelPart::Tools));
    EXPECT_THAT(changesOf([&] { Host().Listen("a", ""); }), ElementsAre(ModelPart::Listeners));
    EXPECT_THAT(changesOf([&] { Framework().SwitchLanguage("1033"); }), ElementsAre(ModelPart::Settings));
    EXPECT_THAT(changesOf([&] { Framework().BringPageForward("x"); }), ElementsAre(ModelPart::Page));
    EXPECT_THAT(changesOf([&] {
                    Framework().TaskViews().Add("p", ViewKind::TaskPane,
                                                Framework().TaskViews().NewTaskView(), "o");
                }),
                ElementsAre(ModelPart::TaskViews));
    EXPECT_THAT(changesOf([&] { Framework().Views().Add("l", ViewKind::List, ListViewDefinition{}, "o"); }),
                ElementsAre(ModelPart::Views));
    EXPECT_THAT(changesOf([&] { Framework().Views().Item("l")->List()->AddItem("k", "t"); }),
                ElementsAre(ModelPart::List));
    EXPECT_THAT(changesOf([&] { Framework().Views().Item("l")->Show(); }), ElementsAre(ModelPart::Windows));
}

TEST(Trace, BuildsNoArgumentsWhenNobodyWantsCalls) {
    class NoCalls final : public IObserver {
        bool WantsCalls() const override { return false; }
    } noCalls;
    Trace trace;
    int built = 0;
    const auto costly = [&] {
        ++built;
        return std::string("x");
    };
    trace.Call("Update", costly);
    trace.Subscribe(noCalls);
    trace.Call("Update", costly);
    trace.FailNext("RefreshViews", 1); // something is to fail, but not this
    trace.Call("Update", costly);
    EXPECT_EQ(built, 0);
    EXPECT_THROW(trace.Call("RefreshViews", costly), base::ComponentError);
    EXPECT_EQ(built, 0);
    Recorder recorder;
    trace.Subscribe(recorder);
    trace.Call("Update", costly);
    EXPECT_EQ(built, 1);
    EXPECT_THAT(recorder.calls, ElementsAre("Update(\"x\")"));
    trace.Unsubscribe(recorder);
    trace.Call("Update", costly);
    EXPECT_EQ(built, 1);
}

TEST(Trace, TellsNoObserverAnyMoreAfterAllWereTakenAway) {
    class Last final : public IObserver {
    public:
        explicit Last(Trace& trace) : trace_(trace) {}
        int told = 0;
        void OnCall(const CallRecord&) override {
            ++told;
            trace_.UnsubscribeAll();
        }

    private:
        Trace& trace_;
    };
    Trace trace;
    Last last(trace);
    Recorder recorder;
    trace.Subscribe(last);
    trace.Subscribe(recorder);
    trace.Call("Update");
    trace.Call("Update");
    EXPECT_EQ(last.told, 1);
    EXPECT_THAT(recorder.calls, IsEmpty());
}

TEST(Trace, KeepsTheNewestThousandProblems) {
    Trace trace;
    for (int index = 0; index < 1500; ++index)
        trace.Problem(std::to_string(index));
    ASSERT_EQ(trace.Problems().size(), 1000u);
    EXPECT_EQ(trace.Problems().front(), "500");
    EXPECT_EQ(trace.Problems().back(), "1499");
}

} // namespace
} // namespace arvon::host::test
