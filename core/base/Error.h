#pragma once

#include <stdexcept>

namespace tidemark {

/// A failure whose `what()` is one sentence that a user may read.
class Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace tidemark
