#include "platform/linux/PrinterQuery.h"

#include "platform/linux/Threads.h"

#include <atomic>
#include <condition_variable>
#include <csignal>
#include <cups/cups.h>
#include <dlfcn.h>
#include <mutex>
#include <thread>

namespace platform {

/// Owned by asker and thread together: neither can outlive it.
struct PrinterQuery::Shared {
    std::chrono::milliseconds patience{};
    int cancelled = 0; // read by the library as a plain number
    std::mutex mutex;  // over all below
    std::condition_variable settled;
    bool isSettled = false;
    std::optional<PrinterAnswer> answer;
    std::thread thread; // the asker's alone
};

namespace {

using Clock = std::chrono::steady_clock;

/// The library's set-up makes the whole process ignore SIGPIPE; that is the host's to decide. The asking
/// thread has every signal blocked, so it needs none of it.
void InitialiseOnce() {
    static std::once_flag once;
    std::call_once(once, [] {
        struct sigaction before {};
        ::sigaction(SIGPIPE, nullptr, &before);
        ::httpInitialize();
        ::sigaction(SIGPIPE, &before, nullptr);
    });
}

const char* NoPassword(const char*, http_t*, const char*, const char*, void*) {
    return nullptr;
}
int GiveUp(http_t*, void*) {
    return 0;
}

/// The names in the server's order. Asking for them alone keeps the answer small.
std::optional<PrinterAnswer> AskNames(http_t* http) {
    constexpr const char* Name = "printer-name";
    ipp_t* question = ::ippNewRequest(IPP_OP_CUPS_GET_PRINTERS);
    ::ippAddString(question, IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, ::cupsUser());
    ::ippAddString(question, IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes", nullptr, Name);
    ipp_t* reply = ::cupsDoRequest(http, question, "/"); // takes the question over
    if (reply == nullptr) return std::nullopt;
    std::optional<PrinterAnswer> answer;
    const ipp_status_t status = ::ippGetStatusCode(reply);
    if (status <= IPP_STATUS_OK_CONFLICTING || status == IPP_STATUS_ERROR_NOT_FOUND) answer.emplace();
    for (ipp_attribute_t* name = ::ippFindAttribute(reply, Name, IPP_TAG_NAME); answer && name != nullptr;
         name = ::ippFindNextAttribute(reply, Name, IPP_TAG_NAME))
        if (const char* text = ::ippGetString(name, 0, nullptr)) answer->names.emplace_back(text);
    ::ippDelete(reply);
    return answer;
}

std::optional<PrinterAnswer> Ask(std::chrono::milliseconds patience, int& cancelled) {
    ::cupsSetPasswordCB2(NoPassword, nullptr); // the library's own would ask on the terminal
    const auto start = Clock::now();
    http_t* http = ::httpConnect2(::cupsServer(), ::ippPort(), nullptr, AF_UNSPEC, ::cupsEncryption(), 1,
                                  static_cast<int>(patience.count()), &cancelled);
    if (http == nullptr) { // refused, or nobody there to refuse
        const bool isAbsent = Clock::now() - start < patience;
        return isAbsent ? std::optional(PrinterAnswer{}) : std::nullopt;
    }
    ::httpSetTimeout(http, std::chrono::duration<double>(patience).count(), GiveUp, nullptr);
    std::optional<PrinterAnswer> answer = AskNames(http);
    // The user's own choice first, then the server's.
    if (cups_dest_t* chosen = answer ? ::cupsGetNamedDest(http, nullptr, nullptr) : nullptr) {
        answer->defaultName = chosen->name;
        ::cupsFreeDests(1, chosen);
    }
    ::httpClose(http);
    return answer;
}

/// Keeps this library in memory to the end of the process: a thread that is given up still runs in it.
void StayLoaded() {
    static const char here = 0;
    Dl_info info{};
    if (::dladdr(&here, &info) != 0 && info.dli_fname != nullptr)
        ::dlopen(info.dli_fname, RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
}

} // namespace

PrinterQuery::PrinterQuery(std::chrono::milliseconds patience) : shared_(std::make_shared<Shared>()) {
    InitialiseOnce();
    shared_->patience = patience;
    shared_->thread = StartThread([shared = shared_] {
        std::optional<PrinterAnswer> answer;
        try {
            answer = Ask(shared->patience, shared->cancelled);
        } catch (...) { // no memory: no answer
        }
        const std::lock_guard lock(shared->mutex);
        shared->answer = std::move(answer);
        shared->isSettled = true;
        shared->settled.notify_all();
    });
}

PrinterQuery::~PrinterQuery() {
    if (WaitUntil(Clock::now())) {
        shared_->thread.join(); // past its last step: at once
        return;
    }
    std::atomic_ref(shared_->cancelled).store(1);
    StayLoaded();
    shared_->thread.detach();
}

bool PrinterQuery::WaitUntil(Clock::time_point deadline) {
    std::unique_lock lock(shared_->mutex);
    return shared_->settled.wait_until(lock, deadline, [this] { return shared_->isSettled; });
}

std::optional<PrinterAnswer> PrinterQuery::Answer() const {
    const std::lock_guard lock(shared_->mutex);
    return shared_->answer;
}

} // namespace platform
