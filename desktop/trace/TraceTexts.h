#pragma once

/// The message trace's own texts.
namespace desktop::text::trace {

inline constexpr const char* Title = "Message Trace";
inline constexpr const char* Messages = "Messages";
inline constexpr const char* Details = "Details of the message";
inline constexpr const char* Filter = "Search messages";
inline constexpr const char* FilterHint =
    "Shows the messages that hold this text in names, parameters or replies";
inline constexpr const char* Listener = "Sender or receiver";
inline constexpr const char* AllListeners = "All listeners";
inline constexpr const char* OnlyTroubles = "Only &Failures";
inline constexpr const char* Pause = "&Pause";
inline constexpr const char* PauseHint = "Stops recording; what happens meanwhile is not in the trace";
inline constexpr const char* Clear = "C&lear";
inline constexpr const char* ClearHint = "Takes all messages out of the trace";
inline constexpr const char* Copy = "&Copy as Script";
inline constexpr const char* CopyHint =
    "Copies what the user did, in the selected or all messages shown, as a "
    "script for arvon-console";
inline constexpr const char* Copied = "%1 commands copied for arvon-console";
inline constexpr const char* Bound = "%1 messages; the newest %2 are kept";
inline constexpr const char* Dropped = "%1 messages; older ones were dropped (the newest %2 are kept)";
inline constexpr const char* Paused = "paused";

inline constexpr const char* Columns[] = {"Message", "Direction", "From",       "To",
                                          "Time",    "State",     "Parameters", "Reply"};
inline constexpr const char* In = "in";
inline constexpr const char* Out = "out";
inline constexpr const char* Past = "past";
inline constexpr const char* Malformed = "Cannot be read";
inline constexpr const char* NobodyListens = "Nobody listens";
inline constexpr const char* Failed = "Failed: %1";
inline constexpr const char* ErrorReport = "Error report";
inline constexpr const char* Unfinished = "Recording stopped inside";
inline constexpr const char* Inside = "Failures inside: %1";
inline constexpr const char* Omitted = "%1 more inside were not kept";
inline constexpr const char* Milliseconds = "%1 ms";

} // namespace desktop::text::trace
