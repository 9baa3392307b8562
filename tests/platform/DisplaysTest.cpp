#include "core/base/FileDescriptor.h"
#include "platform/linux/Edid.h"
#include "platform/linux/SessionDisplays.h"
#include "tests/app/support/Await.h"
#include "tests/platform/DisplayServers.h"

#include <numeric>
#include <thread>

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <xcb/randr.h>

using namespace tidemark;

namespace {

/// Turns the only output of the server off or on.
void setOutput(X11Connection& connection, bool isOn) {
    auto* raw = connection.raw();
    const XcbPointer<xcb_randr_get_screen_resources_reply_t> resources{
        xcb_randr_get_screen_resources_reply(
            raw, xcb_randr_get_screen_resources(raw, connection.root()), nullptr)};
    auto* output = xcb_randr_get_screen_resources_outputs(resources.get());
    const auto* mode = xcb_randr_get_screen_resources_modes(resources.get());
    while (mode->width != 640 || mode->height != 480)
        ++mode;
    const auto crtc = *xcb_randr_get_screen_resources_crtcs(resources.get());
    const XcbPointer<xcb_randr_set_crtc_config_reply_t> reply{xcb_randr_set_crtc_config_reply(
        raw,
        xcb_randr_set_crtc_config(raw, crtc, XCB_CURRENT_TIME, XCB_CURRENT_TIME, 0, 0,
                                  isOn ? mode->id : xcb_randr_mode_t{XCB_NONE},
                                  XCB_RANDR_ROTATION_ROTATE_0, isOn ? 1 : 0, output),
        nullptr)};
    ASSERT_TRUE(reply && reply->status == XCB_RANDR_SET_CONFIG_SUCCESS);
}

} // namespace

TEST(X11DisplaysTest, FollowsOutputsThatShowSomething) {
    if (!test::hasPrograms({"Xvfb", "openbox"}))
        GTEST_SKIP() << "Xvfb or openbox is not installed";
    std::optional<test::X11Server> server(std::in_place);
    const auto sessions = std::make_shared<GraphicalSessions>(
        GraphicalSessions::Addresses{.wayland = {}, .x11 = server->display()});
    std::optional<SessionDisplays> displays;
    int changes = 0;
    displays.emplace([&] { ++changes; }, sessions);
    EXPECT_EQ(displays->displays(), std::nullopt);
    const auto untilChanges = [&](int count) { test::until([&] { return changes == count; }); };
    untilChanges(1);
    const auto first = displays->displays().value().at(0);
    EXPECT_EQ(first.key, "screen");
    EXPECT_EQ(first.mode.value().label(), "640 × 480 pixels · 640 × 480 points");
    EXPECT_EQ(first.mode->scale, 1);
    const auto other = X11Connection::open(server->display(), [] {});
    setOutput(*other, false);
    untilChanges(2);
    EXPECT_EQ(displays->displays(), std::vector<ObservedDisplay>());
    setOutput(*other, true);
    untilChanges(3);
    EXPECT_EQ(displays->displays(), std::vector{first});
    server.reset();
    untilChanges(4);
    EXPECT_EQ(displays->displays(), std::nullopt);
}

TEST(X11ConnectionTest, UsesNoNetwork) {
    constexpr int display = 4321;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(6000 + display);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const FileDescriptor listener(::socket(AF_INET, SOCK_STREAM, 0));
    if (::bind(listener.get(), reinterpret_cast<sockaddr*>(&address), sizeof address) != 0)
        GTEST_SKIP() << "another program uses the port";
    ::listen(listener.get(), 1);
    int connections = 0;
    std::jthread server([&] {
        while (FileDescriptor(::accept(listener.get(), nullptr, nullptr)))
            ++connections;
    });
    for (const auto* host : {"", "localhost", "127.0.0.1", "tcp/"})
        EXPECT_EQ(X11Connection::open(host + (":" + std::to_string(display)), [] {}), nullptr);
    ::shutdown(listener.get(), SHUT_RDWR);
    server.join();
    EXPECT_EQ(connections, 0);
}

TEST(EdidTest, IsParsedWithoutTheSerialNumber) {
    std::string bytes("\x00\xFF\xFF\xFF\xFF\xFF\xFF\x00\x10\xAC\x41\xD0SERI", 16);
    bytes.resize(128, '\0');
    bytes.replace(72, 18, std::string("\x00\x00\x00\xFC\x00", 5) + "U2720Q\n      ");
    bytes.replace(90, 18, std::string("\x00\x00\x00\xFF\x00", 5) + "SERIAL NUMBER");
    const auto sum = std::accumulate(bytes.begin(), bytes.end(), 0U, [](unsigned all, char byte) {
        return all + static_cast<unsigned char>(byte);
    });
    bytes[127] = static_cast<char>(256 - sum % 256);
    EXPECT_EQ(Edid::parse(bytes), (Edid{"DEL", 0xD041, "U2720Q"}));
    EXPECT_EQ(Edid::parse(bytes + std::string(128, 'x')), Edid::parse(bytes)) << "more blocks";
    EXPECT_EQ(Edid::parse(bytes.substr(0, 127)), std::nullopt);
    bytes[20] ^= 1;
    EXPECT_EQ(Edid::parse(bytes), std::nullopt) << "damaged";
}
