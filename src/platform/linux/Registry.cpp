#include "platform/Registry.h"

#include "base/ComponentError.h"
#include "platform/CodePage.h"
#include "platform/FilePaths.h"
#include "platform/Files.h"
#include "platform/linux/RegistryFile.h"
#include "platform/linux/SystemError.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <unordered_map>

namespace platform {

namespace {

namespace fs = std::filesystem;
namespace result = registryResult;

constexpr std::size_t LongestName = 16383; // as the real registry

std::string_view HiveName(std::uint32_t hive) noexcept {
    switch (hive) {
    case 0x80000000:
        return "HKEY_CLASSES_ROOT";
    case HkeyCurrentUser:
        return "HKEY_CURRENT_USER";
    case HkeyLocalMachine:
        return "HKEY_LOCAL_MACHINE";
    case 0x80000003:
        return "HKEY_USERS";
    default:
        return {};
    }
}

/// Keeps other writers out of an installation's registry file. The lock is on the folder: the file itself is
/// another one after every write.
class WriterLock {
public:
    explicit WriterLock(const fs::path& folder)
        : folder_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        constexpr std::chrono::milliseconds Pause{10};
        constexpr int Attempts = 200;
        for (int attempt = 0; folder_ >= 0 && attempt < Attempts; ++attempt) {
            isHeld_ = ::flock(folder_, LOCK_EX | LOCK_NB) == 0;
            if (isHeld_ || (errno != EWOULDBLOCK && errno != EINTR)) return;
            std::this_thread::sleep_for(Pause);
        }
    }
    ~WriterLock() {
        if (folder_ >= 0) ::close(folder_);
    }
    WriterLock(const WriterLock&) = delete;
    WriterLock& operator=(const WriterLock&) = delete;
    bool IsHeld() const noexcept { return isHeld_; }

private:
    int folder_;
    bool isHeld_ = false;
};

/// What tells one state of the file from another.
struct FileIdentity {
    dev_t device = 0;
    ino_t node = 0;
    off_t size = 0;
    timespec modified{}, changed{};

    static FileIdentity Of(const fs::path& file) {
        struct stat status {};
        if (::stat(file.c_str(), &status) != 0) return {};
        return {status.st_dev, status.st_ino, status.st_size, status.st_mtim, status.st_ctim};
    }
    friend bool operator==(const FileIdentity& a, const FileIdentity& b) noexcept {
        const auto same = [](const timespec& x, const timespec& y) {
            return x.tv_sec == y.tv_sec && x.tv_nsec == y.tv_nsec;
        };
        return a.device == b.device && a.node == b.node && a.size == b.size && same(a.modified, b.modified) &&
               same(a.changed, b.changed);
    }
};

class FileRegistry final : public Registry {
public:
    explicit FileRegistry(const FilePaths& paths)
        : folder_(paths.Installation()), file_(folder_ / "registry.reg"), files_(Files::Create()),
          codePage_(CodePage::Create()) {}

    std::int32_t OpenKey(std::uint32_t hive, std::string_view subKey, std::uint32_t access,
                         RegistryKey& key) override {
        const std::string_view hiveName = HiveName(hive);
        if (hiveName.empty()) return result::InvalidHandle;
        if (const std::int32_t failed = Load()) return failed;
        std::string path(hiveName);
        const std::string below = codePage_->FromAnsi(subKey);
        if (!below.empty()) path.append("\\").append(below);
        while (path.ends_with('\\'))
            path.pop_back();
        if (path != hiveName && !loaded_->HasKey(path)) return result::NotFound;
        if ((access & KeySetValue) != 0 && !MayAccess(W_OK)) return result::AccessDenied;
        key = ++lastKey_;
        openKeys_[key] = {std::move(path), access};
        return result::Success;
    }

    std::int32_t QueryValue(RegistryKey key, std::string_view name, std::uint32_t& type,
                            std::span<char> buffer, std::uint32_t& size) override {
        const auto open = openKeys_.find(key);
        if (open == openKeys_.end()) return result::InvalidHandle;
        if ((open->second.access & KeyQueryValue) == 0) return result::AccessDenied;
        if (!loaded_ || !(FileIdentity::Of(file_) == identity_))
            if (const std::int32_t failed = Load()) return failed;
        const auto value = loaded_->Find(open->second.path, codePage_->FromAnsi(name));
        if (!value) return result::NotFound;
        const std::size_t room = std::min<std::size_t>(size, buffer.size());
        type = value->type;
        size = static_cast<std::uint32_t>(value->data.size());
        if (buffer.data() == nullptr) return result::Success; // asked for the size alone
        if (value->data.size() > room) return result::MoreData;
        std::copy(value->data.begin(), value->data.end(), buffer.begin());
        return result::Success;
    }

    std::int32_t SetValue(RegistryKey key, std::string_view name, std::uint32_t type,
                          std::span<const char> data) override {
        const auto open = openKeys_.find(key);
        if (open == openKeys_.end()) return result::InvalidHandle;
        if ((open->second.access & KeySetValue) == 0) return result::AccessDenied;
        const auto isControl = [](char character) { return static_cast<unsigned char>(character) < 0x20; };
        if (name.size() > LongestName || std::any_of(name.begin(), name.end(), isControl))
            return result::InvalidParameter;

        const WriterLock lock(folder_);
        if (!lock.IsHeld()) return result::AccessDenied;
        if (const std::int32_t failed = Load()) return failed;
        const std::string& path = open->second.path;
        if (path.find('\\') != std::string::npos && !loaded_->HasKey(path)) return result::NotFound;
        const std::string changed = loaded_->WithValue(path, codePage_->FromAnsi(name),
                                                       {type, std::string(data.begin(), data.end())});
        if (changed.size() > RegistryFile::MaximumBytes)
            throw FileError(base::errors::FileAccess, "write", file_,
                            "it would grow past " + std::to_string(RegistryFile::MaximumBytes) + " bytes");
        loaded_.reset();
        files_->Replace(file_, changed);
        return result::Success;
    }

    std::int32_t CloseKey(RegistryKey key) override {
        return openKeys_.erase(key) == 1 ? result::Success : result::InvalidHandle;
    }

    std::vector<std::string> Problems() override {
        if (Load() != result::Success) return {};
        return loaded_->Problems();
    }

private:
    struct OpenedKey {
        std::string path;
        std::uint32_t access = 0;
    };

    bool MayAccess(int mode) const { return ::faccessat(AT_FDCWD, file_.c_str(), mode, AT_EACCESS) == 0; }

    /// Reads the file; not 0 when there is none or it may not be read.
    std::int32_t Load() {
        if (folder_.empty()) return result::NotFound;
        loaded_.reset();
        try {
            identity_ =
                FileIdentity::Of(file_); // before reading: a change while reading shows at the next look
            const std::string bytes = files_->Read(file_, RegistryFile::MaximumBytes);
            loaded_.emplace(bytes, *codePage_, file_.native());
            return result::Success;
        } catch (const base::ComponentError& error) {
            if (error.Number() == base::errors::FileNotFound || error.Number() == base::errors::PathNotFound)
                return result::NotFound;
            if (!MayAccess(R_OK)) return result::AccessDenied;
            throw;
        }
    }

    fs::path folder_;
    fs::path file_;
    std::unique_ptr<Files> files_;
    std::unique_ptr<CodePage> codePage_;
    std::optional<RegistryFile> loaded_;
    FileIdentity identity_;
    std::unordered_map<RegistryKey, OpenedKey> openKeys_;
    RegistryKey lastKey_ = 0;
};

} // namespace

std::unique_ptr<Registry> Registry::Create(const FilePaths& paths) {
    return std::make_unique<FileRegistry>(paths);
}

} // namespace platform
