#pragma once

#include "core/base/JsonFields.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace tidemark {

/// A command line that the running recorder is to carry out for another process.
struct ControlRequest {
    static constexpr std::int64_t currentVersion = 1;

    std::int64_t version = currentVersion;
    std::vector<std::string> arguments;
    /// The output is read on a terminal that takes colours.
    bool colour = false;
    /// What relative paths among the arguments are relative to.
    std::string directory;

    static constexpr auto fields() {
        return std::tuple{Field{"version", &ControlRequest::version},
                          Field{"arguments", &ControlRequest::arguments, Private},
                          Field{"colour", &ControlRequest::colour},
                          Field{"directory", &ControlRequest::directory, Private}};
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
inline constexpr std::size_t mostArguments = 64;
inline constexpr std::size_t mostAnswerBytes = std::size_t{256} * 1024 * 1024;

/// The length that a frame announces; `frame` holds at least the header.
std::size_t announcedSize(std::string_view frame);

/// Throws `Error` when the request can't be handed over as it is: too many or too long
/// arguments, or bytes that are no text.
std::string requestFrame(const ControlRequest& request);
/// An answer above the limit becomes one that says so.
std::string answerFrame(const ControlAnswer& answer);

/// What a frame holds behind its header. Throws `Error`.
ControlRequest decodedRequest(std::string_view json);
ControlAnswer decodedAnswer(std::string_view json);

/// Where the recorder of a data folder listens, in the user's folder for sockets.
std::filesystem::path socketPath(const std::filesystem::path& dataFolder,
                                 const std::filesystem::path& runtimeFolder);

} // namespace control

} // namespace tidemark
