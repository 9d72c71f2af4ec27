#pragma once

#include "desktop/texts/Translation.h"

/// The message trace's own texts.
namespace desktop::text::trace {

inline constexpr Own Title{800, "Message Trace"};
inline constexpr Own Messages{801, "Messages"};
inline constexpr Own Details{802, "Details of the message"};
inline constexpr Own Filter{803, "Search messages"};
inline constexpr Own FilterHint{804,
                                "Shows the messages that hold this text in names, parameters or replies"};
inline constexpr Own Listener{805, "Sender or receiver"};
inline constexpr Own AllListeners{806, "All listeners"};
inline constexpr Own OnlyTroubles{807, "Only &Failures"};
inline constexpr Own Pause{808, "Pau&se"};
inline constexpr Own PauseHint{809, "Stops recording; what happens meanwhile is not in the trace"};
inline constexpr Own Clear{810, "Cl&ear"};
inline constexpr Own ClearHint{811, "Takes all messages out of the trace"};
inline constexpr Own Copy{812, "Cop&y as Script"};
inline constexpr Own CopyHint{813, "Copies what the user did, in the selected or all messages shown, as a "
                                   "script for arvon-console"};
inline constexpr Own Copied{814, "%1 commands copied for arvon-console"};
inline constexpr Own Bound{815, "%1 messages; the newest %2 are kept"};
inline constexpr Own Dropped{816, "%1 messages; older ones were dropped (the newest %2 are kept)"};
inline constexpr Own Paused{817, "paused"};

inline constexpr Own Columns[] = {{850, "Message"}, {851, "Direction"}, {852, "From"},       {853, "To"},
                                  {854, "Time"},    {855, "State"},     {856, "Parameters"}, {857, "Reply"}};
inline constexpr Own In{818, "in"};
inline constexpr Own Out{819, "out"};
inline constexpr Own Past{820, "past"};
inline constexpr Own Malformed{821, "Cannot be read"};
inline constexpr Own NobodyListens{822, "Nobody listens"};
inline constexpr Own Failed{823, "Failed: %1"};
inline constexpr Own ErrorReport{824, "Error report"};
inline constexpr Own Unfinished{825, "Recording stopped inside"};
inline constexpr Own Inside{826, "Failures inside: %1"};
inline constexpr Own Omitted{827, "%1 more inside were not kept"};
inline constexpr Own Milliseconds{828, "%1 ms"};

} // namespace desktop::text::trace
