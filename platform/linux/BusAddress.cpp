#include "platform/linux/BusAddress.h"

#include <charconv>
#include <cstdlib>

namespace tidemark::busAddress {

namespace {

/// Replaces escapes such as "%20" by their bytes; absent for an invalid escape.
std::optional<std::string> unescaped(std::string_view text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            bytes += text[i];
            continue;
        }
        const std::string_view digits = text.substr(i + 1, 2);
        unsigned char byte = 0;
        const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
        if (digits.size() != 2 || read.ptr != digits.data() + 2)
            return std::nullopt;
        bytes += static_cast<char>(byte);
        i += 2;
    }
    return bytes;
}

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

} // namespace

std::string ofSystem() {
    const std::string given = variable("DBUS_SYSTEM_BUS_ADDRESS");
    return given.empty() ? "unix:path=/var/run/dbus/system_bus_socket" : given;
}

std::string ofSession() {
    std::string given = variable("DBUS_SESSION_BUS_ADDRESS");
    if (!given.empty())
        return given;
    const std::string folder = variable("XDG_RUNTIME_DIR");
    return folder.empty() ? std::string() : "unix:path=" + folder + "/bus";
}

std::optional<LocalSocket> localSocket(std::string_view addresses) {
    constexpr std::string_view transport = "unix:";
    std::string_view keys = addresses.substr(0, addresses.find(';'));
    if (!keys.starts_with(transport))
        return std::nullopt;
    keys.remove_prefix(transport.size());
    while (!keys.empty()) {
        const std::string_view pair = keys.substr(0, keys.find(','));
        keys.remove_prefix(std::min(pair.size() + 1, keys.size()));
        for (const std::string_view key : {"path=", "abstract="})
            if (pair.starts_with(key))
                if (auto name = unescaped(pair.substr(key.size())); name && !name->empty())
                    return LocalSocket{*std::move(name), key == "abstract="};
    }
    return std::nullopt;
}

} // namespace tidemark::busAddress
