#include "desktop/Pictures.h"

#include "base/ComponentError.h"
#include "desktop/QtText.h"
#include "platform/FilePaths.h"

#include <QApplication>
#include <QPainter>
#include <QPixmap>
#include <QPixmapCache>
#include <QStyle>
#include <QWidget>

#include <utility>

namespace desktop {

namespace {

constexpr int twipsPerInch = 1440;

bool IsDark(const QPalette& palette) {
    return palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness();
}

/// The installation's pictures are 16 pixels wide and drawn for light backgrounds: scaled by whole numbers
/// they stay sharp, and on dark ones they get a light plate.
QIcon SharpIcon(const QPixmap& picture, const QPalette& palette) {
    QIcon icon;
    for (const int factor : {1, 2, 3}) {
        const QPixmap scaled =
            picture.scaled(picture.size() * factor, Qt::KeepAspectRatio, Qt::FastTransformation);
        if (!IsDark(palette)) {
            icon.addPixmap(scaled);
            continue;
        }
        const int margin = 2 * factor;
        QPixmap plate(scaled.size() + QSize(2 * margin, 2 * margin));
        plate.fill(Qt::transparent);
        QPainter painter(&plate);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette.color(QPalette::Text));
        painter.drawRoundedRect(plate.rect(), 2 * margin, 2 * margin);
        painter.drawPixmap(margin, margin, scaled);
        painter.end();
        icon.addPixmap(plate);
    }
    return icon;
}

/// The style decodes its pictures each time that it is asked, and rows ask often.
QIcon StandardMark(QStyle::StandardPixmap which, const QWidget& widget) {
    const qreal ratio = widget.devicePixelRatioF();
    const QString key = QStringLiteral("arvon mark %1 %2 %3")
                            .arg(QLatin1String(widget.style()->metaObject()->className()))
                            .arg(static_cast<int>(which))
                            .arg(ratio);
    QPixmap mark;
    if (!QPixmapCache::find(key, &mark)) {
        const int size = widget.style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, &widget);
        mark = widget.style()->standardIcon(which, nullptr, &widget).pixmap(QSize(size, size), ratio);
        QPixmapCache::insert(key, mark);
    }
    return QIcon(mark);
}

} // namespace

Pictures::Pictures(const std::filesystem::path& installation, const QString& imageFolder)
    : installation_(installation), imageFolder_(imageFolder) {}

QString Pictures::SystemPath(const QString& path) const {
    try {
        return ToQt(platform::FilePaths::CreateFor(installation_)->ToSystem(FromQt(path)).string());
    } catch (const base::ComponentError&) {
        return {};
    }
}

QIcon Pictures::OfName(const QString& name) const {
    return name.isEmpty() ? QIcon() : OfFile(imageFolder_ + u'\\' + name + QLatin1String(".gif"));
}

QIcon Pictures::OfFile(const QString& path) const {
    const QPalette palette = QApplication::palette();
    if (std::exchange(paletteKey_, palette.cacheKey()) != palette.cacheKey()) icons_.clear();
    const auto known = icons_.constFind(path);
    if (known != icons_.constEnd()) return *known;
    const QPixmap picture(SystemPath(path));
    return *icons_.insert(path, picture.isNull() ? QIcon() : SharpIcon(picture, palette));
}

QPixmap Pictures::PixmapOfFile(const QString& path) const {
    return QPixmap(SystemPath(path));
}

QIcon ToolPicture(const Pictures& pictures, const QString& name, const QWidget& widget) {
    const QIcon picture = pictures.OfName(name);
    return picture.isNull() ? StandardMark(QStyle::SP_FileIcon, widget) : picture;
}

QIcon RunningMark(const QWidget& widget) {
    const auto drawn = [](const QColor& colour) {
        constexpr int size = 32;
        QPixmap picture(size, size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(colour);
        painter.drawPolygon(QPolygonF({{8, 5}, {27, 16}, {8, 27}}));
        return picture;
    };
    QIcon icon(drawn(QApplication::palette(&widget).color(QPalette::Highlight)));
    icon.addPixmap(drawn(widget.palette().color(QPalette::HighlightedText)), QIcon::Selected);
    return icon;
}

QIcon ProblemMark(const QWidget& widget) {
    return StandardMark(QStyle::SP_MessageBoxWarning, widget);
}

int PixelsOfTwips(const QWidget& widget, int twips) {
    return twips * widget.logicalDpiX() / twipsPerInch;
}

} // namespace desktop
