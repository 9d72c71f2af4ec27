#pragma once

#include <QString>

/// The desktop's own texts; what the system says comes from the host's model and the string resources.
namespace desktop::text {

namespace window {
inline constexpr const char* Title = "Arvon";
inline constexpr const char* ViewMenu = "&View";
inline constexpr const char* ViewMenuHint = "Arrange the window, and find things";
inline constexpr const char* ToolBar = "Programs toolbar";
inline constexpr const char* Find = "Find &Program or Command...";
inline constexpr const char* FindHint =
    "Find a program, a menu command or a task by typing a part of its name";
inline constexpr const char* Filter = "&Filter the List";
inline constexpr const char* FilterHint = "Show only the programs whose line holds what you type";
inline constexpr const char* TaskPane = "&Task Pane";
inline constexpr const char* TaskPaneHint = "Show or hide the tasks beside the list";
inline constexpr const char* ToolBarSwitch = "Tool&bar";
inline constexpr const char* ToolBarHint = "Show or hide the toolbar";
inline constexpr const char* TraceHint = "Show or hide every message that passes through the host";
inline constexpr const char* Language = "&Language";
inline constexpr const char* LanguageHint = "Choose the language of the programs' texts";
inline constexpr const char* Unload = "&Unload Current Vantor";
inline constexpr const char* UnloadHint = "Close the program that runs inside this window";
inline constexpr const char* Quit = "&Quit";
inline constexpr const char* QuitHint = "Close this window; programs that run outside of it go on";
inline constexpr const char* More = "More Programs...";
inline constexpr const char* Content = "Content";
} // namespace window

namespace navigator {
inline constexpr const char* Tabs = "Navigator pages";
inline constexpr const char* Tree = "Navigator";
} // namespace navigator

namespace list {
inline constexpr const char* Name = "Programs";
inline constexpr const char* Filter = "Filter the list of programs";
inline constexpr const char* FilterPlaceholder = "Filter the list";
inline constexpr const char* Count = "Number of programs";
inline constexpr const char* AllShown = "%1 programs";
inline constexpr const char* OneShown = "1 program";
inline constexpr const char* SomeShown = "%1 of %2";
inline constexpr const char* NoMatch = "No program matches \"%1\"";
inline constexpr const char* NoTools = "No programs are installed";
inline constexpr const char* Columns = "Columns of the list of programs";
inline constexpr const char* Status = "Status";
} // namespace list

namespace state {
inline constexpr const char* Running = "Running %1";
inline constexpr const char* Loaded = "Open %1";
inline constexpr const char* Problem = "Cannot start";
inline constexpr const char* RunningHint = "Running since %1 as process %2";
inline constexpr const char* LoadedHint = "Open in this window since %1";
inline constexpr const char* NoPath = "The catalogue names no program file.";
inline constexpr const char* NoFile = "The program file %1 is missing.";
inline constexpr const char* NotLoaded = "The program could not be loaded: %1";
} // namespace state

namespace tasks {
inline constexpr const char* Pane = "Task pane";
inline constexpr const char* ShowAll = "Show &all programs";
inline constexpr const char* ShowAllHint = "List hidden programs as well";
inline constexpr const char* RemoveTitle = "Remove Program";
inline constexpr const char* RemoveQuestion = "Remove \"%1\" from this computer?";
inline constexpr const char* RemoveConsequence = "Its files are deleted. This cannot be undone.";
inline constexpr const char* Remove = "Remove";
} // namespace tasks

namespace finder {
inline constexpr const char* Title = "Find Program or Command";
inline constexpr const char* Placeholder = "Type a part of a program's or command's name";
inline constexpr const char* Results = "Found programs and commands";
inline constexpr const char* Nothing = "Nothing is called \"%1\"";
inline constexpr const char* Program = "Program";
inline constexpr const char* Task = "Task";
inline constexpr const char* Button = "Button";
inline constexpr const char* Launch = "Launch";
} // namespace finder

namespace status {
inline constexpr const char* Busy = "Under way";
inline constexpr const char* Launching = "Starting %1...";
inline constexpr const char* Removing = "Removing %1...";
inline constexpr const char* ReadingCatalogue = "Reading the catalogue...";
inline constexpr const char* LookingForUpdates = "Looking for programs and updates...";
inline constexpr const char* Sorting = "Sorting...";
inline constexpr const char* Started = "%1 started";
inline constexpr const char* Ended = "%1 ended";
inline constexpr const char* EndedBadly = "%1 ended with exit code %2";
inline constexpr const char* Problems = "Problems";
} // namespace status

namespace banner {
inline constexpr const char* Name = "Banner";
inline constexpr const char* Dismiss = "Close this banner";
} // namespace banner

inline QString Of(const char* own) {
    return QString::fromUtf8(own);
}

} // namespace desktop::text
