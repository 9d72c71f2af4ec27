#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kvtm {

/// The logo file of a brand, whatever its letter case and the blanks around it; empty for other brands.
std::string_view LogoFileOfBrand(std::string_view brand);

/// The folder of the logo files, with a backslash at its end, from the framework's bin folder: beside the
/// folder that holds that one. "C:\QUARRA\Arvon\Bin" gives "C:\QUARRA\Enviro\". A text with fewer than two
/// backslashes names no such folder and gives "Enviro\" alone.
std::string LogoFolderOfBinPath(std::string_view binPath);

/// The same where no bin folder is known: on the drive of `folder`. Nothing when that has no drive letter.
std::optional<std::string> LogoFolderOnDriveOf(std::string_view folder);

} // namespace kvtm
