#pragma once

#include "desktop/controls/ControlObject.h"

/// The controls of the library, one factory each.
namespace desktop {

std::shared_ptr<ControlObject> MakeToolProperties(const ControlServices& services);
std::shared_ptr<ControlObject> MakeOptions(const ControlServices& services);
std::shared_ptr<ControlObject> MakeToolsUpdate(const ControlServices& services);

} // namespace desktop
