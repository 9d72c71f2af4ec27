#include "tests/support/TestInstallation.h"

#include "base/Text.h"

namespace kvtm::test {

namespace fs = std::filesystem;

namespace {

std::string Escaped(std::string_view text) {
    std::string escaped = base::Replace(text, "&", "&amp;");
    escaped = base::Replace(escaped, "<", "&lt;");
    return base::Replace(escaped, "\"", "&quot;");
}

} // namespace

TestInstallation::TestInstallation() {
    WriteRegistry({{"BinPath", "C:\\QUARRA\\Arvon\\Bin"}, {"Brand", "Halcrest"}});
    folder_.Write("host.ini", "[Framework]\nLocaleID=1033\nFontName=Sans\nFontSize=9\n");
    Write("Arvon/Bin/UIKeys.txt", "ReportsLogoFile=\r\nOther=1\r\n");
    Write("Arvon/OPTIONS.XML", "<Options><ToolOptions><Tool ID=\"SOV02\">"
                               "<Option><Name>cmbToolSortKey</Name><Value/></Option>"
                               "<Option><Name>optToolSortOrder</Name><Value/></Option>"
                               "</Tool></ToolOptions></Options>");
    fs::create_directories(File("Enviro"));
    fs::create_directories(File("Arvon/resources/1033"));
    fs::copy_file(TEST_STRING_MODULE, File("Arvon/resources/1033/Tools.dll"));
    WriteTools({});
}

fs::path TestInstallation::File(std::string_view place) const {
    return folder_ / "drive_c/QUARRA" / place;
}

std::string TestInstallation::Read(std::string_view place) const {
    return ReadWholeFile(File(place));
}

void TestInstallation::Write(std::string_view place, std::string_view content) const {
    WriteWholeFile(File(place), content);
}

void TestInstallation::WriteTools(const std::vector<CatalogueTool>& tools) const {
    std::string xml = "<Tools>\n";
    for (const CatalogueTool& tool : tools) {
        const auto attribute = [&](const char* name, const std::string& value) {
            if (!value.empty()) xml += std::string(" ") + name + "=\"" + Escaped(value) + "\"";
        };
        xml += "  <Tool";
        attribute("Name", tool.name);
        attribute("VREX", tool.vrex.empty() ? tool.name : tool.vrex);
        attribute("Identifier", tool.identifier);
        attribute("Classification", tool.classification);
        attribute("ShowInList", tool.showInList);
        attribute("version", tool.version);
        attribute("LastUpdated", tool.lastUpdated);
        attribute("Kind", tool.kind);
        attribute("Brand", tool.brand);
        attribute("ProgramType", tool.programType);
        attribute("Path", tool.path);
        attribute("CommandLine", tool.commandLine);
        xml += "/>\n";
    }
    Write("Arvon/Tools.xml", xml + "</Tools>\n");
}

void TestInstallation::WriteRegistry(const std::vector<std::pair<std::string, std::string>>& values) const {
    std::string text = "Windows Registry Editor Version 5.00\r\n\r\n"
                       "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Veltrane\\Arvon11]\r\n";
    for (const auto& [name, value] : values) {
        text += "\"" + name + "\"=\"" + base::Replace(value, "\\", "\\\\") + "\"\r\n";
    }
    folder_.Write("registry.reg", text);
}

} // namespace kvtm::test
