#pragma once

#include "suite/programs/removal/InstallLog.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace suite {

/// An open file descriptor, or none.
class Descriptor {
public:
    explicit Descriptor(int number = -1) noexcept : number_(number) {}
    Descriptor(Descriptor&& other) noexcept;
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor();
    int Number() const noexcept { return number_; }
    explicit operator bool() const noexcept { return number_ >= 0; }

private:
    int number_;
};

/// The folder of one installed program, held open. No operation follows a symbolic link, at any step of a
/// path, so that none reaches outside the folder, whatever is put into it meanwhile. Names are looked up
/// without regard to letter case where the exact one is missing. Failures are ComponentErrors that name the
/// path.
class ProgramFolder {
public:
    enum class Kind { Missing, File, Folder }; // a link counts as a file: it can be taken away, not followed

    /// Opens QUARRA\<vrex>; nothing when it is missing. Throws FileAccess when it is a link or no folder.
    static std::optional<ProgramFolder> Open(const std::filesystem::path& quarra, const std::string& vrex);

    /// A path as its names are spelled on the disk, and what lies there. Throws FileAccess when the way to it
    /// leads over a link or a file.
    struct Found {
        ProgramPath path;
        Kind kind = Kind::Missing;
    };
    Found Find(const ProgramPath& path) const;

    /// Content of a regular file of at most `limit` bytes.
    std::string Read(const ProgramPath& path, std::size_t limit) const;
    /// Takes a file or link away.
    void RemoveFile(const ProgramPath& path) const;
    /// Takes a folder away if it is empty; false when it is not. The empty path is the program's folder
    /// itself.
    bool RemoveFolderIfEmpty(const ProgramPath& path) const;

private:
    ProgramFolder() = default;

    struct Place {
        Descriptor parent; // none when a folder on the way is missing
        Found found;
    };
    Place Locate(const ProgramPath& path) const;

    Descriptor quarra_;
    std::string name_; // of the program's folder, as spelled on the disk
    Descriptor folder_;
};

} // namespace suite
