#pragma once

#include "core/memory/CopiedItem.h"
#include "core/records/MemoryRecord.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Which copied items are read and kept, and as what.
namespace tidemark::clipRules {

/// The most bytes of a text that is kept.
inline constexpr std::size_t mostText = 65'536;
/// The most bytes of a rich text or an image that is kept.
inline constexpr std::size_t mostPayload = 1'000'000;

/// False when one of the applications in `excluded` (a value of `memoryExcludedApps`) copied the
/// item or was in front when it was copied. Nothing is read of such an item, not even the names of
/// its types.
bool admits(const ClipOrigin& origin, std::string_view excluded);

/// A part to read.
struct Read {
    ClipPart part;
    std::string type;
    /// More bytes than these need not be read.
    std::size_t limit;
};

/// What to read next of an item that is offered under `types`, after `contents` have been read.
/// Absent when nothing more is needed.
std::optional<Read> nextRead(const ClipTypeNames& types, const ClipContents& contents);

/// Whether anything of the contents is kept.
bool keeps(const ClipContents& contents);

/// The record of an item; absent when it has nothing that is kept.
std::optional<MemoryRecord> record(const CopiedItem& item, Date now);

/// True when both hold the same content, so that copying it again adds no record.
bool repeats(const MemoryRecord& clip, const MemoryRecord& newest);

} // namespace tidemark::clipRules
