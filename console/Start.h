#pragma once

#include "base/Value.h"

#include <filesystem>
#include <string>

/// What programs that drive the host have in common when they start.
namespace arvon::console {

/// Where the running program lies; KvTM10 lies beside it.
std::filesystem::path FolderOfProgram();

/// The sample suite: what ARVON_SAMPLE_SUITE names, else the folder "suite" beside the program's. Throws
/// std::runtime_error when there is none.
std::filesystem::path SampleSuite();

/// A number when the text reads as one, else the text.
base::Value ReadProfileId(const std::string& text);

} // namespace arvon::console
