#include "platform/modUtility.h"

#include "platform/Services.h"

namespace platform::modUtility {

void RunAndWait(const Services& services, std::string_view commandLine) {
    const Processes::Handle process = services.processes->Start(commandLine);
    services.processes->Wait(process);
    if (process != 0) services.processes->Close(process);
}

std::string StringFromAnsiPointer(const Services& services, const char* address) {
    return address == nullptr ? "" : services.codePage->FromAnsi(address);
}

} // namespace platform::modUtility
