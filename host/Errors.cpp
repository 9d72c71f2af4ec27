#include "host/Errors.h"

#include <utility>

namespace arvon::host {

void Raise(std::int32_t number, std::string description) {
    throw base::ComponentError(number, "Arvon110", std::move(description));
}

void RaiseNoSuch(std::string_view kind, std::string_view key) {
    Raise(base::errors::InvalidCall, "no " + std::string(kind) + " \"" + std::string(key) + "\"");
}

} // namespace arvon::host
