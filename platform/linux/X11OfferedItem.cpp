#include "platform/linux/X11OfferedItem.h"

#include <algorithm>
#include <utility>

namespace tidemark {

namespace {

/// An item with more types than this counts as one whose types are unknown, because a type that
/// marks passwords may be among those that were not read.
constexpr std::size_t mostOfferedTypes = 1024;

/// Names of the protocol itself, which are among the targets (ICCCM 2.6.2).
constexpr std::array<std::string_view, 7> sideTargets{
    "TARGETS", "TIMESTAMP", "MULTIPLE", "SAVE_TARGETS", "DELETE", "INSERT_SELECTION", "INCR"};

} // namespace

X11OfferedItem::X11OfferedItem(X11Connection& connection, xcb_atom_t selection,
                               xcb_timestamp_t time)
    : Observer(connection), selection(selection), time(time), window(connection.createWindow()),
      property(connection.atom("TIDEMARK_CLIP")), incremental(connection.atom("INCR")) {}

X11OfferedItem::~X11OfferedItem() {
    xcb_destroy_window(connection.raw(), window);
}

void X11OfferedItem::readTypes(TypesRead use) {
    const auto limit = mostOfferedTypes * sizeof(xcb_atom_t);
    convert(connection.atom("TARGETS"), limit, [this, use = std::move(use)](auto answer) {
        if (!answer || !answer->isComplete)
            return use(std::nullopt);
        auto types = connection.namesOf(answer->numbers());
        std::erase_if(types, [](const auto& type) {
            return std::ranges::find(sideTargets, type) != sideTargets.end();
        });
        use(std::move(types));
    });
}

void X11OfferedItem::read(const std::string& type, std::size_t most, Read use) {
    convert(connection.atom(type), most, [type, use = std::move(use)](auto answer) {
        if (!answer)
            return use({type, {}});
        use({type, std::move(answer->bytes), answer->isComplete});
    });
}

void X11OfferedItem::convert(xcb_atom_t wanted, std::size_t most, Answered use) {
    target = wanted;
    limit = most;
    answered = std::move(use);
    pieces.reset();
    end = std::chrono::steady_clock::now() + mostTime;
    xcb_convert_selection(connection.raw(), window, selection, target, property, time);
    wait(answerTime);
}

void X11OfferedItem::handle(const xcb_generic_event_t& event) {
    const auto kind = event.response_type & 0x7F;
    if (kind == XCB_SELECTION_NOTIFY)
        return takeAnswer(reinterpret_cast<const xcb_selection_notify_event_t&>(event));
    if (kind != XCB_PROPERTY_NOTIFY || !pieces)
        return;
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (change.window == window && change.atom == property
        && change.state == XCB_PROPERTY_NEW_VALUE)
        takePiece();
}

void X11OfferedItem::takeAnswer(const xcb_selection_notify_event_t& event) {
    // The answer to a request that was given up may still come.
    if (event.requestor != window || event.target != target || !answered || pieces)
        return;
    if (event.property == XCB_ATOM_NONE)
        return finish(std::nullopt);
    auto answer = connection.property(window, property, limit, true);
    if (answer.type != incremental)
        return finish(std::move(answer));
    // Reading it has removed the property; so the owner sends the first piece.
    pieces.emplace();
    wait(pieceTime);
}

void X11OfferedItem::takePiece() {
    const auto piece = connection.property(window, property, limit, true);
    if (piece.type == XCB_ATOM_NONE)
        return;
    // An empty piece is the last one.
    if (piece.bytes.empty())
        return finish(std::exchange(pieces, {}));
    pieces->type = piece.type;
    pieces->format = piece.format;
    pieces->bytes += piece.bytes;
    pieces->isComplete = piece.isComplete && pieces->bytes.size() <= limit;
    if (!pieces->isComplete)
        return finish(std::exchange(pieces, {}));
    wait(pieceTime);
}

void X11OfferedItem::wait(std::chrono::milliseconds most) {
    using std::chrono::milliseconds;
    const auto left =
        std::chrono::duration_cast<milliseconds>(end - std::chrono::steady_clock::now());
    waiting = std::make_unique<QObject>();
    connection.after(std::clamp(left, milliseconds(0), most), waiting.get(),
                     [this] { finish(std::nullopt); });
}

void X11OfferedItem::finish(std::optional<X11Property> answer) {
    // `waiting` is deleted later, because it is the context of the timer that calls `finish` when
    // the owner did not answer.
    if (waiting)
        waiting.release()->deleteLater();
    pieces.reset();
    const auto use = std::exchange(answered, {});
    if (use)
        use(std::move(answer));
}

} // namespace tidemark
