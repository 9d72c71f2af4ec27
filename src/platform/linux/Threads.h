#pragma once

#include <functional>
#include <thread>

namespace platform {

/// Starts a thread that takes no signals: the host's are for the host's threads. `work` lets nothing escape.
/// Throws std::system_error when there can be no more threads.
std::thread StartThread(std::function<void()> work);

} // namespace platform
