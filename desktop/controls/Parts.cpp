#include "desktop/controls/Parts.h"

#include "desktop/QtText.h"
#include "desktop/controls/ControlTexts.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>

namespace desktop {

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
