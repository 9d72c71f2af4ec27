// Builds the catalogue of the suite, C:\QUARRA\Arvon\Tools.xml, from the descriptors of the program folders,
// C:\QUARRA\*\Program.xml, and replaces it in one step.
//
//     BuildToolXML_Arvon11.exe [--installation DIR]
//
// Without DIR it works on the installation that ARVON_INSTALLATION names, or on the one that it lies in. What
// has to be left out (a descriptor that cannot be read, a tool that is there twice) is told on standard
// error, and the catalogue written all the same: one damaged program does not hide the others. What is not
// taken over from the catalogue that was there before is told, too. Exit status 0; 1 when something was left
// out or the catalogue could not be written; 2 for a bad command line.

#include "base/ComponentError.h"
#include "base/Text.h"
#include "base/XmlDocument.h"
#include "platform/FilePaths.h"
#include "platform/Files.h"
#include "suite/programs/catalogue/CatalogueBuilder.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr std::string_view Quarra = "C:\\QUARRA";

/// The program folders' names in the order of the catalogue: without regard to letter case.
std::vector<std::string> ProgramFolders(const platform::FilePaths& paths) {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(paths.ToSystem(Quarra))) {
        if (entry.is_directory()) names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names, {},
                      [](const std::string& name) { return std::pair(base::UpperCase(name), name); });
    return names;
}

struct Descriptors {
    std::vector<suite::ProgramDescriptor> read;
    std::vector<std::string> problems;
};

Descriptors ReadDescriptors(const platform::FilePaths& paths) {
    Descriptors result;
    for (const std::string& name : ProgramFolders(paths)) {
        const std::string path = std::string(Quarra) + "\\" + name + "\\Program.xml";
        if (!paths.Exists(path)) continue;
        try {
            suite::ProgramDescriptor descriptor{name, {}};
            descriptor.document.LoadFile(paths.ToSystem(path));
            result.read.push_back(std::move(descriptor));
        } catch (const base::ComponentError& error) {
            result.problems.push_back(name + ": " + error.Description());
        }
    }
    return result;
}

void Tell(const std::vector<std::string>& lines) {
    for (const std::string& line : lines)
        std::cerr << "BuildToolXML_Arvon11: " << line << '\n';
}

/// Empty when there is none, or one that cannot be read, which is told: it is about to be replaced anyway.
base::XmlDocument ReadPrevious(const fs::path& file) {
    base::XmlDocument document;
    try {
        document.LoadFile(file);
    } catch (const base::ComponentError& error) {
        const std::int32_t number = error.Number();
        if (number != base::errors::FileNotFound && number != base::errors::PathNotFound)
            Tell({"what the user chose to show or hide cannot be taken over: " + error.Description()});
    }
    return document;
}

int Build(const platform::FilePaths& paths) {
    const fs::path file = paths.ToSystem(std::string(Quarra) + "\\Arvon\\Tools.xml");
    Descriptors descriptors = ReadDescriptors(paths);
    const suite::Catalogue catalogue = suite::BuildCatalogue(descriptors.read, ReadPrevious(file));
    platform::Files::Create()->Replace(file, suite::CatalogueText(catalogue.document));

    std::vector<std::string>& problems = descriptors.problems;
    problems.insert(problems.end(), catalogue.problems.begin(), catalogue.problems.end());
    Tell(problems);
    Tell(catalogue.dropped);
    return problems.empty() ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> words(argv + 1, argv + argc);
    if (!words.empty() && (words.size() != 2 || words[0] != "--installation")) {
        std::cerr << "usage: " << argv[0] << " [--installation DIR]\n";
        return 2;
    }
    try {
        return Build(words.empty() ? *platform::FilePaths::Create()
                                   : *platform::FilePaths::CreateFor(words[1]));
    } catch (const std::exception& error) {
        std::cerr << "BuildToolXML_Arvon11: " << error.what() << '\n';
        return 1;
    }
}
