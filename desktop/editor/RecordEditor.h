#pragma once

#include "core/contract/Tools.h"

#include <functional>
#include <string>

class QWidget;

namespace desktop {

/// Lets the user change a tool's name, whether it is listed, and its command line, in a modal dialog. True
/// when the record was changed; saving it is the caller's. After Cancel, and where the record refuses a
/// change, it stands as it was. `isNameTaken` tells whether another tool has that name.
bool EditRecord(arvon::IToolRecord& record, QWidget* parent,
                const std::function<bool(const std::string& name)>& isNameTaken = {});

} // namespace desktop
