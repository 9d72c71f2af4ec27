#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace platform {

/// Whole files, by system path. Every failure is a ComponentError that names file and reason.
class Files {
public:
    virtual ~Files() = default;
    static std::unique_ptr<Files> Create();

    /// FileNotFound when missing, PathNotFound when a folder on the way is missing, FileAccess otherwise (no
    /// regular file, unreadable, larger than `limit` bytes).
    virtual std::string Read(const std::filesystem::path& file, std::size_t limit = std::size_t{1} << 30) = 0;
    /// Creates or empties the file and writes it: a reader may see it half written.
    virtual void Write(const std::filesystem::path& file, std::string_view content) = 0;
    /// Replaces the content in one step: written beside it, flushed to the disk, renamed over it, folder
    /// flushed. After a crash the file is the old one or the new one. Mode and, where `file` is a symbolic
    /// link, the link stay; on failure the old file is whole and nothing is left beside it.
    virtual void Replace(const std::filesystem::path& file, std::string_view content) = 0;
    /// Replaces, and calls `work` once, in the caller's thread: while the disk is waited for, where that can
    /// be. Throws what Replace throws, `work` called or not; else what `work` throws, the file replaced.
    virtual void ReplaceWhile(const std::filesystem::path& file, std::string_view content,
                              const std::function<void()>& work) {
        Replace(file, content);
        work();
    }
};

} // namespace platform
