#include "host/Resources.h"

#include "base/ComponentError.h"
#include "host/Settings.h"
#include "platform/CodePage.h"
#include "platform/FilePaths.h"
#include "platform/StringModules.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <filesystem>

namespace arvon::host {

namespace {

constexpr std::string_view toolsCategory = "Tools";
constexpr std::size_t longestText = 4096; // bytes, with the NUL

/// A language is the name of one folder.
bool IsLanguageName(std::string_view language) {
    return !language.empty() && language.size() <= 64 &&
           std::all_of(language.begin(), language.end(), [](unsigned char character) {
               return std::isalnum(character) || character == '-' || character == '_';
           });
}

} // namespace

Resources::Resources(Trace& trace, Settings& settings, const platform::FilePaths& paths,
                     platform::StringModules& stringModules, const platform::CodePage& codePage)
    : trace_(trace), settings_(settings), paths_(paths), stringModules_(stringModules), codePage_(codePage) {
    if (IsLanguageName(settings_.Language())) Open(settings_.Language());
}

Resources::~Resources() {
    if (module_) ::close(module_);
}

std::string Resources::Folder(const std::string& language) const {
    return settings_.AppPath() + "\\resources\\" + language;
}

bool Resources::Open(const std::string& language) {
    const std::string path = Folder(language) + "\\Tools.dll";
    const auto refuse = [&](const std::string& reason) {
        trace_.Problem("no string resources for language \"" + language + "\": " + path + ": " + reason);
        return false;
    };
    // Not blocking: a FIFO in the file's place must not hang the host.
    const int opened = ::open(paths_.ToSystem(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (opened < 0) return refuse(std::strerror(errno));
    struct stat status {};
    if (::fstat(opened, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(opened);
        return refuse("it is no regular file");
    }
    if (module_) {
        ::dup3(opened, module_, O_CLOEXEC);
    } else {
        constexpr int aboveStandardStreams = 3;
        module_ = std::max(0, ::fcntl(opened, F_DUPFD_CLOEXEC, aboveStandardStreams));
    }
    ::close(opened);
    return true;
}

base::Value Resources::Get(std::string_view category, std::string_view key) {
    if (category != toolsCategory) return {};
    if (key.empty()) return module_;
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(key.data(), key.data() + key.size(), number);
    if (error != std::errc() || end != key.data() + key.size() || !module_) return {};
    const std::string text = stringModules_.LoadString(module_, number, longestText);
    return text.empty() ? base::Value() : base::Value(codePage_.FromAnsi(text));
}

std::string Resources::SwitchLanguage(const std::string& language) {
    std::error_code ignored;
    const bool known =
        IsLanguageName(language) && std::filesystem::is_directory(paths_.ToSystem(Folder(language)), ignored);
    const std::string answer = nextAnswer_.value_or(known ? language : std::string());
    nextAnswer_.reset();
    if (answer.empty() || !known) return answer;
    if (!Open(language)) return {};
    settings_.SetLanguage(language);
    return answer;
}

} // namespace arvon::host
