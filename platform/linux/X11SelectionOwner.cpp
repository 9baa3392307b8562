#include "platform/linux/X11SelectionOwner.h"

#include <algorithm>
#include <utility>

namespace tidemark {

X11SelectionOwner::X11SelectionOwner(X11Connection& connection, std::vector<ClipData> offered)
    : Observer(connection), window(connection.createWindow()),
      selection(connection.atom("CLIPBOARD")), targets(connection.atom("TARGETS")),
      timestamp(connection.atom("TIMESTAMP")), multiple(connection.atom("MULTIPLE")),
      atomPair(connection.atom("ATOM_PAIR")), incremental(connection.atom("INCR")) {
    for (auto& data : offered)
        contents.push_back({connection.atom(data.type),
                            std::make_shared<const std::string>(std::move(data.bytes))});
    // Taking a selection needs a time of the server. The notification of this change of a property
    // has one.
    writeNumbers(window, timestamp, XCB_ATOM_INTEGER, {});
    xcb_flush(connection.raw());
}

X11SelectionOwner::~X11SelectionOwner() {
    // The selection ends with its window.
    xcb_destroy_window(connection.raw(), window);
    xcb_flush(connection.raw());
}

void X11SelectionOwner::handle(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7F) {
    case XCB_PROPERTY_NOTIFY: {
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (change.window == window && change.atom == timestamp && !time && !contents.empty())
            takeSelection(change.time);
        else if (change.state == XCB_PROPERTY_DELETE)
            sendPiece(change);
        break;
    }
    case XCB_SELECTION_REQUEST: {
        const auto& request = reinterpret_cast<const xcb_selection_request_event_t&>(event);
        if (request.owner == window)
            answer(request);
        break;
    }
    case XCB_SELECTION_CLEAR: {
        const auto& clear = reinterpret_cast<const xcb_selection_clear_event_t&>(event);
        if (clear.owner == window && clear.selection == selection)
            contents.clear();
        break;
    }
    default:
        break;
    }
}

void X11SelectionOwner::takeSelection(xcb_timestamp_t now) {
    time = now;
    xcb_set_selection_owner(connection.raw(), window, selection, now);
}

void X11SelectionOwner::answer(const xcb_selection_request_event_t& request) {
    // Old programs name no property (ICCCM 2.2).
    const auto property = request.property == XCB_ATOM_NONE ? request.target : request.property;
    const bool isSupplied =
        request.selection == selection
        && (request.target == multiple ? supplySeveral(request.requestor, property)
                                       : supply(request.requestor, request.target, property));
    xcb_selection_notify_event_t reply{};
    reply.response_type = XCB_SELECTION_NOTIFY;
    reply.time = request.time;
    reply.requestor = request.requestor;
    reply.selection = request.selection;
    reply.target = request.target;
    reply.property = isSupplied ? property : xcb_atom_t{XCB_ATOM_NONE};
    // xcb sends 32 bytes of an event, and this one is shorter.
    std::array<char, 32> bytes{};
    std::memcpy(bytes.data(), &reply, sizeof reply);
    xcb_send_event(connection.raw(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, bytes.data());
}

bool X11SelectionOwner::supply(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property) {
    if (target == targets) {
        std::vector<xcb_atom_t> all{targets, timestamp, multiple};
        for (const auto& content : contents)
            all.push_back(content.type);
        writeNumbers(requestor, property, XCB_ATOM_ATOM, all);
        return true;
    }
    if (target == timestamp) {
        const std::uint32_t since = time.value_or(XCB_CURRENT_TIME);
        writeNumbers(requestor, property, XCB_ATOM_INTEGER, {&since, 1});
        return true;
    }
    const auto content = std::ranges::find(contents, target, &Content::type);
    if (content == contents.end())
        return false;
    if (content->bytes->size() > pieceSize)
        startTransfer(requestor, *content, property);
    else
        xcb_change_property(connection.raw(), XCB_PROP_MODE_REPLACE, requestor, property,
                            content->type, 8, static_cast<std::uint32_t>(content->bytes->size()),
                            content->bytes->data());
    return true;
}

bool X11SelectionOwner::supplySeveral(xcb_window_t requestor, xcb_atom_t property) {
    auto pairs = connection.property(requestor, property).numbers();
    for (std::size_t i = 0; i + 1 < pairs.size(); i += 2)
        if (!supply(requestor, pairs[i], pairs[i + 1]))
            pairs[i + 1] = XCB_ATOM_NONE;
    writeNumbers(requestor, property, atomPair, pairs);
    return true;
}

void X11SelectionOwner::startTransfer(xcb_window_t requestor, const Content& content,
                                      xcb_atom_t property) {
    // A program that asks again has given up the first transfer.
    std::erase_if(transfers, [&](const Transfer& transfer) {
        return transfer.window == requestor && transfer.property == property;
    });
    auto& transfer =
        transfers.emplace_back(Transfer{requestor, property, content.type, content.bytes});
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    if (!connection.isOwn(requestor))
        xcb_change_window_attributes(connection.raw(), requestor, XCB_CW_EVENT_MASK, &events);
    const auto size = static_cast<std::uint32_t>(content.bytes->size());
    writeNumbers(requestor, property, incremental, {&size, 1});
    wait(transfer);
}

void X11SelectionOwner::sendPiece(const xcb_property_notify_event_t& event) {
    const auto transfer = std::ranges::find_if(transfers, [&](const Transfer& candidate) {
        return candidate.window == event.window && candidate.property == event.atom;
    });
    if (transfer == transfers.end())
        return;
    const auto size = std::min(pieceSize, transfer->bytes->size() - transfer->sent);
    xcb_change_property(connection.raw(), XCB_PROP_MODE_REPLACE, transfer->window,
                        transfer->property, transfer->type, 8, static_cast<std::uint32_t>(size),
                        transfer->bytes->data() + transfer->sent);
    transfer->sent += size;
    // An empty piece is the last one.
    if (size == 0)
        transfers.erase(transfer);
    else
        wait(*transfer);
}

void X11SelectionOwner::wait(Transfer& transfer) {
    transfer.waiting = std::make_unique<QObject>();
    connection.after(pieceTime, transfer.waiting.get(), [this, which = &transfer] {
        // Later, because the wait is a part of the transfer.
        which->waiting.release()->deleteLater();
        transfers.remove_if([&](const Transfer& candidate) { return &candidate == which; });
    });
}

void X11SelectionOwner::writeNumbers(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type,
                                     std::span<const std::uint32_t> numbers) {
    xcb_change_property(connection.raw(), XCB_PROP_MODE_REPLACE, requestor, property, type, 32,
                        static_cast<std::uint32_t>(numbers.size()), numbers.data());
}

} // namespace tidemark
