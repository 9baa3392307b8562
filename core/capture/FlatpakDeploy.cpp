#include "core/capture/FlatpakDeploy.h"

#include "core/base/Text.h"

#include <cstdint>
#include <limits>

/// In the serialised form of GVariant, a container ends with a list of the places at which its
/// parts end. A place is a number, least significant byte first, whose length in bytes depends on
/// the size of the container. In a tuple, the list is in reverse order and leaves out the last part
/// and the parts of fixed size. Alignment counts from the start of the container, which is itself
/// at a multiple of 8 here.
namespace tidemark::FlatpakDeploy {

namespace {

constexpr std::size_t alignment = 8;

std::size_t aligned(std::size_t place) {
    return (place + alignment - 1) / alignment * alignment;
}

/// The length of a place, in bytes, in a container of this size.
std::size_t placeSize(std::size_t size) {
    if (size <= std::numeric_limits<std::uint8_t>::max())
        return 1;
    if (size <= std::numeric_limits<std::uint16_t>::max())
        return 2;
    return size <= std::numeric_limits<std::uint32_t>::max() ? 4 : 8;
}

/// The place written at `start`, of which all bytes must lie in `container`.
std::size_t placeAt(std::string_view container, std::size_t start) {
    std::size_t place = 0;
    for (std::size_t i = placeSize(container.size()); i > 0; --i)
        place = place << 8 | static_cast<unsigned char>(container[start + i - 1]);
    return place;
}

/// The text of a variant of type "s": the text, its NUL, a NUL and the type.
std::optional<std::string> textOf(std::string_view variant) {
    constexpr std::string_view type("\0\0s", 3);
    if (!variant.ends_with(type))
        return std::nullopt;
    variant.remove_suffix(type.size());
    return variant.contains('\0') ? std::nullopt : std::optional(textFromBytes(variant));
}

/// Reads an entry {sv} into `record` if it has one of the keys of `Record`. False when the bytes
/// are not such an entry.
bool takeEntry(std::string_view entry, Record& record) {
    const std::size_t size = placeSize(entry.size());
    if (entry.size() < size)
        return false;
    const std::size_t end = entry.size() - size;
    const std::size_t keyEnd = placeAt(entry, end);
    if (keyEnd == 0 || aligned(keyEnd) > end || entry[keyEnd - 1] != '\0')
        return false;
    const std::string_view key = entry.substr(0, keyEnd - 1);
    const std::string_view value = entry.substr(aligned(keyEnd), end - aligned(keyEnd));
    if (key == "appdata-name")
        record.name = textOf(value);
    else if (key == "appdata-version")
        record.version = textOf(value);
    return true;
}

std::optional<Record> readDictionary(std::string_view array) {
    Record record;
    if (array.empty())
        return record;
    const std::size_t size = placeSize(array.size());
    const std::size_t places = placeAt(array, array.size() - size);
    if (places >= array.size() || (array.size() - places) % size != 0)
        return std::nullopt;
    std::size_t start = 0;
    for (std::size_t place = places; place < array.size(); place += size) {
        const std::size_t end = placeAt(array, place);
        if (start > end || end > places || !takeEntry(array.substr(start, end - start), record))
            return std::nullopt;
        start = aligned(end);
    }
    return record;
}

} // namespace

std::optional<Record> parse(std::string_view bytes) {
    const std::size_t size = placeSize(bytes.size());
    // A tuple (ssasta{sv}): three parts of varying size, each with a place, then a number and the
    // dictionary, which ends where the places begin.
    if (bytes.size() < 3 * size)
        return std::nullopt;
    const std::size_t places = bytes.size() - 3 * size;
    const std::size_t listEnd = placeAt(bytes, places);
    const std::size_t start = aligned(listEnd) + sizeof(std::uint64_t);
    if (start > places)
        return std::nullopt;
    return readDictionary(bytes.substr(start, places - start));
}

} // namespace tidemark::FlatpakDeploy
