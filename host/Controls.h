#pragma once

#include "base/Object.h"
#include "host/Model.h"
#include "host/Trace.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace arvon::host {

/// What a double keeps of what it was given.
using ControlRecord = std::shared_ptr<model::Control>;

/// Makes the controls of views: by the hook where there is one and it knows the name, else doubles of the
/// controls that the suite's control library has, which remember what they are given.
///
/// | control | members |
/// |---|---|
/// | KvTMU110.ctlToolProperties | GetUpdateButton, GetLaunchButton (objects with Enabled: get, set) |
/// | KvTMU110.ctlOptions | Initialize (call with the options text), Options (get: that text) |
/// | KvTMU110.ctlToolsUpdate | |
class Controls {
public:
    using Factory =
        std::function<std::shared_ptr<base::Object>(std::string_view control, std::string_view viewKey)>;

    /// The hook may come and go with its owner.
    Controls(Trace& trace, const Factory& hook) : trace_(trace), hook_(hook) {}

    /// Null for a control that nobody knows.
    std::shared_ptr<base::Object> Make(const std::string& control, const std::string& viewKey);
    std::vector<model::Control> Snapshot() const;

private:
    Trace& trace_;
    const Factory& hook_;
    std::vector<std::weak_ptr<model::Control>> made_;
};

} // namespace arvon::host
