#include "desktop/trace/TraceDock.h"

#include "desktop/QtText.h"
#include "desktop/controls/Parts.h"
#include "desktop/trace/ConsoleScript.h"
#include "desktop/trace/TraceModel.h"
#include "desktop/trace/TraceTexts.h"
#include "host/ReferenceHost.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSplitter>
#include <QStyle>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <set>

namespace desktop {

namespace {

QToolButton* Button(const char* objectName, const text::Own& caption, const text::Own& hint) {
    auto* button = new QToolButton;
    button->setObjectName(objectName);
    text::Follow(button, [button, caption, hint] { NameButton(*button, text::Of(caption), text::Of(hint)); });
    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    button->setFocusPolicy(Qt::StrongFocus);
    return button;
}

/// Text of the current row of the list that tasks are about; empty when there is none.
std::string CurrentRowOf(const arvon::host::ReferenceHost& host) {
    for (const arvon::host::model::ListRow& row : host.Model().List("lvTools"))
        if (row.current) return row.text;
    return {};
}

} // namespace

class TraceDock::Panel final : public QWidget {
public:
    explicit Panel(arvon::host::ReferenceHost& host);
    ~Panel() override;
    QString Script();

private:
    QLayout* MakeBar();
    void ConnectParts();
    void Retranslate();
    void TakeFinished();
    void LearnListeners(const TraceNode& node);
    void ShowDetails(const QModelIndex& current);
    void SetPaused(bool paused);
    void Clear();
    void Copy();
    void PutStatus(const QString& note = {});

    arvon::host::ReferenceHost& host_;
    const TraceLimits limits_;
    QTimer due_;
    MessageRecorder recorder_;
    TraceModel model_;
    TraceFilter filter_;
    std::set<std::string> known_; // listeners
    QLineEdit* search_ = new QLineEdit;
    QComboBox* listener_ = new QComboBox;
    QCheckBox* troubles_ = new QCheckBox;
    QToolButton* pause_;
    QToolButton* clear_;
    QToolButton* copy_;
    QTreeView* tree_ = new QTreeView;
    QPlainTextEdit* details_ = new QPlainTextEdit;
    QLabel* status_ = new QLabel;
};

TraceDock::Panel::Panel(arvon::host::ReferenceHost& host)
    : host_(host), recorder_(
                       limits_,
                       [&host] {
                           const auto component = host.Component();
                           return component && component->IsLoaded();
                       },
                       [this] {
                           if (!due_.isActive()) due_.start();
                       },
                       [&host] { return CurrentRowOf(host); }),
      model_(limits_, QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning),
             QApplication::style()->standardIcon(QStyle::SP_MessageBoxCritical)),
      pause_(Button("pause", text::trace::Pause, text::trace::PauseHint)),
      clear_(Button("clear", text::trace::Clear, text::trace::ClearHint)),
      copy_(Button("copy", text::trace::Copy, text::trace::CopyHint)) {
    due_.setSingleShot(true);
    filter_.setSourceModel(&model_);
    tree_->setObjectName("messages");
    tree_->setModel(&filter_);
    DimWithoutFocus(*tree_);
    tree_->setUniformRowHeights(true);
    tree_->setAlternatingRowColors(true);
    tree_->setAllColumnsShowFocus(true);
    tree_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    constexpr std::array<int, TraceModel::Columns> widths{220, 65, 75, 75, 75, 130, 240, 160};
    for (int column = 0; column < TraceModel::Columns; ++column)
        tree_->setColumnWidth(column, widths[static_cast<std::size_t>(column)]);
    details_->setObjectName("details");
    details_->setReadOnly(true);
    details_->setTabChangesFocus(true);
    status_->setObjectName("status");
    status_->setTextFormat(Qt::PlainText);

    auto* sides = new QSplitter(Qt::Horizontal);
    sides->addWidget(tree_);
    sides->addWidget(details_);
    sides->setStretchFactor(0, 3);
    sides->setStretchFactor(1, 1);
    sides->setSizes({800, 240});
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(4, 4, 4, 4);
    column->addLayout(MakeBar());
    column->addWidget(sides, 1);
    column->addWidget(status_);
    ConnectParts();
    PutStatus();
    host_.Subscribe(recorder_);
}

TraceDock::Panel::~Panel() {
    host_.Unsubscribe(recorder_);
    tree_->setModel(nullptr); // the models go before the view
}

QLayout* TraceDock::Panel::MakeBar() {
    search_->setObjectName("search");
    search_->setClearButtonEnabled(true);
    listener_->setObjectName("listener");
    listener_->addItem(QString());
    listener_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    troubles_->setObjectName("troubles");
    pause_->setCheckable(true);
    auto* bar = new QHBoxLayout;
    bar->addWidget(search_, 1);
    bar->addWidget(listener_);
    bar->addWidget(troubles_);
    bar->addWidget(pause_);
    bar->addWidget(clear_);
    bar->addWidget(copy_);
    return bar;
}

void TraceDock::Panel::ConnectParts() {
    connect(&due_, &QTimer::timeout, this, [this] { TakeFinished(); });
    connect(search_, &QLineEdit::textChanged, this, [this](const QString& text) { filter_.SetText(text); });
    connect(listener_, &QComboBox::currentIndexChanged, this,
            [this](int index) { filter_.SetListener(index > 0 ? listener_->itemText(index) : QString()); });
    connect(troubles_, &QCheckBox::toggled, this, [this](bool only) { filter_.SetOnlyTroubles(only); });
    connect(pause_, &QToolButton::toggled, this, [this](bool paused) { SetPaused(paused); });
    connect(clear_, &QToolButton::clicked, this, [this] { Clear(); });
    connect(copy_, &QToolButton::clicked, this, [this] { Copy(); });
    connect(tree_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) { ShowDetails(current); });
    auto* copy = new QAction(tree_);
    text::Follow(this, [this, copy] {
        copy->setText(text::Of(text::trace::Copy));
        Retranslate();
    });
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    connect(copy, &QAction::triggered, this, [this] { Copy(); });
    tree_->addAction(copy);
    tree_->setContextMenuPolicy(Qt::ActionsContextMenu);
}

void TraceDock::Panel::Retranslate() {
    tree_->setAccessibleName(text::Of(text::trace::Messages));
    details_->setAccessibleName(text::Of(text::trace::Details));
    search_->setPlaceholderText(text::Of(text::trace::Filter));
    search_->setAccessibleName(text::Of(text::trace::Filter));
    search_->setToolTip(text::Of(text::trace::FilterHint));
    listener_->setAccessibleName(text::Of(text::trace::Listener));
    listener_->setToolTip(text::Of(text::trace::Listener));
    listener_->setItemText(0, text::Of(text::trace::AllListeners));
    troubles_->setText(text::Of(text::trace::OnlyTroubles));
    troubles_->setAccessibleName(text::Of(text::trace::OnlyTroubles).remove('&'));
    emit model_.headerDataChanged(Qt::Horizontal, 0, TraceModel::Columns - 1);
    PutStatus();
}

void TraceDock::Panel::TakeFinished() {
    auto finished = recorder_.Take();
    if (finished.empty()) return;
    const QScrollBar* bar = tree_->verticalScrollBar();
    const bool atEnd = bar->value() == bar->maximum();
    for (const auto& node : finished)
        LearnListeners(*node);
    model_.Append(std::move(finished));
    if (atEnd) tree_->scrollToBottom();
    PutStatus();
}

void TraceDock::Panel::LearnListeners(const TraceNode& node) {
    constexpr std::size_t most = 200;
    for (const std::string* listener : {&node.message.source, &node.message.destination}) {
        if (listener->empty() || known_.size() >= most || !known_.insert(*listener).second) continue;
        const auto place = std::distance(known_.begin(), known_.find(*listener));
        listener_->insertItem(static_cast<int>(place) + 1, ToQt(*listener));
    }
    for (const auto& child : node.children)
        LearnListeners(*child);
}

void TraceDock::Panel::ShowDetails(const QModelIndex& current) {
    const TraceNode* node = TraceModel::NodeAt(filter_.mapToSource(current));
    details_->setPlainText(node ? TraceModel::DetailsOf(*node) : QString());
}

void TraceDock::Panel::SetPaused(bool paused) {
    recorder_.SetRecording(!paused);
    if (!paused) host_.Subscribe(recorder_); // asks again what it wants to hear
    PutStatus();
}

void TraceDock::Panel::Clear() {
    recorder_.Take();
    model_.Clear();
    details_->clear();
    PutStatus();
}

QString TraceDock::Panel::Script() {
    TakeFinished();
    std::set<const TraceNode*> wanted;
    for (const QModelIndex& row : tree_->selectionModel()->selectedRows()) {
        const TraceNode* node = TraceModel::NodeAt(filter_.mapToSource(row));
        while (node && node->parent)
            node = node->parent;
        wanted.insert(node);
    }
    ConsoleScript script;
    for (int row = 0; row < filter_.rowCount(); ++row) {
        const TraceNode* node = TraceModel::NodeAt(filter_.mapToSource(filter_.index(row, 0)));
        if (node && (wanted.empty() || wanted.contains(node))) script.Add(*node);
    }
    return ToQt(script.Text());
}

void TraceDock::Panel::Copy() {
    const QString script = Script();
    QApplication::clipboard()->setText(script);
    const auto lines = script.split('\n', Qt::SkipEmptyParts);
    const auto commands =
        std::ranges::count_if(lines, [](const QString& line) { return !line.startsWith('#'); });
    PutStatus(text::Of(text::trace::Copied).arg(commands));
}

void TraceDock::Panel::PutStatus(const QString& note) {
    const QLocale locale;
    const text::Own& form = model_.HasDropped() ? text::trace::Dropped : text::trace::Bound;
    QString status = text::Of(form).arg(locale.toString(static_cast<qulonglong>(model_.Messages())),
                                        locale.toString(static_cast<qulonglong>(limits_.messages)));
    if (!recorder_.IsRecording()) status += " \u2013 " + text::Of(text::trace::Paused);
    if (!note.isEmpty()) status += " \u2013 " + note;
    status_->setText(status);
}

TraceDock::TraceDock(arvon::host::ReferenceHost& host, QWidget* parent)
    : QDockWidget(parent), panel_(new Panel(host)) {
    setObjectName("traceDock");
    text::Follow(this, [this] {
        setWindowTitle(text::Of(text::trace::Title));
        setAccessibleName(windowTitle());
        toggleViewAction()->setText(windowTitle());
    });
    setWidget(panel_);
}

QString TraceDock::Script() const {
    return panel_->Script();
}

} // namespace desktop
