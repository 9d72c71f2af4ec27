#pragma once

#include "suite/programs/removal/InstallLog.h"

#include <span>
#include <string>
#include <vector>

namespace suite {

class ProgramFolder;

/// Takes away what an install log names, then the log, then every folder that this emptied, the program's
/// folder last. Files that the log does not name stay, and so do the folders that hold them.
///
/// Nothing at all is taken away when one of the paths leads over a link. What is missing already counts as
/// taken away. The log goes last, and only when everything else is gone, so that a removal that failed
/// half-way can be done again. Returns what stands in the way, one text for each; nothing when all is gone.
std::vector<std::string> RemoveLogged(const ProgramFolder& folder, std::span<const ProgramPath> logged,
                                      const ProgramPath& log);

} // namespace suite
