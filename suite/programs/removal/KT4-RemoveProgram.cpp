// Removes one installed program of the suite: what "Remove.ini" beside this program asks for.
//
// Takes away exactly what the program's install log names, never anything outside the program's own folder,
// and leaves "ResultOK.txt" beside itself when all of that is gone. A "ResultOK.txt" of an earlier run is
// taken away first: when there is one afterwards, it is this run's. A program without a folder is gone. What
// was done, or why not, stands in "RemoveProgram.log" there; the reasons go to standard error too. Exit
// status 0 when all is gone, 1 when not, 2 for arguments, of which there are none.

#include "base/ComponentError.h"
#include "base/Text.h"
#include "platform/CodePage.h"
#include "platform/FilePaths.h"
#include "platform/Files.h"
#include "suite/programs/OwnFile.h"
#include "suite/programs/removal/InstallLog.h"
#include "suite/programs/removal/ProgramFolder.h"
#include "suite/programs/removal/Removal.h"
#include "suite/programs/removal/RemovalRequest.h"

#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr std::size_t LargestRequest = std::size_t{64} << 10;
constexpr std::size_t LargestLog = std::size_t{4} << 20;

/// Whether a drive of the installation, perhaps a link to another place, holds this folder as its QUARRA.
bool IsQuarraOfDrive(const platform::FilePaths& paths, char drive, const fs::path& quarra) {
    try {
        const fs::path found = paths.ToSystem(std::string{drive, ':'} + "\\QUARRA");
        std::error_code missing;
        return !fs::is_symlink(found, missing) && fs::equivalent(found, quarra, missing);
    } catch (const base::ComponentError&) { // there is no such drive
        return false;
    }
}

/// The letter of the drive whose QUARRA folder this is: the asked one where several lead there. Throws when
/// the folder lies anywhere else.
char DriveOf(const fs::path& quarra, char asked) {
    if (base::EqualIgnoringCase(quarra.filename().string(), "QUARRA")) {
        const auto paths = platform::FilePaths::Create();
        if (asked >= 'A' && asked <= 'Z' && IsQuarraOfDrive(*paths, asked, quarra)) return asked;
        const std::string drive = quarra.parent_path().filename().string();
        if (drive.size() == 7 && drive.starts_with("drive_") && drive[6] >= 'a' && drive[6] <= 'z')
            return static_cast<char>(drive[6] - 'a' + 'A');
    }
    throw base::ComponentError(base::errors::PathNotFound, "RemoveProgram",
                               quarra.string() + " is not the folder QUARRA of an installation's drive");
}

class RemoveProgram {
public:
    RemoveProgram() : enviro_(suite::OwnFile().parent_path()), quarra_(enviro_.parent_path()) {}

    /// What stands in the way, one text for each; nothing when the program is gone.
    std::vector<std::string> Run() {
        fs::remove(ResultFile());
        request_ =
            suite::ParseRemovalRequest(files_->Read(enviro_ / "Remove.ini", LargestRequest), *codePage_);
        const std::string drive = base::UpperCase(request_.logFile.substr(0, 1));
        const suite::ProgramPlace place{DriveOf(quarra_, drive.empty() ? '\0' : drive[0]), request_.vrex};
        const suite::ProgramPath log = suite::ParseProgramPath(request_.logFile, place);
        if (log.empty()) {
            throw base::ComponentError(base::errors::InvalidCall, "RemoveProgram",
                                       "Remove.ini: the Logfile is missing, or names the program's folder");
        }
        std::vector<std::string> problems;
        const auto folder = suite::ProgramFolder::Open(quarra_, request_.vrex);
        if (folder && !IsEmptied(*folder, log))
            problems = suite::RemoveLogged(
                *folder, suite::ParseInstallLog(folder->Read(log, LargestLog), *codePage_, place), log);
        if (problems.empty()) Write(ResultFile(), Description() + "\r\n");
        return problems;
    }

    std::string Description() const { return request_.vrex + " (" + request_.name + ")"; }
    void WriteReport(const std::string& text) { Write(enviro_ / "RemoveProgram.log", text); }

private:
    /// Whether an earlier removal left nothing but the folder, which is then taken away too.
    static bool IsEmptied(const suite::ProgramFolder& folder, const suite::ProgramPath& log) {
        return folder.Find(log).kind == suite::ProgramFolder::Kind::Missing && folder.RemoveFolderIfEmpty({});
    }

    fs::path ResultFile() const { return enviro_ / "ResultOK.txt"; }

    /// Anew, so that a link of that name is replaced and not followed.
    void Write(const fs::path& file, const std::string& text) {
        fs::remove(file);
        files_->Write(file, text);
    }

    fs::path enviro_;
    fs::path quarra_;
    suite::RemovalRequest request_;
    std::unique_ptr<platform::Files> files_ = platform::Files::Create();
    std::unique_ptr<platform::CodePage> codePage_ = platform::CodePage::Create();
};

std::vector<std::string> Problems(RemoveProgram& program) {
    try {
        return program.Run();
    } catch (const std::exception& error) {
        return {error.what()};
    }
}

} // namespace

int main(int argc, char**) {
    if (argc > 1) {
        std::cerr << "KT4-RemoveProgram takes no arguments: it does what Remove.ini beside it asks for\n";
        return 2;
    }
    try {
        RemoveProgram program;
        const std::vector<std::string> problems = Problems(program);
        std::string report = problems.empty() ? "removed " + program.Description() + "\r\n" : "";
        for (const std::string& problem : problems) {
            std::cerr << "KT4-RemoveProgram: " << problem << '\n';
            report += "not removed: " + problem + "\r\n";
        }
        program.WriteReport(report);
        return problems.empty() ? 0 : 1;
    } catch (const std::exception& error) {
        std::cerr << "KT4-RemoveProgram: " << error.what() << '\n';
        return 1;
    }
}
