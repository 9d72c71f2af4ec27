#include "desktop/Permissions.h"

#include "base/Text.h"
#include "core/contract/Framework.h"
#include "host/ReferenceHost.h"

#include <array>

namespace desktop {

namespace {

constexpr std::string_view profileGroup = "Profile";
constexpr std::string_view allTools = "*";

struct Permission {
    std::string_view item, task;
};
constexpr std::array permissions{Permission{"CanLaunch", "Can Launch"},
                                 Permission{"CanUpdate", "Can Update"}};

} // namespace

Permissions::Permissions(arvon::host::ReferenceHost& host) : host_(host) {
    const std::shared_ptr<arvon::ISettings> profile = host.Framework()->GetSettings(profileGroup);
    for (const Permission& permission : permissions) {
        Task task{permission.task, {}};
        const base::Value listed = profile ? profile->GetItem(permission.item) : base::Value();
        if (!listed.IsEmpty()) {
            task.tools.emplace();
            for (const std::string& name : base::Split(listed.ToText(), ';'))
                task.tools->emplace(base::TrimBlanks(name));
            if (task.tools->contains(allTools)) task.tools.reset();
        }
        tasks_.push_back(std::move(task));
    }
}

void Permissions::Grant() {
    for (const arvon::host::model::Tool& tool : host_.Model().Tools()) {
        if (!known_.insert(tool.name).second) continue;
        for (const Task& task : tasks_)
            if (!task.tools || task.tools->contains(tool.name)) host_.AddProfileTask(task.name, tool.name);
    }
}

} // namespace desktop
