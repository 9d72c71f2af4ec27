// Who may include whom stands in a table of CONTRIBUTING.md; the include lines are held against it.

#include "tests/core/SourceText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace kvtm::test {
namespace {

using Names = std::set<std::string>;

/// A row of the table.
struct Room {
    std::string folder;
    Names folders; // that it includes
    Names headers; // beginnings of names, "Qt" and "the system"
};

struct House {
    std::vector<Room> rooms;
    std::map<std::string, Names> exceptions; // headers, by the file that includes them
};

/// One include line.
struct Include {
    std::string file;
    std::string header; // of the tree from the project's folder; as it is written otherwise
    bool isOfTree = false;
};

/// What a cell lists between commas, without back quotes.
Names ListOf(const std::string& cell) {
    const std::regex item("[^,`|\\s][^,`|]*[^,`|\\s]|[^,`|\\s]");
    Names names;
    for (std::sregex_iterator found(cell.begin(), cell.end(), item), end; found != end; ++found)
        names.insert(found->str());
    return names;
}

House ReadHouse() {
    House house;
    for (const std::vector<std::string>& row : RowsBelow("CONTRIBUTING.md", "| folder | includes |"))
        house.rooms.push_back({row.at(0), ListOf(row.at(1)), ListOf(row.at(2))});
    for (const std::vector<std::string>& row : RowsBelow("CONTRIBUTING.md", "| file | includes |"))
        house.exceptions[row.at(0)] = ListOf(row.at(1));
    return house;
}

/// A name in the tree for what an include line names; the name itself where there is no such file.
std::string PlaceOf(const std::string& header) {
    for (const char* folder : {"src/", ""}) {
        if (std::filesystem::exists(ProjectFile(folder + header))) return folder + header;
    }
    return header;
}

std::vector<Include> ReadIncludes() {
    const std::regex include("\\s*#\\s*include\\s*([<\"])([^>\"]+)[>\"].*");
    std::vector<Include> includes;
    for (const char* folder : {"src", "host", "console", "desktop", "suite", "sdk"}) {
        for (const std::string& file : SourceFilesBelow(folder)) {
            for (const std::string& line : LinesOf(file)) {
                std::smatch match;
                if (!std::regex_match(line, match, include)) continue;
                const bool isOfTree = match[1] == "\"";
                includes.push_back({file, isOfTree ? PlaceOf(match[2]) : match[2].str(), isOfTree});
            }
        }
    }
    return includes;
}

/// The innermost folder of the table that a file lies in; null when it lies in none.
const Room* RoomOf(const House& house, const std::string& file) {
    const Room* innermost = nullptr;
    for (const Room& room : house.rooms) {
        const bool isOuter = innermost && innermost->folder.size() > room.folder.size();
        if (file.starts_with(room.folder + "/") && !isOuter) innermost = &room;
    }
    return innermost;
}

/// Whether a header belongs to the language, which every folder may use.
bool IsOfLanguage(const std::string& header) {
    return header.find_first_of("./") == std::string::npos &&
           std::islower(static_cast<unsigned char>(header[0]));
}

/// What a row must name for a header from outside the tree.
std::string NameOfOutside(const House& house, const std::string& header) {
    if (header.starts_with("Q")) return "Qt";
    for (const Room& room : house.rooms) {
        for (const std::string& library : room.headers) {
            if (header.starts_with(library)) return library;
        }
    }
    return "the system";
}

/// What is included across rooms as "FOLDER includes NAME", with one file that does. Headers that an
/// exception allows do not count.
std::map<std::string, std::string> ArrowsFound(const House& house) {
    std::map<std::string, std::string> arrows;
    for (const Include& include : ReadIncludes()) {
        const Room* room = RoomOf(house, include.file);
        const std::string from = room ? room->folder : "(no row)";
        std::string to;
        if (include.isOfTree) {
            const auto allowed = house.exceptions.find(include.file);
            if (allowed != house.exceptions.end() && allowed->second.contains(include.header)) continue;
            const Room* target = RoomOf(house, include.header);
            to = target ? target->folder : include.header;
        } else if (!IsOfLanguage(include.header)) {
            to = NameOfOutside(house, include.header);
        }
        if (!to.empty() && from != to)
            arrows.emplace(from + " includes " + to, include.file + ": " + include.header);
    }
    return arrows;
}

Names ArrowsAllowed(const House& house) {
    Names arrows;
    for (const Room& room : house.rooms) {
        for (const std::string& folder : room.folders)
            arrows.insert(room.folder + " includes " + folder);
        for (const std::string& header : room.headers)
            arrows.insert(room.folder + " includes " + header);
    }
    return arrows;
}

} // namespace

TEST(Arrows, RunOneWay) {
    Names above;
    for (const Room& room : ReadHouse().rooms) {
        for (const std::string& folder : room.folders) {
            EXPECT_TRUE(above.contains(folder))
                << room.folder << " names " << folder << ", which stands in no row above it";
        }
        above.insert(room.folder);
    }
    EXPECT_GT(above.size(), 10u);
}

TEST(Arrows, AreThoseOfTheTable) {
    const House house = ReadHouse();
    const Names allowed = ArrowsAllowed(house);
    for (const auto& [arrow, example] : ArrowsFound(house))
        EXPECT_TRUE(allowed.contains(arrow)) << arrow << ", which the table does not allow: " << example;
}

TEST(Arrows, OfTheTableAreAllInUse) {
    const House house = ReadHouse();
    const std::map<std::string, std::string> found = ArrowsFound(house);
    for (const std::string& arrow : ArrowsAllowed(house))
        EXPECT_TRUE(found.contains(arrow)) << arrow << " in the table, but no file does";
}

TEST(Arrows, AgainstTheDirectionAreAllNamed) {
    const std::vector<Include> includes = ReadIncludes();
    for (const auto& [file, headers] : ReadHouse().exceptions) {
        for (const std::string& header : headers) {
            const bool isInUse = std::any_of(includes.begin(), includes.end(), [&](const Include& include) {
                return include.isOfTree && include.file == file && include.header == header;
            });
            EXPECT_TRUE(isInUse) << file << " no longer includes " << header;
        }
    }
}

} // namespace kvtm::test
