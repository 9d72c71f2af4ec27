#include "launch/ReportLogo.h"

#include "base/Text.h"

#include <algorithm>
#include <iterator>

namespace kvtm {

std::string_view LogoFileOfBrand(std::string_view brand) {
    struct Row {
        std::string_view brand;
        std::string_view file;
    };
    static constexpr Row rows[] = {
        {"VELTRANE", "logo-v3.jpg"},
        {"HALCREST", "logo-h3.jpg"},
        {"ORMOND", "logo-o3.jpg"},
    };
    const std::string wanted = base::UpperCase(base::TrimBlanks(brand));
    const auto row =
        std::find_if(std::begin(rows), std::end(rows), [&](const Row& r) { return r.brand == wanted; });
    return row == std::end(rows) ? std::string_view() : row->file;
}

std::string LogoFolderOfBinPath(std::string_view binPath) {
    constexpr std::size_t none = std::string_view::npos;
    const std::size_t last = binPath.rfind('\\');
    const std::size_t nextToLast = last == none || last == 0 ? none : binPath.rfind('\\', last - 1);
    const std::size_t length = nextToLast == none ? 0 : nextToLast + 1;
    return std::string(binPath.substr(0, length)) + "Enviro\\";
}

std::optional<std::string> LogoFolderOnDriveOf(std::string_view folder) {
    const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
    if (folder.size() < 2 || !isLetter(folder[0]) || folder[1] != ':') return {};
    return std::string(1, folder[0]) + ":\\QUARRA\\Enviro\\";
}

} // namespace kvtm
