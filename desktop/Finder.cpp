#include "desktop/Finder.h"

#include "desktop/Folding.h"
#include "desktop/Texts.h"

#include <QAbstractListModel>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include <algorithm>

namespace desktop {

namespace {

constexpr int kindRole = Qt::UserRole;
constexpr int keysRole = Qt::UserRole + 1;
constexpr int rowPadding = 5;

/// Takes an icon's place, so that all texts begin at one line.
QIcon NoIcon() {
    QPixmap nothing(16, 16);
    nothing.fill(Qt::transparent);
    return QIcon(nothing);
}

} // namespace

class Finder::Model final : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    void SetEntries(std::vector<FinderEntry> entries) {
        beginResetModel();
        entries_ = std::move(entries);
        folded_.clear();
        for (const FinderEntry& entry : entries_)
            folded_.push_back({Folded(entry.text), Folded(entry.text + u' ' + entry.kind)});
        Find({});
        endResetModel();
    }
    void SetFilter(const QString& typed) {
        beginResetModel();
        Find(typed);
        endResetModel();
    }
    const FinderEntry& At(int row) const { return entries_[found_[static_cast<std::size_t>(row)]]; }

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(found_.size());
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid() || index.row() >= rowCount()) return {};
        const FinderEntry& entry = At(index.row());
        switch (role) {
        case Qt::DisplayRole:
            return entry.text;
        case Qt::DecorationRole:
            return entry.icon.isNull() ? NoIcon() : entry.icon;
        case Qt::ToolTipRole:
            return entry.hint;
        case Qt::AccessibleTextRole:
            return QString(entry.text + QLatin1String(", ") + entry.kind);
        case Qt::AccessibleDescriptionRole:
            return entry.hint;
        case kindRole:
            return entry.kind;
        case keysRole:
            return entry.keys;
        default:
            return {};
        }
    }

private:
    struct FoldedEntry {
        QString text, all;
    };

    /// What begins like the typed text comes first, then where a word does, then the rest; else in the order
    /// given.
    void Find(const QString& typed) {
        const QStringList words = FoldedWords(typed);
        const QString whole = words.join(u' ');
        found_.clear();
        std::vector<int> ranks(entries_.size());
        for (std::size_t i = 0; i < entries_.size(); ++i) {
            if (!HasAllWords(folded_[i].all, words)) continue;
            const QString& text = folded_[i].text;
            ranks[i] = whole.isEmpty() || text.startsWith(whole) ? 0 : text.contains(u' ' + whole) ? 1 : 2;
            found_.push_back(i);
        }
        std::stable_sort(found_.begin(), found_.end(),
                         [&](std::size_t a, std::size_t b) { return ranks[a] < ranks[b]; });
    }

    std::vector<FinderEntry> entries_;
    std::vector<FoldedEntry> folded_;
    std::vector<std::size_t> found_;
};

/// Name at the left, kind and shortcut at the right.
class Finder::Delegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyledItemDelegate::paint(painter, option, index);
        const bool selected = option.state.testFlag(QStyle::State_Selected);
        const QString keys = index.data(keysRole).toString();
        const QString kind = index.data(kindRole).toString();
        painter->save();
        painter->setPen(
            option.palette.color(selected ? QPalette::HighlightedText : QPalette::PlaceholderText));
        painter->drawText(option.rect.adjusted(0, 0, -2 * rowPadding, 0), Qt::AlignRight | Qt::AlignVCenter,
                          keys.isEmpty() ? kind : kind + QLatin1String("    ") + keys);
        painter->restore();
    }
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return QStyledItemDelegate::sizeHint(option, index) + QSize(0, 2 * rowPadding);
    }
};

Finder::Finder(QWidget* parent)
    : QDialog(parent), typed_(new QLineEdit), found_(new QListView), model_(new Model(this)) {
    setObjectName(QStringLiteral("finder"));
    text::Follow(this, [this] {
        setWindowTitle(text::Of(text::finder::Title));
        setAccessibleName(windowTitle());
        typed_->setAccessibleName(text::Of(text::finder::Placeholder));
        typed_->setPlaceholderText(text::Of(text::finder::Placeholder));
        found_->setAccessibleName(text::Of(text::finder::Results));
    });
    typed_->setObjectName(QStringLiteral("finderText"));
    typed_->setClearButtonEnabled(true);
    typed_->installEventFilter(this);
    found_->setObjectName(QStringLiteral("finderResults"));
    found_->setModel(model_);
    found_->setItemDelegate(new Delegate(found_));
    found_->setIconSize(QSize(16, 16));
    found_->setUniformItemSizes(true);
    found_->setFocusPolicy(Qt::ClickFocus);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(typed_);
    layout->addWidget(found_);
    connect(typed_, &QLineEdit::textChanged, this, &Finder::Filter);
    connect(found_, &QListView::clicked, this, &Finder::Run);
    connect(found_, &QListView::activated, this, &Finder::Run);
}

Finder::~Finder() = default;

void Finder::Open(std::vector<FinderEntry> entries) {
    model_->SetEntries(std::move(entries));
    typed_->clear();
    Filter({});
    const QRect around = parentWidget()->geometry();
    const QSize size(std::min(620, around.width() - 40), std::min(440, around.height() - 80));
    resize(size);
    move(around.center().x() - size.width() / 2, around.top() + 60);
    open();
    typed_->setFocus();
}

void Finder::Filter(const QString& typed) {
    model_->SetFilter(typed);
    found_->setCurrentIndex(model_->index(0));
    found_->scrollToTop();
}

void Finder::Run() {
    const QModelIndex chosen = found_->currentIndex();
    if (!chosen.isValid() || !isVisible()) return;
    const std::function<void()> run = model_->At(chosen.row()).run;
    accept();
    run();
}

bool Finder::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        QApplication::sendEvent(found_, event);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Run();
        return true;
    default:
        return QDialog::eventFilter(watched, event);
    }
}

} // namespace desktop
