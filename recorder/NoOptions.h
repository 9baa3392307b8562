#pragma once

#include <tuple>

namespace tidemark {

/// Of a command without options.
struct NoOptions {
    static constexpr auto fields() { return std::tuple<>(); }
};

} // namespace tidemark
