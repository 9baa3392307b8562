#include "core/base/DocumentVersion.h"

#include "core/base/JsonDecoder.h"

namespace tidemark {

namespace {

/// The only fields that are read, so that the rest can have any form.
struct VersionOnly {
    std::optional<std::int64_t> schemaVersion;
    std::optional<std::int64_t> version;

    static constexpr auto fields() {
        return std::tuple{Field{"schemaVersion", &VersionOnly::schemaVersion},
                          Field{"version", &VersionOnly::version}};
    }
};

} // namespace

std::optional<std::int64_t> documentVersion(std::string_view bytes) {
    try {
        const auto found = json::decode<VersionOnly>(bytes);
        return found.schemaVersion ? found.schemaVersion : found.version;
    } catch (const json::DecodingError&) {
        return std::nullopt;
    }
}

} // namespace tidemark
