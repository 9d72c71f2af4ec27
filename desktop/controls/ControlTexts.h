#pragma once

#include "desktop/QtText.h"
#include "desktop/controls/ControlObject.h"
#include "desktop/texts/Translation.h"

/// The control library's own texts, and the string resources that it shows.
namespace desktop::text {

namespace mark { // what an icon says
inline constexpr Own Error{540, "Error"};
inline constexpr Own Warning{541, "Warning"};
} // namespace mark

namespace properties {
inline constexpr Own Panel{580, "Properties of the program"};
inline constexpr Own Nothing{581, "Select a program in the tree to see its properties."};
inline constexpr Own Unreadable{582, "The properties of this program cannot be read: %1"};
inline constexpr Own Problem{583, "This program cannot be used: %1"};
inline constexpr Own Launch{584, "&Launch"};
inline constexpr Own LaunchHint{585, "Starts this program"};
inline constexpr Own LaunchDenied{586, "Your profile does not permit starting this program"};
inline constexpr Own Update{587, "Look for &Updates"};
inline constexpr Own UpdateHint{588, "Asks the updates component for newer versions"};
inline constexpr Own UpdateDenied{589, "Your profile does not permit updating this program"};
inline constexpr Own Close{590, "&Close"};
inline constexpr Own CloseHint{591, "Closes these properties"};
inline constexpr Own Yes{592, "Yes"};
inline constexpr Own No{593, "No"};
inline constexpr Own Vantor{594, "Vantor: runs inside the host, one at a time"};
inline constexpr Own Version{595, "Version"};
inline constexpr Own LastUpdated{596, "Last updated"};
inline constexpr Own Classification{597, "Classification"};
inline constexpr Own Kind{598, "Kind"};
inline constexpr Own ProgramType{599, "Program type"};
inline constexpr Own Brand{600, "Brand"};
inline constexpr Own ProductKey{601, "Product key"};
inline constexpr Own Identifier{602, "Identifier"};
inline constexpr Own Program{603, "Program"};
inline constexpr Own CommandLine{604, "Command line"};
inline constexpr Own ShownInList{605, "Shown in the list"};
} // namespace properties

namespace options {
inline constexpr Own Panel{620, "Options of the programs"};
inline constexpr Own Search{621, "Search all options"};
inline constexpr Own SearchHint{622, "Shows the options that hold these words, and the programs that "
                                     "have such options"};
inline constexpr Own Programs{623, "Programs"};
inline constexpr Own Page{624, "Options of %1"};
inline constexpr Own PageChanges{625, "%1, %2 changed"};
inline constexpr Own PageMatches{626, "%1, %2 found"};
inline constexpr Own ResetPage{627, "&Reset Page"};
inline constexpr Own ResetPageHint{628, "Takes back every change on this page"};
inline constexpr Own ResetOne{629, "Reset %1"};
inline constexpr Own ResetOneHint{630, "Takes the change back: %1"};
inline constexpr Own Changed{631, "Changed; it was \u201c%1\u201d"};
inline constexpr Own Ok{632, "OK"};
inline constexpr Own OkHint{633, "Saves the options and tells the programs"};
inline constexpr Own Cancel{634, "Cancel"};
inline constexpr Own CancelHint{635, "Closes the options and changes nothing"};
inline constexpr Own NothingYet{636, "There are no options to show."};
inline constexpr Own NothingFound{637, "No option holds \u201c%1\u201d."};
inline constexpr Own Unreadable{638, "The options cannot be read, and nothing can be changed: %1"};
inline constexpr Own NoPlace{639, "This option has no value in the options file, and cannot be changed."};
inline constexpr Own NotInstalled{640, "%1 (not installed)"};
inline constexpr Own Empty{641, "(none)"};
inline constexpr Own Unprintable{642, "%1 holds a character that cannot be saved (code %2)."};
inline constexpr Own NoLanguage{643,
                                "%1: expected the number of a language, such as 1033, found \u201c%2\u201d."};
inline constexpr Own NoNumber{644, "This was a number (%1), and is none now."};
inline constexpr Own Lost{645, "No longer there, and not changed: %1"};
inline constexpr Own OneChange{646, "1 option changed"};
inline constexpr Own Changes{647, "%1 options changed"};
inline constexpr Own NotSaved{648,
                              "The options could not be saved. Your changes are kept here; OK tries again."};
} // namespace options

namespace updates {
inline constexpr Own Panel{660, "Program updates"};
inline constexpr Own Updates{661, "Updates"};
inline constexpr Own UpdatesCount{662, "&Updates (%1)"};
inline constexpr Own New{663, "New programs"};
inline constexpr Own NewCount{664, "&New Programs (%1)"};
inline constexpr Own Name{665, "Name"};
inline constexpr Own Installed{666, "Installed"};
inline constexpr Own Offered{667, "Offered"};
inline constexpr Own LastUpdated{668, "Last updated"};
inline constexpr Own Description{669, "Description"};
inline constexpr Own Again{670, "Look &Again"};
inline constexpr Own AgainHint{671, "Asks the updates component anew"};
inline constexpr Own Close{672, "&Close"};
inline constexpr Own NoUpdates{673, "All installed programs are up to date."};
inline constexpr Own NoNew{674, "There are no new programs."};
inline constexpr Own NewOffered{675, "Programs that can be installed"};
inline constexpr Own UpdatesOffered{676, "Newer versions of installed programs"};
inline constexpr Own NoAnswer{
    677, "The updates component has not answered. It may not be installed; look again to load it."};
inline constexpr Own Unreadable{678, "The answer of the updates component cannot be read: %1"};
inline constexpr Own Asking{679, "The updates component is being asked."};
} // namespace updates

namespace value { // of options
inline constexpr Own SortName{700, "Name"};
inline constexpr Own SortVersion{701, "Version"};
inline constexpr Own SortLastUpdated{702, "Last updated"};
inline constexpr Own SortClassification{703, "Classification"};
inline constexpr Own Ascending{704, "Ascending"};
inline constexpr Own Descending{705, "Descending"};
inline constexpr Own English{706, "English"};
inline constexpr Own Metric{707, "Metric"};
} // namespace value

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
inline QString Of(const ControlServices& services, int id, const Own& own) {
    const QString found = services.text ? services.text(id) : QString();
    return found.isEmpty() ? Of(own) : found;
}
/// How dates are written, as the string resource has it.
inline QString DateFormat(const ControlServices& services) {
    const QString found = services.text ? services.text(resource::DateFormat) : QString();
    return found.isEmpty() ? QStringLiteral("yyyy-mm-dd") : found;
}

} // namespace desktop::text
