#pragma once

#include "core/memory/CopiedItem.h"

#include <span>
#include <string_view>
#include <vector>

/// What `ClipTypes` needs to know of the system; a source file per system.
namespace tidemark::systemClipTypes {

/// The types of each part, the preferred one first.
struct Names {
    std::span<const std::string_view> file;
    std::span<const std::string_view> text;
    std::span<const std::string_view> richText;
    std::span<const std::string_view> image;
};
const Names& names();

/// True for a type that marks an item as not to be kept.
bool isMark(std::string_view type);

/// The contents under which a text, and the URL of a file, are put on the clipboard.
std::vector<ClipData> offeredText(std::string_view text);
std::vector<ClipData> offeredFile(std::string_view url);

} // namespace tidemark::systemClipTypes
