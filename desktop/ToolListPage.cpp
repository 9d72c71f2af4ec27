#include "desktop/ToolListPage.h"

#include "base/ComponentError.h"
#include "core/contract/EventShapes.h"
#include "core/contract/Framework.h"
#include "desktop/QtText.h"
#include "desktop/Texts.h"
#include "desktop/controls/Parts.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QScopedValueRollback>
#include <QTreeView>
#include <QVBoxLayout>

#include <chrono>

namespace desktop {

namespace eventKind = arvon::eventKind;
using arvon::host::ReferenceHost;

namespace {

constexpr auto ascending = "0";
constexpr auto descending = "1";

} // namespace

/// Says why it is empty.
class ToolListPage::View final : public QTreeView {
public:
    QString emptyText;

protected:
    void paintEvent(QPaintEvent* event) override {
        QTreeView::paintEvent(event);
        if (!model() || model()->rowCount() > 0) return;
        QPainter painter(viewport());
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(viewport()->rect().adjusted(12, 12, -12, -12),
                         Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, emptyText);
    }
};

ToolListPage::ToolListPage(HostBridge& bridge, const ToolStates& states, const Pictures& pictures,
                           const QString& viewKey)
    : bridge_(bridge), viewKey_(viewKey), filter_(new QLineEdit), count_(new QLabel), list_(new View),
      rows_(new ToolListModel(states, pictures, *list_, this)), states_(states) {
    setObjectName(viewKey + QLatin1String("Page"));
    filter_->setObjectName(QStringLiteral("filter"));
    text::Follow(this, [this] {
        filter_->setAccessibleName(text::Of(text::list::Filter));
        filter_->setPlaceholderText(text::Of(text::list::FilterPlaceholder));
        filter_->setToolTip(text::Of(text::window::FilterHint));
        count_->setAccessibleName(text::Of(text::list::Count));
        list_->setAccessibleName(text::Of(text::list::Name));
        list_->header()->setAccessibleName(text::Of(text::list::Columns));
    });
    filter_->setClearButtonEnabled(true);
    filter_->installEventFilter(this);
    count_->setObjectName(QStringLiteral("count"));

    list_->setObjectName(viewKey);
    list_->setModel(rows_);
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setAllColumnsShowFocus(true);
    list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list_->setExpandsOnDoubleClick(false);
    list_->header()->setSectionsClickable(true);
    list_->header()->setStretchLastSection(true);
    list_->installEventFilter(this);
    DimWithoutFocus(*list_);

    auto* top = new QHBoxLayout;
    top->setContentsMargins(0, 0, 0, 0);
    top->addWidget(filter_, 1);
    top->addWidget(count_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(top);
    layout->addWidget(list_, 1);

    clock_.setInterval(std::chrono::seconds(1));
    connect(&clock_, &QTimer::timeout, rows_, &ToolListModel::RefreshTimes);
    connect(filter_, &QLineEdit::textChanged, this, &ToolListPage::SetFilter);
    connect(list_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &ToolListPage::TellSelected);
    // the space bar changes the check mark of the current index, and only the first column has one
    connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) {
                if (current.column() > 0)
                    list_->selectionModel()->setCurrentIndex(current.siblingAtColumn(0),
                                                             QItemSelectionModel::NoUpdate);
            });
    connect(list_, &QTreeView::doubleClicked, this, &ToolListPage::Open);
    connect(list_->header(), &QHeaderView::sectionClicked, this, &ToolListPage::ClickHeader);
    connect(rows_, &ToolListModel::CheckToggled, this, [this](const QString& rowText, bool checked) {
        bridge_.Do([view = FromQt(viewKey_), row = FromQt(rowText), checked](ReferenceHost& host) {
            host.ListItemEvent(view, row, eventKind::CheckChanged, checked);
        });
    });
}

bool ToolListPage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool isReturn = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
    if (watched == list_) {
        if (isReturn && (key->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier) {
            Open(list_->currentIndex());
            return true;
        }
    } else if (key->key() == Qt::Key_Escape && !filter_->text().isEmpty()) {
        filter_->clear();
        return true;
    } else if ((isReturn || key->key() == Qt::Key_Down) && rows_->ShownCount() > 0) {
        list_->setFocus(Qt::OtherFocusReason);
        if (!list_->currentIndex().isValid()) list_->setCurrentIndex(rows_->index(0, 0));
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void ToolListPage::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) rows_->RefreshStates();
    QWidget::changeEvent(event);
}

void ToolListPage::Draw() {
    DrawColumns();
    const QScopedValueRollback drawing(drawing_, true);
    rows_->SetRows(bridge_.Model().List(FromQt(viewKey_)));
    DrawCount();
    ShowCurrent();
    RefreshStates();
}

void ToolListPage::DrawColumns() {
    const QScopedValueRollback drawing(drawing_, true);
    const std::vector<arvon::host::model::Column> columns = bridge_.Shown().Columns(FromQt(viewKey_));
    rows_->SetColumns(columns);
    try {
        const auto view = bridge_.Host().Framework()->Views().Item(FromQt(viewKey_));
        if (view && view->List()) rows_->SetCheckBoxes(view->List()->CheckBoxes());
    } catch (const base::ComponentError&) {
        return; // a host that is made to fail keeps what was shown
    }
    if (columnsPlaced_ || columns.empty()) return;
    columnsPlaced_ = true;
    for (std::size_t i = 0; i < columns.size(); ++i)
        list_->header()->resizeSection(static_cast<int>(i), PixelsOfTwips(*list_, columns[i].widthTwips));
}

void ToolListPage::DrawCount() {
    const int total = rows_->TotalCount();
    if (!filter_->text().trimmed().isEmpty()) {
        count_->setText(text::Of(text::list::SomeShown).arg(rows_->ShownCount()).arg(total));
    } else if (total == 1) {
        count_->setText(text::Of(text::list::OneShown));
    } else {
        count_->setText(text::Of(text::list::AllShown).arg(total));
    }
    static_cast<View*>(list_)->emptyText = total == 0
                                               ? text::Of(text::list::NoTools)
                                               : text::Of(text::list::NoMatch).arg(filter_->text().trimmed());
}

void ToolListPage::ShowCurrent() {
    const int row = rows_->CurrentRow();
    const QString current = row < 0 ? QString() : rows_->TextOf(row);
    if (row >= 0) {
        list_->selectionModel()->setCurrentIndex(rows_->index(row, 0), QItemSelectionModel::ClearAndSelect |
                                                                           QItemSelectionModel::Rows);
    } else {
        list_->selectionModel()->clear();
    }
    if (std::exchange(current_, current) != current) emit CurrentChanged(current_);
}

void ToolListPage::RefreshStates() {
    rows_->RefreshStates();
    if (!states_.AnythingRuns()) {
        clock_.stop();
    } else if (!clock_.isActive()) {
        clock_.start();
    }
}

void ToolListPage::FocusFilter() {
    filter_->setFocus(Qt::ShortcutFocusReason);
    filter_->selectAll();
}

void ToolListPage::SetFilter(const QString& typed) {
    const QScopedValueRollback drawing(drawing_, true);
    rows_->SetFilter(typed);
    DrawCount();
    ShowCurrent();
}

void ToolListPage::TellSelected(const QModelIndex& index) {
    if (drawing_ || !index.isValid()) return;
    const QString row = rows_->TextOf(index.row());
    bridge_.ByItself([&] { // the view chooses a row of its own accord, when it gets the keyboard
        bridge_.Do([view = FromQt(viewKey_), text = FromQt(row)](ReferenceHost& host) {
            host.SelectRow(view, text);
        });
    });
}

void ToolListPage::Open(const QModelIndex& index) {
    if (!index.isValid()) return;
    const QString row = rows_->TextOf(index.row());
    bridge_.Do([view = FromQt(viewKey_), text = FromQt(row)](
                   ReferenceHost& host) { host.ListItemEvent(view, text, eventKind::Opened); },
               text::Of(text::status::Launching).arg(row));
}

void ToolListPage::ClickHeader(int column) {
    const QString key = rows_->ColumnKey(column);
    if (key.isEmpty()) { // the state is the desktop's own; the header has moved its arrow there already
        DrawOrder();
        return;
    }
    const bool turned = key == orderKey_ && !orderDescends_;
    ShowOrder(key, turned);
    bridge_.Do([view = FromQt(viewKey_), key = FromQt(key), turned](
                   ReferenceHost& host) { host.ColumnClick(view, key, turned ? descending : ascending); },
               text::Of(text::status::Sorting));
}

void ToolListPage::ShowOrder(const QString& columnKey, bool isDescending) {
    orderKey_ = columnKey;
    orderDescends_ = isDescending;
    DrawOrder();
}

void ToolListPage::DrawOrder() {
    list_->header()->setSortIndicatorShown(!orderKey_.isEmpty());
    for (int column = 0; column + 1 < rows_->columnCount(); ++column) {
        if (rows_->ColumnKey(column) == orderKey_)
            list_->header()->setSortIndicator(column,
                                              orderDescends_ ? Qt::DescendingOrder : Qt::AscendingOrder);
    }
}

QByteArray ToolListPage::HeaderState() const {
    return list_->header()->saveState();
}

void ToolListPage::RestoreHeader(const QByteArray& state) {
    if (list_->header()->restoreState(state)) columnsPlaced_ = true;
    DrawOrder(); // the order is the system's, not remembered here
    list_->header()->setSectionsClickable(true);
}

} // namespace desktop
