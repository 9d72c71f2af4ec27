#include "platform/Services.h"

namespace platform {

Services Services::Create() {
    Services services;
    services.filePaths = FilePaths::Create();
    services.files = Files::Create();
    services.codePage = CodePage::Create();
    services.registry = Registry::Create(*services.filePaths);
    services.printers = Printers::Create();
    services.profileStrings = ProfileStrings::Create(*services.printers);
    services.processes = Processes::Create(*services.filePaths);
    services.stringModules = StringModules::Create();
    services.systemInfo = SystemInfo::Create();
    services.debugOutput = DebugOutput::Create();
    return services;
}

} // namespace platform
