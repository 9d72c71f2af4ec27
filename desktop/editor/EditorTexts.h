#pragma once

#include "desktop/texts/Translation.h"

/// The record editor's own texts.
namespace desktop::text::editor {
inline constexpr Own Title{900, "Edit Program"};
inline constexpr Own Name{901, "&Name"};
inline constexpr Own NameHint{902, "The name under which the program is listed, different from every other"};
inline constexpr Own CommandLine{903, "&Command line"};
inline constexpr Own CommandLineHint{904, "What is started: a program, perhaps with arguments. Empty: the "
                                          "program of the catalogue"};
inline constexpr Own Shown{905, "&Shown in the list of programs"};
inline constexpr Own NameMissing{906, "The program needs a name."};
inline constexpr Own NameTaken{907, "Another program is named \u201c%1\u201d already."};
inline constexpr Own Unprintable{908, "%1 holds a character that cannot be saved (code %2)."};
inline constexpr Own Refused{909, "The change was refused: %1"};
inline constexpr Own Ok{910, "OK"};
inline constexpr Own Cancel{911, "Cancel"};
} // namespace desktop::text::editor
