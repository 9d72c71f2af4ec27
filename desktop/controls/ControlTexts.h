#pragma once

#include "desktop/QtText.h"
#include "desktop/controls/ControlObject.h"

/// The control library's own texts, and the string resources that it shows.
namespace desktop::text {

namespace mark { // what an icon says
inline constexpr const char* Error = "Error";
inline constexpr const char* Warning = "Warning";
} // namespace mark

namespace properties {
inline constexpr const char* Panel = "Properties of the program";
inline constexpr const char* Nothing = "Select a program in the tree to see its properties.";
inline constexpr const char* Unreadable = "The properties of this program cannot be read: %1";
inline constexpr const char* Problem = "This program cannot be used: %1";
inline constexpr const char* Launch = "&Launch";
inline constexpr const char* LaunchHint = "Starts this program";
inline constexpr const char* LaunchDenied = "Your profile does not permit starting this program";
inline constexpr const char* Update = "Look for &Updates";
inline constexpr const char* UpdateHint = "Asks the updates component for newer versions";
inline constexpr const char* UpdateDenied = "Your profile does not permit updating this program";
inline constexpr const char* Close = "&Close";
inline constexpr const char* CloseHint = "Closes these properties";
inline constexpr const char* Yes = "Yes";
inline constexpr const char* No = "No";
inline constexpr const char* Vantor = "Vantor: runs inside the host, one at a time";
} // namespace properties

namespace options {
inline constexpr const char* Panel = "Options of the programs";
inline constexpr const char* Search = "Search all options";
inline constexpr const char* SearchHint = "Shows the options that hold these words, and the programs that "
                                          "have such options";
inline constexpr const char* Programs = "Programs";
inline constexpr const char* Page = "Options of %1";
inline constexpr const char* PageChanges = "%1, %2 changed";
inline constexpr const char* PageMatches = "%1, %2 found";
inline constexpr const char* ResetPage = "&Reset Page";
inline constexpr const char* ResetPageHint = "Takes back every change on this page";
inline constexpr const char* ResetOne = "Reset %1";
inline constexpr const char* ResetOneHint = "Takes the change back: %1";
inline constexpr const char* Changed = "Changed; it was \u201c%1\u201d";
inline constexpr const char* Ok = "OK";
inline constexpr const char* OkHint = "Saves the options and tells the programs";
inline constexpr const char* Cancel = "Cancel";
inline constexpr const char* CancelHint = "Closes the options and changes nothing";
inline constexpr const char* NothingYet = "There are no options to show.";
inline constexpr const char* NothingFound = "No option holds \u201c%1\u201d.";
inline constexpr const char* Unreadable = "The options cannot be read, and nothing can be changed: %1";
inline constexpr const char* NoPlace = "This option has no value in the options file, and cannot be changed.";
inline constexpr const char* NotInstalled = "%1 (not installed)";
inline constexpr const char* Empty = "(none)";
inline constexpr const char* Unprintable = "%1 holds a character that cannot be saved (code %2).";
inline constexpr const char* NoLanguage =
    "%1: expected the number of a language, such as 1033, found \u201c%2\u201d.";
inline constexpr const char* NoNumber = "This was a number (%1), and is none now.";
inline constexpr const char* Lost = "No longer there, and not changed: %1";
inline constexpr const char* OneChange = "1 option changed";
inline constexpr const char* Changes = "%1 options changed";
} // namespace options

namespace updates {
inline constexpr const char* Panel = "Program updates";
inline constexpr const char* Updates = "Updates";
inline constexpr const char* UpdatesCount = "&Updates (%1)";
inline constexpr const char* New = "New programs";
inline constexpr const char* NewCount = "&New Programs (%1)";
inline constexpr const char* Name = "Name";
inline constexpr const char* Installed = "Installed";
inline constexpr const char* Offered = "Offered";
inline constexpr const char* LastUpdated = "Last updated";
inline constexpr const char* Description = "Description";
inline constexpr const char* Again = "Look &Again";
inline constexpr const char* AgainHint = "Asks the updates component anew";
inline constexpr const char* Close = "&Close";
inline constexpr const char* NoUpdates = "All installed programs are up to date.";
inline constexpr const char* NoNew = "There are no new programs.";
inline constexpr const char* NewOffered = "Programs that can be installed";
inline constexpr const char* UpdatesOffered = "Newer versions of installed programs";
inline constexpr const char* NoAnswer =
    "The updates component has not answered. It may not be installed; look again to load it.";
inline constexpr const char* Unreadable = "The answer of the updates component cannot be read: %1";
} // namespace updates

/// Numbers of string resources.
namespace resource {
inline constexpr int Name = 1;
inline constexpr int Version = 2;
inline constexpr int LastUpdated = 3;
inline constexpr int Launch = 10;
inline constexpr int DateFormat = 13;
inline constexpr int Updates = 34;
inline constexpr int Classification = 1033;
} // namespace resource

/// The string resource, or the own text where there is none.
inline QString Of(const ControlServices& services, int id, const char* own) {
    const QString found = services.text ? services.text(id) : QString();
    return found.isEmpty() ? ToQt(own) : found;
}

} // namespace desktop::text
