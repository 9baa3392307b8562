#pragma once

#include "core/memory/CopiedItem.h"
#include "core/records/MemoryRecord.h"

#include <span>
#include <string_view>

/// The types of clipboard contents on this system. What differs between systems is in a source file
/// per system.
namespace tidemark::clipTypes {

/// The types of a part, the preferred one first.
std::span<const std::string_view> of(ClipPart part);

/// True when one of the types marks the item as not to be kept, such as a password. The presence of
/// the type is the mark; its content is not read.
bool areMarked(const ClipTypeNames& types);

/// The text, converted to UTF-8 from the encoding that its type contains. Empty when there are no
/// bytes.
std::string decodedText(const ClipData& data);

/// The contents, each with its type, that go on the clipboard when this clip is copied again; empty
/// when there are none.
std::vector<ClipData> offered(const MemoryRecord& clip);

} // namespace tidemark::clipTypes
