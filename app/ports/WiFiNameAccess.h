#pragma once

#include <functional>

namespace tidemark {

/// Whether the system lets this program read the names of Wi-Fi networks, which some systems treat
/// as the location of the user. Main thread only.
class WiFiNameAccess {
public:
    enum class Permission { undetermined, denied, granted };

    virtual ~WiFiNameAccess() = default;

    virtual Permission permission() const = 0;
    /// False while the user has turned off the service that the permission belongs to.
    virtual bool isServiceOn() const = 0;
    /// Lets the system ask the user for the permission.
    virtual void request() = 0;
    /// Opens the page of the system's settings where the user can grant it.
    virtual void openSettings() = 0;
    /// `changed` is called from the event loop when the permission has changed.
    virtual void follow(std::function<void()> changed) = 0;
};

} // namespace tidemark
