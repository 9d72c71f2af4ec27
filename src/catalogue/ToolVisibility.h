#pragma once

#include "core/contract/Tools.h"

namespace kvtm {

/// Tools of the framework itself: never shown anywhere.
inline bool BelongsToFramework(const arvon::IToolRecord& tool) {
    const std::string classification = tool.Classification();
    return classification == "Manager" || classification == "Core Tool";
}

/// The rule shared by everything that shows tools.
inline bool IsShown(const arvon::IToolRecord& tool, bool showAllTools) {
    return !BelongsToFramework(tool) && (tool.ShowInList() || showAllTools);
}

} // namespace kvtm
