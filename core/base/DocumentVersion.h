#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tidemark {

/// The version of the JSON document in `bytes`, by its key "schemaVersion" or "version". Absent for
/// a document without one, and for bytes that are no JSON object.
std::optional<std::int64_t> documentVersion(std::string_view bytes);

} // namespace tidemark
