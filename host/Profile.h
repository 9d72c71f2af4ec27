#pragma once

#include "base/Value.h"
#include "core/contract/Tool.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace arvon::host {

/// The tasks that the user's profile permits.
class ProfileTasks final : public IProfileTasks {
public:
    void Add(std::string_view name, std::string_view secondText);
    std::size_t Count() const override { return tasks_.size(); }
    std::shared_ptr<IProfileTask> Item(std::size_t position) const override;

private:
    std::vector<std::shared_ptr<IProfileTask>> tasks_;
};

/// What every tool is given before it is loaded.
struct Profile {
    base::Value id;
    std::shared_ptr<ProfileTasks> tasks = std::make_shared<ProfileTasks>();
    base::Value key = "Arvon110";

    /// Gives id, tasks and key to a tool, as far as it has interfaces for them.
    void GiveTo(ITool& tool) const;
};

} // namespace arvon::host
