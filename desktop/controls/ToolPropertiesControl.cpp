#include "base/Text.h"
#include "base/Value.h"
#include "desktop/controls/ControlKinds.h"
#include "desktop/controls/PropertiesPanel.h"
#include "desktop/controls/WidgetOwner.h"

namespace desktop {

namespace {

/// A button as the component sees it: an object with the member Enabled.
class ButtonObject final : public base::Object {
public:
    explicit ButtonObject(std::function<void(bool)> apply) : apply_(std::move(apply)) {}

    base::Value Get(std::string_view member) const override {
        if (base::EqualIgnoringCase(member, "Enabled")) return enabled_;
        NoSuchMember(member);
    }
    void Set(std::string_view member, const base::Value& value) override {
        if (!base::EqualIgnoringCase(member, "Enabled")) NoSuchMember(member);
        enabled_ = value.ToBoolean();
        if (apply_) apply_(enabled_);
    }
    bool IsEnabled() const { return enabled_; }
    /// The control goes; a caller may still hold the button.
    void Detach() { apply_ = {}; }

private:
    std::function<void(bool)> apply_;
    bool enabled_ = true;
};

class ToolPropertiesControl final : public ControlObject {
public:
    explicit ToolPropertiesControl(const ControlServices& services)
        : services_(services), update_(std::make_shared<ButtonObject>([this](bool enabled) {
              if (widget_.IfAny()) widget_.IfAny()->SetUpdateEnabled(enabled);
          })),
          launch_(std::make_shared<ButtonObject>([this](bool enabled) {
              if (widget_.IfAny()) widget_.IfAny()->SetLaunchEnabled(enabled);
          })) {}
    ~ToolPropertiesControl() override {
        update_->Detach();
        launch_->Detach();
    }

    base::Value Get(std::string_view member) const override {
        if (base::EqualIgnoringCase(member, "GetUpdateButton")) return std::shared_ptr<base::Object>(update_);
        if (base::EqualIgnoringCase(member, "GetLaunchButton")) return std::shared_ptr<base::Object>(launch_);
        NoSuchMember(member);
    }
    base::Value Call(std::string_view member, std::span<const base::Value>) override { return Get(member); }

    QWidget* Widget() override {
        return widget_.Get([this] {
            auto* panel = new PropertiesPanel(services_);
            panel->SetUpdateEnabled(update_->IsEnabled());
            panel->SetLaunchEnabled(launch_->IsEnabled());
            return panel;
        });
    }
    void Retranslate() override {
        if (widget_.IfAny()) widget_.IfAny()->Retranslate();
    }
    void Refresh() override {
        if (widget_.IfAny() && widget_.IfAny()->isVisible()) widget_.IfAny()->Reload();
    }

private:
    ControlServices services_;
    std::shared_ptr<ButtonObject> update_, launch_;
    WidgetOwner<PropertiesPanel> widget_;
};

} // namespace

std::shared_ptr<ControlObject> MakeToolProperties(const ControlServices& services) {
    return std::make_shared<ToolPropertiesControl>(services);
}

} // namespace desktop
