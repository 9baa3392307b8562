#include "platform/linux/ApplicationUnit.h"

#include <charconv>

namespace tidemark {

namespace {

/// The name with each escape such as "\x2d" replaced by its character (systemd.unit(5)).
std::string unescaped(std::string_view name) {
    std::string text;
    while (!name.empty()) {
        unsigned code = 0;
        const bool isEscape =
            name.starts_with("\\x") && name.size() >= 4
            && std::from_chars(&name[2], &name[2] + 2, code, 16).ptr == &name[2] + 2;
        text += isEscape ? static_cast<char>(code) : name.front();
        name.remove_prefix(isEscape ? 4 : 1);
    }
    return text;
}

/// Cuts `start` off; false when the text does not start with it.
bool cutStart(std::string_view& text, std::string_view start) {
    if (!text.starts_with(start))
        return false;
    text.remove_prefix(start.size());
    return true;
}

bool cutEnd(std::string_view& text, std::string_view end) {
    if (!text.ends_with(end))
        return false;
    text.remove_suffix(end.size());
    return true;
}

/// Cuts off the last `mark` and what follows; false without one.
bool cutFromLast(std::string_view& text, char mark) {
    const auto place = text.rfind(mark);
    if (place == text.npos)
        return false;
    text = text.substr(0, place);
    return true;
}

/// The possible identifiers in a name: all of it, and what follows a launcher.
std::vector<std::string> withoutLauncher(std::string_view name) {
    std::vector<std::string> identifiers{unescaped(name)};
    if (const auto dash = name.find('-'); dash != name.npos)
        identifiers.push_back(unescaped(name.substr(dash + 1)));
    return identifiers;
}

/// "app[-<launcher>]-<id>-<random>.scope"
std::optional<ApplicationUnit> ofScope(std::string_view name) {
    if (!cutStart(name, "app-") || !cutFromLast(name, '-') || name.empty())
        return std::nullopt;
    return ApplicationUnit{withoutLauncher(name), false};
}

/// "app[-<launcher>]-<id>[@<random>].service"; by earlier releases also "…-autostart.service".
std::optional<ApplicationUnit> ofService(std::string_view name) {
    if (!cutStart(name, "app-"))
        return std::nullopt;
    const bool isAutostart = cutEnd(name, "@autostart") || cutEnd(name, "-autostart");
    if (!isAutostart)
        cutFromLast(name, '@');
    if (name.empty())
        return std::nullopt;
    return ApplicationUnit{withoutLauncher(name), isAutostart};
}

/// "dbus-:<connection>-<id>@<number>.service", started by the message bus.
std::optional<ApplicationUnit> ofBusService(std::string_view name) {
    if (!cutStart(name, "dbus-:") || !cutFromLast(name, '@'))
        return std::nullopt;
    const auto dash = name.find('-');
    if (dash == name.npos || dash + 1 == name.size())
        return std::nullopt;
    return ApplicationUnit{{unescaped(name.substr(dash + 1))}, false};
}

/// "snap.<package>.<application>-<uuid>.scope"; the desktop entry has "_" between the two.
std::optional<ApplicationUnit> ofSnap(std::string_view name) {
    constexpr std::size_t uuidSize = 36;
    if (!cutStart(name, "snap.") || name.size() <= uuidSize + 1)
        return std::nullopt;
    name.remove_suffix(uuidSize + 1);
    const auto dot = name.find('.');
    if (dot == name.npos || dot == 0 || dot + 1 == name.size())
        return std::nullopt;
    return ApplicationUnit{{unescaped(name.substr(0, dot)) + '_' + unescaped(name.substr(dot + 1))},
                           false};
}

} // namespace

std::optional<ApplicationUnit> ApplicationUnit::parse(std::string_view name) {
    if (cutEnd(name, ".scope"))
        return name.starts_with("snap.") ? ofSnap(name) : ofScope(name);
    if (cutEnd(name, ".service"))
        return name.starts_with("dbus-") ? ofBusService(name) : ofService(name);
    return std::nullopt;
}

} // namespace tidemark
