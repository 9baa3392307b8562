#pragma once

#include <stdexcept>

namespace tidemark {

/// A failure whose `what()` is a text for the user, in whole sentences.
class Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace tidemark
