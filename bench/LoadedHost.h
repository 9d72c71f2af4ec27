#pragma once

#include "core/ToolMain.h"
#include "host/ReferenceHost.h"
#include "tests/support/TestInstallation.h"
#include "tests/support/ToolMainProbe.h"

#include <memory>
#include <string_view>
#include <vector>

namespace bench {

/// The tool manager loaded in a host of its own that nobody watches.
struct LoadedHost {
    explicit LoadedHost(const std::vector<kvtm::test::CatalogueTool>& tools) {
        installation.WriteTools(tools);
        Load();
    }
    explicit LoadedHost(std::string_view options) {
        installation.Write("Arvon/OPTIONS.XML", options);
        Load();
    }
    kvtm::ToolMainProbe Probe() const { return {*tool}; }

    kvtm::test::TestInstallation installation;
    std::unique_ptr<arvon::host::ReferenceHost> host;
    std::shared_ptr<kvtm::ToolMain> tool;

private:
    void Load() {
        host = std::make_unique<arvon::host::ReferenceHost>(installation.Folder());
        tool = kvtm::ToolMain::Create(host->Support(), platform::Services::Create());
        host->Attach(tool);
        host->Load();
    }
};

} // namespace bench
