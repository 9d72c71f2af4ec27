#include "desktop/controls/Parts.h"

#include "desktop/QtText.h"
#include "desktop/controls/ControlTexts.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QFocusEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>

namespace desktop {

namespace {

QColor Mixed(const QColor& ground, const QColor& colour, double share) {
    const auto mix = [share](int a, int b) { return static_cast<int>(a + (b - a) * share); };
    return {mix(ground.red(), colour.red()), mix(ground.green(), colour.green()),
            mix(ground.blue(), colour.blue())};
}

class SelectionDimmer final : public QObject {
public:
    explicit SelectionDimmer(QAbstractItemView& view) : QObject(&view), view_(view) {
        view.installEventFilter(this);
        Put(view.hasFocus());
    }

    bool eventFilter(QObject*, QEvent* event) override {
        switch (event->type()) {
        case QEvent::FocusIn:
            Put(true);
            break;
        case QEvent::FocusOut:
            // the keyboard comes back when a menu is closed
            Put(static_cast<QFocusEvent*>(event)->reason() == Qt::PopupFocusReason);
            break;
        case QEvent::ApplicationPaletteChange:
            Put(view_.hasFocus());
            break;
        default:
            break;
        }
        return false;
    }

private:
    void Put(bool bright) {
        constexpr double share = 0.25;
        const QPalette usual = QApplication::palette(&view_);
        QPalette own;
        if (!bright) {
            own.setColor(QPalette::Highlight,
                         Mixed(usual.color(QPalette::Base), usual.color(QPalette::Highlight), share));
            own.setColor(QPalette::HighlightedText, usual.color(QPalette::Text));
        }
        view_.setPalette(own);
    }

    QAbstractItemView& view_;
};

} // namespace

QLabel* PlainLabel(const QString& text) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

void NameButton(QAbstractButton& button, const QString& caption, const QString& hint) {
    button.setText(caption);
    button.setAccessibleName(QString(caption).remove('&'));
    button.setAccessibleDescription(hint);
    button.setToolTip(hint);
}

void DimWithoutFocus(QAbstractItemView& view) {
    new SelectionDimmer(view);
}

void KeepPlace(QWidget& widget) {
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
}

Notice::Notice(const QString& textName) : icon_(new QLabel), text_(PlainLabel()) {
    text_->setObjectName(textName);
    text_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(icon_, 0, Qt::AlignTop);
    row->addWidget(text_, 1);
    hide();
}

void Notice::Put(const QString& text, Mark mark) {
    if (mark != Mark::None) {
        const bool isError = mark == Mark::Error;
        const auto icon = isError ? QStyle::SP_MessageBoxCritical : QStyle::SP_MessageBoxWarning;
        const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
        icon_->setPixmap(style()->standardIcon(icon).pixmap(size, size));
        icon_->setAccessibleName(text::Of(isError ? text::mark::Error : text::mark::Warning));
    }
    icon_->setVisible(mark != Mark::None);
    text_->setText(text);
    setVisible(!text.isEmpty());
}

} // namespace desktop
