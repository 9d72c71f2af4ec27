#include "platform/Printers.h"

#include "platform/CodePage.h"
#include "platform/linux/PrinterQuery.h"

#include <chrono>
#include <system_error>

namespace platform {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds LongestWait{2000}; // for a whole enumeration
constexpr std::chrono::milliseconds Patience{1500};    // with one step of it
constexpr std::chrono::seconds AnswerLife{5};

class CupsPrinters final : public Printers {
public:
    std::optional<std::vector<std::string>> Enumerate(int /*level*/) override {
        Ask();
        if (!answer_) return std::nullopt;
        std::vector<std::string> names;
        for (const std::string& name : answer_->names)
            names.push_back(codePage_->ToAnsi(name));
        return names;
    }

    /// Asked for once a printer of the list: an answer just given, or just refused, serves them all.
    std::string DefaultName() override {
        if (!WasAskedLately()) Ask();
        return answer_ ? codePage_->ToAnsi(answer_->defaultName) : "";
    }

private:
    bool WasAskedLately() const { return askedAt_ && Clock::now() - *askedAt_ <= AnswerLife; }

    void Ask() {
        answer_.reset();
        // One question at a time: a server that hangs costs one thread, however often it is asked, and one
        // wait.
        const bool isPending = query_ && !query_->WaitUntil(Clock::now());
        if (isPending && WasAskedLately()) return;
        const auto deadline = Clock::now() + LongestWait;
        if (query_ && query_->WaitUntil(deadline)) query_.reset();
        if (!query_) {
            try {
                query_ = std::make_unique<PrinterQuery>(Patience);
                if (query_->WaitUntil(deadline)) answer_ = query_->Answer();
            } catch (const std::system_error&) { // no thread: no answer
            }
            if (query_ && query_->WaitUntil(Clock::now())) query_.reset();
        }
        askedAt_ = Clock::now();
    }

    std::unique_ptr<CodePage> codePage_ = CodePage::Create();
    std::unique_ptr<PrinterQuery> query_; // one that has not been settled in time
    std::optional<PrinterAnswer> answer_;
    std::optional<Clock::time_point> askedAt_; // and waited for the answer
};

} // namespace

std::unique_ptr<Printers> Printers::Create() {
    return std::make_unique<CupsPrinters>();
}

} // namespace platform
