#pragma once

#include "core/base/JsonFields.h"

namespace tidemark {

/// The folders to monitor from the first start: all recommended ones that can be read, or none.
enum class SetupChoice { recommended, none };

template <>
inline constexpr auto json::rawValues<SetupChoice> = std::to_array<json::RawValue<SetupChoice>>({
    {SetupChoice::recommended, "recommended"},
    {SetupChoice::none, "none"},
});

} // namespace tidemark
