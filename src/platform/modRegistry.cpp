#include "platform/modRegistry.h"

#include "base/ComponentError.h"
#include "platform/Services.h"

#include <array>
#include <cstdio>
#include <vector>

namespace platform::modRegistry {

namespace {

constexpr std::size_t BufferSize = 255;      // bytes, for a value with its NUL
constexpr std::size_t UiFileCapacity = 101;  // lines
constexpr std::size_t UiFileLimit = 1 << 24; // bytes
constexpr std::string_view UiFileName = "\\UIKeys.txt";
constexpr std::string_view LineEnd = "\r\n";

/// Numbers of the diagnostics that have no text in the component.
constexpr std::int32_t CannotOpenForReading = 2001;
constexpr std::int32_t CannotWrite = 2003;
constexpr std::int32_t CannotOpenForWriting = 2004;

std::string FullName(std::string_view procedure) {
    return "ArvonU110." + std::string(procedure);
}

std::string ReasonOf(std::int32_t result) {
    switch (result) {
    case registryResult::NotFound:
        return "it does not exist (result 2)";
    case registryResult::AccessDenied:
        return "access denied (result 5)";
    default:
        return "result " + std::to_string(result);
    }
}

std::string HiveName(std::uint32_t hive) {
    if (hive == HkeyLocalMachine) return "HKEY_LOCAL_MACHINE";
    if (hive == HkeyCurrentUser) return "HKEY_CURRENT_USER";
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "0x%08X", hive);
    return text.data();
}

[[noreturn]] void Fail(std::int32_t diagnostic, std::string_view procedure, std::string_view what,
                       std::int32_t result) {
    throw base::ComponentError(base::errors::ObjectErrorBase + diagnostic, FullName(procedure),
                               std::string(what) + ": " + ReasonOf(result));
}

/// An open key, closed at the end.
class OpenedKey {
public:
    OpenedKey(Registry& registry, RegistryKey key) : registry_(registry), key_(key) {}
    ~OpenedKey() { registry_.CloseKey(key_); }
    OpenedKey(const OpenedKey&) = delete;
    OpenedKey& operator=(const OpenedKey&) = delete;
    RegistryKey Get() const noexcept { return key_; }

private:
    Registry& registry_;
    RegistryKey key_;
};

RegistryKey OpenKey(const Services& services, std::uint32_t hive, std::string_view subKey,
                    std::uint32_t access, std::int32_t diagnostic, std::string_view procedure) {
    RegistryKey key = 0;
    const std::int32_t result =
        services.registry->OpenKey(hive, services.codePage->ToAnsi(subKey), access, key);
    if (result != registryResult::Success)
        Fail(diagnostic, procedure,
             "cannot open registry key \"" + HiveName(hive) + "\\" + std::string(subKey) + "\"", result);
    return key;
}

std::filesystem::path UiFile(const Services& services, std::string_view procedure) {
    const std::string folder =
        getRegistryStringValue(services, HkeyLocalMachine, FrameworkKey, "BinPath", "");
    if (folder.empty()) throw base::ComponentError(0, FullName(procedure), "Unable to read BinPath");
    return services.filePaths->ToSystem(folder + std::string(UiFileName));
}

/// Lines end in CR LF, LF or CR; the last one needs no end.
std::vector<std::string_view> LinesOf(std::string_view content) {
    std::vector<std::string_view> lines;
    while (!content.empty()) {
        const std::size_t end = content.find_first_of(LineEnd);
        lines.push_back(content.substr(0, end));
        if (end == std::string_view::npos) break;
        content.remove_prefix(end + (content.substr(end).starts_with(LineEnd) ? 2 : 1));
    }
    return lines;
}

/// The rule of a matching line. The file's own bytes are compared, so that what the code page cannot express
/// is written back as it was; a key that it cannot express matches no line.
class KeyRule {
public:
    KeyRule(const Services& services, std::string_view key)
        : key_(services.codePage->ToAnsi(key)), isExpressible_(services.codePage->FromAnsi(key_) == key) {}

    /// The length of a matching line up to and with its first "=", else 0.
    std::size_t Match(std::string_view line) const {
        if (!isExpressible_ || !line.starts_with(key_)) return 0;
        const std::size_t equals = line.find('=');
        return equals == std::string_view::npos ? 0 : equals + 1;
    }

private:
    std::string key_;
    bool isExpressible_;
};

} // namespace

std::string getRegistryStringValue(const Services& services, std::uint32_t hive, std::string_view subKey,
                                   std::string_view valueName, std::string_view defaultValue) {
    if (subKey == UiValueKey) return getUIValue(services, valueName);

    std::string buffer(BufferSize, ' ');
    std::uint32_t size = BufferSize;
    const OpenedKey key(*services.registry, OpenKey(services, hive, subKey, KeyQueryValue,
                                                    CannotOpenForReading, "getRegistryStringValue"));
    std::uint32_t type = RegSz;
    const std::int32_t result =
        services.registry->QueryValue(key.Get(), services.codePage->ToAnsi(valueName), type, buffer, size);
    if (result != registryResult::Success) return std::string(defaultValue);
    const std::size_t length = size == 0 ? 0 : size - 1; // the last byte counts as the NUL, whatever it is
    return services.codePage->FromAnsi(std::string_view(buffer).substr(0, length));
}

bool setRegistryStringValue(const Services& services, std::uint32_t hive, std::string_view subKey,
                            std::string_view valueName, std::string_view value) {
    if (subKey == UiValueKey) return setUIValue(services, valueName, value);

    constexpr std::string_view Procedure = "setRegistryStringValue";
    const OpenedKey key(*services.registry,
                        OpenKey(services, hive, subKey, KeySetValue, CannotOpenForWriting, Procedure));
    const std::string data = services.codePage->ToAnsi(value); // without its NUL, by design
    const std::int32_t result =
        services.registry->SetValue(key.Get(), services.codePage->ToAnsi(valueName), RegSz, data);
    if (result != registryResult::Success)
        Fail(CannotWrite, Procedure,
             "cannot write registry value \"" + std::string(valueName) + "\" of \"" + HiveName(hive) + "\\" +
                 std::string(subKey) + "\"",
             result);
    return true;
}

std::string getUIValue(const Services& services, std::string_view key) {
    const std::string content = services.files->Read(UiFile(services, "getUIValue"), UiFileLimit);
    const KeyRule rule(services, key);
    for (const std::string_view line : LinesOf(content))
        if (const std::size_t head = rule.Match(line)) return services.codePage->FromAnsi(line.substr(head));
    return "";
}

bool setUIValue(const Services& services, std::string_view key, std::string_view value) {
    constexpr std::string_view Procedure = "setUIValue";
    const std::filesystem::path file = UiFile(services, Procedure);
    const std::string content = services.files->Read(file, UiFileLimit);
    const std::vector<std::string_view> lines = LinesOf(content);
    if (lines.size() > UiFileCapacity)
        throw base::ComponentError(base::errors::OutOfRange, FullName(Procedure),
                                   "file \"" + file.native() + "\": expected at most " +
                                       std::to_string(UiFileCapacity) + " lines, found " +
                                       std::to_string(lines.size()));
    const KeyRule rule(services, key);
    const std::string bytes = services.codePage->ToAnsi(value);
    std::string changed;
    for (const std::string_view line : lines) {
        const std::size_t head = rule.Match(line);
        changed.append(head == 0 ? line : line.substr(0, head))
            .append(head == 0 ? "" : bytes)
            .append(LineEnd);
    }
    // In one step: a full disk or a crash in between must not cost the values that stood there.
    services.files->Replace(file, changed);
    return false;
}

} // namespace platform::modRegistry
