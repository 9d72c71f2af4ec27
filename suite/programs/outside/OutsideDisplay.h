#pragma once

#include "suite/programs/outside/OutsideWork.h"

#include <csignal>
#include <memory>

namespace suite {

/// The user's display, for an outside program to work in a window.
class OutsideDisplay {
public:
    virtual ~OutsideDisplay() = default;
    /// Null where the environment names no display, and in a build without windows. Where the display that
    /// it names cannot be used, the program says so on standard error and starts again without one: to be
    /// called before anything else was done.
    static std::unique_ptr<OutsideDisplay> Open(char** commandLine);

    /// Shows the work until its time has passed or the user closes the window; false when one of the blocked
    /// signals asked it to end before.
    virtual bool Show(const OutsideWork& work, const sigset_t& endSignals) = 0;
};

} // namespace suite
