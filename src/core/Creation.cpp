#include "core/ToolMain.h"

#include "options/OptionsDocument.h"
#include "options/ToolOptions.h"

namespace kvtm {

std::shared_ptr<ToolMain> ToolMain::Create(arvon::ISupport& support, platform::Services services) {
    return std::shared_ptr<ToolMain>(new ToolMain(support, std::move(services)));
}

ToolMain::ToolMain(arvon::ISupport& support, platform::Services services) : m_oServices(std::move(services)) {
    m_sName = m_oServices.systemInfo->ModuleFile().stem().string() + ".ToolMain";
    m_asSubscribers.resize(1);
    m_oBenchmark = support.NewBenchmarkRecorder();
    m_oBenchmark->SetEnabled(true);
}

ToolMain::~ToolMain() = default;

} // namespace kvtm
