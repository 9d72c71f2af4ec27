#pragma once

#include "desktop/controls/ControlObject.h"

#include <QWidget>

#include <optional>
#include <string>

class QFormLayout;
class QLabel;
class QPushButton;
class QScrollArea;

namespace desktop {

class Notice;

/// What is known of the tool of the current node, and what can be done with it.
class PropertiesPanel final : public QWidget {
public:
    explicit PropertiesPanel(const ControlServices& services);

    /// Asks the component for the tool of the current node, and whether it may be updated and launched.
    void Reload();
    void SetUpdateEnabled(bool enabled);
    void SetLaunchEnabled(bool enabled);
    void Retranslate();

protected:
    void showEvent(QShowEvent* event) override;

private:
    std::string Ask(std::string_view type,
                    std::span<const arvon::host::ParameterRecord> parameters = {}) const;
    /// What is shown already stays as it is, with what is selected in it.
    void Show(const std::string& xml);
    void Fill(const std::string& xml);
    void AddRow(const QString& caption, const QString& value);
    QString CaptionOf(const std::string& attribute) const;
    QString ValueOf(const std::string& attribute, const std::string& value) const;
    void Launch();
    void UpdateTool();
    void PutButtons();

    ControlServices services_;
    std::optional<std::string> shown_; // as the component answered
    QString toolName_;                 // empty while no tool is shown
    bool updateEnabled_ = true;
    bool launchEnabled_ = true;
    QLabel* title_;
    QLabel* description_;
    Notice* problem_;
    QScrollArea* scroll_;
    QFormLayout* rows_ = nullptr;
    QPushButton* launch_;
    QPushButton* update_;
    QPushButton* close_;
};

} // namespace desktop
