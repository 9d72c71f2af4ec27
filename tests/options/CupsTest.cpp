// Printers of a real CUPS server.

#include "tests/options/CupsServer.h"
#include "tests/options/OptionsFixture.h"

#include "base/XmlDocument.h"
#include "core/Names.h"

#include <chrono>
#include <gmock/gmock.h>
#include <thread>

namespace kvtm::test {
namespace {

using testing::ElementsAre;

class Cups : public OptionsTest {
protected:
    void SetUp() override { LoadWithTools(Tool("a", Option("cmbDefaultPrinter", "kept"))); }

    std::vector<std::string> Entries() { return Probe().GetPrinters(Probe().GetPlatformId()).Snapshot(); }
};

TEST_F(Cups, QueuesAreListedWithTheDefaultOneMarked) {
    const CupsServer server({"Plotter", "Office_laser", "Archive"}, "Office_laser");
    EXPECT_EQ(Request(request::EnumPrinters), "<Printers><Printer default=\"0\">Archive</Printer>"
                                              "<Printer default=\"-1\">Office_laser</Printer>"
                                              "<Printer default=\"0\">Plotter</Printer></Printers>");
    EXPECT_EQ(DefaultPrinterHandedOut(), "Office_laser");
}

TEST_F(Cups, NamesPassTheAnsiCodePage) {
    const CupsServer server({"Büro_2", "打印机"}, "Büro_2");
    EXPECT_THAT(Entries(), testing::UnorderedElementsAre("Büro_2;-1", "???"));
    EXPECT_EQ(DefaultPrinterHandedOut(), "Büro_2");
}

TEST_F(Cups, WithoutADefaultQueueNoneIsMarked) {
    const CupsServer server({"Plotter"});
    EXPECT_THAT(Entries(), ElementsAre("Plotter"));
    EXPECT_EQ(DefaultPrinterHandedOut(), "kept");
}

TEST_F(Cups, AServerWithoutQueuesHasNoPrinters) {
    const CupsServer server({});
    EXPECT_EQ(Request(request::EnumPrinters), "<Printers/>");
    EXPECT_EQ(DefaultPrinterHandedOut(), "kept");
}

TEST_F(Cups, ManyQueuesAreAllListed) {
    std::vector<std::string> queues;
    for (int i = 0; i < 300; ++i)
        queues.push_back("Queue" + std::to_string(1000 + i));
    const CupsServer server(queues, "Queue1299");
    const std::vector<std::string> entries = Entries();
    EXPECT_EQ(entries.size(), 300u);
    EXPECT_EQ(entries.back(), "Queue1299;-1");
}

TEST_F(Cups, AServerThatIsGoneHasNoPrinters) {
    CupsServer server({"Plotter"}, "Plotter");
    EXPECT_THAT(Entries(), ElementsAre("Plotter;-1"));
    server.Stop();
    EXPECT_EQ(Request(request::EnumPrinters), "<Printers/>");
    EXPECT_EQ(DefaultPrinterHandedOut(), "kept");
}

TEST_F(Cups, AServerThatHangsIsNotWaitedForAndIsAskedAgain) {
    CupsServer server({"Plotter"}, "Plotter");
    server.Hang();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(Request(request::EnumPrinters), "<Printers/>");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20)); // it would never end
    server.Resume();
    std::vector<std::string> entries;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (entries.empty() && std::chrono::steady_clock::now() < deadline) { // the first question has to end
        entries = Entries();
        if (entries.empty()) std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    EXPECT_THAT(entries, ElementsAre("Plotter;-1"));
}

TEST_F(Cups, EveryAskingSeesTheQueuesOfItsTime) {
    {
        const CupsServer server({"Before"});
        EXPECT_THAT(Entries(), ElementsAre("Before"));
    }
    const CupsServer server({"After"});
    EXPECT_THAT(Entries(), ElementsAre("After"));
}

} // namespace
} // namespace kvtm::test
