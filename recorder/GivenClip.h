#pragma once

#include "core/base/Shared.h"
#include "core/records/MemoryRecord.h"

#include <string_view>
#include <vector>

namespace tidemark {

/// The help of the option that names a clip.
inline constexpr std::string_view givenClipHelp =
    "The identifier of a clip (timeline --place clipboard --ids), or a part of it that is unique";

/// The clip with the identifier `id`, or the only one that has `id` in its identifier. The
/// identifier of its event, which begins with "memory-", is accepted as well. Throws `Error` when
/// there is none or more than one.
Shared<MemoryRecord> givenClip(const std::vector<Shared<MemoryRecord>>& clips, std::string_view id);

} // namespace tidemark
