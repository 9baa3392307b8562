#pragma once

#include "platform/linux/WaylandConnection.h"

/// The protocols ext-data-control-v1 and wlr-data-control-unstable-v1, which have the same form: a
/// program may read and set the clipboard without having the keyboard focus. Requests and events
/// are numbered in the order of the protocol.
namespace tidemark::dataControl {

namespace managerRequest {
inline constexpr std::uint32_t createSource = 0;
inline constexpr std::uint32_t getDevice = 1;
inline constexpr std::uint32_t destroy = 2;
} // namespace managerRequest

namespace deviceRequest {
inline constexpr std::uint32_t setSelection = 0;
inline constexpr std::uint32_t destroy = 1;
} // namespace deviceRequest

namespace sourceRequest {
inline constexpr std::uint32_t offer = 0;
inline constexpr std::uint32_t destroy = 1;
} // namespace sourceRequest

namespace offerRequest {
inline constexpr std::uint32_t receive = 0;
inline constexpr std::uint32_t destroy = 1;
} // namespace offerRequest

struct DeviceListener {
    /// A new offer. Its types follow as events of the offer, then `selection` or `primarySelection`
    /// says which selection it belongs to.
    void (*dataOffer)(void* data, wl_proxy* device, wl_proxy* offer);
    /// The clipboard now has this offer; null when it is empty.
    void (*selection)(void* data, wl_proxy* device, wl_proxy* offer);
    /// The device is of no use any more.
    void (*finished)(void* data, wl_proxy* device);
    void (*primarySelection)(void* data, wl_proxy* device, wl_proxy* offer);
};

struct SourceListener {
    /// Write the content to the descriptor and close it.
    void (*send)(void* data, wl_proxy* source, const char* type, int descriptor);
    /// Another source has replaced this one.
    void (*cancelled)(void* data, wl_proxy* source);
};

struct OfferListener {
    void (*offer)(void* data, wl_proxy* offer, const char* type);
};

/// True when the compositor has one of the protocols and a seat.
bool isOffered(const WaylandConnection& connection);

/// Binds the manager of the protocol that the compositor has, ext if it has both. To be called only
/// where `isOffered` is true.
WaylandObject bindManager(WaylandConnection& connection);
WaylandObject getDevice(const WaylandObject& manager, wl_seat* seat);
WaylandObject createSource(const WaylandObject& manager);

/// Binds the first seat. To be called only where `isOffered` is true.
WaylandObject bindSeat(WaylandConnection& connection);

} // namespace tidemark::dataControl
