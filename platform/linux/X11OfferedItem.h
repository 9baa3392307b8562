#pragma once

#include "platform/linux/ClipFollower.h"
#include "platform/linux/X11Connection.h"

#include <QObject>

namespace tidemark {

/// Reads a selection by the protocol of ICCCM 2.4: the owner is asked to write the content to a
/// property of a window of ours, all at once or in pieces (INCR).
class X11OfferedItem final : public OfferedItem, private X11Connection::Observer {
public:
    /// How long the owner may take to answer a request, and for each piece.
    static constexpr std::chrono::milliseconds answerTime{1000};
    static constexpr std::chrono::milliseconds pieceTime{2000};
    /// How long one part may take in all.
    static constexpr std::chrono::milliseconds mostTime{10'000};

    /// `time` is when the owner took the selection, in the server's time.
    X11OfferedItem(X11Connection& connection, xcb_atom_t selection, xcb_timestamp_t time);
    ~X11OfferedItem() override;

    void readTypes(TypesRead use) override;
    void read(const std::string& type, std::size_t limit, Read use) override;

private:
    /// The content of the property, absent when the owner refused or did not answer.
    using Answered = std::function<void(std::optional<X11Property>)>;

    void convert(xcb_atom_t wanted, std::size_t most, Answered use);
    void handle(const xcb_generic_event_t& event) override;
    void takeAnswer(const xcb_selection_notify_event_t& event);
    void takePiece();
    /// Starts to wait for the answer or the next piece.
    void wait(std::chrono::milliseconds time);
    /// Ends the request and passes `answer` to `answered`, which may destroy this object.
    void finish(std::optional<X11Property> answer);

    const xcb_atom_t selection;
    const xcb_timestamp_t time;
    /// A window for each item, so that a late answer of one is not taken for that of another.
    const xcb_window_t window;
    const xcb_atom_t property;
    const xcb_atom_t incremental;
    xcb_atom_t target = XCB_ATOM_NONE;
    std::size_t limit = 0;
    Answered answered;
    /// What was received in pieces; absent unless the owner sends pieces.
    std::optional<X11Property> pieces;
    std::chrono::steady_clock::time_point end;
    /// The context of the present wait; replaced to end it.
    std::unique_ptr<QObject> waiting;
};

} // namespace tidemark
