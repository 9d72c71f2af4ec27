#include "core/ToolMain.h"

/// The one exported symbol. A creation that fails leaves `*tool` null: the host's loader counts that as
/// refused.
extern "C" __attribute__((visibility("default"))) void ArvonCreateTool(arvon::ISupport* support,
                                                                       std::shared_ptr<arvon::ITool>* tool) {
    const arvon::CreateToolFunction signature = &ArvonCreateTool; // keeps this in step with the contract
    static_cast<void>(signature);
    try {
        *tool = kvtm::ToolMain::Create(*support, platform::Services::Create());
    } catch (const std::exception& failure) {
        tool->reset();
        platform::DebugOutput::Create()->Write(failure.what());
    }
}
