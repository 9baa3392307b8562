#include "platform/linux/NetlinkAttributes.h"

#include <algorithm>

#include <linux/netlink.h>
#include <linux/rtnetlink.h>

namespace tidemark {

void netlinkAttributes::forEach(
    std::span<const std::byte> attributes,
    const std::function<void(std::uint16_t, std::span<const std::byte>)>& use) {
    while (attributes.size() >= sizeof(rtattr)) {
        const auto header = read<rtattr>(attributes);
        if (header.rta_len < sizeof header || header.rta_len > attributes.size())
            return;
        use(header.rta_type & NLA_TYPE_MASK,
            attributes.first(header.rta_len).subspan(sizeof header));
        attributes =
            attributes.subspan(std::min(attributes.size(), std::size_t{RTA_ALIGN(header.rta_len)}));
    }
}

std::uint32_t netlinkAttributes::number32(std::span<const std::byte> value) {
    return value.size() < sizeof(std::uint32_t) ? 0 : read<std::uint32_t>(value);
}

std::string_view netlinkAttributes::text(std::span<const std::byte> value) {
    const std::string_view all(reinterpret_cast<const char*>(value.data()), value.size());
    return all.substr(0, all.find('\0'));
}

} // namespace tidemark
