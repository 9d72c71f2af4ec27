#pragma once

#include "desktop/HostBridge.h"
#include "desktop/MainWindow.h"
#include "desktop/Navigator.h"
#include "desktop/TaskPane.h"
#include "desktop/ToolListPage.h"
#include "tests/support/TestVariable.h"

#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <gmock/gmock.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

namespace desktop {

/// A message box that came up, and was answered.
struct AnsweredBox {
    QString text; // all of it, one paragraph a line
    QString title;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
};

/// The desktop on a copy of the sample suite that goes with the test.
class DesktopTest : public testing::Test {
protected:
    DesktopTest();
    ~DesktopTest() override;

    /// Opens the window and waits until it stands.
    void Open(const std::string& language = {});
    void Close();

    /// Carries out and draws whatever waits.
    void Settle();
    /// Runs the event loop until that is so; false after ten seconds.
    bool WaitUntil(const std::function<bool()>& so);

    QTreeView& List() { return window->Programs().List(); }
    QTreeView& Tree() { return window->Nodes().Tree(); }
    /// A widget of the window, or of any other, by object name; fails the test when there is none.
    template <class T> T* Find(const char* name) {
        for (QWidget* top : QApplication::topLevelWidgets()) {
            if (top->objectName() == QLatin1String(name))
                if (T* found = qobject_cast<T*>(top)) return found;
            if (T* found = top->findChild<T*>(QLatin1String(name))) return found;
        }
        ADD_FAILURE() << "there is no widget \"" << name << '"';
        return nullptr;
    }

    /// Texts of a column of the list as it is shown.
    QStringList Column(int column);
    QStringList Names() { return Column(0); }
    QString StateOf(const QString& name);
    QModelIndex RowOf(const QString& name, int column = 0);
    void ClickRow(const QString& name);
    void OpenRow(const QString& name); // by a double click
    void ClickHeader(int column);
    QModelIndex NodeOf(const QString& caption);
    /// A shortcut, wherever the keyboard's focus is.
    void Press(const QKeySequence& keys);
    QAction* ActionOf(const char* key); // of a menu
    QString StatusText();
    /// Saves a picture of the widget when pictures are wanted.
    void TakePicture(QWidget& widget, const QString& name);

    std::filesystem::path File(const std::string& belowQuarra) const;
    QByteArray Read(const std::string& belowQuarra) const;

    QTemporaryDir folder;
    std::filesystem::path suite;
    QString layoutFile;
    std::unique_ptr<HostBridge> bridge;
    std::unique_ptr<MainWindow> window;
    std::vector<AnsweredBox> boxes;
    bool confirms = true;                       // the answer to questions
    std::function<void(QWidget&)> beforeAnswer; // what to do while a box is open

private:
    void AnswerBoxes();

    WithoutDisplay withoutDisplay_; // the test's own program has it already
    QTimer answering_;
};

} // namespace desktop
