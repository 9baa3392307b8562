#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json_fwd.hpp>

namespace tidemark {

/// What the tree of one exported event tells of places, devices, networks and clips, and the event
/// without it. Each event is asked for itself: what is private in one may be harmless in another.
class PrivateDetails {
public:
    /// With `keep` everything stays but the keys that mean nothing outside of the program.
    PrivateDetails(const nlohmann::json& event, bool keep);

    nlohmann::json cleaned(nlohmann::json node) const;

private:
    void collect(const nlohmann::json& node);
    void collectMemory(const nlohmann::json& memory);
    void collectText(const nlohmann::json& object, std::string_view key);
    void collectText(std::string_view text);
    bool isDropped(std::string_view key) const;
    std::string excluded(std::string_view text, std::size_t first = 0) const;
    std::string excludedOccurrences(std::string_view text, std::size_t index) const;

    bool keepsDetails;
    /// Longest first, so that a path is not cut by a shorter text inside of it.
    std::vector<std::string> texts;
};

} // namespace tidemark
