#pragma once

#include "tests/support/TestFolder.h"

#include <filesystem>
#include <set>
#include <sstream>
#include <string>
#include <vector>

/// The tree that the program was built from, read as text: what is written about the code is held against the
/// code itself.
namespace kvtm::test {

/// A file of the tree; the name begins at the project's folder.
inline std::filesystem::path ProjectFile(const std::string& name) {
    return std::filesystem::path(PROJECT_FOLDER) / name;
}

/// Throws std::runtime_error when there is no such file: a page that moved is no page without faults.
inline std::vector<std::string> LinesOf(const std::string& name) {
    std::istringstream text(ReadWholeFile(ProjectFile(name)));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);)
        lines.push_back(line);
    return lines;
}

/// The C++ files below a folder, from the project's folder; none where it is missing.
inline std::set<std::string> SourceFilesBelow(const std::string& folder) {
    namespace fs = std::filesystem;
    std::set<std::string> files;
    if (!fs::exists(ProjectFile(folder))) return files;
    for (const auto& entry : fs::recursive_directory_iterator(ProjectFile(folder))) {
        const fs::path extension = entry.path().extension();
        if (extension == ".h" || extension == ".cpp")
            files.insert(entry.path().lexically_relative(PROJECT_FOLDER).generic_string());
    }
    return files;
}

} // namespace kvtm::test
