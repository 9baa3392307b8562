#include "core/base/JsonEncoder.h"
#include "core/base/PropertyList.h"
#include "core/capture/ApplicationBundle.h"
#include "core/capture/LaunchDefinition.h"

#include <cstdint>
#include <cstdlib>

/// Reads any bytes as a property list, as the metadata of a bundle and as a definition. A list must
/// not be deeper than the maximum depth, and the results must be storable.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

namespace {

using namespace tidemark;

std::size_t depthOf(const PropertyList::Value& value) {
    std::size_t deepest = 0;
    if (const auto* array = value.as<PropertyList::Array>())
        for (const auto& item : *array)
            deepest = std::max(deepest, depthOf(item) + 1);
    if (const auto* dictionary = value.as<PropertyList::Dictionary>())
        for (const auto& [key, item] : *dictionary)
            deepest = std::max(deepest, depthOf(item) + 1);
    return deepest;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    const auto list = PropertyList::parse(text);
    if (list && depthOf(*list) > PropertyList::maximumDepth)
        std::abort();

    const FolderEntry entry{.path = "/folder/name.app", .modified = {}, .sharedVersion = {}};
    if (const auto application = ApplicationBundle::described(text, entry))
        (void)json::encoded(*application);
    if (const auto item = LaunchDefinition::described(text, entry))
        (void)json::encoded(*item);
    return 0;
}
