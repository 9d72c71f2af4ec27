#include "console/Words.h"

#include "base/Text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace arvon::console {

namespace {

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

bool KeepsBackslash(char next) {
    const auto code = static_cast<unsigned char>(next);
    return (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z') || code >= 0x80;
}

class Splitter {
public:
    explicit Splitter(std::string_view line) : rest_(line) {}

    std::vector<std::string> Words() {
        std::vector<std::string> words;
        for (SkipBlanks(); !rest_.empty() && rest_.front() != '#'; SkipBlanks())
            words.push_back(Word());
        return words;
    }

private:
    void SkipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t"), rest_.size())); }

    char Take() {
        const char c = rest_.front();
        rest_.remove_prefix(1);
        return c;
    }

    std::string Word() {
        std::string word;
        while (!rest_.empty() && !IsBlank(rest_.front())) {
            const char c = Take();
            if (c == '\'') {
                TakeSingleQuoted(word);
            } else if (c == '"') {
                TakeDoubleQuoted(word);
            } else if (c == '\\' && !rest_.empty() && !KeepsBackslash(rest_.front())) {
                word += Take();
            } else {
                word += c;
            }
        }
        return word;
    }

    void TakeSingleQuoted(std::string& word) {
        const std::size_t end = rest_.find('\'');
        if (end == std::string_view::npos) throw CommandError("a single quote (') is not closed on its line");
        word += rest_.substr(0, end);
        rest_.remove_prefix(end + 1);
    }

    void TakeDoubleQuoted(std::string& word) {
        while (!rest_.empty()) {
            const char c = Take();
            if (c == '"') return;
            const bool escapes = c == '\\' && !rest_.empty() &&
                                 std::string_view("\"\\$`").find(rest_.front()) != std::string_view::npos;
            word += escapes ? Take() : c;
        }
        throw CommandError("a double quote (\") is not closed on its line");
    }

    std::string_view rest_;
};

} // namespace

std::vector<std::string> SplitWords(std::string_view line) {
    return Splitter(line).Words();
}

std::optional<NamedValue> ReadNamedValue(std::string_view word) {
    const std::size_t equals = word.find('=');
    if (equals == std::string_view::npos || equals == 0) return std::nullopt;
    return NamedValue{std::string(word.substr(0, equals)), std::string(word.substr(equals + 1))};
}

std::int32_t ReadNumber(std::string_view what, std::string_view word) {
    std::int32_t number = 0;
    const char* end = word.data() + word.size();
    const auto [stop, failure] = std::from_chars(word.data(), end, number);
    if (failure != std::errc() || stop != end) {
        throw CommandError(std::string(what) + ": expected a 32-bit number, found \"" + std::string(word) +
                           "\"");
    }
    return number;
}

bool ReadBoolean(std::string_view what, std::string_view word) {
    for (const char* yes : {"True", "-1", "1"})
        if (base::EqualIgnoringCase(word, yes)) return true;
    for (const char* no : {"False", "0"})
        if (base::EqualIgnoringCase(word, no)) return false;
    throw CommandError(std::string(what) + ": expected True or False, found \"" + std::string(word) + "\"");
}

} // namespace arvon::console
