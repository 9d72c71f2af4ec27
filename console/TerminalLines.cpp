#include "console/LineSource.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <stdexcept>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <histedit.h>
#include <poll.h>
#include <unistd.h>

namespace arvon::console {

namespace {

constexpr int HistoryLength = 500;
constexpr int FirstOwn = 3; // descriptor, behind the standard streams

char prompt[] = "arvon> ";

/// Keeps back, while it lives, the signals after which the terminal has to be looked after: they come where
/// the next key is waited for, and nowhere else.
class SignalsHeld {
public:
    explicit SignalsHeld(sigset_t& before) : before_(before) {
        sigset_t held;
        sigemptyset(&held);
        sigaddset(&held, SIGWINCH);
        sigaddset(&held, SIGCONT);
        pthread_sigmask(SIG_BLOCK, &held, &before_);
    }
    ~SignalsHeld() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    SignalsHeld(const SignalsHeld&) = delete;
    SignalsHeld& operator=(const SignalsHeld&) = delete;

private:
    sigset_t& before_;
};

class TerminalLines final : public LineSource {
public:
    TerminalLines(int descriptor, std::FILE* screen, SideWatch watch)
        : watch_(std::move(watch)), screen_(screen), descriptor_(descriptor),
          input_(fdopen(fcntl(descriptor, F_DUPFD_CLOEXEC, FirstOwn), "r")) {
        if (!input_) throw std::system_error(errno, std::generic_category(), "the terminal");
        std::setlocale(LC_CTYPE, "");
        if (MB_CUR_MAX == 1) std::setlocale(LC_CTYPE, "C.UTF-8");
        editor_.reset(el_init("arvon-console", input_.get(), screen_, stderr));
        if (!editor_) throw std::runtime_error("this terminal allows no line editing");
        history_.reset(history_init());
        HistEvent event;
        history(history_.get(), &event, H_SETSIZE, HistoryLength);
        history(history_.get(), &event, H_SETUNIQUE, 1);
        el_set(editor_.get(), EL_CLIENTDATA, this);
        el_set(
            editor_.get(), EL_PROMPT, +[](EditLine*) { return prompt; });
        el_set(editor_.get(), EL_EDITOR, "emacs");
        el_set(editor_.get(), EL_SIGNAL, 1); // the terminal is put back before a signal ends the process
        el_set(editor_.get(), EL_HIST, history, history_.get());
        el_set(editor_.get(), EL_GETCFN, &CallReadCharacter);
        el_source(editor_.get(), nullptr);
    }

    std::optional<std::string> Next() override {
        if (watch_.act) watch_.act();
        int length = 0;
        const char* read = nullptr;
        do {
            interrupted_ = false;
            const SignalsHeld held(whileWaiting_);
            read = el_gets(editor_.get(), &length);
            if (interrupted_) ClearRow();
        } while (interrupted_);
        if (!read || length <= 0) {
            std::fputc('\n', screen_);
            return std::nullopt;
        }
        std::string line(read, static_cast<std::size_t>(length));
        while (!line.empty() && (line.back() == '\n' || line.back() == '\r'))
            line.pop_back();
        HistEvent event;
        if (!line.empty()) history(history_.get(), &event, H_ENTER, line.c_str());
        return line;
    }

private:
    struct EndEditor {
        void operator()(EditLine* editor) const { el_end(editor); }
    };
    struct EndHistory {
        void operator()(History* list) const { history_end(list); }
    };

    static int CallReadCharacter(EditLine* editor, wchar_t* character) {
        TerminalLines* self = nullptr;
        el_get(editor, EL_CLIENTDATA, &self);
        return self->ReadCharacter(character);
    }

    int ReadCharacter(wchar_t* character) {
        if (!kept_.empty()) TakeUpLine();
        std::mbstate_t state{};
        for (;;) {
            std::array<pollfd, 2> waits{{{descriptor_, POLLIN, 0}, {watch_.descriptor, POLLIN, 0}}};
            if (ppoll(waits.data(), waits.size(), nullptr, &whileWaiting_) < 0)
                return errno == EINTR ? Interrupt() : -1;
            if (waits[1].revents != 0) ServeWatch();
            if (waits[0].revents == 0) continue;
            char byte;
            const ssize_t count = read(descriptor_, &byte, 1);
            if (count <= 0) return static_cast<int>(count);
            const std::size_t taken = std::mbrtowc(character, &byte, 1, &state);
            if (taken == static_cast<std::size_t>(-2)) continue; // within a character of several bytes
            if (taken == static_cast<std::size_t>(-1)) {
                state = {};
                *character = L'?';
            }
            return 1;
        }
    }

    /// The editor hears of each signal once a line: the line is begun anew, with what it holds so far. The
    /// terminal's size and mode are looked after in doing so.
    int Interrupt() {
        interrupted_ = true;
        const LineInfoW* line = el_wline(editor_.get());
        kept_.assign(line->buffer, line->lastchar);
        kept_.resize(std::min(kept_.find(L'\n'), kept_.size())); // a search shows its pattern behind one
        const auto before = static_cast<std::size_t>(line->cursor - line->buffer);
        behindCursor_ = kept_.size() - std::min(before, kept_.size());
        return -1;
    }

    void TakeUpLine() {
        el_winsertstr(editor_.get(), kept_.c_str());
        if (behindCursor_ > 0) el_cursor(editor_.get(), -static_cast<int>(behindCursor_));
        kept_.clear();
        ClearRow();
        el_set(editor_.get(), EL_REFRESH);
    }

    void ClearRow() {
        std::fputs("\r\033[K", screen_);
        std::fflush(screen_);
    }

    /// What is written meanwhile takes the place of the prompt, which is drawn again below it.
    void ServeWatch() {
        ClearRow();
        if (watch_.act) watch_.act();
        el_set(editor_.get(), EL_REFRESH);
    }

    struct CloseFile {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    SideWatch watch_;
    std::FILE* screen_;
    int descriptor_;
    sigset_t whileWaiting_{};  // the signals blocked then
    bool interrupted_ = false; // by a signal, the line not finished
    std::wstring kept_;        // of that line
    std::size_t behindCursor_ = 0;
    std::unique_ptr<std::FILE, CloseFile> input_;
    std::unique_ptr<History, EndHistory> history_;
    std::unique_ptr<EditLine, EndEditor> editor_; // goes before its history
};

} // namespace

std::unique_ptr<LineSource> LineSource::OfTerminal(int descriptor, std::FILE* screen, SideWatch watch) {
    return std::make_unique<TerminalLines>(descriptor, screen, std::move(watch));
}

} // namespace arvon::console
