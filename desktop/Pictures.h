#pragma once

#include <QHash>
#include <QIcon>
#include <QString>

#include <filesystem>

class QWidget;

namespace desktop {

/// Pictures of the installation, by the names that the system gives them, and the few of the desktop's own.
class Pictures {
public:
    /// `imageFolder` in the installation's form ("C:\QUARRA\Arvon\Images").
    Pictures(const std::filesystem::path& installation, const QString& imageFolder);

    /// "LAY": the file LAY.gif of the image folder, in any letter case. A null icon when there is none.
    QIcon OfName(const QString& name) const;
    /// By a path of the installation ("C:\QUARRA\Arvon\Images\EDIT.GIF"); null when it cannot be read.
    QIcon OfFile(const QString& path) const;
    QPixmap PixmapOfFile(const QString& path) const;

private:
    QString SystemPath(const QString& path) const;

    std::filesystem::path installation_;
    QString imageFolder_;
    mutable QHash<QString, QIcon> icons_; // by path; made for one palette
    mutable qint64 paletteKey_ = 0;
};

/// The picture of a tool by its name, else the style's picture of a file.
QIcon ToolPicture(const Pictures& pictures, const QString& name, const QWidget& widget);
/// A triangle in the widget's highlight colour: something runs.
QIcon RunningMark(const QWidget& widget);
/// The style's warning sign.
QIcon ProblemMark(const QWidget& widget);

/// Pixels of the widget's screen: there are 1440 twips in an inch.
int PixelsOfTwips(const QWidget& widget, int twips);

} // namespace desktop
