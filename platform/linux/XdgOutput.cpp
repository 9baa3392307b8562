#include "platform/linux/XdgOutput.h"

#include <array>

namespace tidemark::xdgOutput {

namespace {

constexpr std::string_view managerName = "zxdg_output_manager_v1";
constexpr std::uint32_t version = 3;
constexpr std::uint32_t destroyRequest = 0;
constexpr std::uint32_t getRequest = 1;

struct Tables {
    wl_interface output{};
    wl_interface manager{};
    std::array<const wl_interface*, 2> none{};
    std::array<const wl_interface*, 2> getTypes{&output, &wl_output_interface};
    std::array<wl_message, 1> outputRequests{{{"destroy", "", none.data()}}};
    std::array<wl_message, 5> outputEvents{{
        {"logical_position", "ii", none.data()},
        {"logical_size", "ii", none.data()},
        {"done", "", none.data()},
        {"name", "2s", none.data()},
        {"description", "2s", none.data()},
    }};
    std::array<wl_message, 2> managerRequests{{
        {"destroy", "", none.data()},
        {"get_xdg_output", "no", getTypes.data()},
    }};

    Tables() {
        output = {"zxdg_output_v1", version, 1, outputRequests.data(), 5, outputEvents.data()};
        manager = {managerName.data(), version, 2, managerRequests.data(), 0, nullptr};
    }
    Tables(const Tables&) = delete;
    Tables& operator=(const Tables&) = delete;
};

const Tables& tables() {
    // Never destroyed: another thread may still use them when the process ends.
    static const Tables& only = *new Tables;
    return only;
}

} // namespace

WaylandObject bindManager(WaylandConnection& connection) {
    const auto* global = connection.global(managerName);
    if (global == nullptr)
        return {};
    return {connection.bind(*global, tables().manager, version), destroyRequest};
}

WaylandObject get(const WaylandObject& manager, wl_output* output) {
    return {wl_proxy_marshal_flags(manager.get(), getRequest, &tables().output,
                                   wl_proxy_get_version(manager.get()), 0, nullptr, output),
            destroyRequest};
}

} // namespace tidemark::xdgOutput
