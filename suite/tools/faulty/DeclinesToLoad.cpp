// A tool that answers its loading with false.

#include "suite/tools/SuiteTool.h"

namespace {

class DeclinesToLoad : public suite::SuiteTool {
public:
    DeclinesToLoad() : SuiteTool("DeclinesToLoad") {}
    bool Load(const std::shared_ptr<arvon::IFramework>&) override { return false; }
};

} // namespace

SUITE_EXPORT_TOOL(DeclinesToLoad)
