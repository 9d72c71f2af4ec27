#include "desktop/MessageBox.h"

#include "desktop/Texts.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

namespace desktop {

namespace {

constexpr int iconMask = 0x70;

QMessageBox::Icon IconOf(int style) {
    switch (style & iconMask) {
    case 16:
        return QMessageBox::Critical;
    case 32:
        return QMessageBox::Question;
    case 48:
        return QMessageBox::Warning;
    case 64:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

/// The ordinary pointer while a box waits, whatever is under way.
class OrdinaryPointer {
public:
    OrdinaryPointer() {
        if (changed_) QApplication::setOverrideCursor(Qt::ArrowCursor);
    }
    ~OrdinaryPointer() {
        if (changed_) QApplication::restoreOverrideCursor();
    }
    OrdinaryPointer(const OrdinaryPointer&) = delete;
    OrdinaryPointer& operator=(const OrdinaryPointer&) = delete;

private:
    bool changed_ = QApplication::overrideCursor() != nullptr;
};

/// The system's texts break lines by CR LF and indent by a TAB: the first paragraph is what happened, the
/// rest what to do about it.
QStringList Paragraphs(const QString& text) {
    QString plain = text;
    plain.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n').remove(u'\t');
    QStringList paragraphs;
    for (const QString& line : plain.split(u'\n'))
        if (!line.trimmed().isEmpty()) paragraphs.append(line.trimmed());
    return paragraphs;
}

} // namespace

void ShowMessageBox(QWidget* parent, const QString& text, int style, const QString& title) {
    QMessageBox box(parent);
    box.setObjectName(QStringLiteral("messageBox"));
    box.setTextFormat(Qt::PlainText);
    box.setIcon(IconOf(style));
    QStringList paragraphs = Paragraphs(text);
    if (!paragraphs.isEmpty()) box.setText(paragraphs.takeFirst());
    if (!paragraphs.isEmpty()) box.setInformativeText(paragraphs.join(QStringLiteral("\n\n")));
    box.setWindowTitle(title.isEmpty() ? text::Of(text::window::Title) : title);
    box.setAccessibleName(box.windowTitle());
    box.setAccessibleDescription(box.text());
    box.setStandardButtons(QMessageBox::Ok);
    const OrdinaryPointer pointer;
    box.exec();
}

bool Confirm(QWidget* parent, const QString& title, const QString& question, const QString& consequence,
             const QString& doIt) {
    QMessageBox box(parent);
    box.setObjectName(QStringLiteral("confirmBox"));
    box.setTextFormat(Qt::PlainText);
    box.setIcon(QMessageBox::Warning);
    box.setWindowTitle(title);
    box.setText(question);
    box.setInformativeText(consequence);
    box.setAccessibleName(title);
    box.setAccessibleDescription(question);
    QPushButton* confirmed = box.addButton(doIt, QMessageBox::DestructiveRole);
    QPushButton* cancel = box.addButton(QMessageBox::Cancel);
    cancel->setText(text::Of(text::tasks::Cancel));
    box.setDefaultButton(cancel);
    box.exec();
    return box.clickedButton() == confirmed;
}

} // namespace desktop
