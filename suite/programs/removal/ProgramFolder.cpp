#include "suite/programs/removal/ProgramFolder.h"

#include "base/ComponentError.h"
#include "base/Text.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace suite {
namespace {

[[noreturn]] void Fail(std::int32_t number, const std::string& what, const std::string& why) {
    throw base::ComponentError(number, "RemoveProgram", "\"" + what + "\": " + why);
}

[[noreturn]] void FailBySystem(const std::string& what) {
    const int error = errno;
    Fail(base::errors::FileAccess, what, std::strerror(error));
}

ProgramFolder::Kind KindOf(int parent, const std::string& name, const std::string& shown) {
    struct stat status {};
    if (fstatat(parent, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0)
        return S_ISDIR(status.st_mode) ? ProgramFolder::Kind::Folder : ProgramFolder::Kind::File;
    if (errno == ENOENT) return ProgramFolder::Kind::Missing;
    FailBySystem(shown);
}

Descriptor OpenFolder(int parent, const std::string& name, const std::string& shown) {
    Descriptor folder(openat(parent, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (folder) return folder;
    if (errno == ELOOP || errno == ENOTDIR) Fail(base::errors::FileAccess, shown, "is a link or no folder");
    FailBySystem(shown);
}

struct CloseStream {
    void operator()(DIR* stream) const { closedir(stream); }
};

/// The name as it stands in the folder: the exact one, else the first that differs in letter case only.
std::string SpelledName(int parent, const std::string& name, const std::string& shown) {
    if (KindOf(parent, name, shown) != ProgramFolder::Kind::Missing) return name;
    // a descriptor of its own: closing the stream closes it
    const int copy = openat(parent, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (copy < 0) FailBySystem(shown);
    const std::unique_ptr<DIR, CloseStream> stream(fdopendir(copy));
    if (!stream) {
        close(copy);
        FailBySystem(shown);
    }
    while (const dirent* entry = readdir(stream.get())) {
        if (base::EqualIgnoringCase(entry->d_name, name)) return entry->d_name;
    }
    return name;
}

} // namespace

Descriptor::Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
}

Descriptor::~Descriptor() {
    if (number_ >= 0) close(number_);
}

std::optional<ProgramFolder> ProgramFolder::Open(const std::filesystem::path& quarra,
                                                 const std::string& vrex) {
    ProgramFolder program;
    program.quarra_ = Descriptor(open(quarra.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const int parent = program.quarra_.Number();
    if (parent < 0) FailBySystem(quarra.string());
    program.name_ = SpelledName(parent, vrex, vrex);
    if (KindOf(parent, program.name_, vrex) == Kind::Missing) return std::nullopt;
    program.folder_ = OpenFolder(parent, program.name_, vrex);
    return program;
}

ProgramFolder::Place ProgramFolder::Locate(const ProgramPath& path) const {
    Place place{Descriptor(fcntl(folder_.Number(), F_DUPFD_CLOEXEC, 0)), {}};
    if (!place.parent) FailBySystem(ToText(path));
    for (const std::string& name : path) {
        if (!place.found.path.empty()) { // the name before this one has to be a folder
            if (place.found.kind == Kind::Missing) {
                place.parent = Descriptor();
                place.found.path.push_back(name);
                continue;
            }
            const std::string& folder = place.found.path.back();
            place.parent = OpenFolder(place.parent.Number(), folder, ToText(place.found.path));
        }
        place.found.path.push_back(SpelledName(place.parent.Number(), name, ToText(path)));
        place.found.kind = KindOf(place.parent.Number(), place.found.path.back(), ToText(path));
    }
    return place;
}

ProgramFolder::Found ProgramFolder::Find(const ProgramPath& path) const {
    return Locate(path).found;
}

std::string ProgramFolder::Read(const ProgramPath& path, std::size_t limit) const {
    const Place place = Locate(path);
    const std::string shown = ToText(path);
    if (place.found.kind == Kind::Missing) Fail(base::errors::FileNotFound, shown, "there is no such file");
    const Descriptor file(openat(place.parent.Number(), place.found.path.back().c_str(),
                                 O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!file) FailBySystem(shown);
    struct stat status {};
    if (fstat(file.Number(), &status) != 0) FailBySystem(shown);
    if (!S_ISREG(status.st_mode)) Fail(base::errors::FileAccess, shown, "is no regular file");

    std::string content;
    char buffer[16384];
    while (const ssize_t count = read(file.Number(), buffer, sizeof buffer)) {
        if (count < 0) FailBySystem(shown);
        content.append(buffer, static_cast<std::size_t>(count));
        if (content.size() > limit)
            Fail(base::errors::FileAccess, shown, "has more than " + std::to_string(limit) + " bytes");
    }
    return content;
}

void ProgramFolder::RemoveFile(const ProgramPath& path) const {
    const Place place = Locate(path);
    if (place.found.kind == Kind::Missing) return;
    if (unlinkat(place.parent.Number(), place.found.path.back().c_str(), 0) != 0 && errno != ENOENT)
        FailBySystem(ToText(path));
}

bool ProgramFolder::RemoveFolderIfEmpty(const ProgramPath& path) const {
    const Place place = path.empty() ? Place{Descriptor(), {}} : Locate(path);
    if (!path.empty() && place.found.kind == Kind::Missing) return true;
    const int parent = path.empty() ? quarra_.Number() : place.parent.Number();
    const std::string& name = path.empty() ? name_ : place.found.path.back();
    if (unlinkat(parent, name.c_str(), AT_REMOVEDIR) == 0 || errno == ENOENT) return true;
    if (errno == ENOTEMPTY || errno == EEXIST) return false;
    FailBySystem(path.empty() ? name_ : ToText(path));
}

} // namespace suite
