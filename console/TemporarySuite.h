#pragma once

#include <filesystem>

namespace arvon::console {

/// A copy of an installation in a temporary folder, removed when the object goes and also when the process
/// ends in any other way: a small watching process does the removing as soon as this one lets go of it. After
/// SIGINT, SIGTERM and SIGHUP the folder is gone before the process is.
///
/// One object a process at a time. Throws std::filesystem::filesystem_error or std::system_error.
class TemporarySuite {
public:
    explicit TemporarySuite(const std::filesystem::path& original);
    ~TemporarySuite();
    TemporarySuite(const TemporarySuite&) = delete;
    TemporarySuite& operator=(const TemporarySuite&) = delete;

    const std::filesystem::path& Folder() const { return folder_; }

private:
    std::filesystem::path folder_;
};

} // namespace arvon::console
