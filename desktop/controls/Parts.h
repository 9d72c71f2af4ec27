#pragma once

#include <QString>
#include <QWidget>

class QAbstractButton;
class QAbstractItemView;
class QLabel;

/// What the controls, the editor and the trace are put together from.
namespace desktop {

/// A text that stands as it is, whatever markup it may hold, on as many lines as it needs.
QLabel* PlainLabel(const QString& text = {});
/// Caption, accessible name and what the button does.
void NameButton(QAbstractButton& button, const QString& caption, const QString& hint);
/// Without the keyboard, the view shows its selection dimmer: what is bright is where the keyboard is.
void DimWithoutFocus(QAbstractItemView& view);
/// Hidden, the widget leaves its place free.
void KeepPlace(QWidget& widget);

/// A text with the mark of what it is.
class Notice final : public QWidget {
public:
    enum class Mark { None, Warning, Error };

    /// `textName`: object name of the text.
    explicit Notice(const QString& textName = {});
    /// An empty text hides it.
    void Put(const QString& text, Mark mark);

private:
    QLabel* icon_;
    QLabel* text_;
};

} // namespace desktop
