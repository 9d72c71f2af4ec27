#include "platform/FilePaths.h"

#include "base/ComponentError.h"
#include "base/Text.h"
#include "platform/SystemInfo.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <vector>

namespace platform {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view DriveFolder = "drive_"; // and the letter
constexpr const char* RegistryFileName = "registry.reg";

bool IsLetter(char character) noexcept {
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}
char LowerLetter(char letter) noexcept {
    return static_cast<char>(letter | 0x20);
}
char UpperLetter(char letter) noexcept {
    return static_cast<char>(letter & ~0x20);
}

bool HasDrive(std::string_view path) noexcept {
    return path.size() >= 2 && IsLetter(path[0]) && path[1] == ':';
}

bool Stands(const fs::path& path) {
    std::error_code ignored;
    return fs::symlink_status(path, ignored).type() != fs::file_type::not_found && !ignored;
}

/// The entry of a folder with this name: the exact one, else the first in byte order that differs in letter
/// case only, else none.
std::optional<std::string> FindName(const fs::path& folder, const std::string& name) {
    if (Stands(folder / name)) return name;
    const std::string wanted = base::UpperCase(name);
    std::optional<std::string> best;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        std::string found = entry->path().filename().native();
        if (base::UpperCase(found) == wanted && (!best || found < *best)) best = std::move(found);
    }
    return best;
}

/// FindName, and the same for the name without what the system drops from its end.
std::optional<std::string> LookUp(const fs::path& folder, const std::string& name, bool isLast) {
    if (auto found = FindName(folder, name)) return found;
    std::string_view rest = name;
    if (isLast)
        rest = WithoutDroppedEnd(name);
    else if (name.ends_with('.'))
        rest.remove_suffix(1);
    const bool isPlace = rest.empty() || rest == "." || rest == ".."; // "..." must not lead a folder up
    if (isPlace || rest.size() == name.size()) return std::nullopt;
    return FindName(folder, std::string(rest));
}

/// Names of the path behind the drive. ".." takes back one name and stops at the drive's folder.
std::vector<std::string> NamesBelowDrive(std::string_view rest) {
    std::string text(rest);
    std::replace(text.begin(), text.end(), '\\', '/');
    std::vector<std::string> names;
    for (std::string& name : base::Split(text, '/')) {
        if (name.empty() || name == ".") continue;
        if (name != "..")
            names.push_back(std::move(name));
        else if (!names.empty())
            names.pop_back();
    }
    return names;
}

class LinuxFilePaths final : public FilePaths {
public:
    explicit LinuxFilePaths(const fs::path& installation) {
        if (installation.empty()) return;
        std::error_code error;
        installation_ = WithoutTrailingSlash(fs::absolute(installation, error).lexically_normal());
        canonical_ = fs::weakly_canonical(installation_, error);
        if (error) canonical_ = installation_;
    }

    fs::path ToSystem(std::string_view path) const override {
        if (path.find('\0') != std::string_view::npos) throw NotFound(path, "it holds a NUL");
        if (!HasDrive(path)) {
            std::string own(path);
            std::replace(own.begin(), own.end(), '\\', '/');
            return own;
        }
        fs::path found = Drive(path);
        bool stands = true; // what is below a missing folder is missing too
        const std::vector<std::string> names = NamesBelowDrive(path.substr(2));
        for (const std::string& name : names) {
            const bool isLast = &name == &names.back();
            const std::optional<std::string> actual = stands ? LookUp(found, name, isLast) : std::nullopt;
            stands = actual.has_value();
            found /= actual.value_or(name);
        }
        return found;
    }

    std::string FromSystem(const fs::path& path) const override {
        if (!installation_.empty()) {
            std::error_code error;
            const fs::path absolute = WithoutTrailingSlash(fs::absolute(path, error).lexically_normal());
            if (auto text = BelowInstallation(absolute, installation_)) return *text;
            const fs::path canonical = fs::weakly_canonical(absolute, error);
            if (!error)
                if (auto text = BelowInstallation(canonical, canonical_)) return *text;
        }
        std::string text = path.native();
        std::replace(text.begin(), text.end(), '/', '\\');
        return text;
    }

    bool Exists(std::string_view path) const override {
        try {
            std::error_code ignored;
            return fs::exists(ToSystem(path), ignored);
        } catch (const std::exception&) {
            return false;
        }
    }

    fs::path Installation() const override { return installation_; }

private:
    static fs::path WithoutTrailingSlash(const fs::path& path) {
        return path.has_filename() || !path.has_relative_path() ? path : path.parent_path();
    }

    static base::ComponentError NotFound(std::string_view path, const std::string& reason) {
        return {base::errors::PathNotFound, "KvTM10.FilePaths",
                "path \"" + std::string(path) + "\": " + reason};
    }

    fs::path Drive(std::string_view path) const {
        const std::string drive{UpperLetter(path[0]), ':'};
        if (installation_.empty())
            throw NotFound(path, std::string("there is no drive ") + drive + " without an installation (" +
                                     InstallationVariable + " names none)");
        const std::string name = std::string(DriveFolder) + LowerLetter(path[0]);
        const std::optional<std::string> actual = FindName(installation_, name);
        std::error_code ignored;
        if (!actual || !fs::is_directory(installation_ / *actual, ignored))
            throw NotFound(path, "there is no drive " + drive + " in the installation, expected a folder \"" +
                                     (installation_ / name).native() + "\"");
        return installation_ / *actual;
    }

    static std::optional<std::string> BelowInstallation(const fs::path& path, const fs::path& installation) {
        const fs::path below = path.lexically_relative(installation);
        if (below.empty()) return std::nullopt;
        const std::string drive = below.begin()->native();
        if (drive.size() != DriveFolder.size() + 1 || !IsLetter(drive.back()) ||
            !base::EqualIgnoringCase(std::string_view(drive).substr(0, DriveFolder.size()), DriveFolder))
            return std::nullopt;
        std::string text{UpperLetter(drive.back()), ':'};
        for (auto name = std::next(below.begin()); name != below.end(); ++name)
            text.append("\\").append(name->native());
        if (text.size() == 2) text += '\\';
        return text;
    }

    fs::path installation_;
    fs::path canonical_; // the same with symbolic links resolved
};

fs::path InstallationOfEnvironment() {
    if (const char* named = std::getenv(InstallationVariable); named != nullptr && *named != '\0')
        return named;
    fs::path folder = SystemInfo::Create()->ModuleFile().parent_path();
    for (; folder.has_relative_path(); folder = folder.parent_path()) {
        std::error_code ignored;
        if (fs::exists(folder / RegistryFileName, ignored)) return folder;
    }
    return {};
}

} // namespace

std::string_view WithoutDroppedEnd(std::string_view path) noexcept {
    return path.substr(0, path.find_last_not_of(". ") + 1);
}

std::unique_ptr<FilePaths> FilePaths::Create() {
    return CreateFor(InstallationOfEnvironment());
}

std::unique_ptr<FilePaths> FilePaths::CreateFor(const fs::path& installation) {
    return std::make_unique<LinuxFilePaths>(installation);
}

} // namespace platform
