#include "platform/linux/ForeignToplevels.h"

#include "core/base/Text.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

namespace tidemark {

namespace {

constexpr std::string_view managerName = "zwlr_foreign_toplevel_manager_v1";

// One object, because the tables refer to each other. It is never destroyed: another thread may
// still use it when the process ends.
struct Tables {
    wl_interface window{};
    wl_interface manager{};
    std::array<const wl_interface*, 5> none{};
    std::array<const wl_interface*, 1> seat{&wl_seat_interface};
    std::array<const wl_interface*, 1> output{&wl_output_interface};
    std::array<const wl_interface*, 5> rectangle{&wl_surface_interface};
    std::array<const wl_interface*, 1> windowType{&window};
    std::array<wl_message, 8> windowRequests{{
        {"set_maximized", "", none.data()},
        {"unset_maximized", "", none.data()},
        {"set_minimized", "", none.data()},
        {"unset_minimized", "", none.data()},
        {"activate", "o", seat.data()},
        {"close", "", none.data()},
        {"set_rectangle", "oiiii", rectangle.data()},
        {"destroy", "", none.data()},
    }};
    std::array<wl_message, 7> windowEvents{{
        {"title", "s", none.data()},
        {"app_id", "s", none.data()},
        {"output_enter", "o", output.data()},
        {"output_leave", "o", output.data()},
        {"state", "a", none.data()},
        {"done", "", none.data()},
        {"closed", "", none.data()},
    }};
    std::array<wl_message, 1> managerRequests{{{"stop", "", none.data()}}};
    std::array<wl_message, 2> managerEvents{{
        {"toplevel", "n", windowType.data()},
        {"finished", "", none.data()},
    }};

    Tables() {
        window = {
            "zwlr_foreign_toplevel_handle_v1", 1, 8, windowRequests.data(), 7, windowEvents.data()};
        manager = {managerName.data(), 1, 1, managerRequests.data(), 2, managerEvents.data()};
    }
    Tables(const Tables&) = delete;
    Tables& operator=(const Tables&) = delete;
};

const Tables& tables() {
    static const Tables& only = *new Tables;
    return only;
}

} // namespace

/// The numbers of a request and a state in the protocol, and the functions that are called for its
/// events.
struct ForeignToplevels::Protocol {
    static constexpr std::uint32_t destroyWindow = 7;
    static constexpr std::uint32_t activated = 2;

    struct ManagerListener {
        void (*toplevel)(void* data, wl_proxy* manager, wl_proxy* window);
        void (*finished)(void* data, wl_proxy* manager);
    };
    struct WindowListener {
        void (*title)(void* data, wl_proxy* window, const char* title);
        void (*appId)(void* data, wl_proxy* window, const char* id);
        void (*outputEnter)(void* data, wl_proxy* window, wl_proxy* output);
        void (*outputLeave)(void* data, wl_proxy* window, wl_proxy* output);
        void (*state)(void* data, wl_proxy* window, wl_array* states);
        void (*done)(void* data, wl_proxy* window);
        void (*closed)(void* data, wl_proxy* window);
    };

    static const ManagerListener managerListener;
    static const WindowListener windowListener;

    static ForeignToplevels& self(void* data) { return *static_cast<ForeignToplevels*>(data); }
};

const ForeignToplevels::Protocol::ManagerListener ForeignToplevels::Protocol::managerListener{
    .toplevel =
        [](void* data, wl_proxy*, wl_proxy* window) {
            self(data).windows.push_back({.object = {window, destroyWindow}, .application = {}});
            wl_proxy_add_listener(
                window, reinterpret_cast<void (**)()>(const_cast<WindowListener*>(&windowListener)),
                data);
        },
    // The compositor reports no windows from now on. They may still be open, so `changed`, after
    // which applications without a window count as ended, is not called.
    .finished = [](void* data, wl_proxy*) { self(data).windows.clear(); },
};

const ForeignToplevels::Protocol::WindowListener ForeignToplevels::Protocol::windowListener{
    .title = [](void*, wl_proxy*, const char*) {},
    .appId =
        [](void* data, wl_proxy* object, const char* id) {
            if (auto* window = self(data).windowOf(object))
                window->application = textFromBytes(id);
        },
    .outputEnter = [](void*, wl_proxy*, wl_proxy*) {},
    .outputLeave = [](void*, wl_proxy*, wl_proxy*) {},
    .state =
        [](void* data, wl_proxy* object, wl_array* states) {
            const std::span numbers(static_cast<const std::uint32_t*>(states->data),
                                    states->size / sizeof(std::uint32_t));
            if (auto* window = self(data).windowOf(object))
                window->isActive = std::ranges::find(numbers, activated) != numbers.end();
        },
    .done = [](void* data, wl_proxy*) { self(data).changed(); },
    .closed =
        [](void* data, wl_proxy* object) {
            self(data).windows.remove_if(
                [&](const Window& window) { return window.object.get() == object; });
            self(data).changed();
        },
};

ForeignToplevels::ForeignToplevels(WaylandConnection& connection, std::function<void()> changed)
    : changed(std::move(changed)) {
    const auto* global = connection.global(managerName);
    if (global == nullptr)
        return;
    manager = {connection.bind(*global, tables().manager, 1), std::nullopt};
    wl_proxy_add_listener(manager.get(),
                          reinterpret_cast<void (**)()>(
                              const_cast<Protocol::ManagerListener*>(&Protocol::managerListener)),
                          this);
}

ForeignToplevels::Window* ForeignToplevels::windowOf(wl_proxy* object) {
    const auto found = std::ranges::find_if(
        windows, [&](const Window& window) { return window.object.get() == object; });
    return found == windows.end() ? nullptr : &*found;
}

std::optional<std::string> ForeignToplevels::activeApplication() const {
    const auto found = std::ranges::find_if(windows, &Window::isActive);
    if (found == windows.end() || found->application.empty())
        return std::nullopt;
    return found->application;
}

std::set<std::string> ForeignToplevels::applications() const {
    std::set<std::string> all;
    for (const auto& window : windows)
        if (!window.application.empty())
            all.insert(window.application);
    return all;
}

} // namespace tidemark
