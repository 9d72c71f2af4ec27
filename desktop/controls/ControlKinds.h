#pragma once

#include "desktop/controls/ControlObject.h"

/// The controls of the library, one factory each.
namespace desktop {

/// Who the component sees as the sender of the controls' requests.
inline constexpr std::string_view controlSource = "KvTMU110";

std::shared_ptr<ControlObject> MakeToolProperties(const ControlServices& services);
std::shared_ptr<ControlObject> MakeOptions(const ControlServices& services);
std::shared_ptr<ControlObject> MakeToolsUpdate(const ControlServices& services);

} // namespace desktop
