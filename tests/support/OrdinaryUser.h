#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <sys/types.h>
#include <unistd.h>

/// A user without any rights of its own.
constexpr uid_t Nobody = 65534;

/// Makes a folder and all in it that user's; only the super-user can.
inline void HandOver(const std::filesystem::path& folder, uid_t user) {
    const auto handOver = [user](const std::filesystem::path& path) {
        if (::lchown(path.c_str(), user, static_cast<gid_t>(-1)) != 0)
            throw std::runtime_error("cannot hand over " + path.string());
    };
    handOver(folder);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        handOver(entry.path());
}

/// Gives up the super-user's rights, which no mode stops, for the length of a test; `folder` becomes the
/// ordinary user's own. Nothing to do for an ordinary user.
class OrdinaryUser {
public:
    explicit OrdinaryUser(const std::filesystem::path& folder) : isSuperUser_(::geteuid() == 0) {
        if (!isSuperUser_) return;
        HandOver(folder, Nobody);
        if (::seteuid(Nobody) != 0) throw std::runtime_error("cannot become an ordinary user");
    }
    ~OrdinaryUser() {
        if (isSuperUser_ && ::seteuid(0) != 0) std::abort();
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    bool isSuperUser_;
};
