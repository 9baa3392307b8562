#include "app/control/ControlProtocol.h"

#include "core/base/CanonicalPath.h"
#include "core/base/Digest.h"
#include "core/base/JsonDecoder.h"
#include "core/base/JsonEncoder.h"

namespace tidemark::controlProtocol {

namespace {

/// The only field that is read from a request of an unknown version.
struct VersionOnly {
    std::int64_t version = 0;

    static constexpr auto fields() { return std::tuple{Field{"version", &VersionOnly::version}}; }
};

template <class Record>
std::string framed(const Record& record) {
    std::string frame(headerSize, '\0');
    json::write(record, [&](std::string_view piece) { frame += piece; });
    const std::size_t size = frame.size() - headerSize;
    for (std::size_t index = 0; index < headerSize; ++index)
        frame[index] = static_cast<char>((size >> (8 * (headerSize - 1 - index))) & 0xFFU);
    return frame;
}

} // namespace

std::size_t announcedSize(std::string_view frame) {
    std::size_t size = 0;
    for (const char byte : frame.substr(0, headerSize))
        size = size << 8U | static_cast<unsigned char>(byte);
    return size;
}

std::string requestFrame(const ControlRequest& request) {
    std::string frame = framed(request);
    if (frame.size() > headerSize + mostRequestBytes)
        throw Error("The command is too long to be handed to the running recorder.");
    return frame;
}

std::string answerFrame(const ControlAnswer& answer) {
    std::string frame = framed(answer);
    if (frame.size() <= headerSize + mostAnswerBytes)
        return frame;
    return framed(ControlAnswer{1, "", "The answer is too large to be handed over."});
}

ControlRequest decodedRequest(std::string_view json) {
    if (json::decode<VersionOnly>(json).version != ControlRequest::currentVersion)
        throw Error("The running recorder is of another version of Tidemark.");
    return json::decode<ControlRequest>(json);
}

ControlAnswer decodedAnswer(std::string_view json) {
    return json::decode<ControlAnswer>(json);
}

std::vector<std::filesystem::path>
socketPaths(const std::filesystem::path& dataFolder,
            const std::optional<std::filesystem::path>& runtimeFolder) {
    std::vector<std::filesystem::path> paths;
    if (runtimeFolder) {
        // A different name for each data folder, since one user may have several.
        const std::string name = Sha256::hex(canonicalPath(dataFolder).native()).substr(0, 16);
        paths.push_back(*runtimeFolder / "Tidemark" / (name + ".socket"));
    }
    paths.push_back(dataFolder / "control" / "recorder.socket");
    return paths;
}

} // namespace tidemark::controlProtocol
