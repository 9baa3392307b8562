#include "core/packages/RpmHeader.h"

#include "core/base/Text.h"

namespace tidemark {

namespace {

constexpr std::size_t countsSize = 8;
constexpr std::size_t entrySize = 16;

enum Tag : std::uint32_t {
    nameTag = 1000,
    versionTag = 1001,
    releaseTag = 1002,
    epochTag = 1003,
    /// For each file, the place of its folder in the list of folders.
    folderPlacesTag = 1116,
    /// For each file, its name without a folder.
    fileNamesTag = 1117,
    /// The list of folders, each with a slash at the end.
    foldersTag = 1118,
};
enum Type : std::uint32_t { numbers = 4, oneText = 6, texts = 8 };

/// The four bytes from `place` must be in `bytes`.
std::uint32_t numberAt(std::string_view bytes, std::size_t place) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i)
        number = number << 8 | static_cast<unsigned char>(bytes[place + i]);
    return number;
}

} // namespace

std::optional<RpmHeader> RpmHeader::parse(std::string_view bytes) {
    if (bytes.size() < countsSize)
        return std::nullopt;
    // In 64 bits, in which the sum can't overflow.
    const std::uint64_t indexSize = std::uint64_t{numberAt(bytes, 0)} * entrySize;
    const std::uint64_t dataSize = numberAt(bytes, 4);
    bytes.remove_prefix(countsSize);
    if (indexSize + dataSize != bytes.size())
        return std::nullopt;
    RpmHeader header;
    header.index = bytes.substr(0, indexSize);
    header.data = bytes.substr(indexSize);
    return header;
}

std::optional<RpmHeader::Entry> RpmHeader::find(std::uint32_t tag, std::uint32_t type) const {
    for (std::size_t place = 0; place < index.size(); place += entrySize) {
        const Entry entry{numberAt(index, place), numberAt(index, place + 4),
                          numberAt(index, place + 8), numberAt(index, place + 12)};
        if (entry.tag == tag && entry.type == type && entry.offset < data.size())
            return entry;
    }
    return std::nullopt;
}

std::optional<std::uint32_t> RpmHeader::number(std::uint32_t tag, std::size_t place) const {
    const auto entry = find(tag, numbers);
    if (!entry || place >= entry->count || place >= (data.size() - entry->offset) / 4)
        return std::nullopt;
    return numberAt(data, entry->offset + place * 4);
}

std::optional<std::string_view> RpmHeader::text(std::uint32_t tag, std::uint32_t type,
                                                std::size_t place) const {
    const auto entry = find(tag, type);
    if (!entry || place >= entry->count)
        return std::nullopt;
    std::string_view rest = data.substr(entry->offset);
    while (true) {
        const auto end = rest.find('\0');
        if (end == std::string_view::npos)
            return std::nullopt;
        if (place-- == 0)
            return rest.substr(0, end);
        rest.remove_prefix(end + 1);
    }
}

std::optional<PackageOwner> RpmHeader::owner() const {
    const auto name = text(nameTag, oneText, 0);
    const auto version = text(versionTag, oneText, 0);
    const auto release = text(releaseTag, oneText, 0);
    if (!name || !version || !release || name->empty() || version->empty())
        return std::nullopt;
    const auto epoch = number(epochTag, 0);
    return PackageOwner{textFromBytes(*name), (epoch ? std::to_string(*epoch) + ":" : "")
                                                  + textFromBytes(*version) + "-"
                                                  + textFromBytes(*release)};
}

std::optional<std::string> RpmHeader::file(std::size_t place) const {
    const auto name = text(fileNamesTag, texts, place);
    const auto folderPlace = number(folderPlacesTag, place);
    const auto folder = folderPlace ? text(foldersTag, texts, *folderPlace) : std::nullopt;
    if (!name || !folder)
        return std::nullopt;
    return std::string(*folder) + std::string(*name);
}

} // namespace tidemark
