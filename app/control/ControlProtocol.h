#pragma once

#include "core/base/JsonFields.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

namespace tidemark {

/// A command that the running recorder is to carry out for another process.
struct ControlRequest {
    static constexpr std::int64_t currentVersion = 2;

    std::int64_t version = currentVersion;
    /// Its name, such as "snapshot delete".
    std::string command;
    /// The values of its options, as a JSON document of its own: only the command knows their
    /// types.
    std::string options;
    /// The output is read on a terminal that takes colours.
    bool colour = false;

    static constexpr auto fields() {
        return std::tuple{Field{"version", &ControlRequest::version},
                          Field{"command", &ControlRequest::command, Shown},
                          Field{"options", &ControlRequest::options, Private},
                          Field{"colour", &ControlRequest::colour}};
    }
    bool operator==(const ControlRequest&) const = default;
};

/// What the other process is to print and to end with.
struct ControlAnswer {
    std::int64_t status = 0;
    std::string output;
    std::string error;

    static constexpr auto fields() {
        return std::tuple{Field{"status", &ControlAnswer::status},
                          Field{"output", &ControlAnswer::output, Private},
                          Field{"error", &ControlAnswer::error, Private}};
    }
    bool operator==(const ControlAnswer&) const = default;
};

/// How the two stand on the socket: one request and one answer per connection, each a frame of
/// four bytes, the length with its highest byte first, and that many bytes of UTF-8 JSON.
namespace control {

inline constexpr std::size_t headerSize = 4;
inline constexpr std::size_t mostRequestBytes = std::size_t{1024} * 1024;
inline constexpr std::size_t mostAnswerBytes = std::size_t{256} * 1024 * 1024;

/// The length that a frame announces; `frame` holds at least the header.
std::size_t announcedSize(std::string_view frame);

/// Throws `Error` when the request is too long to be handed over.
std::string requestFrame(const ControlRequest& request);
/// An answer above the limit becomes one that says so.
std::string answerFrame(const ControlAnswer& answer);

/// What a frame holds behind its header. Throws `Error`.
ControlRequest decodedRequest(std::string_view json);
ControlAnswer decodedAnswer(std::string_view json);

/// The places where the recorder of a data folder may listen, best first: the user's folder for
/// sockets, where there is one, and a folder inside of the data folder. The recorder takes the
/// first that it can have, and a client asks at each: the two may have been started in different
/// sessions.
std::vector<std::filesystem::path>
socketPaths(const std::filesystem::path& dataFolder,
            const std::optional<std::filesystem::path>& runtimeFolder);

} // namespace control

} // namespace tidemark
