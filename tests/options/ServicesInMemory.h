#pragma once

#include "base/ComponentError.h"
#include "platform/Services.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace kvtm::test {

/// Services with files in memory and no other service.
class ServicesInMemory {
public:
    static constexpr std::string_view NoFile = "no such file";

    ServicesInMemory() {
        services.filePaths = std::make_unique<Paths>();
        auto files = std::make_unique<Files>();
        files_ = files.get();
        services.files = std::move(files);
    }

    std::string File(std::string_view path) const {
        const auto found = files_->contents.find(std::string(path));
        return found == files_->contents.end() ? std::string(NoFile) : found->second;
    }
    void Remove(std::string_view path) { files_->contents.erase(std::string(path)); }
    /// Every write fails from now on.
    void Refuse() { files_->isRefused = true; }

    platform::Services services;

private:
    struct Files final : platform::Files {
        std::string Read(const std::filesystem::path&, std::size_t) override { return {}; }
        void Write(const std::filesystem::path& file, std::string_view text) override { Replace(file, text); }
        void Replace(const std::filesystem::path& file, std::string_view text) override {
            if (isRefused) {
                throw base::ComponentError(base::errors::FileAccess, "Files", "cannot write");
            }
            contents[file.string()] = text;
        }
        std::map<std::string, std::string> contents;
        bool isRefused = false;
    };
    struct Paths final : platform::FilePaths {
        std::filesystem::path ToSystem(std::string_view path) const override { return path; }
        std::string FromSystem(const std::filesystem::path& path) const override { return path; }
        bool Exists(std::string_view) const override { return true; }
        std::filesystem::path Installation() const override { return {}; }
    };

    Files* files_ = nullptr;
};

} // namespace kvtm::test
