#include "base/Text.h"
#include "desktop/controls/ControlKinds.h"

#include <algorithm>
#include <array>

namespace desktop {

namespace {

struct KnownControl {
    std::string_view name;
    std::shared_ptr<ControlObject> (*make)(const ControlServices& services);
};
constexpr std::array knownControls{
    KnownControl{"KvTMU110.ctlToolProperties", MakeToolProperties},
    KnownControl{"KvTMU110.ctlOptions", MakeOptions},
    KnownControl{"KvTMU110.ctlToolsUpdate", MakeToolsUpdate},
};

} // namespace

std::shared_ptr<ControlObject> MakeControl(std::string_view programmaticName,
                                           const ControlServices& services) {
    const auto known = std::ranges::find_if(knownControls, [&](const KnownControl& control) {
        return base::EqualIgnoringCase(control.name, programmaticName);
    });
    return known == knownControls.end() ? nullptr : known->make(services);
}

} // namespace desktop
