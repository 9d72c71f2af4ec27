#include "platform/linux/RegistryFile.h"

#include "base/ComponentError.h"
#include "base/Text.h"
#include "platform/linux/RegistryValueText.h"

#include <algorithm>
#include <array>

namespace platform {

namespace {

constexpr std::uint32_t TypeString = 1;

bool IsStringType(std::uint32_t type) noexcept {
    return type == 1 || type == 2 || type == 7;
}

std::string_view ParentOf(std::string_view key) noexcept {
    const std::size_t slash = key.rfind('\\');
    return slash == std::string_view::npos ? std::string_view() : key.substr(0, slash);
}

/// The form that keys are compared in: upper case, the root's long name, no "\" at the end.
std::string KeyForm(std::string_view path) {
    while (path.ends_with('\\'))
        path.remove_suffix(1);
    std::string key = base::UpperCase(path);
    constexpr std::array<std::pair<std::string_view, std::string_view>, 4> ShortNames = {{
        {"HKLM", "HKEY_LOCAL_MACHINE"},
        {"HKCU", "HKEY_CURRENT_USER"},
        {"HKCR", "HKEY_CLASSES_ROOT"},
        {"HKU", "HKEY_USERS"},
    }};
    const std::size_t rootLength = std::min(key.find('\\'), key.size());
    for (const auto& [shortName, name] : ShortNames)
        if (std::string_view(key).substr(0, rootLength) == shortName) return key.replace(0, rootLength, name);
    return key;
}

template <typename Keys> bool Holds(const Keys& keys, std::string_view key) {
    if (keys.find(key) != keys.end()) return true;
    const std::string below = std::string(key) + '\\'; // a key stands by what stands below it
    const auto next = keys.lower_bound(below);
    return next != keys.end() && next->first.starts_with(below);
}

} // namespace

/// Reads the statements of a file into the object.
class RegistryFile::Reader {
public:
    explicit Reader(RegistryFile& target) : target_(target), cursor_{target.source_.text, 0} {}

    void Run() {
        try {
            CheckLines();
            ReadHeader();
        } catch (const RegistryMisreading& misreading) {
            RegistryFileBroken(target_.file_, LineOf(misreading.At()), misreading.what());
        }
        while (SkipToStatement()) {
            try {
                ReadStatement();
            } catch (const RegistryMisreading& misreading) {
                PassOver(misreading);
            }
        }
    }

private:
    void CheckLines() const {
        for (RegistryCursor line = cursor_; !line.AtEnd();)
            if (const RegistryCursor start = line; line.TakeLine().size() > MaximumLine)
                start.Fail("expected a line of at most " + std::to_string(MaximumLine) + " bytes");
    }

    /// The line of a place at or behind the current statement.
    std::size_t LineOf(std::size_t at) {
        const std::string_view text = target_.source_.text;
        const auto linesIn = [text](std::size_t begin, std::size_t end) {
            const std::string_view piece = text.substr(begin, end - begin);
            return static_cast<std::size_t>(std::count(piece.begin(), piece.end(), '\n'));
        };
        line_ += linesIn(countedTo_, statement_); // all of it again each time would be quadratic
        countedTo_ = statement_;
        return line_ + linesIn(statement_, at);
    }

    /// Past empty lines and comments; false at the end.
    bool SkipToStatement() {
        for (;;) {
            RegistryCursor ahead = cursor_;
            ahead.SkipBlanks();
            if (ahead.AtEnd()) return false;
            if (ahead.Next() != ';' && ahead.Next() != '\r' && ahead.Next() != '\n') break;
            ahead.TakeLine();
            cursor_.at = ahead.at;
        }
        statement_ = cursor_.at;
        return true;
    }

    /// The header, and comments of other kinds of files in front of it.
    void ReadHeader() {
        while (SkipToStatement()) {
            const RegistryCursor start = cursor_;
            const std::string_view header = base::TrimBlanks(cursor_.TakeLine());
            if (header.starts_with('#') || header.starts_with("//")) {
                PassOver(start.Misreading("expected a comment to begin with \";\""));
                continue;
            }
            if (!std::string_view(target_.source_.text).substr(0, cursor_.at).ends_with("\r\n"))
                target_.lineEnd_ = "\n";
            if (header != RegistryHeader5 && header != RegistryHeader4)
                start.Fail("expected \"" + std::string(RegistryHeader5) + "\"");
            target_.isVersion5_ = header == RegistryHeader5;
            return;
        }
    }

    void ReadStatement() {
        cursor_.SkipBlanks();
        if (cursor_.Next() == '[')
            ReadSection();
        else if (cursor_.Next() == '"' || cursor_.Next() == '@')
            ReadValue();
        else
            cursor_.Fail("expected a key in brackets, a value or a comment");
    }

    /// Notes a statement that cannot be understood and goes on behind it. Of a text that is never closed that
    /// is the next line, of a row of bytes the line behind its last.
    void PassOver(const RegistryMisreading& misreading) {
        const std::size_t line = LineOf(misreading.At());
        if (target_.problems_.size() == MaximumProblems)
            RegistryFileBroken(target_.file_, line,
                               "this is one more than " + std::to_string(MaximumProblems) +
                                   " lines that cannot be understood");
        target_.problems_.push_back(RegistryProblem(target_.file_, line, misreading.what()));

        cursor_.at = statement_;
        cursor_.SkipBlanks();
        if (cursor_.Next() == '[') LoseSection();
        std::string_view taken = cursor_.TakeLine();
        const bool isRow = taken.find("=hex") != std::string_view::npos;
        while (isRow && taken.substr(0, taken.find_last_not_of(" \t") + 1).ends_with('\\')) {
            cursor_.SkipBlanks();
            if (std::string_view("[\"@;\r\n").find(cursor_.Next()) != std::string_view::npos) break;
            taken = cursor_.TakeLine();
        }
    }

    /// What follows belongs to no key.
    void LoseSection() {
        section_ = nullptr;
        isLost_ = true;
    }

    void ReadSection() {
        const RegistryCursor start = cursor_;
        const std::string_view line = cursor_.TakeLine();
        const std::size_t close = line.rfind(']');
        if (close == std::string_view::npos) start.Fail("expected \"]\" behind the key");
        const std::string_view behind = base::TrimBlanks(line.substr(close + 1));
        if (!behind.empty() && !behind.starts_with(';'))
            start.Fail("expected the end of the line behind \"]\"");
        std::string_view path = line.substr(1, close - 1);
        const bool isDeletion = path.starts_with('-');
        if (isDeletion) path.remove_prefix(1);
        std::string key = KeyForm(path);
        if (key.empty()) start.Fail("expected a key between the brackets");
        if (isDeletion) {
            LoseSection();
            Delete(key);
            return;
        }
        section_ = &target_.keys_[std::move(key)];
        section_->insertAt = cursor_.at;
    }

    void ReadValue() {
        const RegistryCursor start = cursor_;
        const std::string name = cursor_.Skip('@') ? "" : ReadRegistryQuoted(cursor_);
        cursor_.SkipBlanks();
        if (!cursor_.Skip('=')) cursor_.Fail("expected \"=\" behind the value's name");
        cursor_.SkipBlanks();
        const std::size_t value = cursor_.at;
        const bool isDeletion = !ReadRegistryValue(cursor_);
        cursor_.FinishLine();
        if (section_ == nullptr && !isLost_) start.Fail("expected a key in brackets before the first value");
        if (section_ == nullptr) return; // nothing to hold it
        section_->insertAt = cursor_.at;
        if (isDeletion)
            section_->values.erase(base::UpperCase(name));
        else
            section_->values[base::UpperCase(name)] = Range{statement_, cursor_.at, value};
    }

    void Delete(const std::string& key) {
        auto& keys = target_.keys_;
        const std::string_view parent = ParentOf(key);
        if (!parent.empty() && Holds(keys, key)) keys[std::string(parent)]; // it stood by the key alone
        keys.erase(key);
        const std::string below = key + '\\';
        auto first = keys.lower_bound(below), last = first;
        while (last != keys.end() && last->first.starts_with(below))
            ++last;
        keys.erase(first, last);
    }

    RegistryFile& target_;
    RegistryCursor cursor_;
    std::size_t statement_ = 0; // where the current line begins
    Key* section_ = nullptr;
    bool isLost_ = false; // below a deleted key, or below what should have been one
    std::size_t line_ = 1, countedTo_ = 0;
};

RegistryFile::RegistryFile(std::string_view bytes, const CodePage& codePage, std::string file)
    : codePage_(codePage), file_(std::move(file)), source_(RegistryText::FromBytes(bytes, codePage, file_)) {
    Reader(*this).Run();
}

bool RegistryFile::HasKey(std::string_view key) const {
    return Holds(keys_, KeyForm(key));
}

std::optional<RegistryValue> RegistryFile::Find(std::string_view key, std::string_view name) const {
    const auto section = keys_.find(KeyForm(key));
    if (section == keys_.end()) return std::nullopt;
    const auto found = section->second.values.find(base::UpperCase(name));
    if (found == section->second.values.end()) return std::nullopt;

    RegistryCursor cursor{source_.text, found->second.value};
    RegistryValueText written = ReadRegistryValue(cursor).value();
    if (written.isQuoted) {
        written.data = codePage_.ToAnsi(written.data);
        written.data += '\0';
    } else if (isVersion5_ && IsStringType(written.type)) {
        written.data = codePage_.ToAnsi(base::FromUtf16(UnitsOf(written.data)));
    }
    return RegistryValue{written.type, std::move(written.data)};
}

std::string RegistryFile::LineFor(std::string_view name, const RegistryValue& value) const {
    constexpr std::size_t LongestQuoted = 16384; // bytes; a longer one breaks over lines as bytes do
    std::string line = name.empty() ? "@" : RegistryQuoted(name);
    line += '=';

    RegistryValueText written{value.type, false, value.data};
    if (IsStringType(value.type)) {
        std::string text = codePage_.FromAnsi(value.data);
        const auto isControl = [](char character) { return static_cast<unsigned char>(character) < 0x20; };
        const bool endsOnce =
            text.ends_with('\0') && std::find_if(text.begin(), text.end(), isControl) == text.end() - 1;
        if (value.type == TypeString && endsOnce && text.size() <= LongestQuoted) {
            text.pop_back();
            written = {TypeString, true, std::move(text)};
        } else if (isVersion5_) {
            written.data = BytesOf(base::ToUtf16(text));
        }
    }
    return line + WriteRegistryValue(written, line.size(), lineEnd_) + lineEnd_;
}

std::string RegistryFile::TextWithValue(std::string_view key, std::string_view name,
                                        const RegistryValue& value) const {
    std::string text = source_.text;
    const std::string line = LineFor(name, value);
    const Key none;
    const auto section = keys_.find(KeyForm(key));
    const Key& place = section == keys_.end() ? none : section->second;
    if (const auto found = place.values.find(base::UpperCase(name)); found != place.values.end())
        return text.replace(found->second.begin, found->second.end - found->second.begin, line);
    const std::size_t at = place.insertAt.value_or(text.size());
    const char before = at > 0 ? text[at - 1] : '\n';
    std::string added = before == '\n' ? "" : before == '\r' ? "\n" : lineEnd_;
    if (!place.insertAt) added += lineEnd_ + "[" + std::string(key) + "]" + lineEnd_;
    return text.insert(at, added + line);
}

std::string RegistryFile::WithValue(std::string_view key, std::string_view name,
                                    const RegistryValue& value) const {
    const std::string bytes =
        RegistryText{source_.encoding, TextWithValue(key, name, value)}.ToBytes(codePage_);
    if (problems_.empty()) return bytes;
    const RegistryFile written(bytes, codePage_, file_);
    if (!written.Find(key, name) || written.problems_.size() != problems_.size())
        throw base::ComponentError(base::errors::FileAccess, "KvTM10.Registry",
                                   "registry file \"" + file_ + "\": a text in front of the value \"" +
                                       std::string(name) + "\" is never closed");
    return bytes;
}

} // namespace platform
