#include "base/Text.h"
#include "base/Value.h"
#include "desktop/controls/ControlKinds.h"
#include "desktop/controls/OptionsPanel.h"
#include "desktop/controls/WidgetOwner.h"

namespace desktop {

namespace {

/// Initialize (call, with the options text) and Options (get: the text in force, that given or, after OK,
/// that saved).
class OptionsControl final : public ControlObject {
public:
    explicit OptionsControl(const ControlServices& services)
        : services_(services), options_(std::make_shared<std::string>()) {}

    base::Value Get(std::string_view member) const override {
        if (base::EqualIgnoringCase(member, "Options")) return *options_;
        NoSuchMember(member);
    }
    base::Value Call(std::string_view member, std::span<const base::Value> arguments) override {
        if (!base::EqualIgnoringCase(member, "Initialize")) NoSuchMember(member);
        *options_ = arguments.empty() ? std::string() : arguments.front().ToText();
        if (widget_.IfAny()) widget_.IfAny()->Load(*options_);
        return {};
    }

    QWidget* Widget() override {
        return widget_.Get([this] {
            auto* panel =
                new OptionsPanel(services_, [kept = options_](const std::string& saved) { *kept = saved; });
            panel->Load(*options_);
            return panel;
        });
    }
    bool HasChanges() const override { return widget_.IfAny() && widget_.IfAny()->HasChanges(); }
    void Retranslate() override {
        if (widget_.IfAny()) widget_.IfAny()->Retranslate();
    }

private:
    ControlServices services_;
    std::shared_ptr<std::string> options_; // the panel may outlive its control in its window
    WidgetOwner<OptionsPanel> widget_;
};

} // namespace

std::shared_ptr<ControlObject> MakeOptions(const ControlServices& services) {
    return std::make_shared<OptionsControl>(services);
}

} // namespace desktop
