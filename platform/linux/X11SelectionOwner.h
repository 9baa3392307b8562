#pragma once

#include "core/memory/CopiedItem.h"
#include "platform/linux/DisplaySession.h"
#include "platform/linux/X11Connection.h"

#include <list>
#include <span>

namespace tidemark {

/// Owns the selection CLIPBOARD and serves its content to other programs by ICCCM 2, until another
/// program takes it. Lives on the thread of the connection.
class X11SelectionOwner final : public DisplayReader, private X11Connection::Observer {
public:
    /// How long a program may take to fetch a piece.
    static constexpr std::chrono::seconds pieceTime{5};
    /// Larger contents are sent in pieces of this size. Bytes.
    static constexpr std::size_t pieceSize = 65'536;

    X11SelectionOwner(X11Connection& connection, std::vector<ClipData> contents);
    ~X11SelectionOwner() override;

private:
    /// A content that is sent in pieces.
    struct Transfer {
        xcb_window_t window;
        xcb_atom_t property;
        xcb_atom_t type;
        std::shared_ptr<const std::string> bytes;
        std::size_t sent = 0;
        /// The context of the present wait.
        std::unique_ptr<QObject> waiting{};
    };
    struct Content {
        xcb_atom_t type;
        std::shared_ptr<const std::string> bytes;
    };

    void handle(const xcb_generic_event_t& event) override;
    void takeSelection(xcb_timestamp_t now);
    void answer(const xcb_selection_request_event_t& request);
    /// Writes a target to a property of the requestor; false when there is no such content.
    bool supply(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property);
    bool supplySeveral(xcb_window_t requestor, xcb_atom_t property);
    void startTransfer(xcb_window_t requestor, const Content& content, xcb_atom_t property);
    void sendPiece(const xcb_property_notify_event_t& event);
    void wait(Transfer& transfer);
    void writeNumbers(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                      std::span<const std::uint32_t> numbers);

    std::vector<Content> contents;
    const xcb_window_t window;
    const xcb_atom_t selection;
    const xcb_atom_t targets;
    const xcb_atom_t timestamp;
    const xcb_atom_t multiple;
    const xcb_atom_t atomPair;
    const xcb_atom_t incremental;
    /// When the selection was taken, in the server's time; absent while it is not owned.
    std::optional<xcb_timestamp_t> time;
    std::list<Transfer> transfers;
};

} // namespace tidemark
