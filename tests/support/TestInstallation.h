#pragma once

#include "tests/support/TestFolder.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kvtm::test {

/// A tool of a test's catalogue: the attributes of its Tool element.
struct CatalogueTool {
    std::string name;
    std::string vrex = {};       // the name without one
    std::string identifier = {}; //
    std::string classification = "Design";
    std::string showInList = "-1";
    std::string version = "1.0";
    std::string lastUpdated = "2024-03-01";
    std::string kind = "0";
    std::string brand = {};
    std::string programType = "QUARRA";
    std::string path = {};
    std::string commandLine = {};
};

/// A small installation in a temporary folder, removed with the object. Its string module holds "text N" for
/// every number N in use, but for 13, the date format, which is "yyyy-mm-dd".
class TestInstallation {
public:
    TestInstallation();

    const std::filesystem::path& Folder() const { return folder_.Path(); }
    /// A file by its place under C:\QUARRA, in system form: "Arvon/Tools.xml".
    std::filesystem::path File(std::string_view place) const;
    std::string Read(std::string_view place) const;
    void Write(std::string_view place, std::string_view content) const;

    void WriteTools(const std::vector<CatalogueTool>& tools) const;
    /// Values under SOFTWARE\Veltrane\Arvon11\ of the local machine; the whole registry.
    void WriteRegistry(const std::vector<std::pair<std::string, std::string>>& values) const;

private:
    TestFolder folder_;
};

} // namespace kvtm::test
