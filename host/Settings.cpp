#include "host/Settings.h"

#include "base/ComponentError.h"
#include "platform/Files.h"

#include <utility>

namespace arvon::host {

namespace {

constexpr std::string_view frameworkGroup = "Framework";
constexpr std::string_view hostGroup = "Host";
constexpr std::string_view localeItem = "LocaleID";

class Group final : public ISettings {
public:
    Group(Trace& trace, std::shared_ptr<const IniFile> ini, std::string_view name)
        : trace_(trace), ini_(std::move(ini)), name_(name) {}

    Value GetItem(std::string_view item) override {
        trace_.Read("Settings.GetItem", name_, item);
        const auto value = ini_->Get(name_, item);
        return value ? Value(*value) : Value();
    }

private:
    Trace& trace_;
    std::shared_ptr<const IniFile> ini_;
    std::string name_;
};

} // namespace

Settings::Settings(Trace& trace, platform::Files& files, std::filesystem::path file)
    : trace_(trace), files_(files), file_(std::move(file)), ini_(std::make_shared<IniFile>()) {
    std::error_code unknown; // of what cannot even be looked at, reading tells the reason
    if (!std::filesystem::exists(file_, unknown) && !unknown) return;
    constexpr std::size_t largest = std::size_t{1} << 20;
    ini_ = std::make_shared<IniFile>(files_.Read(file_, largest));
    for (const std::string& problem : ini_->Problems())
        trace_.Problem(file_.string() + ", " + problem);
}

std::string Settings::HostItem(std::string_view item, const std::string& fallback) const {
    std::string value = ini_->Get(hostGroup, item).value_or(std::string());
    while (value.size() > 1 && value.back() == '\\')
        value.pop_back();
    return value.empty() ? fallback : value;
}

std::string Settings::AppPath() const {
    return HostItem("AppPath", "C:\\QUARRA\\Arvon");
}
std::string Settings::ImageFolder() const {
    return HostItem("ImageFolder", AppPath() + "\\Images");
}
std::string Settings::ComponentFolder() const {
    return HostItem("ComponentFolder", AppPath() + "\\Bin");
}
std::string Settings::InstallPath() const {
    return HostItem("InstallPath", AppPath());
}

bool Settings::CheckBoxes() const {
    try {
        return Value(HostItem("CheckBoxes", "-1")).ToBoolean();
    } catch (const base::ComponentError&) {
        return true;
    }
}

std::string Settings::Language() const {
    const auto language = ini_->Get(frameworkGroup, localeItem);
    return language && !language->empty() ? *language : "1033";
}

void Settings::SetLanguage(std::string_view language) {
    ini_->Set(frameworkGroup, localeItem, language);
    trace_.Changed(ModelPart::Settings);
    try {
        files_.Replace(file_, ini_->Text());
    } catch (const base::ComponentError& error) {
        trace_.Problem("the language was not kept: " + error.Description());
    }
}

std::shared_ptr<ISettings> Settings::Group(std::string_view name) const {
    if (!ini_->HasSection(name)) return nullptr;
    return std::make_shared<host::Group>(trace_, ini_, name);
}

} // namespace arvon::host
