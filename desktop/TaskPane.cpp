#include "desktop/TaskPane.h"

#include "desktop/MessageBox.h"
#include "desktop/QtText.h"
#include "desktop/Texts.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

#include <array>
#include <utility>

namespace desktop {

using arvon::host::ReferenceHost;

namespace {

constexpr auto launchTask = "tskLaunchTool";
constexpr auto removeTask = "tskRemoveTool";
constexpr auto showAllTask = "tskShowAll";

struct TaskShortcut {
    const char* task;
    const char* keys;
};
constexpr std::array taskShortcuts{
    TaskShortcut{launchTask, "Ctrl+Return"},
    TaskShortcut{removeTask, "Ctrl+Delete"},
    TaskShortcut{"tskEditTool", "F2"},
};

QString ProgressOf(const QString& task, const QString& current) {
    if (task == QLatin1String(launchTask)) return text::Of(text::status::Launching).arg(current);
    if (task == QLatin1String(removeTask)) return text::Of(text::status::Removing).arg(current);
    if (task == QLatin1String(showAllTask)) return text::Of(text::status::ReadingCatalogue);
    return {};
}

} // namespace

TaskPane::TaskPane(HostBridge& bridge, const Pictures& pictures)
    : bridge_(bridge), pictures_(pictures), title_(new QLabel), hint_(new QLabel), tasks_(new QVBoxLayout),
      showAll_(new QCheckBox) {
    setObjectName(QStringLiteral("taskPane"));
    text::Follow(this, [this] {
        setAccessibleName(text::Of(text::tasks::Pane));
        showAll_->setText(text::Of(text::tasks::ShowAll));
        showAll_->setToolTip(text::Of(text::tasks::ShowAllHint));
        showAll_->setStatusTip(showAll_->toolTip());
    });
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

    QFont titleFont = title_->font();
    titleFont.setBold(true);
    title_->setFont(titleFont);
    title_->setWordWrap(true);
    hint_->setWordWrap(true);
    hint_->setTextFormat(Qt::PlainText);
    showAll_->setObjectName(QStringLiteral("tskShowAll"));

    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    layout->addWidget(title_);
    layout->addWidget(hint_);
    layout->addLayout(tasks_);
    layout->addSpacing(layout->spacing());
    layout->addWidget(showAll_);
    layout->addStretch();
    tasks_->setSpacing(0);
    setWidget(content);

    // the switch is the host's: it turns when the host's does
    connect(showAll_, &QCheckBox::clicked, this, [this](bool checked) {
        showAll_->setChecked(!checked);
        Click(QLatin1String(showAllTask));
    });
}

QKeySequence TaskPane::ShortcutOf(const QString& taskKey) {
    for (const TaskShortcut& shortcut : taskShortcuts)
        if (taskKey == QLatin1String(shortcut.task)) return QKeySequence(QLatin1String(shortcut.keys));
    return {};
}

void TaskPane::Draw(const arvon::host::model::TaskView& pane) {
    title_->setText(ToQt(pane.title));
    usual_ = pane.texts.empty() ? QString() : ToQt(pane.texts[0]);
    noCurrent_ = pane.texts.size() < 2 ? usual_ : ToQt(pane.texts[1]);
    showAll_->setChecked(pane.showAll);
    DrawTasks(pane.tasks);
    DrawShortcuts(pane.tasks);
    DrawHint();
}

void TaskPane::DrawTasks(const std::vector<arvon::host::model::Task>& tasks) {
    while (buttons_.size() > tasks.size()) {
        buttons_.back()->hide();
        buttons_.back()->deleteLater();
        buttons_.pop_back();
    }
    while (buttons_.size() < tasks.size()) {
        auto* button = new QToolButton;
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::StrongFocus);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        tasks_->addWidget(button);
        connect(button, &QToolButton::clicked, this, [this, button] { Click(button->objectName()); });
        buttons_.push_back(button);
    }
    for (std::size_t i = 0; i < tasks.size(); ++i) {
        QToolButton& button = *buttons_[i];
        const QString key = ToQt(tasks[i].key);
        const QKeySequence keys = ShortcutOf(key);
        const QString description = ToQt(tasks[i].description);
        button.setObjectName(key);
        button.setText(EscapedMnemonics(ToQt(tasks[i].caption)));
        button.setAccessibleName(ToQt(tasks[i].caption));
        button.setAccessibleDescription(description);
        button.setIcon(pictures_.OfFile(ToQt(tasks[i].icon)));
        button.setStatusTip(description);
        button.setToolTip(keys.isEmpty() ? description
                                         : QStringLiteral("%1 (%2)").arg(
                                               description, keys.toString(QKeySequence::NativeText)));
    }
}

// Keys work while the pane is hidden, as long as what stands around it can be seen, and with it the list.
void TaskPane::DrawShortcuts(const std::vector<arvon::host::model::Task>& tasks) {
    std::map<QString, QAction*> before = std::exchange(shortcuts_, {});
    for (const arvon::host::model::Task& task : tasks) {
        const QString key = ToQt(task.key);
        const QKeySequence keys = ShortcutOf(key);
        if (keys.isEmpty() || shortcuts_.contains(key)) continue;
        QAction*& action = shortcuts_[key];
        if (const auto kept = before.extract(key)) {
            action = kept.mapped();
        } else {
            action = new QAction(this);
            action->setShortcut(keys);
            connect(action, &QAction::triggered, this, [this, key] { Click(key); });
            (parentWidget() ? parentWidget() : this)->addAction(action);
        }
        action->setText(ToQt(task.caption));
    }
    for (const auto& [key, gone] : before) { // perhaps from inside its own click, which asks a question
        gone->setShortcut({});
        gone->deleteLater();
    }
}

void TaskPane::OrderTabs(QWidget* before) {
    for (QToolButton* button : buttons_) {
        setTabOrder(before, button);
        before = button;
    }
    setTabOrder(before, showAll_);
}

void TaskPane::SetCurrent(const QString& rowText) {
    current_ = rowText;
    DrawHint();
}

void TaskPane::DrawHint() {
    hint_->setText(current_.isEmpty() ? noCurrent_ : usual_);
    for (QToolButton* button : buttons_)
        button->setEnabled(!current_.isEmpty());
    for (const auto& [key, action] : shortcuts_)
        action->setEnabled(!current_.isEmpty());
}

void TaskPane::Click(const QString& taskKey) {
    const QString row = current_; // may be another one when the question is answered
    const bool removes = taskKey == QLatin1String(removeTask);
    if (removes &&
        !Confirm(window(), text::Of(text::tasks::RemoveTitle), text::Of(text::tasks::RemoveQuestion).arg(row),
                 text::Of(text::tasks::RemoveConsequence), text::Of(text::tasks::Remove)))
        return;
    bridge_.Do(
        [key = FromQt(taskKey), confirmed = removes ? FromQt(row) : std::string()](ReferenceHost& host) {
            if (!confirmed.empty()) host.SelectRow(listView, confirmed);
            host.ClickTask(key);
        },
        ProgressOf(taskKey, row));
}

} // namespace desktop
