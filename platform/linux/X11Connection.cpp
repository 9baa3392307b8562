#include "platform/linux/X11Connection.h"

#include "platform/linux/X11Display.h"

#include <QTimer>
#include <algorithm>
#include <cstring>

namespace tidemark {

namespace {

/// When more names of atoms than this are kept, all are dropped, because programs may make any
/// number of atoms.
constexpr std::size_t mostNames = 4096;

} // namespace

X11Connection::Observer::Observer(X11Connection& connection) : connection(connection) {
    connection.observers.push_back(this);
}

X11Connection::Observer::~Observer() {
    std::erase(connection.observers, this);
}

std::vector<std::uint32_t> X11Property::numbers() const {
    // An empty property has no bytes to copy from.
    if (format != 32 || bytes.empty())
        return {};
    std::vector<std::uint32_t> numbers(bytes.size() / sizeof(std::uint32_t));
    std::memcpy(numbers.data(), bytes.data(), numbers.size() * sizeof(std::uint32_t));
    return numbers;
}

std::unique_ptr<X11Connection> X11Connection::open(const std::string& display,
                                                   std::function<void()> lost) {
    int screenNumber = 0;
    auto connection = x11Display::connect(display, &screenNumber);
    if (!connection)
        return nullptr;
    return std::unique_ptr<X11Connection>(
        new X11Connection(connection.release(), screenNumber, std::move(lost)));
}

X11Connection::X11Connection(xcb_connection_t* connection, int screenNumber,
                             std::function<void()> lost)
    : connection(connection), lost(std::move(lost)) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screenNumber > 0 && screens.rem > 1; --screenNumber)
        xcb_screen_next(&screens);
    screen = screens.data;
    readable.emplace(xcb_get_file_descriptor(connection), QSocketNotifier::Read);
    connect(&*readable, &QSocketNotifier::activated, this, [this] { settle(); });
}

X11Connection::~X11Connection() {
    readable.reset();
    xcb_disconnect(connection);
}

bool X11Connection::isLost() const {
    return xcb_connection_has_error(connection) != 0;
}

void X11Connection::after(std::chrono::milliseconds time, const QObject* context,
                          std::function<void()> work) {
    QTimer::singleShot(time, context, [this, work = std::move(work)] {
        work();
        settle();
    });
}

void X11Connection::settle() {
    while (const XcbPointer<xcb_generic_event_t> event{xcb_poll_for_event(connection)})
        // 0 is an error: usually that of a window that has just been closed.
        if (event->response_type != 0)
            handle(*event);
    xcb_flush(connection);
    if (!isLost() || !lost)
        return;
    readable->setEnabled(false);
    // Later, because the receiver destroys this object.
    QMetaObject::invokeMethod(this, std::exchange(lost, {}), Qt::QueuedConnection);
}

void X11Connection::handle(const xcb_generic_event_t& event) {
    for (Observer* observer : std::vector(observers))
        if (std::ranges::find(observers, observer) != observers.end())
            observer->handle(event);
}

xcb_atom_t X11Connection::atom(std::string_view name) {
    if (const auto known = atoms.find(name); known != atoms.end())
        return known->second;
    const auto length = static_cast<std::uint16_t>(name.size());
    const XcbPointer<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 0, length, name.data()), nullptr)};
    const xcb_atom_t atom = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    atoms.emplace(name, atom);
    return atom;
}

std::vector<std::string> X11Connection::namesOf(const std::vector<xcb_atom_t>& wanted) {
    if (names.size() > mostNames)
        names.clear();
    // Sends all requests before it waits for the first reply.
    std::map<xcb_atom_t, xcb_get_atom_name_cookie_t> asked;
    for (const auto atom : wanted)
        if (atom != XCB_ATOM_NONE && !names.contains(atom) && !asked.contains(atom))
            asked.emplace(atom, xcb_get_atom_name(connection, atom));
    for (const auto& [atom, cookie] : asked) {
        const XcbPointer<xcb_get_atom_name_reply_t> reply{
            xcb_get_atom_name_reply(connection, cookie, nullptr)};
        if (!reply)
            continue;
        const auto length = static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()));
        names.emplace(atom, std::string(xcb_get_atom_name_name(reply.get()), length));
    }
    std::vector<std::string> texts;
    for (const auto atom : wanted)
        if (const auto known = names.find(atom); known != names.end())
            texts.push_back(known->second);
    return texts;
}

std::string X11Connection::nameOf(xcb_atom_t atom) {
    const auto known = namesOf({atom});
    return known.empty() ? std::string() : known.front();
}

X11Property X11Connection::property(xcb_window_t window, xcb_atom_t name, std::size_t limit,
                                    bool isTaken) {
    const auto words = static_cast<std::uint32_t>((limit + 3) / 4);
    const XcbPointer<xcb_get_property_reply_t> reply{
        xcb_get_property_reply(connection,
                               xcb_get_property(connection, isTaken ? 1 : 0, window, name,
                                                XCB_GET_PROPERTY_TYPE_ANY, 0, words),
                               nullptr)};
    if (!reply)
        return {};
    const auto* bytes = static_cast<const char*>(xcb_get_property_value(reply.get()));
    const auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
    return {reply->type, reply->format, std::string(bytes, length), reply->bytes_after == 0};
}

xcb_window_t X11Connection::createWindow() {
    const auto window = xcb_generate_id(connection);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
    return window;
}

std::uint32_t X11Connection::clientOf(std::uint32_t resource) const {
    return resource & ~xcb_get_setup(connection)->resource_id_mask;
}

bool X11Connection::isOwn(std::uint32_t resource) const {
    return clientOf(resource) == xcb_get_setup(connection)->resource_id_base;
}

} // namespace tidemark
