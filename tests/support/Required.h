#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <utility>

namespace vornic {

/// The value that a test cannot do without. Where there is none the test fails and goes on with a
/// default.
template <typename T>
T required(std::optional<T> value) {
    if (!value) {
        ADD_FAILURE() << "no value";
        return T{};
    }
    return *std::move(value);
}

} // namespace vornic
