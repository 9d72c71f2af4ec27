#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace platform {

/// Where the installation's paths ("C:\QUARRA\Arvon") lie in this system.
///
/// On Linux an installation is a folder with `registry.reg` and `drive_c` (`drive_d`, ...); the environment
/// variable ARVON_INSTALLATION names it, and without it the folders above the running library are searched
/// for a `registry.reg`. Children inherit the variable.
class FilePaths {
public:
    virtual ~FilePaths() = default;
    static std::unique_ptr<FilePaths> Create();
    /// For a given installation folder, whatever the environment says.
    static std::unique_ptr<FilePaths> CreateFor(const std::filesystem::path& installation);

    /// The system's own path of an installation path. Names are looked up without regard to letter case where
    /// the exact one is missing, then without what the system drops from their end (WithoutDroppedEnd; from a
    /// folder's name one period); what does not exist keeps its spelling. A path without a drive letter is
    /// the system's own, with "\" read as "/". ".." never leads out of the drive's folder. Throws
    /// PathNotFound for a drive that the installation does not have.
    virtual std::filesystem::path ToSystem(std::string_view path) const = 0;
    /// The installation form of a system path: "C:\..." inside a drive folder, else the path itself with "/"
    /// as "\".
    virtual std::string FromSystem(const std::filesystem::path& path) const = 0;
    /// Whether a file or folder is there. Never throws.
    virtual bool Exists(std::string_view path) const = 0;
    /// The installation folder on this system; empty when there is none.
    virtual std::filesystem::path Installation() const = 0;
};

/// A path without the periods and blanks at its end, which the system drops when it looks a file up.
std::string_view WithoutDroppedEnd(std::string_view path) noexcept;

/// Name of the environment variable.
inline constexpr const char* InstallationVariable = "ARVON_INSTALLATION";

} // namespace platform
