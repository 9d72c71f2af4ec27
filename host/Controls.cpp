#include "host/Controls.h"

#include "base/Text.h"
#include "base/Value.h"

#include <algorithm>
#include <array>
#include <utility>

namespace arvon::host {

namespace {

void Remember(model::Control& record, std::string member, std::string text) {
    const auto present = std::find_if(record.members.begin(), record.members.end(),
                                      [&](const auto& entry) { return entry.first == member; });
    if (present != record.members.end()) {
        present->second = std::move(text);
    } else {
        record.members.emplace_back(std::move(member), std::move(text));
    }
}

class ButtonControl final : public base::Object {
public:
    ButtonControl(Trace& trace, ControlRecord record, std::string name)
        : trace_(trace), record_(std::move(record)), name_(std::move(name)) {}

    base::Value Get(std::string_view member) const override {
        trace_.Read("Control.Get", [&] { return name_ + "." + std::string(member); });
        if (base::EqualIgnoringCase(member, "Enabled")) return enabled_;
        NoSuchMember(member);
    }
    void Set(std::string_view member, const base::Value& value) override {
        trace_.Call(
            "Control.Set", [&] { return name_ + "." + std::string(member); }, value);
        if (!base::EqualIgnoringCase(member, "Enabled")) NoSuchMember(member);
        enabled_ = value.ToBoolean();
        Remember(*record_, name_ + ".Enabled", base::Value(enabled_).ToText());
        trace_.Changed(ModelPart::Views);
    }

private:
    Trace& trace_;
    ControlRecord record_;
    std::string name_;
    bool enabled_ = true;
};

class ToolPropertiesControl final : public base::Object {
public:
    ToolPropertiesControl(Trace& trace, ControlRecord record)
        : trace_(trace), record_(record),
          update_(std::make_shared<ButtonControl>(trace, record, "GetUpdateButton")),
          launch_(std::make_shared<ButtonControl>(trace, record, "GetLaunchButton")) {}

    base::Value Get(std::string_view member) const override {
        trace_.Read("Control.Get", member);
        if (base::EqualIgnoringCase(member, "GetUpdateButton")) return update_;
        if (base::EqualIgnoringCase(member, "GetLaunchButton")) return launch_;
        NoSuchMember(member);
    }
    base::Value Call(std::string_view member, std::span<const base::Value>) override { return Get(member); }

private:
    Trace& trace_;
    ControlRecord record_;
    std::shared_ptr<base::Object> update_, launch_;
};

class OptionsControl final : public base::Object {
public:
    OptionsControl(Trace& trace, ControlRecord record) : trace_(trace), record_(std::move(record)) {}

    base::Value Get(std::string_view member) const override {
        trace_.Read("Control.Get", member);
        if (base::EqualIgnoringCase(member, "Options")) return options_;
        NoSuchMember(member);
    }
    base::Value Call(std::string_view member, std::span<const base::Value> arguments) override {
        trace_.Call("Control.Call", member,
                    [&] { return arguments.empty() ? base::Value() : arguments.front(); });
        if (!base::EqualIgnoringCase(member, "Initialize")) NoSuchMember(member);
        options_ = arguments.empty() ? std::string() : arguments.front().ToText();
        Remember(*record_, "Initialize", options_);
        trace_.Changed(ModelPart::Views);
        return {};
    }

private:
    Trace& trace_;
    ControlRecord record_;
    std::string options_;
};

class UpdateControl final : public base::Object {
public:
    explicit UpdateControl(ControlRecord record) : record_(std::move(record)) {}

private:
    ControlRecord record_;
};

struct KnownControl {
    std::string_view name;
    std::shared_ptr<base::Object> (*make)(Trace& trace, ControlRecord record);
};
constexpr std::array knownControls{
    KnownControl{"KvTMU110.ctlToolProperties",
                 [](Trace& trace, ControlRecord record) -> std::shared_ptr<base::Object> {
                     return std::make_shared<ToolPropertiesControl>(trace, std::move(record));
                 }},
    KnownControl{"KvTMU110.ctlOptions",
                 [](Trace& trace, ControlRecord record) -> std::shared_ptr<base::Object> {
                     return std::make_shared<OptionsControl>(trace, std::move(record));
                 }},
    KnownControl{"KvTMU110.ctlToolsUpdate",
                 [](Trace&, ControlRecord record) -> std::shared_ptr<base::Object> {
                     return std::make_shared<UpdateControl>(std::move(record));
                 }},
};

} // namespace

std::shared_ptr<base::Object> Controls::Make(const std::string& control, const std::string& viewKey) {
    const Factory hook = hook_; // the host may be closed meanwhile
    if (hook)
        if (auto made = hook(control, viewKey)) return made;
    const auto known =
        std::find_if(knownControls.begin(), knownControls.end(),
                     [&](const KnownControl& entry) { return base::EqualIgnoringCase(entry.name, control); });
    if (known == knownControls.end()) return nullptr;
    auto record = std::make_shared<model::Control>(model::Control{viewKey, control, {}});
    std::erase_if(made_, [](const auto& entry) { return entry.expired(); });
    made_.push_back(record);
    return known->make(trace_, std::move(record));
}

std::vector<model::Control> Controls::Snapshot() const {
    std::vector<model::Control> rows;
    for (const auto& entry : made_)
        if (const auto record = entry.lock()) rows.push_back(*record);
    return rows;
}

} // namespace arvon::host
