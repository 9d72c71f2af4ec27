#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace arvon::host {
class ReferenceHost;
}

namespace desktop {

/// What the user's profile permits to do with single tools: the section [Profile] of the installation's
/// host.ini, where every item holds names of tools, with ";" between them. Without the item, or with "*"
/// among the names, it is permitted for all tools.
///
/// | item      | permits                                          |
/// |-----------|--------------------------------------------------|
/// | CanLaunch | "Can Launch": start it from its properties       |
/// | CanUpdate | "Can Update": look for updates of it from there  |
class Permissions {
public:
    /// Reads the settings. Throws ComponentError when the host does not give them.
    explicit Permissions(arvon::host::ReferenceHost& host);

    /// Gives the tools of the host's catalogue what is permitted; those that came later when called again.
    void Grant();

private:
    struct Task {
        std::string_view name;
        std::optional<std::set<std::string, std::less<>>> tools; // nothing: all of them
    };

    arvon::host::ReferenceHost& host_;
    std::vector<Task> tasks_;
    std::unordered_set<std::string> known_; // names of tools
};

} // namespace desktop
