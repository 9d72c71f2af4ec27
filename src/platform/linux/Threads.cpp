#include "platform/linux/Threads.h"

#include <csignal>
#include <pthread.h>
#include <utility>

namespace platform {

namespace {

/// Blocks all signals of the thread that it lives in; a thread that is started meanwhile inherits that.
class SignalsBlocked {
public:
    SignalsBlocked() {
        sigset_t all;
        ::sigfillset(&all);
        ::pthread_sigmask(SIG_SETMASK, &all, &before_);
    }
    ~SignalsBlocked() { ::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;

private:
    sigset_t before_;
};

} // namespace

std::thread StartThread(std::function<void()> work) {
    const SignalsBlocked blocked;
    return std::thread(std::move(work));
}

} // namespace platform
