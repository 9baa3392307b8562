#pragma once

#include <string>

namespace tidemark {

/// Binary data, a type of its own so that it is not mistaken for text; stored JSON writes it as
/// base64.
struct Data {
    std::string bytes;

    bool operator==(const Data&) const = default;
};

} // namespace tidemark
