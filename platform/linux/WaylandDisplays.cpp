#include "platform/linux/WaylandDisplays.h"

#include "core/base/Text.h"
#include "platform/linux/DisplayNames.h"
#include "platform/linux/XdgOutput.h"

#include <algorithm>

namespace tidemark {

namespace {

/// The version that added the name of the connector.
constexpr std::uint32_t outputVersion = 4;

bool isTurned(std::int32_t transform) {
    return transform == WL_OUTPUT_TRANSFORM_90 || transform == WL_OUTPUT_TRANSFORM_270
           || transform == WL_OUTPUT_TRANSFORM_FLIPPED_90
           || transform == WL_OUTPUT_TRANSFORM_FLIPPED_270;
}

/// Empty for what a compositor writes when it does not know.
std::string known(const char* text) {
    auto name = oneLine(trimmed(text));
    return asciiLowercased(name) == "unknown" ? std::string() : name;
}

} // namespace

/// One output and what the compositor has said of it.
class WaylandDisplays::Output {
public:
    Output(WaylandDisplays& displays, const WaylandConnection::Global& global)
        : displays(displays), number(global.name),
          object(displays.connection.bind(global, wl_output_interface, outputVersion),
                 global.version >= WL_OUTPUT_RELEASE_SINCE_VERSION
                     ? std::optional<std::uint32_t>(WL_OUTPUT_RELEASE)
                     : std::nullopt) {
        wl_output_add_listener(object.as<wl_output>(), &outputListener, this);
        if (!displays.manager)
            return;
        logical = xdgOutput::get(displays.manager, object.as<wl_output>());
        wl_proxy_add_listener(
            logical.get(),
            reinterpret_cast<void (**)()>(const_cast<xdgOutput::Listener*>(&logicalListener)),
            this);
    }

    bool isComplete() const { return done; }

    ObservedDisplay display() const {
        // The description of an output often has the serial number in it; so it is not used.
        const std::string product =
            maker.empty() || model.empty() ? maker + model : maker + " " + model;
        const std::string place = connector.empty() ? std::to_string(number) : connector;
        ObservedDisplay display{place, product.empty() ? place : product, mode()};
        if (!product.empty())
            display.key += " " + product;
        return display;
    }

private:
    static const wl_output_listener outputListener;
    static const xdgOutput::Listener logicalListener;

    static Output& self(void* data) { return *static_cast<Output*>(data); }

    std::optional<DisplayContext> mode() const {
        if (width <= 0 || height <= 0)
            return std::nullopt;
        DisplayContext context{.pixelWidth = width, .pixelHeight = height, .refreshRate = {}};
        if (isTurned(transform))
            std::swap(context.pixelWidth, context.pixelHeight);
        const bool hasLogical = logicalWidth > 0 && logicalHeight > 0;
        context.logicalWidth = hasLogical ? logicalWidth : context.pixelWidth / scale;
        context.logicalHeight = hasLogical ? logicalHeight : context.pixelHeight / scale;
        context.scale = static_cast<double>(context.pixelWidth)
                        / static_cast<double>(std::max<std::int64_t>(context.logicalWidth, 1));
        if (millihertz > 0)
            context.refreshRate = millihertz / 1000.0;
        context.builtIn = isBuiltInConnector(connector);
        return context;
    }
    void finish() {
        done = true;
        displays.publish();
    }

    WaylandDisplays& displays;
    const std::uint32_t number;
    WaylandObject object;
    WaylandObject logical;
    bool done = false;
    std::string connector;
    std::string maker;
    std::string model;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t millihertz = 0;
    std::int32_t transform = WL_OUTPUT_TRANSFORM_NORMAL;
    std::int32_t scale = 1;
    std::int32_t logicalWidth = 0;
    std::int32_t logicalHeight = 0;
};

const wl_output_listener WaylandDisplays::Output::outputListener{
    .geometry =
        [](void* data, wl_output*, std::int32_t, std::int32_t, std::int32_t, std::int32_t,
           std::int32_t, const char* maker, const char* model, std::int32_t transform) {
            self(data).maker = known(maker);
            self(data).model = known(model);
            self(data).transform = transform;
        },
    .mode =
        [](void* data, wl_output*, std::uint32_t flags, std::int32_t width, std::int32_t height,
           std::int32_t millihertz) {
            if ((flags & WL_OUTPUT_MODE_CURRENT) == 0)
                return;
            self(data).width = width;
            self(data).height = height;
            self(data).millihertz = millihertz;
        },
    .done = [](void* data, wl_output*) { self(data).finish(); },
    .scale = [](void* data, wl_output*,
                std::int32_t scale) { self(data).scale = std::max(scale, 1); },
    .name = [](void* data, wl_output*, const char* name) { self(data).connector = oneLine(name); },
    .description = [](void*, wl_output*, const char*) {},
};

const xdgOutput::Listener WaylandDisplays::Output::logicalListener{
    .logicalPosition = [](void*, wl_proxy*, std::int32_t, std::int32_t) {},
    .logicalSize =
        [](void* data, wl_proxy*, std::int32_t width, std::int32_t height) {
            self(data).logicalWidth = width;
            self(data).logicalHeight = height;
        },
    // From version 3 on, the compositor sends the output's own event instead of this one.
    .done = [](void* data, wl_proxy*) { self(data).displays.publish(); },
    .name = [](void* data, wl_proxy*, const char* name) { self(data).connector = oneLine(name); },
    .description = [](void*, wl_proxy*, const char*) {},
};

WaylandDisplays::WaylandDisplays(WaylandConnection& connection, Changed wanted)
    : Observer(connection), changed(std::move(wanted)),
      manager(xdgOutput::bindManager(connection)) {
    const auto globals = connection.globals();
    for (const auto& global : globals)
        WaylandDisplays::added(global);
    connection.finishRequests();
    isComplete = true;
    publish();
}

WaylandDisplays::~WaylandDisplays() = default;

void WaylandDisplays::added(const WaylandConnection::Global& global) {
    if (global.interface == wl_output_interface.name)
        outputs[global.name] = std::make_unique<Output>(*this, global);
}

void WaylandDisplays::removed(std::uint32_t name) {
    if (outputs.erase(name) > 0)
        publish();
}

void WaylandDisplays::publish() {
    if (!isComplete)
        return;
    std::vector<ObservedDisplay> now;
    for (const auto& [name, output] : outputs)
        if (output->isComplete())
            now.push_back(output->display());
    if (last == now)
        return;
    last = now;
    changed(std::move(now));
}

} // namespace tidemark
