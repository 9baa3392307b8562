#include "platform/linux/KernelRoutes.h"

#include "core/base/Error.h"
#include "platform/linux/NetlinkAttributes.h"
#include "platform/linux/NetlinkSocket.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <fstream>
#include <optional>

#include <arpa/inet.h>
#include <linux/rtnetlink.h>
#include <net/if.h>

namespace tidemark::kernelRoutes {

namespace {

using Bytes = std::vector<std::byte>;
using NetworkRoutes::Link;
using NetworkRoutes::LinkIndex;

/// The body of a question: one of the kernel's structs, followed by attributes.
class Body {
public:
    explicit Body(const auto& fields) : bytes(sizeof fields) {
        std::memcpy(bytes.data(), &fields, sizeof fields);
    }
    Body& add(std::uint16_t type, const void* value, std::size_t size) {
        rtattr header{};
        header.rta_len = static_cast<std::uint16_t>(sizeof header + size);
        header.rta_type = type;
        const std::size_t start = bytes.size();
        // All values have sizes that are multiples of four, so nothing needs to be aligned.
        bytes.resize(start + header.rta_len);
        std::memcpy(bytes.data() + start, &header, sizeof header);
        std::memcpy(bytes.data() + start + sizeof header, value, size);
        return *this;
    }
    operator std::span<const std::byte>() const { return bytes; }

private:
    Bytes bytes;
};

/// Splits a message into its struct and its attributes; absent when it is too short.
template <class Fields>
std::optional<std::pair<Fields, std::span<const std::byte>>>
split(std::span<const std::byte> body) {
    if (body.size() < sizeof(Fields))
        return std::nullopt;
    Fields fields{};
    std::memcpy(&fields, body.data(), sizeof fields);
    return std::pair(fields, body.subspan(sizeof fields));
}

/// Reads whether a link is Wi-Fi or cellular, which only the folder of its device says.
void readRadio(Link& link, const std::filesystem::path& devices) {
    std::error_code error;
    const auto folder = devices / link.name;
    link.isWireless = std::filesystem::exists(folder / "wireless", error)
                      || std::filesystem::exists(folder / "phy80211", error);
    std::ifstream event(folder / "uevent");
    for (std::string line; std::getline(event, line);)
        if (line == "DEVTYPE=wwan")
            link.isCellular = true;
}

std::optional<Link> linkOf(std::span<const std::byte> body) {
    const auto parts = split<ifinfomsg>(body);
    if (!parts)
        return std::nullopt;
    const auto& [fields, attributes] = *parts;
    Link link{.index = fields.ifi_index, .hardware = fields.ifi_type};
    link.isRunning = (fields.ifi_flags & IFF_RUNNING) != 0;
    netlinkAttributes::forEach(attributes, [&](std::uint16_t type, const auto& value) {
        if (type == IFLA_IFNAME)
            link.name = netlinkAttributes::text(value);
        else if (type == IFLA_MASTER)
            link.master = static_cast<LinkIndex>(netlinkAttributes::number32(value));
        else if (type == IFLA_LINK)
            link.lower = static_cast<LinkIndex>(netlinkAttributes::number32(value));
        else if (type == IFLA_LINKINFO)
            netlinkAttributes::forEach(value, [&](std::uint16_t inner, const auto& kind) {
                if (inner == IFLA_INFO_KIND)
                    link.kind = netlinkAttributes::text(kind);
            });
    });
    return link;
}

std::vector<Link> links(NetlinkSocket& kernel, const std::filesystem::path& devices) {
    ifinfomsg fields{};
    constexpr std::uint32_t withoutStatistics = 1 << 3;
    Body body(fields);
    body.add(IFLA_EXT_MASK, &withoutStatistics, sizeof withoutStatistics);
    std::vector<Link> found;
    const auto add = [&](std::uint16_t type, const auto& message) {
        if (auto link = type == RTM_NEWLINK ? linkOf(message) : std::nullopt)
            found.push_back(*std::move(link));
    };
    if (const int failure = kernel.ask(RTM_GETLINK, NLM_F_DUMP, body, add))
        throw Error(std::string("The network interfaces can't be read: ") + std::strerror(failure)
                    + ".");
    for (auto& link : found)
        if (link.kind.empty())
            readRadio(link, devices);
    return found;
}

struct Route {
    unsigned char type = RTN_UNSPEC;
    std::uint32_t table = RT_TABLE_UNSPEC;
    unsigned char prefix = 0;
    std::uint32_t metric = 0;
    LinkIndex link = 0;
};

/// The link of the first hop of a route with several.
LinkIndex firstHop(std::span<const std::byte> hops) {
    const auto parts = split<rtnexthop>(hops);
    return parts ? parts->first.rtnh_ifindex : 0;
}

std::optional<Route> routeOf(std::span<const std::byte> body) {
    const auto parts = split<rtmsg>(body);
    if (!parts)
        return std::nullopt;
    const auto& [fields, attributes] = *parts;
    Route route{fields.rtm_type, fields.rtm_table, fields.rtm_dst_len, 0, 0};
    netlinkAttributes::forEach(attributes, [&](std::uint16_t type, const auto& value) {
        if (type == RTA_TABLE)
            route.table = netlinkAttributes::number32(value);
        else if (type == RTA_PRIORITY)
            route.metric = netlinkAttributes::number32(value);
        else if (type == RTA_OIF)
            route.link = static_cast<LinkIndex>(netlinkAttributes::number32(value));
        else if (type == RTA_MULTIPATH)
            route.link = firstHop(value);
    });
    return route;
}

/// The link by which a packet to an address would leave, by all rules and tables; absent without a
/// route.
std::optional<LinkIndex> lookUp(NetlinkSocket& kernel, unsigned char family, const char* address) {
    std::array<std::byte, 16> destination{};
    ::inet_pton(family, address, destination.data());
    const std::size_t size = family == AF_INET ? 4 : 16;
    rtmsg fields{};
    fields.rtm_family = family;
    fields.rtm_dst_len = static_cast<unsigned char>(size * 8);
    Body body(fields);
    body.add(RTA_DST, destination.data(), size);
    std::optional<LinkIndex> link;
    kernel.ask(RTM_GETROUTE, 0, body, [&](std::uint16_t, const auto& message) {
        const auto route = routeOf(message);
        if (route && route->type == RTN_UNICAST && route->link > 0)
            link = route->link;
    });
    return link;
}

/// The default routes of the main table, preferred ones first.
std::vector<LinkIndex> defaults(NetlinkSocket& kernel, unsigned char family) {
    rtmsg fields{};
    fields.rtm_family = family;
    fields.rtm_table = RT_TABLE_MAIN;
    std::vector<Route> routes;
    kernel.ask(RTM_GETROUTE, NLM_F_DUMP, Body(fields), [&](std::uint16_t, const auto& message) {
        const auto route = routeOf(message);
        if (route && route->table == RT_TABLE_MAIN && route->type == RTN_UNICAST
            && route->prefix == 0 && route->link > 0)
            routes.push_back(*route);
    });
    std::ranges::stable_sort(routes, {}, &Route::metric);
    std::vector<LinkIndex> links;
    for (const auto& route : routes)
        links.push_back(route.link);
    return links;
}

} // namespace

std::vector<Link> links(const std::filesystem::path& devices) {
    NetlinkSocket kernel(NetlinkSocket::Protocol::routing);
    return links(kernel, devices);
}

NetworkRoutes::Reading read(const std::filesystem::path& devices) {
    NetlinkSocket kernel(NetlinkSocket::Protocol::routing);
    NetworkRoutes::Reading reading;
    // Addresses for documentation (RFC 5737, RFC 3849), which no network uses.
    for (const auto& [family, address] :
         {std::pair<unsigned char, const char*>{AF_INET, "192.0.2.1"}, {AF_INET6, "2001:db8::1"}}) {
        if (const auto link = lookUp(kernel, family, address))
            reading.routes.push_back(*link);
        std::ranges::copy(defaults(kernel, family), std::back_inserter(reading.defaults));
    }
    // Last, so that links added meanwhile are known.
    reading.links = links(kernel, devices);
    return reading;
}

} // namespace tidemark::kernelRoutes
