#include "core/Names.h"
#include "core/ToolMain.h"

#include <algorithm>

namespace kvtm {

bool ToolMain::ITool_IsLoaded() const {
    return m_bLoaded;
}

std::string ToolMain::IMessageListener_id() const {
    return std::string(Self);
}

void ToolMain::AddSubscriber(std::string_view sToolID) {
    const auto first = m_asSubscribers.begin() + 1;
    if (std::find(first, m_asSubscribers.end(), sToolID) == m_asSubscribers.end()) {
        m_asSubscribers.emplace_back(sToolID);
    }
}

bool ToolMain::HasTask(std::string_view sTaskName, std::string_view sSecond) const {
    if (!m_oTasks) return false;
    for (std::size_t position = 1; position <= m_oTasks->Count(); ++position) {
        const std::shared_ptr<arvon::IProfileTask> task = m_oTasks->Item(position);
        if (task->Name() == sTaskName && task->SecondText() == sSecond) return true;
    }
    return false;
}

} // namespace kvtm
