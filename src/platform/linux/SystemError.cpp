#include "platform/linux/SystemError.h"

#include <cerrno>
#include <system_error>

namespace platform {

std::string ReasonOf(int error) {
    std::string reason = std::generic_category().message(error);
    if (!reason.empty() && reason.front() >= 'A' && reason.front() <= 'Z')
        reason.front() = static_cast<char>(reason.front() - 'A' + 'a');
    return reason;
}

base::ComponentError FileError(std::int32_t number, std::string_view action,
                               const std::filesystem::path& file, std::string_view reason) {
    std::string description = "cannot ";
    description.append(action).append(" \"").append(file.native()).append("\": ").append(reason);
    return {number, "KvTM10.Files", std::move(description)};
}

base::ComponentError FileError(std::string_view action, const std::filesystem::path& file, int error) {
    std::int32_t number = base::errors::FileAccess;
    if (error == ENOTDIR) number = base::errors::PathNotFound;
    if (error == ENOENT) {
        const std::filesystem::path folder = file.parent_path();
        std::error_code ignored;
        const bool folderStands = folder.empty() || std::filesystem::is_directory(folder, ignored);
        number = folderStands ? base::errors::FileNotFound : base::errors::PathNotFound;
    }
    return FileError(number, action, file, ReasonOf(error));
}

} // namespace platform
