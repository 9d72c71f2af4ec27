#include "host/Profile.h"

#include "host/Errors.h"

namespace arvon::host {

namespace {

class Task final : public IProfileTask {
public:
    Task(std::string_view name, std::string_view secondText) : name_(name), secondText_(secondText) {}
    std::string Name() const override { return name_; }
    std::string SecondText() const override { return secondText_; }

private:
    std::string name_, secondText_;
};

} // namespace

void ProfileTasks::Add(std::string_view name, std::string_view secondText) {
    tasks_.push_back(std::make_shared<Task>(name, secondText));
}

std::shared_ptr<IProfileTask> ProfileTasks::Item(std::size_t position) const {
    if (position < 1 || position > tasks_.size()) {
        Raise(base::errors::OutOfRange,
              "task " + std::to_string(position) + " is outside 1 to " + std::to_string(tasks_.size()));
    }
    return tasks_[position - 1];
}

void Profile::GiveTo(ITool& tool) const {
    if (auto* profile = dynamic_cast<IProfile*>(&tool)) {
        profile->SetID(id);
        profile->SetTasks(tasks);
    }
    if (auto* secure = dynamic_cast<ISecure*>(&tool)) secure->SetKey(key);
}

} // namespace arvon::host
