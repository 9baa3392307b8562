#pragma once

#include "core/base/Error.h"

#include <string>

namespace tidemark::test {

/// The sentence of the `Error` that `call` throws, or "none".
std::string failureOf(const auto& call) {
    try {
        call();
        return "none";
    } catch (const Error& error) {
        return error.what();
    }
}

} // namespace tidemark::test
