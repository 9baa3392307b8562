#pragma once

#include "core/activity/NetworkRoutes.h"

#include <filesystem>
#include <vector>

/// Reads links and routes from the kernel (rtnetlink(7)) and, from its folder of network devices,
/// which of the links are Wi-Fi or cellular. Everything is answered by the kernel and nothing is
/// sent to a network. The functions wait for locks of the kernel, so they must not be called on the
/// event loop. They throw `Error` when no netlink socket can be opened. What the kernel does not
/// answer is left out.
namespace tidemark::kernelRoutes {

inline const std::filesystem::path deviceFolder = "/sys/class/net";

/// All links of the network namespace of this process.
std::vector<NetworkRoutes::Link> links(const std::filesystem::path& devices = deviceFolder);

/// The links, the kernel's choice for a packet to the internet, and the default routes.
NetworkRoutes::Reading read(const std::filesystem::path& devices = deviceFolder);

} // namespace tidemark::kernelRoutes
