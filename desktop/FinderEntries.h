#pragma once

#include "desktop/Finder.h"

#include <vector>

class QMenu;

namespace desktop {

class HostBridge;
class HostMenus;
class Pictures;
class TaskPane;
class ToolListPage;
class ToolStates;

/// Where the finder looks. All must live until an entry is chosen.
struct FinderSources {
    HostBridge& bridge;
    ToolStates& states;
    Pictures& pictures;
    ToolListPage& programs;
    TaskPane& tasks;
    HostMenus& menus;
    const QMenu& ownMenu;
};

/// Programs, menu items, tasks of the current program and the window's own commands, in that order.
std::vector<FinderEntry> FinderEntriesOf(const FinderSources& sources);

} // namespace desktop
