#pragma once

#include "desktop/controls/ControlObject.h"

/// The control library's own texts, and the string resources that it shows.
namespace desktop::text {

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
    return found.isEmpty() ? QString::fromUtf8(own) : found;
}

} // namespace desktop::text
