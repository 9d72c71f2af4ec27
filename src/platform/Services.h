#pragma once

#include "platform/CodePage.h"
#include "platform/DebugOutput.h"
#include "platform/FilePaths.h"
#include "platform/Files.h"
#include "platform/Printers.h"
#include "platform/Processes.h"
#include "platform/ProfileStrings.h"
#include "platform/Registry.h"
#include "platform/StringModules.h"
#include "platform/SystemInfo.h"

#include <memory>

namespace platform {

/// The operating system's services, one object each. Tests put doubles in their place.
struct Services {
    std::unique_ptr<FilePaths> filePaths;
    std::unique_ptr<Files> files;
    std::unique_ptr<CodePage> codePage;
    std::unique_ptr<Registry> registry;
    std::unique_ptr<ProfileStrings> profileStrings;
    std::unique_ptr<Printers> printers;
    std::unique_ptr<Processes> processes;
    std::unique_ptr<StringModules> stringModules;
    std::unique_ptr<SystemInfo> systemInfo;
    std::unique_ptr<DebugOutput> debugOutput;

    /// The running system's own, working on the installation that the environment names (see FilePaths).
    static Services Create();
};

} // namespace platform
