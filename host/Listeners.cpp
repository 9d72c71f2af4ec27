#include "host/Listeners.h"

#include "host/ReferenceHost.h"
#include "host/Router.h"

namespace arvon::host {

std::string Shell::id() const {
    return std::string(listenerId::Shell);
}

std::string Shell::ReceiveMessage(const std::shared_ptr<IMessage>& message) {
    const MessageRecord record = RecordOf(*message);
    if (record.kind == MessageRecord::Kind::Event && record.name == "Tool_Unload") {
        for (const ParameterRecord& parameter : record.parameters) {
            if (parameter.name != "vrex") continue;
            if (const auto tool = loaded_.FindByKey(parameter.value.ToText())) loader_.Unload(tool);
            break;
        }
    }
    if (reply_) return *reply_;
    if (record.kind == MessageRecord::Kind::Request && record.name == "GetWindowHandle")
        return std::to_string(windowHandle_);
    return {};
}

} // namespace arvon::host
