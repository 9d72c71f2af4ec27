// A tool that loads, and then breaks its contract: it throws, and no ComponentError, at every message and at
// unloading.

#include "suite/tools/SuiteTool.h"

#include <stdexcept>

namespace {

class ThrowsLater : public suite::SuiteTool {
public:
    ThrowsLater() : SuiteTool("ThrowsLater") {}
    std::string ReceiveMessage(const std::shared_ptr<arvon::IMessage>&) override {
        throw std::runtime_error("thrown out of ReceiveMessage");
    }
    void Unload() override {
        SuiteTool::Unload();
        throw std::runtime_error("thrown out of Unload");
    }
};

} // namespace

SUITE_EXPORT_TOOL(ThrowsLater)
