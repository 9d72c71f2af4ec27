// The sample installation holds what it is there to show, and fits together.

#include "base/Text.h"
#include "base/Value.h"
#include "base/XmlDocument.h"
#include "platform/FilePaths.h"
#include "platform/Services.h"
#include "platform/modRegistry.h"
#include "suite/programs/removal/InstallLog.h"
#include "tests/suite/SuiteCopy.h"

#include <algorithm>
#include <fcntl.h>
#include <functional>
#include <gmock/gmock.h>
#include <map>
#include <set>
#include <unistd.h>

namespace suite::test {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAreArray;

namespace fs = std::filesystem;

using Attributes = std::map<std::string, std::string>;

class SampleData : public SuiteCopy {
protected:
    std::vector<Attributes> Tools() const {
        base::XmlDocument catalogue;
        catalogue.LoadFile(Quarra("Arvon/Tools.xml"));
        std::vector<Attributes> tools;
        for (const base::XmlNode& tool : catalogue.Select("//Tool")) {
            const auto attributes = tool.Attributes();
            tools.emplace_back(attributes.begin(), attributes.end());
        }
        return tools;
    }

    std::vector<std::string> Values(const std::string& attribute) const {
        std::vector<std::string> values;
        for (Attributes& tool : Tools())
            values.push_back(tool[attribute]);
        return values;
    }

    std::size_t CountOf(const std::function<bool(Attributes&)>& wanted) const {
        std::vector<Attributes> tools = Tools();
        return static_cast<std::size_t>(std::ranges::count_if(tools, wanted));
    }

    fs::path OnDisk(const std::string& path) const {
        return platform::FilePaths::CreateFor(Installation())->ToSystem(path);
    }

    base::XmlDocument Options() const {
        base::XmlDocument options;
        options.LoadFile(Quarra("Arvon/OPTIONS.XML"));
        return options;
    }
};

bool IsOutside(const Attributes& tool) {
    const std::string& vrex = tool.at("VREX");
    return vrex.starts_with("Tobr") || vrex.starts_with("Jx3");
}

bool IsFrameworks(const Attributes& tool) {
    return tool.at("Classification") == "Manager" || tool.at("Classification") == "Core Tool";
}

TEST_F(SampleData, HasToolsOfEveryKind) {
    EXPECT_GE(Tools().size(), 14U);
    EXPECT_THAT(Values("Classification"),
                AllOf(Contains("Manager"), Contains("Core Tool"), Contains("Drafting")));
    EXPECT_THAT(Values("ShowInList"), AllOf(Contains("-1"), Contains("0"), Contains("True")));
    EXPECT_GE(CountOf([](auto& tool) { return tool["ShowInList"] == "0" && !IsFrameworks(tool); }), 1U)
        << "hidden";
    EXPECT_THAT(Values("Name"),
                AllOf(Contains("Beam & Frame"), Contains("Wärmebedarf"), Contains("Łożyska")));
    EXPECT_GE(CountOf([](auto& tool) { return tool["Identifier"].empty(); }), 1U);
    EXPECT_THAT(Values("version"), Contains("4.2").Times(3));
}

TEST_F(SampleData, HasTwoVantorsOfDifferentBrandsAndAToolThatIsNone) {
    std::set<std::string> brands;
    for (const Attributes& tool : Tools()) {
        if (tool.at("Kind") != "3") continue;
        brands.insert(base::UpperCase(base::TrimBlanks(tool.at("Brand"))));
        EXPECT_FALSE(IsOutside(tool));
    }
    EXPECT_THAT(brands, testing::ElementsAre("HALCREST", "VELTRANE"));
    EXPECT_GE(
        CountOf([](auto& tool) { return !IsOutside(tool) && !IsFrameworks(tool) && tool["Kind"] != "3"; }),
        1U);
}

TEST_F(SampleData, HasOutsideProgramsOfBothPrefixes) {
    EXPECT_GE(CountOf([](auto& tool) { return tool["VREX"].starts_with("Tobr"); }), 2U);
    EXPECT_GE(CountOf([](auto& tool) { return tool["VREX"].starts_with("Jx3"); }), 2U);
    EXPECT_GE(CountOf([](auto& tool) { return IsOutside(tool) && tool["CommandLine"].find("--") == 0; }), 1U);
    EXPECT_GE(
        CountOf([](auto& tool) { return IsOutside(tool) && tool["Path"].find(' ') != std::string::npos; }),
        1U);
    EXPECT_GE(CountOf([](auto& tool) { return IsOutside(tool) && tool["Path"].empty(); }), 1U);
}

TEST_F(SampleData, HasEveryProgramTypeThatCanBeRemovedAndOneThatCannot) {
    std::set<std::string> types;
    for (const std::string& type : Values("ProgramType"))
        types.insert(base::UpperCase(base::TrimBlanks(type)));
    EXPECT_THAT(types, AllOf(Contains("ORDIX"), Contains("VANTOR"), Contains("QUARRA"), Contains("PLEXA"),
                             Contains("SERVICE")));
}

TEST_F(SampleData, HasToolsInAGroupAndInsideAnotherTool) {
    base::XmlDocument catalogue;
    catalogue.LoadFile(Quarra("Arvon/Tools.xml"));
    EXPECT_EQ(catalogue.Select("/Tools/Group/Tool").size(), 2U);
    EXPECT_EQ(catalogue.Select("/Tools/Group/Tool/Tool").size(), 1U);
}

TEST_F(SampleData, HasNoToolTwice) {
    for (const char* attribute : {"Name", "VREX", "Identifier"}) {
        std::set<std::string> seen;
        for (const std::string& value : Values(attribute)) {
            if (value.empty()) continue;
            EXPECT_TRUE(seen.insert(base::UpperCase(value)).second) << attribute << ' ' << value;
        }
    }
}

TEST_F(SampleData, GivesADateToEveryToolThatCanBeListed) {
    for (const Attributes& tool : Tools()) {
        if (IsFrameworks(tool)) continue;
        EXPECT_NO_THROW(base::Value(tool.at("LastUpdated")).ToDate()) << tool.at("Name");
    }
}

TEST_F(SampleData, HasTheProgramAndThePictureOfEachTool) {
    for (const Attributes& tool : Tools()) {
        SCOPED_TRACE(tool.at("Name"));
        const std::string& path = tool.at("Path");
        EXPECT_TRUE(path.empty() || fs::is_regular_file(OnDisk(path))) << path;
        const std::string& identifier = tool.at("Identifier");
        if (IsFrameworks(tool) || identifier.empty()) continue;
        const std::string picture(base::FirstCharacters(identifier, 3));
        EXPECT_TRUE(fs::is_regular_file(OnDisk("C:\\QUARRA\\Arvon\\Images\\" + picture + ".gif")));
    }
}

TEST_F(SampleData, KeepsEachProgramInTheFolderOfItsVrex) {
    for (const Attributes& tool : Tools()) {
        const std::string& path = tool.at("Path");
        if (IsFrameworks(tool) || path.empty()) continue;
        EXPECT_TRUE(path.starts_with("C:\\QUARRA\\" + tool.at("VREX") + "\\")) << path;
    }
}

TEST_F(SampleData, HasAnInstallLogThatNamesWhatLiesInEachProgramFolder) {
    for (const fs::directory_entry& folder : fs::directory_iterator(Quarra())) {
        const std::string vrex = folder.path().filename().string();
        if (vrex == "Arvon" || vrex == "Enviro" || vrex == "Packages") continue;
        SCOPED_TRACE(vrex);
        std::vector<std::string> present;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
            if (entry.is_regular_file() && entry.path().filename() != "Install.log")
                present.push_back(base::Replace(fs::relative(entry.path(), folder).string(), "/", "\\"));
        }
        std::vector<std::string> logged;
        const auto codePage = platform::CodePage::Create();
        for (const ProgramPath& path :
             ParseInstallLog(Read(folder.path() / "Install.log"), *codePage, {'C', vrex})) {
            if (!ToText(path).ends_with(".log")) logged.push_back(ToText(path)); // the log that a run makes
        }
        EXPECT_THAT(logged, UnorderedElementsAreArray(present));
    }
}

TEST_F(SampleData, KeepsTheEnvironmentFolderReadyForRemovals) {
    for (const char* file : {"logo-v3.jpg", "logo-h3.jpg", "logo-o3.jpg", "KT4-RemoveProgram.exe"})
        EXPECT_TRUE(fs::is_regular_file(Quarra("Enviro") / file)) << file;
    for (const char* file : {"Remove.ini", "ResultOK.txt"})
        EXPECT_FALSE(fs::exists(Quarra("Enviro") / file)) << file;
}

TEST_F(SampleData, HasTheOptionsThatTheToolManagerUses) {
    const base::XmlDocument options = Options();
    EXPECT_GE(options.Select("/Options/ToolOptions/Tool").size(), 6U);
    for (const std::string name : {"cmbToolSortKey", "optToolSortOrder"})
        EXPECT_TRUE(options.SelectSingle("//Tool[@ID='SOV02']/Option[Name='" + name + "']/Value")) << name;
    for (const std::string name :
         {"chkShowPricing", "chkShowBaseUnitPriceBrkDn", "lblShowPricing", "lblShowBUPricing",
          "chkShowPricingUI", "lblShowPricingUI", "cmbLanguage", "cmbDefaultPrinter"})
        EXPECT_EQ(options.Select("//Option[Name='" + name + "']/Value").size(), 1U) << name;
    EXPECT_EQ(options.SelectSingle("//Option[Name='cmbUnitOfMeasure']/Value").Text(), "");
    EXPECT_TRUE(options.SelectSingle("//Tool[DisplayName and UIRenderer]"));
}

TEST_F(SampleData, HasOptionsThatOptionSetsCanHold) {
    std::set<std::string> tools;
    for (const base::XmlNode& tool : Options().SelectSingle("//ToolOptions").Children()) {
        EXPECT_TRUE(tools.insert(tool.Attribute("ID")).second) << tool.Attribute("ID");
        std::set<std::string> names;
        for (const base::XmlNode& child : tool.Children()) {
            const std::string name = child.Name() == "Option" ? child.FirstChild().Text() : child.Name();
            EXPECT_TRUE(names.insert(name).second) << tool.Attribute("ID") << ' ' << name;
        }
    }
}

TEST_F(SampleData, HasRegistryAndInterfaceValues) {
    const TestVariable installation("ARVON_INSTALLATION", Installation().c_str());
    const platform::Services services = platform::Services::Create();
    const auto read = [&](std::string_view key, std::string_view value) {
        return platform::modRegistry::getRegistryStringValue(services, platform::HkeyLocalMachine, key, value,
                                                             "none");
    };
    EXPECT_EQ(read(platform::modRegistry::FrameworkKey, "BinPath"), "C:\\QUARRA\\Arvon\\Bin");
    EXPECT_EQ(read(platform::modRegistry::FrameworkKey, "Brand"), "Veltrane");
    EXPECT_EQ(read(platform::modRegistry::UiValueKey, "ReportsLogoFile"), "C:\\QUARRA\\Enviro\\logo-v3.jpg");
    EXPECT_EQ(read(platform::modRegistry::UiValueKey, "ReportsFooter"),
              "Prepared with Arvon = page %1 of %2");
}

TEST_F(SampleData, NamesNoFolderOfTheMachineThatBuiltIt) {
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(Installation())) {
        if (!entry.is_regular_file()) continue;
        const std::string content = Read(entry.path());
        if (content.starts_with("\x7F"
                                "ELF"))
            continue; // what compilers put into code is their business
        EXPECT_THAT(content, Not(HasSubstr(KVTM_SUITE_FOLDER))) << entry.path();
    }
}

class StringResources : public SuiteCopy {
protected:
    std::string Text(int language, std::uint32_t number) const {
        const fs::path module = Quarra("Arvon/resources") / std::to_string(language) / "Tools.dll";
        const int handle = open(module.c_str(), O_RDONLY | O_CLOEXEC);
        if (handle < 0) return "no module";
        const std::string bytes = platform::StringModules::Create()->LoadString(handle, number, 2048);
        close(handle);
        return platform::CodePage::Create()->FromAnsi(bytes);
    }
};

constexpr int English = 1033;
constexpr int German = 1031;
constexpr std::uint32_t Numbers[] = {1,  2,  3,  4,  5,  6,  7,  8,  9,    10,   11,   12,   13,
                                     16, 17, 18, 19, 20, 21, 34, 35, 37,   38,   40,   41,   42,
                                     43, 44, 45, 46, 47, 48, 61, 62, 1033, 1034, 1035, 1036, 4027};

TEST_F(StringResources, HaveEveryTextInBothLanguages) {
    for (const std::uint32_t number : Numbers) {
        EXPECT_THAT(Text(English, number), Not(IsEmpty())) << number;
        EXPECT_THAT(Text(German, number), Not(IsEmpty())) << number;
    }
    for (const std::uint32_t number : {0U, 14U, 15U, 22U, 36U, 39U, 49U, 63U, 4028U})
        EXPECT_EQ(Text(English, number), "") << number;
}

TEST_F(StringResources, HoldTheTextsOfTheirLanguage) {
    EXPECT_EQ(Text(English, 5), "Tools");
    EXPECT_EQ(Text(German, 5), "Werkzeuge");
    EXPECT_EQ(Text(English, 13), "m/d/yyyy");
    EXPECT_EQ(Text(German, 13), "dd.mm.yyyy");
    EXPECT_EQ(Text(German, 62), "Die Optionen der Programme ändern");
}

TEST_F(StringResources, MarkOneLetterOfEachMenuCaptionAndOfNothingElse) {
    const std::set<std::uint32_t> captions = {6, 8, 10, 61};
    for (const int language : {English, German}) {
        for (const std::uint32_t number : Numbers) {
            const std::string text = Text(language, number);
            EXPECT_EQ(std::ranges::count(text, '&'), captions.contains(number) ? 1 : 0) << text;
            EXPECT_FALSE(text.ends_with('&')) << text;
        }
    }
}

TEST_F(StringResources, EndWithABlankWhereANameFollowsDirectly) {
    for (const int language : {English, German}) {
        for (const std::uint32_t number : {12U, 47U})
            EXPECT_TRUE(Text(language, number).ends_with(' ')) << number;
    }
}

} // namespace
} // namespace suite::test
