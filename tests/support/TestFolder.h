#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

/// A file's bytes; throws std::runtime_error when it cannot be read.
inline std::string ReadWholeFile(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) throw std::runtime_error("cannot read " + file.string());
    std::ostringstream content; // in one go: some tests read whole folders of programs, again and again
    content << in.rdbuf();
    return std::move(content).str();
}

/// Makes these bytes a file's content, and the folders that are missing; throws std::runtime_error.
inline void WriteWholeFile(const std::filesystem::path& file, std::string_view content) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary);
    out << content;
    if (!out.flush()) throw std::runtime_error("cannot write " + file.string());
}

/// A new temporary folder, removed with the object.
class TestFolder {
public:
    TestFolder() {
        std::string pattern = std::filesystem::temp_directory_path() / "kvtm-test-XXXXXX";
        if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("cannot make a temporary folder");
        folder_ = std::filesystem::canonical(pattern);
    }
    ~TestFolder() {
        std::error_code failure;
        std::filesystem::remove_all(folder_, failure);
        if (!failure) return;
        GiveRightsBack();
        std::filesystem::remove_all(folder_, failure);
    }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    const std::filesystem::path& Path() const { return folder_; }
    std::filesystem::path operator/(std::string_view name) const { return folder_ / name; }

    /// Answers the file's path.
    std::filesystem::path Write(std::string_view name, std::string_view content) const {
        WriteWholeFile(folder_ / name, content);
        return folder_ / name;
    }
    std::string Read(std::string_view name) const { return ReadWholeFile(folder_ / name); }
    /// Names of the entries, sorted.
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

private:
    /// A test may have taken them away.
    void GiveRightsBack() const {
        namespace fs = std::filesystem;
        std::error_code ignored;
        fs::permissions(folder_, fs::perms::owner_all, fs::perm_options::add, ignored);
        for (fs::recursive_directory_iterator entry(folder_, ignored), end; entry != end;
             entry.increment(ignored)) {
            if (entry->is_directory(ignored) && !entry->is_symlink(ignored))
                fs::permissions(*entry, fs::perms::owner_all, fs::perm_options::add, ignored);
        }
    }

    std::filesystem::path folder_;
};
