#include "platform/linux/Edid.h"

#include "core/base/Text.h"

#include <numeric>

namespace tidemark {

namespace {

using namespace std::literals;

constexpr std::string_view header = "\x00\xFF\xFF\xFF\xFF\xFF\xFF\x00"sv;
constexpr std::size_t blockSize = 128;
constexpr std::size_t descriptorSize = 18;
constexpr std::string_view nameDescriptor = "\x00\x00\x00\xFC\x00"sv;

unsigned byteAt(std::string_view bytes, std::size_t place) {
    return static_cast<unsigned char>(bytes[place]);
}

std::string nameIn(std::string_view block) {
    for (const std::size_t place : {54U, 72U, 90U, 108U}) {
        auto text = block.substr(place, descriptorSize);
        if (!text.starts_with(nameDescriptor))
            continue;
        text.remove_prefix(nameDescriptor.size());
        return oneLine(trimmed(text.substr(0, text.find('\n'))));
    }
    return {};
}

} // namespace

std::optional<Edid> Edid::parse(std::string_view bytes) {
    if (bytes.size() < blockSize || !bytes.starts_with(header))
        return std::nullopt;
    const auto block = bytes.substr(0, blockSize);
    const auto sum = std::accumulate(block.begin(), block.end(), 0U, [](unsigned all, char byte) {
        return all + static_cast<unsigned char>(byte);
    });
    if (sum % 256 != 0)
        return std::nullopt;
    // Three letters of five bits each, 1 for "A".
    const unsigned letters = byteAt(block, 8) << 8 | byteAt(block, 9);
    Edid edid;
    for (const int shift : {10, 5, 0})
        edid.maker += static_cast<char>('@' + ((letters >> shift) & 31));
    edid.maker = oneLine(edid.maker);
    edid.model = byteAt(block, 10) | byteAt(block, 11) << 8;
    edid.name = nameIn(block);
    return edid;
}

} // namespace tidemark
