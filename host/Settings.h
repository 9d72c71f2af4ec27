#pragma once

#include "core/contract/Framework.h"
#include "host/IniFile.h"
#include "host/Trace.h"

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace platform {
class Files;
}

namespace arvon::host {

/// The host's settings, from host.ini in the installation folder:
///
/// | section     | item            | meaning                                            | without it        |
/// |-------------|-----------------|----------------------------------------------------|-------------------|
/// | [Framework] | LocaleID        | language: folder of its texts below "resources"    | 1033 for texts    |
/// |             | FontName        | font of the user interface                         | empty             |
/// |             | FontSize        | its size in points                                 | empty             |
/// | [Host]      | AppPath         | the application folder                             | C:\QUARRA\Arvon   |
/// |             | ImageFolder     | pictures of tasks                                  | AppPath\Images    |
/// |             | ComponentFolder | where the tools' libraries lie                     | AppPath\Bin       |
/// |             | InstallPath     | a path on the drive that the suite is installed on | AppPath           |
/// |             | CheckBoxes      | whether list views show check boxes: "0" or "-1"   | -1                |
///
/// Every section is a group of settings that a tool can ask for.
class Settings {
public:
    /// A missing file holds no settings. Throws when it is there and cannot be read.
    Settings(Trace& trace, platform::Files& files, std::filesystem::path file);

    std::string AppPath() const;
    std::string ImageFolder() const;
    std::string ComponentFolder() const;
    std::string InstallPath() const;
    bool CheckBoxes() const;
    std::string Language() const;
    /// Kept in the file; a file that cannot be written is told as a problem.
    void SetLanguage(std::string_view language);

    /// Null when there is no such group.
    std::shared_ptr<ISettings> Group(std::string_view name) const;

private:
    std::string HostItem(std::string_view item, const std::string& fallback) const;

    Trace& trace_;
    platform::Files& files_;
    std::filesystem::path file_;
    std::shared_ptr<IniFile> ini_;
};

} // namespace arvon::host
