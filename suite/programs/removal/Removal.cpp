#include "suite/programs/removal/Removal.h"

#include "base/ComponentError.h"
#include "suite/programs/removal/ProgramFolder.h"

#include <algorithm>
#include <functional>
#include <set>

namespace suite {
namespace {

/// Deepest first: a folder comes after everything in it.
struct DeeperFirst {
    bool operator()(const ProgramPath& left, const ProgramPath& right) const {
        return left.size() != right.size() ? left.size() > right.size() : left < right;
    }
};
using Folders = std::set<ProgramPath, DeeperFirst>;

class Attempt {
public:
    explicit Attempt(const ProgramFolder& folder) : folder_(folder) {}
    std::vector<std::string> problems;

    void Try(const std::function<void()>& step) {
        try {
            step();
        } catch (const base::ComponentError& error) {
            problems.push_back(error.Description());
        }
    }

    void RemoveFile(const ProgramPath& path) {
        Try([&] { folder_.RemoveFile(path); });
    }

    void RemoveEmptied(const Folders& folders, const Folders& named) {
        for (const ProgramPath& path : folders) {
            Try([&] {
                if (!folder_.RemoveFolderIfEmpty(path) && named.contains(path))
                    problems.push_back("\"" + ToText(path) + "\": the folder is not empty");
            });
        }
    }

private:
    const ProgramFolder& folder_;
};

/// The folders on the way to a path, without the program's own.
void AddParents(ProgramPath path, Folders& folders) {
    for (path.pop_back(); !path.empty(); path.pop_back())
        folders.insert(path);
}

} // namespace

std::vector<std::string> RemoveLogged(const ProgramFolder& folder, std::span<const ProgramPath> logged,
                                      const ProgramPath& log) {
    Attempt attempt(folder);
    std::vector<ProgramFolder::Found> found;
    for (const ProgramPath& path : logged)
        attempt.Try([&] { found.push_back(folder.Find(path)); });
    if (!attempt.problems.empty()) return attempt.problems;

    const ProgramPath logPath = folder.Find(log).path;
    Folders folders;
    Folders named;
    for (const auto& [path, kind] : found) {
        AddParents(path, folders);
        if (kind == ProgramFolder::Kind::Folder) named.insert(path);
        if (kind == ProgramFolder::Kind::File && path != logPath) attempt.RemoveFile(path);
    }
    folders.insert(named.begin(), named.end());
    // the folder of the log itself is empty only when the log has gone
    Folders logFolders;
    AddParents(logPath, logFolders);
    std::erase_if(folders, [&](const ProgramPath& path) { return logFolders.contains(path); });
    attempt.RemoveEmptied(folders, named);
    if (!attempt.problems.empty()) return attempt.problems;

    attempt.RemoveFile(logPath);
    logFolders.insert(ProgramPath{});
    attempt.RemoveEmptied(logFolders, named);
    return attempt.problems;
}

} // namespace suite
