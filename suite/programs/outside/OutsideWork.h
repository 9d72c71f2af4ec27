#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace suite {

/// What an outside program was started for.
struct OutsideWork {
    std::string title;
    std::vector<std::string> documents; // as the command line names them
    std::optional<double> seconds;      // none: as long as the user likes
    std::filesystem::path log;
};

} // namespace suite
