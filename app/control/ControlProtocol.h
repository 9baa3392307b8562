#pragma once

#include "core/base/JsonFields.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace tidemark {

/// A command that another process asks the running recorder to carry out.
struct ControlRequest {
    static constexpr std::int64_t currentVersion = 2;

    std::int64_t version = currentVersion;
    /// Its name, such as "snapshot delete".
    std::string command;
    /// The values of its options, as a JSON document in a text: only the command knows their types.
    std::string options;
    /// True when the output goes to a terminal that supports colours.
    bool colour = false;

    static constexpr auto fields() {
        return std::tuple{Field{"version", &ControlRequest::version},
                          Field{"command", &ControlRequest::command, Shown},
                          Field{"options", &ControlRequest::options, Private},
                          Field{"colour", &ControlRequest::colour}};
    }
    bool operator==(const ControlRequest&) const = default;
};

/// What the other process prints, and its exit status.
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

/// The protocol of the control socket: one request and one answer per connection. Each is a frame
/// of four bytes with the length in big-endian order, followed by that many bytes of UTF-8 JSON.
namespace controlProtocol {

inline constexpr std::size_t headerSize = 4;
inline constexpr std::size_t mostRequestBytes = std::size_t{1024} * 1024;
inline constexpr std::size_t mostAnswerBytes = std::size_t{256} * 1024 * 1024;

/// The length in the header of a frame; `frame` has at least the header.
std::size_t announcedSize(std::string_view frame);

/// Throws `Error` when the request is too long to be sent.
std::string requestFrame(const ControlRequest& request);
/// An answer above the limit is replaced by an error.
std::string answerFrame(const ControlAnswer& answer);

/// Decodes a frame without its header. Throws `Error`.
ControlRequest decodedRequest(std::string_view json);
ControlAnswer decodedAnswer(std::string_view json);

/// The paths at which the recorder of a data folder may listen, in order of preference: in the
/// user's runtime folder, if there is one, and inside the data folder. The recorder uses the first
/// that works. A client tries each, since it may have been started in another session than the
/// recorder.
std::vector<std::filesystem::path>
socketPaths(const std::filesystem::path& dataFolder,
            const std::optional<std::filesystem::path>& runtimeFolder);

} // namespace controlProtocol

} // namespace tidemark
