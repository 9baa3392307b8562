#pragma once

#include "core/activity/WiFiDetails.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tidemark {

/// Follows the links of the Wi-Fi interfaces. Main thread only.
class WiFiSource {
public:
    struct Link {
        WiFiDetails::Interface interface;
        /// Absent where nothing is known about the network.
        std::optional<WiFiDetails::Reading> details{};

        bool operator==(const Link&) const = default;
    };
    /// All interfaces; absent when they can't be listed or when what was known is no longer valid.
    using Links = std::optional<std::vector<Link>>;
    using Receive = std::function<void(const Links& links)>;
    enum class Names { omit, read };

    virtual ~WiFiSource() = default;

    /// Starts to follow; may be called again to change `names`. Calls `receive` from the event loop
    /// with the present links, and again after changes; also with equal links. With `Names::omit`
    /// the names of networks are not even read. Returns false when links can't be followed.
    /// `receive` must not destroy the source.
    virtual bool start(Names names, Receive receive) = 0;
    virtual void stop() = 0;

    /// A sentence that says why the names of networks can't be read on this machine; absent when
    /// they can be read, and while it is not known whether they can. Can be asked at any time.
    virtual std::optional<std::string> namesAbsence() const = 0;
};

} // namespace tidemark
