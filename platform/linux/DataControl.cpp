#include "platform/linux/DataControl.h"

#include <array>

namespace tidemark::dataControl {

namespace {

constexpr std::array<std::string_view, 2> managers{"ext_data_control_manager_v1",
                                                   "zwlr_data_control_manager_v1"};
/// The version of wlr, which is the same as version 1 of ext. `bind` lowers it to the version that
/// the compositor has.
constexpr std::uint32_t managerVersion = 2;

// The tables refer to each other, so they are one object. It is never destroyed: another thread may
// still use it when the process ends. The arrays of types are not const, because wl_message
// requires pointers that may be changed.
struct Tables {
    wl_interface offer{};
    wl_interface source{};
    wl_interface device{};
    wl_interface manager{};

    std::array<const wl_interface*, 2> none{};
    std::array<const wl_interface*, 1> offerType{&offer};
    std::array<const wl_interface*, 1> sourceType{&source};
    std::array<const wl_interface*, 2> deviceTypes{&device, &wl_seat_interface};

    std::array<wl_message, 2> offerRequests{{
        {"receive", "sh", none.data()},
        {"destroy", "", none.data()},
    }};
    std::array<wl_message, 1> offerEvents{{{"offer", "s", none.data()}}};
    std::array<wl_message, 2> sourceRequests{{
        {"offer", "s", none.data()},
        {"destroy", "", none.data()},
    }};
    std::array<wl_message, 2> sourceEvents{{
        {"send", "sh", none.data()},
        {"cancelled", "", none.data()},
    }};
    std::array<wl_message, 3> deviceRequests{{
        {"set_selection", "?o", sourceType.data()},
        {"destroy", "", none.data()},
        {"set_primary_selection", "?o", sourceType.data()},
    }};
    std::array<wl_message, 4> deviceEvents{{
        {"data_offer", "n", offerType.data()},
        {"selection", "?o", offerType.data()},
        {"finished", "", none.data()},
        {"primary_selection", "?o", offerType.data()},
    }};
    std::array<wl_message, 3> managerRequests{{
        {"create_data_source", "n", sourceType.data()},
        {"get_data_device", "no", deviceTypes.data()},
        {"destroy", "", none.data()},
    }};

    Tables() {
        offer = {"data_control_offer", managerVersion, 2, offerRequests.data(), 1,
                 offerEvents.data()};
        source = {"data_control_source", managerVersion, 2, sourceRequests.data(), 2,
                  sourceEvents.data()};
        device = {"data_control_device", managerVersion, 3, deviceRequests.data(), 4,
                  deviceEvents.data()};
        manager = {"data_control_manager", managerVersion, 3, managerRequests.data(), 0, nullptr};
    }
    Tables(const Tables&) = delete;
    Tables& operator=(const Tables&) = delete;
};

const Tables& tables() {
    static const Tables& only = *new Tables;
    return only;
}

const WaylandConnection::Global* managerOf(const WaylandConnection& connection) {
    for (const auto name : managers)
        if (const auto* global = connection.global(name))
            return global;
    return nullptr;
}

} // namespace

bool isOffered(const WaylandConnection& connection) {
    return managerOf(connection) != nullptr && connection.global(wl_seat_interface.name) != nullptr;
}

WaylandObject bindManager(WaylandConnection& connection) {
    return {connection.bind(*managerOf(connection), tables().manager, managerVersion),
            managerRequest::destroy};
}

WaylandObject getDevice(const WaylandObject& manager, wl_seat* seat) {
    return {wl_proxy_marshal_flags(manager.get(), managerRequest::getDevice, &tables().device,
                                   wl_proxy_get_version(manager.get()), 0, nullptr, seat),
            deviceRequest::destroy};
}

WaylandObject createSource(const WaylandObject& manager) {
    return {wl_proxy_marshal_flags(manager.get(), managerRequest::createSource, &tables().source,
                                   wl_proxy_get_version(manager.get()), 0, nullptr),
            sourceRequest::destroy};
}

WaylandObject bindSeat(WaylandConnection& connection) {
    const auto* seat = connection.global(wl_seat_interface.name);
    // The first version of a seat can't be released by a request.
    return {connection.bind(*seat, wl_seat_interface, 1), std::nullopt};
}

} // namespace tidemark::dataControl
