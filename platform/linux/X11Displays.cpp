#include "platform/linux/X11Displays.h"

#include "core/base/Text.h"
#include "platform/linux/DisplayNames.h"
#include "platform/linux/Edid.h"

#include <algorithm>
#include <span>

namespace tidemark {

namespace {

constexpr std::uint32_t mostEdidBytes = 1024;

double refreshRate(const xcb_randr_mode_info_t& mode) {
    double lines = mode.vtotal;
    if ((mode.mode_flags & XCB_RANDR_MODE_FLAG_DOUBLE_SCAN) != 0)
        lines *= 2;
    if ((mode.mode_flags & XCB_RANDR_MODE_FLAG_INTERLACE) != 0)
        lines /= 2;
    const double dots = mode.htotal * lines;
    return dots > 0 ? mode.dot_clock / dots : 0;
}

bool isTurned(std::uint16_t rotation) {
    return (rotation & (XCB_RANDR_ROTATION_ROTATE_90 | XCB_RANDR_ROTATION_ROTATE_270)) != 0;
}

} // namespace

X11Displays::X11Displays(X11Connection& connection, Changed wanted)
    : Observer(connection), changed(std::move(wanted)) {
    auto* raw = connection.raw();
    const auto* extension = xcb_get_extension_data(raw, &xcb_randr_id);
    if (extension == nullptr || extension->present == 0)
        return;
    const XcbPointer<xcb_randr_query_version_reply_t> version{
        xcb_randr_query_version_reply(raw, xcb_randr_query_version(raw, 1, 5), nullptr)};
    firstEvent = extension->first_event;
    xcb_randr_select_input(raw, connection.root(),
                           XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE
                               | XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
    read();
}

void X11Displays::handle(const xcb_generic_event_t& event) {
    const int kind = event.response_type & 0x7F;
    const bool isChange = firstEvent
                          && (kind == *firstEvent + XCB_RANDR_NOTIFY
                              || kind == *firstEvent + XCB_RANDR_SCREEN_CHANGE_NOTIFY);
    if (!isChange || std::exchange(isReadDue, true))
        return;
    connection.after(settleTime, &context, [this] { read(); });
}

void X11Displays::read() {
    isReadDue = false;
    auto* raw = connection.raw();
    const XcbPointer<Resources> resources{xcb_randr_get_screen_resources_current_reply(
        raw, xcb_randr_get_screen_resources_current(raw, connection.root()), nullptr)};
    if (!resources)
        return;
    const auto count = xcb_randr_get_screen_resources_current_outputs_length(resources.get());
    std::vector<ObservedDisplay> now;
    for (const auto output :
         std::span(xcb_randr_get_screen_resources_current_outputs(resources.get()),
                   static_cast<std::size_t>(count)))
        if (auto shown = display(output, *resources))
            now.push_back(*std::move(shown));
    if (last == now)
        return;
    last = now;
    changed(std::move(now));
}

std::optional<ObservedDisplay> X11Displays::display(xcb_randr_output_t output,
                                                    const Resources& resources) {
    auto* raw = connection.raw();
    const XcbPointer<xcb_randr_get_output_info_reply_t> info{xcb_randr_get_output_info_reply(
        raw, xcb_randr_get_output_info(raw, output, resources.config_timestamp), nullptr)};
    if (!info || info->connection != XCB_RANDR_CONNECTION_CONNECTED || info->crtc == XCB_NONE)
        return std::nullopt;
    const auto length = static_cast<std::size_t>(xcb_randr_get_output_info_name_length(info.get()));
    const std::string_view name(
        reinterpret_cast<const char*>(xcb_randr_get_output_info_name(info.get())), length);
    const std::string connector = textFromBytes(name);
    ObservedDisplay display{connector, connector, mode(info->crtc, resources)};
    if (const auto edid = Edid::parse(edidOf(output))) {
        display.key += " " + edid->maker + " " + std::to_string(edid->model);
        if (!edid->name.empty())
            display.name = edid->name;
    }
    if (display.mode)
        display.mode->builtIn = isBuiltInConnector(connector);
    return display;
}

std::optional<DisplayContext> X11Displays::mode(xcb_randr_crtc_t crtc, const Resources& resources) {
    auto* raw = connection.raw();
    const XcbPointer<xcb_randr_get_crtc_info_reply_t> info{xcb_randr_get_crtc_info_reply(
        raw, xcb_randr_get_crtc_info(raw, crtc, resources.config_timestamp), nullptr)};
    if (!info || info->width == 0)
        return std::nullopt;
    const auto count = xcb_randr_get_screen_resources_current_modes_length(&resources);
    const std::span modes(xcb_randr_get_screen_resources_current_modes(&resources),
                          static_cast<std::size_t>(count));
    const auto mode = std::ranges::find(modes, info->mode, &xcb_randr_mode_info_t::id);
    if (mode == modes.end())
        return std::nullopt;
    DisplayContext context{.pixelWidth = mode->width,
                           .pixelHeight = mode->height,
                           .logicalWidth = info->width,
                           .logicalHeight = info->height,
                           .refreshRate = {}};
    if (isTurned(info->rotation))
        std::swap(context.pixelWidth, context.pixelHeight);
    context.scale = static_cast<double>(context.pixelWidth) / info->width;
    if (const double rate = refreshRate(*mode); rate > 0)
        context.refreshRate = rate;
    return context;
}

std::string X11Displays::edidOf(xcb_randr_output_t output) {
    auto* raw = connection.raw();
    const XcbPointer<xcb_randr_get_output_property_reply_t> reply{
        xcb_randr_get_output_property_reply(
            raw,
            xcb_randr_get_output_property(raw, output, connection.atom("EDID"),
                                          XCB_GET_PROPERTY_TYPE_ANY, 0, mostEdidBytes / 4, 0, 0),
            nullptr)};
    if (!reply || reply->format != 8)
        return {};
    const auto length =
        static_cast<std::size_t>(xcb_randr_get_output_property_data_length(reply.get()));
    return {reinterpret_cast<const char*>(xcb_randr_get_output_property_data(reply.get())), length};
}

} // namespace tidemark
