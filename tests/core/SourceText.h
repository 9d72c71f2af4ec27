#pragma once

#include "tests/support/TestFolder.h"

#include <cstddef>
#include <filesystem>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <utility>
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

/// The cells of a table's line in a page, without blanks and back quotes around them.
inline std::vector<std::string> CellsOf(const std::string& line) {
    std::vector<std::string> cells;
    for (std::size_t at = 1, end; (end = line.find('|', at)) != std::string::npos; at = end + 1) {
        std::string cell = line.substr(at, end - at);
        cell.erase(0, cell.find_first_not_of(" `"));
        cell.erase(cell.find_last_not_of(" `") + 1);
        cells.push_back(std::move(cell));
    }
    return cells;
}

/// The rows of the first table of a page whose head begins so; none where there is no such table.
inline std::vector<std::vector<std::string>> RowsBelow(const std::string& page, const std::string& head) {
    std::vector<std::vector<std::string>> rows;
    bool isHeadFound = false;
    for (const std::string& line : LinesOf(page)) {
        if (!isHeadFound) {
            isHeadFound = line.starts_with(head);
        } else if (!line.starts_with("|")) {
            break;
        } else if (!line.starts_with("|---")) {
            rows.push_back(CellsOf(line));
        }
    }
    return rows;
}

/// What the first group of an expression matches in a file, line by line, in order.
inline std::vector<std::string> MatchesIn(const std::string& file, const std::string& expression) {
    const std::regex wanted(expression);
    std::vector<std::string> matches;
    for (const std::string& line : LinesOf(file)) {
        for (std::sregex_iterator found(line.begin(), line.end(), wanted), end; found != end; ++found)
            matches.push_back((*found)[1]);
    }
    return matches;
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
