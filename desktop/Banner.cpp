#include "desktop/Banner.h"

#include "desktop/QtText.h"
#include "desktop/Texts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QToolButton>

namespace desktop {

Banner::Banner(const Pictures& pictures) : pictures_(pictures), picture_(new QLabel), caption_(new QLabel) {
    setObjectName(QStringLiteral("banner"));
    setFrameShape(QFrame::StyledPanel);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    QFont font = caption_->font();
    font.setBold(true);
    caption_->setFont(font);
    caption_->setTextFormat(Qt::PlainText);
    auto* dismiss = new QToolButton;
    dismiss->setObjectName(QStringLiteral("dismissBanner"));
    dismiss->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    dismiss->setAutoRaise(true);
    dismiss->setFocusPolicy(Qt::StrongFocus);
    text::Follow(this, [this, dismiss] {
        setAccessibleName(text::Of(text::banner::Name));
        dismiss->setToolTip(text::Of(text::banner::Dismiss));
        dismiss->setAccessibleName(dismiss->toolTip());
    });
    connect(dismiss, &QToolButton::clicked, this, [this] {
        dismissed_ = true;
        hide();
    });
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 6, 0);
    layout->addWidget(picture_);
    layout->addSpacing(layout->spacing());
    layout->addWidget(caption_, 1);
    layout->addWidget(dismiss);
    hide();
}

void Banner::Draw(const arvon::host::model::Banner& banner) {
    if (banner.caption != shown_.caption || banner.picture != shown_.picture) dismissed_ = false;
    shown_ = banner;
    const QPixmap picture = pictures_.PixmapOfFile(ToQt(banner.picture));
    picture_->setPixmap(picture);
    picture_->setVisible(!picture.isNull());
    caption_->setText(ToQt(banner.caption));
    setVisible(!banner.caption.empty() && !dismissed_);
}

} // namespace desktop
