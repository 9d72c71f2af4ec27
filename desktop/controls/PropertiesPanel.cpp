#include "desktop/controls/PropertiesPanel.h"

#include "base/ComponentError.h"
#include "base/XmlDocument.h"
#include "core/contract/Messages.h"
#include "core/contract/Tools.h"
#include "desktop/QtText.h"
#include "desktop/controls/ControlKinds.h"
#include "desktop/controls/ControlTexts.h"
#include "desktop/controls/DateText.h"
#include "desktop/controls/Parts.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QShowEvent>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

namespace desktop {

namespace {

/// Attributes of a record in the order of showing; `id`: the string resource of the caption, 0 for none.
struct KnownAttribute {
    std::string_view name;
    text::Own caption;
    int id = 0;
};
constexpr std::array knownAttributes{
    KnownAttribute{"version", text::properties::Version, text::resource::Version},
    KnownAttribute{"LastUpdated", text::properties::LastUpdated, text::resource::LastUpdated},
    KnownAttribute{"Classification", text::properties::Classification, text::resource::Classification},
    KnownAttribute{"Kind", text::properties::Kind},
    KnownAttribute{"ProgramType", text::properties::ProgramType},
    KnownAttribute{"Brand", text::properties::Brand},
    KnownAttribute{"VREX", text::properties::ProductKey},
    KnownAttribute{"Identifier", text::properties::Identifier},
    KnownAttribute{"Path", text::properties::Program},
    KnownAttribute{"CommandLine", text::properties::CommandLine},
    KnownAttribute{"ShowInList", text::properties::ShownInList},
};

const KnownAttribute* Known(std::string_view name) {
    const auto found = std::ranges::find(knownAttributes, name, &KnownAttribute::name);
    return found == knownAttributes.end() ? nullptr : &*found;
}

/// The record's attributes, the known ones first and in their order; those that say nothing left out.
std::vector<std::pair<std::string, std::string>> InOrder(const base::XmlNode& record) {
    auto attributes = record.Attributes();
    std::erase_if(attributes, [](const auto& entry) {
        const auto& [name, value] = entry;
        return name == "Name" || value.empty() || (name == "Kind" && value == "0");
    });
    std::ranges::stable_sort(attributes, {}, [](const auto& entry) {
        const KnownAttribute* known = Known(entry.first);
        return known ? known - knownAttributes.data() : std::ptrdiff_t{knownAttributes.size()};
    });
    return attributes;
}

/// A value to read, select and copy, of any length.
QLineEdit* ValueField(const QString& caption, const QString& value) {
    auto* field = new QLineEdit(value);
    field->setReadOnly(true);
    field->setFrame(false);
    field->setCursorPosition(0);
    field->setAccessibleName(caption);
    field->setToolTip(value.toHtmlEscaped());
    QPalette transparent;
    transparent.setBrush(QPalette::Base, Qt::transparent);
    field->setPalette(transparent);
    return field;
}

} // namespace

PropertiesPanel::PropertiesPanel(const ControlServices& services)
    : services_(services), title_(PlainLabel()), description_(PlainLabel()), problem_(new Notice("problem")),
      scroll_(new QScrollArea), launch_(new QPushButton), update_(new QPushButton), close_(new QPushButton) {
    QFont large = title_->font();
    large.setPointSizeF(large.pointSizeF() * 1.4);
    large.setBold(true);
    title_->setFont(large);

    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setWidgetResizable(true);
    scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(launch_);
    buttons->addWidget(update_);
    buttons->addStretch();
    buttons->addWidget(close_);

    auto* column = new QVBoxLayout(this);
    column->addWidget(title_);
    column->addWidget(description_);
    column->addWidget(problem_);
    column->addWidget(scroll_, 1);
    column->addLayout(buttons);

    connect(launch_, &QPushButton::clicked, this, [this] { Launch(); });
    connect(update_, &QPushButton::clicked, this, [this] { UpdateTool(); });
    connect(close_, &QPushButton::clicked, this, [this] { Ask("CancelToolProperties"); });
    launch_->setObjectName("launch");
    update_->setObjectName("update");
    close_->setObjectName("close");
    title_->setObjectName("title");
    Retranslate();
    Show({});
}

std::string PropertiesPanel::Ask(std::string_view type,
                                 std::span<const arvon::host::ParameterRecord> parameters) const {
    // a reply may come after the window is gone, and the panel with it
    const auto request = services_.request;
    return request ? request(type, parameters, controlSource) : std::string();
}

void PropertiesPanel::Reload() {
    const QPointer<PropertiesPanel> self(this);
    Ask("Initialize");
    if (!self) return;
    const std::string xml = Ask("GetToolProperties");
    if (self) Show(xml);
}

void PropertiesPanel::Show(const std::string& xml) {
    if (shown_ != xml) Fill(xml);
    shown_ = xml;
    QString trouble;
    if (!toolName_.isEmpty() && services_.problem) trouble = services_.problem(toolName_);
    problem_->Put(trouble.isEmpty() ? trouble : text::Of(text::properties::Problem).arg(trouble),
                  Notice::Mark::Warning);
    PutButtons();
}

void PropertiesPanel::Fill(const std::string& xml) {
    auto* content = new QWidget;
    rows_ = new QFormLayout(content);
    rows_->setContentsMargins(0, 0, 0, 0);
    rows_->setLabelAlignment(Qt::AlignLeading);
    rows_->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    toolName_.clear();
    QString description = xml.empty() ? text::Of(text::properties::Nothing) : QString();
    try {
        base::XmlDocument record;
        if (!xml.empty()) record.LoadText(xml);
        const base::XmlNode root = record.Root();
        toolName_ = ToQt(root.Attribute("Name"));
        if (root) description = ToQt(root.Text()).trimmed();
        for (const auto& [attribute, value] : InOrder(root))
            AddRow(CaptionOf(attribute), ValueOf(attribute, value));
    } catch (const base::ComponentError& error) {
        description = text::Of(text::properties::Unreadable).arg(ToQt(error.Description()));
    }
    scroll_->setWidget(content); // deletes the one before
    title_->setText(toolName_);
    title_->setVisible(!toolName_.isEmpty());
    description_->setText(description);
    description_->setVisible(!description.isEmpty());
}

void PropertiesPanel::AddRow(const QString& caption, const QString& value) {
    QLabel* label = PlainLabel(caption);
    label->setWordWrap(false);
    rows_->addRow(label, ValueField(caption, value));
}

QString PropertiesPanel::CaptionOf(const std::string& attribute) const {
    const KnownAttribute* known = Known(attribute);
    if (!known) return ToQt(attribute);
    return known->id ? text::Of(services_, known->id, known->caption) : text::Of(known->caption);
}

QString PropertiesPanel::ValueOf(const std::string& attribute, const std::string& value) const {
    const QString text = ToQt(value);
    if (attribute == "ShowInList" && (text == "-1" || text == "0"))
        return text::Of(text == "0" ? text::properties::No : text::properties::Yes);
    if (attribute == "Kind" && text == QString::number(arvon::VantorKind))
        return text::Of(text::properties::Vantor);
    if (attribute == "LastUpdated") return DateText(text, text::DateFormat(services_));
    return text;
}

void PropertiesPanel::Launch() {
    const std::array parameters{arvon::host::ParameterRecord{
        "ToolName", static_cast<std::int32_t>(arvon::ParameterType::Text), base::Value(FromQt(toolName_))}};
    const QPointer<PropertiesPanel> self(this);
    Ask("LaunchTool", parameters);
    if (self && self->isVisible()) self->Reload(); // a refusal may have a reason to show
}

void PropertiesPanel::UpdateTool() {
    const QPointer<PropertiesPanel> self(this);
    Ask("SaveToolProperties");
    if (self && self->isVisible()) self->Reload(); // the catalogue was read anew
}

void PropertiesPanel::SetUpdateEnabled(bool enabled) {
    updateEnabled_ = enabled;
    PutButtons();
}

void PropertiesPanel::SetLaunchEnabled(bool enabled) {
    launchEnabled_ = enabled;
    PutButtons();
}

void PropertiesPanel::PutButtons() {
    const bool shown = !toolName_.isEmpty();
    const auto put = [&](QPushButton& button, bool permitted, const text::Own& hint,
                         const text::Own& denied) {
        button.setEnabled(shown && permitted);
        const QString tip = text::Of(permitted ? hint : denied);
        button.setToolTip(tip);
        button.setAccessibleDescription(tip);
    };
    put(*launch_, launchEnabled_, text::properties::LaunchHint, text::properties::LaunchDenied);
    put(*update_, updateEnabled_, text::properties::UpdateHint, text::properties::UpdateDenied);
    put(*close_, true, text::properties::CloseHint, text::properties::CloseHint);
}

void PropertiesPanel::Retranslate() {
    const auto put = [](QPushButton& button, const QString& caption) {
        button.setText(caption);
        button.setAccessibleName(QString(caption).remove('&'));
    };
    put(*launch_, text::Of(services_, text::resource::Launch, text::properties::Launch));
    put(*update_, text::Of(text::properties::Update));
    put(*close_, text::Of(text::properties::Close));
    setAccessibleName(text::Of(text::properties::Panel));
    scroll_->setAccessibleName(text::Of(text::properties::Panel));
    shown_.reset(); // its captions are of the language before
    if (isVisible()) Reload();
}

void PropertiesPanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!event->spontaneous()) Reload();
}

} // namespace desktop
