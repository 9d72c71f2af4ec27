#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

/// A temporary folder, removed with the object.
class TestFolder {
public:
    TestFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "kvtm-platform-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("cannot make a temporary folder");
        folder_ = std::filesystem::canonical(pattern);
    }
    ~TestFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    const std::filesystem::path& Path() const { return folder_; }
    std::filesystem::path operator/(std::string_view name) const { return folder_ / name; }

    std::filesystem::path Write(std::string_view name, std::string_view content) const {
        const std::filesystem::path file = folder_ / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream out(file, std::ios::binary);
        out << content;
        if (!out.flush()) throw std::runtime_error("cannot write " + file.string());
        return file;
    }
    std::string Read(std::string_view name) const {
        std::ifstream in(folder_ / name, std::ios::binary);
        if (!in) throw std::runtime_error("cannot read " + (folder_ / name).string());
        return {std::istreambuf_iterator<char>(in), {}};
    }
    /// Names of the entries, sorted.
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

private:
    std::filesystem::path folder_;
};

/// Gives up the super-user's rights, which no mode stops, for the length of a test; `folder` becomes the
/// ordinary user's own. Nothing to do for an ordinary user.
class OrdinaryUser {
public:
    explicit OrdinaryUser(const std::filesystem::path& folder) : isSuperUser_(::geteuid() == 0) {
        if (!isSuperUser_) return;
        constexpr uid_t Nobody = 65534;
        Own(folder, Nobody);
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
            Own(entry.path(), Nobody);
        if (::seteuid(Nobody) != 0) throw std::runtime_error("cannot become an ordinary user");
    }
    ~OrdinaryUser() {
        if (isSuperUser_ && ::seteuid(0) != 0) std::abort();
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    static void Own(const std::filesystem::path& path, uid_t user) {
        if (::lchown(path.c_str(), user, static_cast<gid_t>(-1)) != 0)
            throw std::runtime_error("cannot hand over " + path.string());
    }
    bool isSuperUser_;
};
