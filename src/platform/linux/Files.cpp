#include "platform/Files.h"

#include "platform/linux/FileCalls.h"
#include "platform/linux/SystemError.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <exception>
#include <fcntl.h>
#include <optional>
#include <unistd.h>
#include <utility>

namespace platform {

namespace {

namespace fs = std::filesystem;

constexpr int MaximumLinks = 40; // as the kernel
constexpr int MaximumNames = 100;

/// A descriptor that is closed at the end.
class OpenFile {
public:
    OpenFile(FileCalls& calls, int file) : calls_(calls), file_(file) {}
    ~OpenFile() {
        const int error = errno; // the caller is about to report it
        if (file_ >= 0) calls_.Close(file_);
        errno = error;
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    bool IsOpen() const noexcept { return file_ >= 0; }
    int Get() const noexcept { return file_; }
    int Release() noexcept { return std::exchange(file_, -1); }
    /// The close's own result: some file systems report a full disk only here.
    int Close() { return calls_.Close(Release()); }

private:
    FileCalls& calls_;
    int file_;
};

/// Takes the new file away again unless it was renamed.
class Leftover {
public:
    Leftover(FileCalls& calls, fs::path file) : calls_(calls), file_(std::move(file)) {}
    ~Leftover() {
        if (!file_.empty()) calls_.Unlink(file_.c_str());
    }
    Leftover(const Leftover&) = delete;
    Leftover& operator=(const Leftover&) = delete;
    const fs::path& File() const noexcept { return file_; }
    void Keep() noexcept { file_.clear(); }

private:
    FileCalls& calls_;
    fs::path file_;
};

class LinuxFiles final : public Files {
public:
    explicit LinuxFiles(FileCalls& calls) : calls_(calls) {}

    std::string Read(const fs::path& file, std::size_t limit) override {
        constexpr std::string_view Action = "read";
        OpenFile open(calls_, OpenRegular(file, O_RDONLY, Action));
        std::string content;
        std::array<char, 65536> room; // filled by the read below
        for (;;) {
            const ssize_t count = calls_.Read(open.Get(), room.data(), room.size());
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) throw FileError(Action, file, errno);
            if (count == 0) return content;
            if (static_cast<std::size_t>(count) > limit - content.size())
                throw FileError(base::errors::FileAccess, Action, file,
                                "expected at most " + std::to_string(limit) + " bytes, found more");
            content.append(room.data(), static_cast<std::size_t>(count));
        }
    }

    void Write(const fs::path& file, std::string_view content) override {
        constexpr std::string_view Action = "write";
        OpenFile open(calls_, OpenRegular(file, O_WRONLY | O_CREAT, Action));
        if (calls_.Truncate(open.Get(), 0) != 0) throw FileError(Action, file, errno);
        WriteAll(open.Get(), content, Action, file);
        if (open.Close() != 0) throw FileError(Action, file, errno);
    }

    void Replace(const fs::path& file, std::string_view content) override {
        ReplaceWhile(file, content, [] {});
    }

    void ReplaceWhile(const fs::path& file, std::string_view content,
                      const std::function<void()>& work) override {
        constexpr std::string_view Action = "replace";
        RefuseNul(file, Action);
        const fs::path target = ResolveLinks(file);
        const std::optional<struct stat> old = StatusToKeep(target, file);
        const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");

        auto [created, name] = CreateBeside(target, folder, old ? 0600 : 0666, file);
        OpenFile open(calls_, created);
        Leftover fresh(calls_, std::move(name));
        WriteAll(open.Get(), content, Action, file);
        if (old) KeepOwnerAndMode(open.Get(), *old, file);
        calls_.StartFlush(open.Get());
        const std::exception_ptr failure = Caught(work);
        if (calls_.Flush(open.Get()) != 0) throw FileError(Action, file, errno);
        if (open.Close() != 0) throw FileError(Action, file, errno);
        if (calls_.Rename(fresh.File().c_str(), target.c_str()) != 0) throw FileError(Action, file, errno);
        fresh.Keep();
        FlushFolder(folder);
        if (failure) std::rethrow_exception(failure);
    }

private:
    /// What the step throws.
    template <class Step> static std::exception_ptr Caught(const Step& step) noexcept {
        try {
            step();
            return nullptr;
        } catch (...) {
            return std::current_exception();
        }
    }

    static void RefuseNul(const fs::path& file, std::string_view action) {
        if (file.native().find('\0') != std::string::npos)
            throw FileError(base::errors::FileAccess, action, file.c_str(), "the name holds a NUL");
    }

    static base::ComponentError NoRegularFile(std::string_view action, const fs::path& file) {
        return FileError(base::errors::FileAccess, action, file, "it is no regular file");
    }

    int OpenRetrying(const fs::path& file, int flags, mode_t mode) {
        for (;;) {
            const int opened = calls_.Open(file.c_str(), flags | O_CLOEXEC, mode);
            if (opened >= 0 || errno != EINTR) return opened;
        }
    }

    int OpenRegular(const fs::path& file, int flags, std::string_view action) {
        RefuseNul(file, action);
        // Not blocking: a FIFO in the file's place must not hang the caller.
        OpenFile open(calls_, OpenRetrying(file, flags | O_NONBLOCK, 0666));
        if (!open.IsOpen()) throw FileError(action, file, errno);
        struct stat status {};
        if (calls_.StatOpen(open.Get(), status) != 0) throw FileError(action, file, errno);
        if (!S_ISREG(status.st_mode)) throw NoRegularFile(action, file);
        return open.Release();
    }

    void WriteAll(int open, std::string_view content, std::string_view action, const fs::path& file) {
        while (!content.empty()) {
            const ssize_t count = calls_.Write(open, content.data(), content.size());
            if (count < 0 && errno == EINTR) continue;
            if (count <= 0) throw FileError(action, file, count < 0 ? errno : EIO);
            content.remove_prefix(static_cast<std::size_t>(count));
        }
    }

    /// The file behind a chain of symbolic links; it need not exist.
    fs::path ResolveLinks(const fs::path& file) {
        fs::path target = file;
        std::string link(PATH_MAX, '\0');
        for (int links = 0; links < MaximumLinks; ++links) {
            const ssize_t length = calls_.ReadLink(target.c_str(), link.data(), link.size());
            if (length < 0) {
                if (errno == EINVAL || errno == ENOENT || errno == ENOTDIR)
                    return target;                       // no link, or nothing
                throw FileError("replace", file, errno); // replacing what may be a link would lose it
            }
            // An absolute link takes the folder's place by itself.
            target = target.parent_path() / link.substr(0, static_cast<std::size_t>(length));
        }
        throw FileError("replace", file, ELOOP);
    }

    /// Owner and mode that the new file takes over; nothing when there is no old one.
    std::optional<struct stat> StatusToKeep(const fs::path& target, const fs::path& file) {
        struct stat status {};
        if (calls_.Stat(target.c_str(), status) != 0) {
            if (errno == ENOENT) return std::nullopt;
            throw FileError("replace", file, errno);
        }
        if (!S_ISREG(status.st_mode)) throw NoRegularFile("replace", file);
        // A rename would get past a write protection that the file's owner meant.
        if (calls_.CheckWritable(target.c_str()) != 0) throw FileError("replace", file, errno);
        return status;
    }

    std::pair<int, fs::path> CreateBeside(const fs::path& target, const fs::path& folder, mode_t mode,
                                          const fs::path& file) {
        static std::atomic<unsigned> counter{0};
        constexpr std::size_t KeptLength = 100; // of the name: the whole stays below the longest name allowed
        const std::string stem =
            "." + target.filename().native().substr(0, KeptLength) + "." + std::to_string(::getpid()) + ".";
        for (int attempt = 0; attempt < MaximumNames; ++attempt) {
            fs::path name = folder / (stem + std::to_string(++counter) + ".new");
            const int created = OpenRetrying(name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, mode);
            if (created >= 0) return {created, std::move(name)};
            if (errno == EEXIST) continue;
            const int reason = errno;
            std::error_code ignored;
            const bool folderMissing = reason == ENOENT && !fs::is_directory(folder, ignored);
            throw FileError(folderMissing ? base::errors::PathNotFound : base::errors::FileAccess, "replace",
                            file, ReasonOf(reason));
        }
        throw FileError("replace", file, EEXIST);
    }

    void KeepOwnerAndMode(int open, const struct stat& old, const fs::path& file) {
        mode_t mode = old.st_mode & 07777;
        const bool ownerKept = calls_.ChangeOwner(open, old.st_uid, old.st_gid) == 0;
        const bool groupKept = ownerKept || calls_.ChangeOwner(open, static_cast<uid_t>(-1), old.st_gid) == 0;
        if (!ownerKept) mode &= ~mode_t{S_ISUID | S_ISGID};
        // What the old group was allowed is nothing that another group was given.
        if (!groupKept) mode = (mode & ~mode_t{S_IRWXG}) | ((mode & S_IRWXO) << 3);
        if (calls_.ChangeMode(open, mode) != 0) throw FileError("replace", file, errno);
    }

    /// Makes the rename itself last. Not every file system can; the file is whole either way.
    void FlushFolder(const fs::path& folder) {
        OpenFile open(calls_, OpenRetrying(folder, O_RDONLY | O_DIRECTORY, 0));
        if (open.IsOpen()) calls_.Flush(open.Get());
    }

    FileCalls& calls_;
};

} // namespace

std::unique_ptr<Files> Files::Create() {
    static FileCalls system;
    return std::make_unique<LinuxFiles>(system);
}

std::unique_ptr<Files> CreateFilesWith(FileCalls& calls) {
    return std::make_unique<LinuxFiles>(calls);
}

} // namespace platform
