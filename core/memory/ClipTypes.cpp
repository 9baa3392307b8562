#include "core/memory/ClipTypes.h"

#include "core/base/FileUrl.h"
#include "core/memory/SystemClipTypes.h"

#include <algorithm>
#include <iterator>

namespace tidemark::clipTypes {

std::span<const std::string_view> of(ClipPart part) {
    const auto& names = systemClipTypes::names();
    switch (part) {
    case ClipPart::file:
        return names.file;
    case ClipPart::text:
        return names.text;
    case ClipPart::richText:
        return names.richText;
    case ClipPart::image:
        return names.image;
    }
    return {};
}

bool areMarked(const ClipTypeNames& types) {
    return std::ranges::any_of(types, systemClipTypes::isMark);
}

std::vector<ClipData> offered(const MemoryRecord& clip) {
    std::vector<ClipData> offer;
    if (clip.payload && clip.pasteboardType)
        offer.push_back({*clip.pasteboardType, clip.payload->bytes});
    if (clip.text)
        std::ranges::move(systemClipTypes::offeredText(*clip.text), std::back_inserter(offer));
    if (clip.path)
        std::ranges::move(systemClipTypes::offeredFile(fileUrl::of(*clip.path)),
                          std::back_inserter(offer));
    return offer;
}

} // namespace tidemark::clipTypes
