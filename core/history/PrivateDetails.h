#pragma once

#include "core/history/StoredShape.h"

#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json_fwd.hpp>

namespace tidemark {

/// Removes private texts, such as paths and the names of devices, from one exported event. The
/// description of each record says which fields hold them (`Privacy`). Each event is cleaned by
/// itself: a text that is private in one may be harmless in another.
class PrivateDetails {
public:
    /// `event` is the JSON of an `Event`. With `keepsDetails`, only the `Internal` fields are
    /// removed.
    PrivateDetails(const nlohmann::json& event, bool keepsDetails);

    /// Returns the event without private details.
    nlohmann::json cleaned(nlohmann::json event) const;

private:
    void collect(const nlohmann::json& node, const StoredShape& shape);
    void collectTexts(const nlohmann::json& node);
    void collectFolder(const nlohmann::json& memory);
    void collectText(std::string_view text);
    nlohmann::json cleaned(nlohmann::json node, const StoredShape& shape) const;
    bool isDropped(json::Privacy privacy) const;
    std::string excluded(std::string_view text, std::size_t first = 0) const;
    std::string excludedOccurrences(std::string_view text, std::size_t index) const;

    bool keepsDetails;
    /// Longest first, so that a path is replaced before a shorter text inside of it.
    std::vector<std::string> texts;
};

} // namespace tidemark
