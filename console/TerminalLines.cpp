#include "console/LineSource.h"

#include <array>
#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <stdexcept>
#include <string_view>
#include <system_error>

#include <histedit.h>
#include <poll.h>
#include <unistd.h>

namespace arvon::console {

namespace {

constexpr int HistoryLength = 500;

char prompt[] = "arvon> ";

class TerminalLines final : public LineSource {
public:
    TerminalLines(int descriptor, std::FILE* screen, SideWatch watch)
        : watch_(std::move(watch)), screen_(screen), descriptor_(descriptor),
          input_(fdopen(dup(descriptor), "r")) {
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
        const char* read = el_gets(editor_.get(), &length);
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
        std::mbstate_t state{};
        for (;;) {
            std::array<pollfd, 2> waits{{{descriptor_, POLLIN, 0}, {watch_.descriptor, POLLIN, 0}}};
            if (poll(waits.data(), waits.size(), -1) < 0) return -1;
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

    /// What is written meanwhile takes the place of the prompt, which is drawn again below it.
    void ServeWatch() {
        std::fputs("\r\033[K", screen_);
        std::fflush(screen_);
        if (watch_.act) watch_.act();
        el_set(editor_.get(), EL_REFRESH);
    }

    struct CloseFile {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    SideWatch watch_;
    std::FILE* screen_;
    int descriptor_;
    std::unique_ptr<std::FILE, CloseFile> input_;
    std::unique_ptr<History, EndHistory> history_;
    std::unique_ptr<EditLine, EndEditor> editor_; // goes before its history
};

} // namespace

std::unique_ptr<LineSource> LineSource::OfTerminal(int descriptor, std::FILE* screen, SideWatch watch) {
    return std::make_unique<TerminalLines>(descriptor, screen, std::move(watch));
}

} // namespace arvon::console
