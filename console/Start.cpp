#include "console/Start.h"

#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <system_error>

namespace arvon::console {

namespace fs = std::filesystem;

fs::path FolderOfProgram() {
    return fs::read_symlink("/proc/self/exe").parent_path();
}

fs::path SampleSuite() {
    const char* given = std::getenv("ARVON_SAMPLE_SUITE");
    const fs::path suite = given && *given ? fs::path(given) : FolderOfProgram().parent_path() / "suite";
    if (!fs::is_directory(suite))
        throw std::runtime_error("no sample suite: " + suite.string() +
                                 " is no folder; name one with --suite");
    return suite;
}

base::Value ReadProfileId(const std::string& text) {
    const char* end = text.data() + text.size();
    std::int32_t whole = 0;
    if (const auto [stop, failure] = std::from_chars(text.data(), end, whole);
        failure == std::errc() && stop == end)
        return base::Value(whole);
    double number = 0;
    if (const auto [stop, failure] = std::from_chars(text.data(), end, number);
        failure == std::errc() && stop == end)
        return base::Value(number);
    return base::Value(text);
}

} // namespace arvon::console
