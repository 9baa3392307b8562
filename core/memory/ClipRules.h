#pragma once

#include "core/memory/CopiedItem.h"
#include "core/records/MemoryRecord.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Which copied items are read and kept, and as what.
namespace tidemark::clipRules {

/// The most bytes of a text, and of a rich text or an image, that is kept.
inline constexpr std::size_t mostText = 65'536;
inline constexpr std::size_t mostPayload = 1'000'000;

/// False for an item that one of the applications in `excluded`, a value of `memoryExcludedApps`,
/// copied or that was copied while one was in front. Nothing is read of it then, not even the
/// names of its types.
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
