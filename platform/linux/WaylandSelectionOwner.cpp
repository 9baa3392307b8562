#include "platform/linux/WaylandSelectionOwner.h"

#include "platform/linux/DataControl.h"
#include "platform/linux/WaylandClipboard.h"

#include <algorithm>

namespace tidemark {

namespace {

/// Destroys the offers that the compositor announces to every device: this one only makes an offer
/// and reads none.
constexpr dataControl::DeviceListener deviceListener{
    .dataOffer =
        [](void*, wl_proxy*, wl_proxy* offer) {
            WaylandObject(offer, dataControl::offerRequest::destroy).reset();
        },
    .selection = [](void*, wl_proxy*, wl_proxy*) {},
    .finished = [](void*, wl_proxy*) {},
    .primarySelection = [](void*, wl_proxy*, wl_proxy*) {},
};

} // namespace

WaylandSelectionOwner::WaylandSelectionOwner(WaylandConnection& connection,
                                             std::vector<ClipData> offered)
    : connection(connection), manager(dataControl::bindManager(connection)),
      seat(dataControl::bindSeat(connection)),
      device(dataControl::getDevice(manager, seat.as<wl_seat>())),
      source(dataControl::createSource(manager)) {
    static constexpr dataControl::SourceListener sourceListener{
        .send =
            [](void* self, wl_proxy*, const char* type, int descriptor) {
                static_cast<WaylandSelectionOwner*>(self)->send(type, descriptor);
            },
        .cancelled = [](void* self,
                        wl_proxy*) { static_cast<WaylandSelectionOwner*>(self)->end(); },
    };
    wl_proxy_add_listener(
        device.get(),
        reinterpret_cast<void (**)()>(const_cast<dataControl::DeviceListener*>(&deviceListener)),
        this);
    wl_proxy_add_listener(
        source.get(),
        reinterpret_cast<void (**)()>(const_cast<dataControl::SourceListener*>(&sourceListener)),
        this);
    offered.push_back({std::string(WaylandClipboard::ownType), {}});
    const auto version = wl_proxy_get_version(source.get());
    for (auto& data : offered) {
        wl_proxy_marshal_flags(source.get(), dataControl::sourceRequest::offer, nullptr, version, 0,
                               data.type.c_str());
        contents.push_back(
            {std::move(data.type), std::make_shared<const std::string>(std::move(data.bytes))});
    }
    wl_proxy_marshal_flags(device.get(), dataControl::deviceRequest::setSelection, nullptr, version,
                           0, source.get());
    connection.settle();
}

WaylandSelectionOwner::~WaylandSelectionOwner() {
    end();
    connection.settle();
}

void WaylandSelectionOwner::send(std::string_view type, int descriptor) {
    FileDescriptor pipe(descriptor);
    const auto content = std::ranges::find(contents, type, &Content::type);
    if (content == contents.end())
        return;
    const auto writer = writers.emplace(writers.end());
    *writer = std::make_unique<PipeWriter>(std::move(pipe), content->bytes, readTime,
                                           [this, writer] { writers.erase(writer); });
}

void WaylandSelectionOwner::end() {
    source.reset();
    device.reset();
    contents.clear();
}

} // namespace tidemark
