#include "base/ComponentError.h"

#include <utility>

namespace base {

ComponentError::ComponentError(std::int32_t number, std::string source, std::string description)
    : number_(number), source_(std::move(source)), description_(std::move(description)) {}

ComponentError::~ComponentError() = default;

} // namespace base
