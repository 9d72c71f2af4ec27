#pragma once

#include "desktop/HostBridge.h"
#include "desktop/Pictures.h"
#include "host/Model.h"

#include <QKeySequence>
#include <QObject>
#include <QString>

#include <vector>

class QAction;
class QMenu;
class QMenuBar;
class QToolBar;

namespace desktop {

/// The host's menus, context menu and toolbar as Qt's.
class HostMenus final : public QObject {
    Q_OBJECT

public:
    HostMenus(HostBridge& bridge, const Pictures& pictures, QMenuBar& menuBar, QToolBar& toolBar);
    ~HostMenus() override;

    /// The host's menus stand before this action of the menu bar.
    void SetOwnMenu(QAction* first) { ownMenu_ = first; }
    /// What "More Programs..." does where a menu or the toolbar would hold more than a person can use.
    void SetMore(std::function<void()> more) { more_ = std::move(more); }

    void DrawMenus();
    void DrawToolbar();
    /// Pictures look different: the toolbar is made anew.
    void RefreshPictures() {
        drawnToolbar_.clear();
        DrawToolbar();
    }
    /// Shows the context menu that the host holds at this moment; nothing when it is empty.
    void ShowContextMenu(const QPoint& globalPosition);
    /// Clicks that item.
    void Click(const arvon::host::model::MenuItem& item);

    static QKeySequence ShortcutOf(const QString& itemKey);

signals:
    /// The user sorted by a menu: key of the column.
    void Sorted(const QString& columnKey);

private:
    using Items = std::vector<arvon::host::model::MenuItem>;

    void Fill(QMenu& menu, const Items& items);
    void AddItem(QMenu& menu, const arvon::host::model::MenuItem& item);

    HostBridge& bridge_;
    const Pictures& pictures_;
    QMenuBar& menuBar_;
    QToolBar& toolBar_;
    QAction* ownMenu_ = nullptr;
    std::function<void()> more_;
    std::vector<QMenu*> menus_;
    QString drawnMenus_, drawnToolbar_; // what was drawn last, to draw only what is new
};

/// A caption of the system for a menu: its first "&" marks the shortcut, every other one is part of the name.
QString MenuCaption(const std::string& caption);
/// The same without the mark, for reading.
QString PlainCaption(const std::string& caption);

} // namespace desktop
