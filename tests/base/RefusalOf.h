#pragma once

#include "base/ComponentError.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>

/// What an operation that must fail with a ComponentError said.
struct Refusal {
    std::int32_t number = 0;
    std::string source;
    std::string description;
};

/// Runs an operation and answers its ComponentError; an operation that succeeds fails the test.
template <class Operation> Refusal RefusalOf(Operation&& operation) {
    try {
        std::forward<Operation>(operation)();
    } catch (const base::ComponentError& error) {
        return {error.Number(), error.Source(), error.Description()};
    }
    ADD_FAILURE() << "nothing was refused";
    return {};
}
