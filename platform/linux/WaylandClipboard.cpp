#include "platform/linux/WaylandClipboard.h"

#include "core/base/Text.h"
#include "platform/linux/DataControl.h"
#include "platform/linux/PipeTransfer.h"

#include <algorithm>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace tidemark {

namespace {

using namespace std::chrono_literals;

constexpr PipeReader::Times readTimes{.first = 1s, .next = 2s, .all = 10s};
/// An item with more types than this counts as one whose types are unknown, because a type that
/// marks passwords may be among those that were not read.
constexpr std::size_t mostTypes = 1024;

} // namespace

/// An item that a program offers. `readTypes` answers at once.
class WaylandClipboard::Offer final : public OfferedItem {
public:
    Offer(WaylandConnection& connection, wl_proxy* proxy)
        : connection(connection), object(proxy, dataControl::offerRequest::destroy) {
        static constexpr dataControl::OfferListener listener{
            .offer = [](void* self, wl_proxy*,
                        const char* type) { static_cast<Offer*>(self)->add(type); },
        };
        wl_proxy_add_listener(
            proxy,
            reinterpret_cast<void (**)()>(const_cast<dataControl::OfferListener*>(&listener)),
            this);
    }

    wl_proxy* proxy() const { return object.get(); }
    bool isOwn() const { return std::ranges::find(types, ownType) != types.end(); }

    void readTypes(TypesRead use) override {
        // Copies, because the function may destroy this object.
        const auto answer = std::move(use);
        answer(types.size() > mostTypes ? std::nullopt : std::optional(types));
    }

    void read(const std::string& type, std::size_t limit, Read use) override {
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0)
            return use({type, {}});
        FileDescriptor input(ends[0]);
        const FileDescriptor output(ends[1]);
        wl_proxy_marshal_flags(object.get(), dataControl::offerRequest::receive, nullptr,
                               wl_proxy_get_version(object.get()), 0, type.c_str(), output.get());
        connection.settle();
        reader = std::make_unique<PipeReader>(
            std::move(input), limit, readTimes,
            [type, use = std::move(use)](std::optional<std::string> bytes, bool isComplete) {
                if (!bytes)
                    return use({type, {}});
                use({type, *std::move(bytes), isComplete});
            });
    }

private:
    void add(const char* type) {
        if (types.size() <= mostTypes)
            types.push_back(textFromBytes(type));
    }

    WaylandConnection& connection;
    WaylandObject object;
    ClipTypeNames types;
    std::unique_ptr<PipeReader> reader;
};

WaylandClipboard::WaylandClipboard(WaylandConnection& connection, Setup wanted,
                                   ApplicationFinder& applications)
    : connection(connection), setup(std::move(wanted)), applications(applications),
      windows(connection), follower(setup.follower), manager(dataControl::bindManager(connection)),
      seat(dataControl::bindSeat(connection)),
      device(dataControl::getDevice(manager, seat.as<wl_seat>())) {
    static constexpr dataControl::DeviceListener listener{
        .dataOffer = [](void* self, wl_proxy*,
                        wl_proxy* offer) { static_cast<WaylandClipboard*>(self)->announce(offer); },
        .selection = [](void* self, wl_proxy*,
                        wl_proxy* offer) { static_cast<WaylandClipboard*>(self)->select(offer); },
        .finished = [](void*, wl_proxy*) {},
        .primarySelection =
            [](void* self, wl_proxy*, wl_proxy* offer) {
                auto& announced = static_cast<WaylandClipboard*>(self)->announced;
                std::erase_if(announced,
                              [&](const auto& other) { return other->proxy() == offer; });
            },
    };
    wl_proxy_add_listener(
        device.get(),
        reinterpret_cast<void (**)()>(const_cast<dataControl::DeviceListener*>(&listener)), this);
    // The compositor reports what lies on the clipboard now, or that it is empty.
    connection.finishRequests();
    isFirst = false;
    setup.started({.hasFrontmost = windows.isOffered()});
}

WaylandClipboard::~WaylandClipboard() = default;

void WaylandClipboard::announce(wl_proxy* offer) {
    announced.push_back(std::make_unique<Offer>(connection, offer));
}

void WaylandClipboard::select(wl_proxy* offer) {
    const auto found = std::ranges::find_if(
        announced, [&](const auto& candidate) { return candidate->proxy() == offer; });
    if (found == announced.end())
        return follower.withdraw();
    auto content = std::move(*found);
    announced.erase(found);
    if (content->isOwn())
        return follower.drop();
    ClipFollower::Item item;
    if (const auto id = windows.activeApplication())
        item.origin.frontmost = applications.ofNamedWindow(*id);
    item.mayBeKeeper = true;
    item.isOld = isFirst;
    item.content = std::move(content);
    follower.replace(std::move(item));
}

} // namespace tidemark
