#pragma once

#include <tuple>

namespace tidemark {

/// The options of a command that has none.
struct NoOptions {
    static constexpr auto fields() { return std::tuple<>(); }
};

} // namespace tidemark
