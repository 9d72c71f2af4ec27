#include "tests/options/OptionsFixture.h"

#include "base/XmlDocument.h"
#include "core/Names.h"
#include "options/PrinterEntry.h"

#include <gmock/gmock.h>

namespace kvtm::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

struct PrinterState {
    std::optional<std::vector<std::string>> names = std::vector<std::string>{}; // ANSI bytes
    std::string device = ",,,";
    std::int32_t platformId = 2;
    std::vector<int> levels;
};

class PrintersOfTest final : public platform::Printers {
public:
    explicit PrintersOfTest(PrinterState& state) : state_(state) {}
    std::optional<std::vector<std::string>> Enumerate(int level) override {
        state_.levels.push_back(level);
        return state_.names;
    }
    std::string DefaultName() override { return {}; }

private:
    PrinterState& state_;
};

class ProfileOfTest final : public platform::ProfileStrings {
public:
    explicit ProfileOfTest(PrinterState& state) : state_(state) {}
    std::string GetString(std::string_view section, std::string_view entry, std::string_view fallback,
                          std::size_t capacity) override {
        EXPECT_EQ(section, "windows");
        EXPECT_EQ(entry, "device");
        EXPECT_EQ(fallback, ",,,");
        EXPECT_EQ(capacity, 254u);
        return state_.device.substr(0, capacity - 1);
    }

private:
    PrinterState& state_;
};

class SystemOfTest final : public platform::SystemInfo {
public:
    explicit SystemOfTest(PrinterState& state) : state_(state) {}
    std::int32_t PlatformId() override { return state_.platformId; }
    std::filesystem::path ModuleFile() override { return "KvTM10.so"; }

private:
    PrinterState& state_;
};

class PrinterList : public OptionsTest {
protected:
    void SetUp() override {
        installation.Write(file, Options(SortOptions() + Tool("a", Option("cmbDefaultPrinter", "kept"))));
        CreateHost();
        platform::Services services = platform::Services::Create();
        services.printers = std::make_unique<PrintersOfTest>(printers);
        services.profileStrings = std::make_unique<ProfileOfTest>(printers);
        services.systemInfo = std::make_unique<SystemOfTest>(printers);
        CreateTool(std::move(services));
        ASSERT_TRUE(Load());
        printers.levels.clear();
    }
    std::vector<std::string> Entries() { return Probe().GetPrinters(printers.platformId).Snapshot(); }

    PrinterState printers;
};

TEST_F(PrinterList, MarksTheDefaultOneInTheSystemsOrder) {
    printers.names = {"Plotter", "Office laser", "B"};
    printers.device = "Office laser,winspool,LPT1:";
    EXPECT_THAT(Entries(), ElementsAre("Plotter", "Office laser;-1", "B"));
    EXPECT_THAT(printers.levels, ElementsAre(4));
    EXPECT_EQ(Request(request::EnumPrinters), "<Printers><Printer default=\"0\">Plotter</Printer>"
                                              "<Printer default=\"-1\">Office laser</Printer>"
                                              "<Printer default=\"0\">B</Printer></Printers>");
    EXPECT_EQ(DefaultPrinterHandedOut(), "Office laser");
}

TEST_F(PrinterList, IsEmptyWithoutPrinters) {
    EXPECT_EQ(Request(request::EnumPrinters), "<Printers/>");
    EXPECT_EQ(DefaultPrinterHandedOut(), "kept");
}

TEST_F(PrinterList, IsEmptyWhenTheEnumerationFails) {
    printers.names.reset();
    EXPECT_EQ(Request(request::EnumPrinters), "<Printers/>");
    EXPECT_EQ(DefaultPrinterHandedOut(), "kept");
}

TEST_F(PrinterList, ComparesTheDefaultNameExactly) {
    printers.names = {"laser"};
    for (const std::string_view device : {"Laser,x", "laser ,x", ",laser", ",,,", ""}) {
        printers.device = device;
        EXPECT_THAT(Entries(), ElementsAre("laser")) << device;
        EXPECT_EQ(DefaultPrinterHandedOut(), "kept");
    }
    printers.device = "laser";
    EXPECT_THAT(Entries(), ElementsAre("laser;-1"));
}

TEST_F(PrinterList, CutsTheProfileTextAtItsFirstNul) {
    printers.device = std::string("laser\0,x", 8);
    EXPECT_TRUE(Probe().IsDefaultPrinter("laser"));
    printers.device = std::string("\0laser", 6);
    EXPECT_FALSE(Probe().IsDefaultPrinter("laser"));
    EXPECT_TRUE(Probe().IsDefaultPrinter(""));
}

TEST_F(PrinterList, AtMost253BytesOfTheProfileCount) {
    const std::string name(253, 'p');
    printers.device = name + ",x";
    EXPECT_TRUE(Probe().IsDefaultPrinter(name));
    printers.device = name + "q,x";
    EXPECT_FALSE(Probe().IsDefaultPrinter(name + "q"));
}

TEST_F(PrinterList, OnOtherPlatformsMarksNoneAndAsksForTheOtherRecords) {
    printers.names = {"laser"};
    printers.device = "laser,x";
    for (const std::int32_t platformId : {0, 1, 3}) {
        printers.platformId = platformId;
        printers.levels.clear();
        EXPECT_EQ(Request(request::EnumPrinters),
                  "<Printers><Printer default=\"0\">laser</Printer></Printers>");
        EXPECT_THAT(printers.levels, ElementsAre(1));
        EXPECT_EQ(DefaultPrinterHandedOut(), "kept");
    }
}

TEST_F(PrinterList, ReadsNamesInTheAnsiCodePage) {
    printers.names = {"B\xFCro <2> & \x80", "\xC4"};
    printers.device = "\xC4,x";
    EXPECT_EQ(Request(request::EnumPrinters),
              "<Printers><Printer default=\"0\">Büro &lt;2&gt; &amp; €</Printer>"
              "<Printer default=\"-1\">Ä</Printer></Printers>");
    EXPECT_EQ(DefaultPrinterHandedOut(), "Ä");
}

TEST_F(PrinterList, TheMarkCountsWhereverItStandsInAnEntry) {
    printers.names = {"odd;-1 name"};
    EXPECT_EQ(Request(request::EnumPrinters), "<Printers><Printer default=\"-1\">odd</Printer></Printers>");
    EXPECT_EQ(printerEntry::NameOf("a;-1b;-1"), "a");
    EXPECT_FALSE(printerEntry::IsDefault("a;1"));
}

TEST_F(PrinterList, ANameThatXmlCannotHoldIsReported) {
    printers.names = {"\x01"};
    EXPECT_EQ(Request(request::EnumPrinters), "");
    ClaimReport("HandleRequest");
}

TEST_F(PrinterList, ADefaultPrinterOptionWithoutValueIsReportedWhenThereIsADefault) {
    installation.Write(file, Options(Tool("a", "<Option><Name>cmbDefaultPrinter</Name></Option>")));
    EXPECT_NE(Probe().getOptionData(""), "");
    printers.names = {"laser"};
    printers.device = "laser,x";
    EXPECT_EQ(Probe().getOptionData(""), "");
    ClaimReport("cToolMain.getOptionData");
}

TEST_F(PrinterList, IsNotAskedForWithoutTheOption) {
    installation.Write(file, Options(Tool("a", "")));
    Probe().getOptionData("");
    EXPECT_THAT(printers.levels, ElementsAre());
}

TEST_F(PrinterList, ThePlatformIsTheSystems) {
    EXPECT_EQ(Probe().GetPlatformId(), 2);
}

} // namespace
} // namespace kvtm::test
