#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>

/// A new folder that goes with the test.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device random;
        do {
            path_ = std::filesystem::temp_directory_path() / ("kvtm-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path_));
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& Path() const { return path_; }

    /// Writes these bytes into a file of this name.
    std::filesystem::path Write(const std::filesystem::path& name, std::string_view bytes) const {
        std::ofstream stream(path_ / name, std::ios::binary);
        stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return path_ / name;
    }

private:
    std::filesystem::path path_;
};
