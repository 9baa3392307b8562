#pragma once

#include "core/base/JsonFields.h"

namespace tidemark {

/// Which folders a first start monitors: all recommended ones that can be read, or none.
enum class SetupChoice { recommended, none };

template <>
inline constexpr auto json::rawValues<SetupChoice> = std::to_array<json::RawValue<SetupChoice>>({
    {SetupChoice::recommended, "recommended"},
    {SetupChoice::none, "none"},
});

} // namespace tidemark
