#include "platform/Printers.h"

#include "tests/platform/PrinterServer.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestVariable.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <dlfcn.h>
#include <optional>
#include <string>
#include <thread>
#include <vector>

using platform::Printers;
using Manner = PrinterServer::Manner;

namespace {

using Clock = std::chrono::steady_clock;
using Names = std::vector<std::string>;

class PrintersTest : public testing::Test {
protected:
    /// Starts a server and points CUPS at it.
    PrinterServer& Serve(Manner manner, Names names = {}, std::string defaultName = {}) {
        server.emplace(manner, std::move(names), std::move(defaultName));
        variable.emplace("CUPS_SERVER", ("127.0.0.1:" + std::to_string(server->Port())).c_str());
        return *server;
    }
    template <typename Action> static double SecondsOf(Action action) {
        const auto start = Clock::now();
        action();
        return std::chrono::duration<double>(Clock::now() - start).count();
    }

    TestFolder folder;
    TestVariable home{"HOME", folder.Path().c_str()}; // no user's own default printer
    TestVariable noDestination{"LPDEST", nullptr}, noPrinter{"PRINTER", nullptr};
    std::optional<PrinterServer> server;
    std::optional<TestVariable> variable;
    std::unique_ptr<Printers> printers = Printers::Create();
};

constexpr double Bound = 3; // seconds, with room for a busy machine; the wait itself is two

TEST_F(PrintersTest, ListsThePrintersOfTheServer) {
    Serve(Manner::Serving, {"Beta", "Alpha", "Größe"}, "Beta");
    const auto names = printers->Enumerate(4);
    ASSERT_TRUE(names);
    EXPECT_EQ(*names, (Names{"Beta", "Alpha",
                             "Gr\xF6\xDF"
                             "e"}))
        << "the server's order, ANSI bytes";
    EXPECT_EQ(printers->Enumerate(1), names);
    EXPECT_EQ(printers->DefaultName(), "Beta");
}

TEST_F(PrintersTest, HasNoDefaultWhereTheServerNamesNone) {
    Serve(Manner::Serving, {"Alpha"});
    EXPECT_EQ(printers->Enumerate(4), Names{"Alpha"});
    EXPECT_EQ(printers->DefaultName(), "");
}

TEST_F(PrintersTest, TakesTheUsersOwnDefault) {
    Serve(Manner::Serving, {"Alpha", "Beta"}, "Beta");
    folder.Write(".cups/lpoptions", "Default Alpha/draft sides=two\n");
    EXPECT_EQ(printers->Enumerate(4), (Names{"Alpha", "Beta"}));
    EXPECT_EQ(printers->DefaultName(), "Alpha");
}

TEST_F(PrintersTest, AsksTheServerOnceForManyQuestionsAboutTheDefault) {
    PrinterServer& counted = Serve(Manner::Serving, {"Alpha", "Beta"}, "Beta");
    printers->Enumerate(4);
    const int before = counted.Connections();
    for (int i = 0; i < 50; ++i)
        EXPECT_EQ(printers->DefaultName(), "Beta");
    EXPECT_EQ(counted.Connections(), before);
}

TEST_F(PrintersTest, HasAnEmptyListWithoutPrinters) {
    Serve(Manner::Serving);
    EXPECT_EQ(printers->Enumerate(4), Names{});
    EXPECT_EQ(printers->DefaultName(), "");
}

TEST_F(PrintersTest, HasAnEmptyListWithoutAServer) {
    int port = 0;
    port = Serve(Manner::Closing).Port();
    server.reset(); // nobody listens there any more
    const TestVariable nobody("CUPS_SERVER", ("127.0.0.1:" + std::to_string(port)).c_str());
    EXPECT_EQ(printers->Enumerate(4), Names{});
    const TestVariable noSocket("CUPS_SERVER", (folder / "none.sock").c_str());
    EXPECT_EQ(printers->Enumerate(4), Names{});
    EXPECT_EQ(printers->DefaultName(), "");
}

TEST_F(PrintersTest, FailsWhenTheServerAnswersWithAnError) {
    Serve(Manner::Refusing, {"Alpha"});
    EXPECT_FALSE(printers->Enumerate(4));
}

TEST_F(PrintersTest, GivesUpOnAServerThatNeverAnswers) {
    for (const Manner manner : {Manner::Silent, Manner::Dribbling, Manner::Closing, Manner::Garbage}) {
        Serve(manner);
        printers = Printers::Create();
        EXPECT_LT(SecondsOf([&] { EXPECT_FALSE(printers->Enumerate(4)); }), Bound)
            << static_cast<int>(manner);
        EXPECT_LT(SecondsOf([&] { EXPECT_EQ(printers->DefaultName(), ""); }), 0.5) << "asked a moment ago";
    }
}

TEST_F(PrintersTest, AsksOneQuestionAtATime) {
    PrinterServer& silent = Serve(Manner::Dribbling);
    EXPECT_FALSE(printers->Enumerate(4));
    const int before = silent.Connections();
    EXPECT_LT(SecondsOf([&] { EXPECT_FALSE(printers->Enumerate(4)); }), 0.5) << "waited for a moment ago";
    EXPECT_EQ(silent.Connections(), before) << "the first question is still under way";
}

TEST_F(PrintersTest, RecoversWhenTheServerDoes) {
    Serve(Manner::Silent);
    EXPECT_FALSE(printers->Enumerate(4));
    server.reset();
    variable.reset();
    Serve(Manner::Serving, {"Alpha"});
    std::optional<std::vector<std::string>> names;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!names && std::chrono::steady_clock::now() < deadline) { // the old question has to end first
        names = printers->Enumerate(4);
        if (!names) std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    EXPECT_EQ(names, Names{"Alpha"});
}

TEST_F(PrintersTest, MayGoAwayWhileAQuestionIsUnderWay) {
    Serve(Manner::Silent);
    EXPECT_FALSE(printers->Enumerate(4));
    printers.reset();
    server.reset(); // the question comes to its end now, without its asker
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
}

TEST_F(PrintersTest, LeavesTheSignalsOfTheProcessAlone) {
    Serve(Manner::Serving, {"Alpha"});
    const auto before = std::signal(SIGPIPE, SIG_DFL);
    sigset_t maskBefore, maskAfter;
    ::pthread_sigmask(SIG_BLOCK, nullptr, &maskBefore);
    printers->Enumerate(4);
    ::pthread_sigmask(SIG_BLOCK, nullptr, &maskAfter);
    for (int signal = 1; signal < 32; ++signal)
        EXPECT_EQ(::sigismember(&maskBefore, signal), ::sigismember(&maskAfter, signal)) << signal;
    EXPECT_EQ(std::signal(SIGPIPE, before), SIG_DFL);
}

TEST_F(PrintersTest, StaysLoadedWhileAQuestionIsUnderWay) {
    Serve(Manner::Dribbling);
    void* const plugin = ::dlopen(PRINTER_PLUGIN, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(plugin, nullptr) << ::dlerror();
    const auto count = reinterpret_cast<int (*)()>(::dlsym(plugin, "CountPrinters"));
    ASSERT_NE(count, nullptr);
    EXPECT_EQ(count(), -1);
    EXPECT_EQ(::dlclose(plugin), 0);
    server.reset();
    std::this_thread::sleep_for(std::chrono::milliseconds(200)); // its code runs to the end
}

} // namespace
