#pragma once

#include "desktop/texts/Translation.h"

/// The desktop's own texts; what the system says comes from the host's model and the string resources.
/// Every number is used once, in all headers of texts together.
namespace desktop::text {

namespace window {
inline constexpr Own Title{140, "Arvon"};
inline constexpr Own ViewMenu{141, "&View"};
inline constexpr Own ViewMenuHint{142, "Arrange the window, and find things"};
inline constexpr Own ToolBar{143, "Programs toolbar"};
inline constexpr Own Find{144, "Find &Program or Command..."};
inline constexpr Own FindHint{145, "Find a program, a menu command or a task by typing a part of its name"};
inline constexpr Own Filter{146, "&Filter the List"};
inline constexpr Own FilterHint{147, "Show only the programs whose line holds what you type"};
inline constexpr Own TaskPane{148, "&Task Pane"};
inline constexpr Own TaskPaneHint{149, "Show or hide the tasks beside the list"};
inline constexpr Own ToolBarSwitch{150, "Tool&bar"};
inline constexpr Own ToolBarHint{151, "Show or hide the toolbar"};
inline constexpr Own TraceHint{152, "Show or hide every message that passes through the host"};
inline constexpr Own Language{153, "&Language"};
inline constexpr Own LanguageHint{154, "Choose the language of the programs' texts"};
inline constexpr Own Unload{155, "&Unload Current Vantor"};
inline constexpr Own UnloadHint{156, "Close the program that runs inside this window"};
inline constexpr Own Quit{157, "&Quit"};
inline constexpr Own QuitHint{158, "Close this window; programs that run outside of it go on"};
inline constexpr Own More{159, "More Programs..."};
} // namespace window

namespace navigator {
inline constexpr Own Tabs{180, "Navigator pages"};
inline constexpr Own Tree{181, "Navigator"};
} // namespace navigator

namespace list {
inline constexpr Own Name{220, "Programs"};
inline constexpr Own Filter{221, "Filter the list of programs"};
inline constexpr Own FilterPlaceholder{222, "Filter the list"};
inline constexpr Own Count{223, "Number of programs"};
inline constexpr Own AllShown{224, "%1 programs"};
inline constexpr Own OneShown{225, "1 program"};
inline constexpr Own SomeShown{226, "%1 of %2"};
inline constexpr Own NoMatch{227, "No program matches \"%1\""};
inline constexpr Own NoTools{228, "No programs are installed"};
inline constexpr Own Columns{229, "Columns of the list of programs"};
inline constexpr Own Status{230, "Status"};
} // namespace list

namespace state {
inline constexpr Own Running{260, "Running %1"};
inline constexpr Own Loaded{261, "Open %1"};
inline constexpr Own Problem{262, "Cannot start"};
inline constexpr Own RunningHint{263, "Running since %1 as process %2"};
inline constexpr Own LoadedHint{264, "Open in this window since %1"};
inline constexpr Own NoPath{265, "The catalogue names no program file."};
inline constexpr Own NoFile{266, "The program file %1 is missing."};
inline constexpr Own NotLoaded{267, "The program could not be loaded: %1"};
} // namespace state

namespace tasks {
inline constexpr Own Pane{300, "Task pane"};
inline constexpr Own ShowAll{301, "Show &all programs"};
inline constexpr Own ShowAllHint{302, "List hidden programs as well"};
inline constexpr Own RemoveTitle{303, "Remove Program"};
inline constexpr Own RemoveQuestion{304, "Remove \"%1\" from this computer?"};
inline constexpr Own RemoveConsequence{305, "Its files are deleted. This cannot be undone."};
inline constexpr Own Remove{306, "Remove"};
inline constexpr Own Cancel{307, "Cancel"};
} // namespace tasks

namespace finder {
inline constexpr Own Title{340, "Find Program or Command"};
inline constexpr Own Placeholder{341, "Type a part of a program's or command's name"};
inline constexpr Own Results{342, "Found programs and commands"};
inline constexpr Own Program{344, "Program"};
inline constexpr Own Task{345, "Task"};
} // namespace finder

namespace status {
inline constexpr Own Busy{380, "Under way"};
inline constexpr Own Launching{381, "Starting %1..."};
inline constexpr Own Removing{382, "Removing %1..."};
inline constexpr Own ReadingCatalogue{383, "Reading the catalogue..."};
inline constexpr Own LookingForUpdates{384, "Looking for programs and updates..."};
inline constexpr Own Sorting{385, "Sorting..."};
inline constexpr Own Started{386, "%1 started"};
inline constexpr Own Ended{387, "%1 ended"};
inline constexpr Own EndedBadly{388, "%1 ended with exit code %2"};
inline constexpr Own Report{389, "Failure: %1"};
inline constexpr Own Reports{390, "Failure: %1 (%2 in all)"};
inline constexpr Own ReportSource{391, "Source: %1"};
inline constexpr Own ReportNumber{392, "Number: %1"};
inline constexpr Own ReportProcedure{393, "Procedure: %1"};
inline constexpr Own MoreReports{394, "and %1 more"};
} // namespace status

namespace banner {
inline constexpr Own Name{420, "Banner"};
inline constexpr Own Dismiss{421, "Close this banner"};
} // namespace banner

namespace leaving { // the desktop, with changed options
inline constexpr Own Title{430, "Exit"};
inline constexpr Own Question{431, "Exit without saving the options?"};
inline constexpr Own Consequence{432, "What was changed in the options window is lost."};
inline constexpr Own Leave{433, "Exit Without Saving"};
} // namespace leaving

} // namespace desktop::text
