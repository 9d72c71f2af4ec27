#pragma once

#include "base/Value.h"
#include "host/Trace.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform {
class CodePage;
class FilePaths;
class StringModules;
} // namespace platform

namespace arvon::host {

class Settings;

/// The string resources of the language in force: AppPath\resources\<language>\Tools.dll.
///
/// The module's handle is a file descriptor that stays open for the host's life and keeps its number when the
/// language is switched, so that whoever keeps the handle reads the new language's texts from then on.
class Resources {
public:
    Resources(Trace& trace, Settings& settings, const platform::FilePaths& paths,
              platform::StringModules& stringModules, const platform::CodePage& codePage);
    ~Resources();
    Resources(const Resources&) = delete;
    Resources& operator=(const Resources&) = delete;

    /// ("Tools", ""): the handle, 0 when there is no module; ("Tools", number): that text, empty when the
    /// module has none. Empty for anything else.
    base::Value Get(std::string_view category, std::string_view key);
    /// Answers the language when there is a folder of its resources with the file in it, or what was set to
    /// be answered; empty: not switched.
    std::string SwitchLanguage(const std::string& language);
    void SetNextAnswer(std::string_view answer) { nextAnswer_ = answer; }

private:
    std::string Folder(const std::string& language) const;
    /// False, and a problem told, when there is no such file; the module in force stays then.
    bool Open(const std::string& language);

    Trace& trace_;
    Settings& settings_;
    const platform::FilePaths& paths_;
    platform::StringModules& stringModules_;
    const platform::CodePage& codePage_;
    int module_ = 0; // descriptor; 0: none
    std::optional<std::string> nextAnswer_;
};

} // namespace arvon::host
