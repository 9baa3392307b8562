#pragma once

#include <string>

namespace tidemark {

/// Binary data, kept apart from text by its type; stored JSON writes it as base64.
struct Data {
    std::string bytes;

    bool operator==(const Data&) const = default;
};

} // namespace tidemark
