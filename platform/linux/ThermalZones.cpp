#include "platform/linux/ThermalZones.h"

#include "core/base/FileDescriptor.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

#include <fcntl.h>

namespace tidemark {

namespace {

namespace fs = std::filesystem;

/// The content of a file of the kernel without its line feed; empty when it can't be read, as for a
/// sensor that is off.
std::string valueIn(const fs::path& path) {
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    std::array<char, 256> bytes{};
    const ssize_t count = file ? ::read(file.get(), bytes.data(), bytes.size()) : -1;
    std::string text(bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    while (text.ends_with('\n'))
        text.pop_back();
    return text;
}

std::optional<std::int64_t> numberIn(const fs::path& path) {
    const std::string text = valueIn(path);
    std::int64_t number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    if (read.ec != std::errc() || read.ptr != text.data() + text.size())
        return std::nullopt;
    return number;
}

/// A temperature, which the kernel writes in thousandths of a degree.
std::optional<double> degreesIn(const fs::path& path) {
    const auto number = numberIn(path);
    return number ? std::optional(static_cast<double>(*number) / 1000) : std::nullopt;
}

/// The entries of `folder` whose names begin with `prefix`, sorted by name.
std::vector<fs::path> foldersIn(const fs::path& folder, std::string_view prefix) {
    std::vector<fs::path> found;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        if (entry->path().filename().native().starts_with(prefix))
            found.push_back(entry->path());
    std::ranges::sort(found);
    return found;
}

/// The types that zones of processors and cases usually have. Those of disks and graphics cards say
/// nothing about the whole machine.
bool isOfMachine(std::string_view type) {
    return type == "x86_pkg_temp" || type == "acpitz" || type.starts_with("TCPU")
           || type.starts_with("cpu") || type.starts_with("soc")
           || (type.ends_with("-thermal") && !type.starts_with("gpu"));
}

bool isOfProcessor(std::string_view type) {
    return type == "Processor" || type.starts_with("cpufreq-")
           || type.starts_with("thermal-cpufreq-") || type.starts_with("thermal-devfreq-");
}

std::optional<ThermalZones::TripKind> kindOf(std::string_view word) {
    using Kind = ThermalZones::TripKind;
    constexpr auto words = std::to_array<std::pair<std::string_view, Kind>>({
        {"active", Kind::active},
        {"passive", Kind::passive},
        {"hot", Kind::hot},
        {"critical", Kind::critical},
    });
    for (const auto& [name, kind] : words)
        if (name == word)
            return kind;
    return std::nullopt;
}

std::vector<ThermalZones::Trip> tripsOf(const fs::path& zone) {
    // Trips that are not set have values such as 0 or −274.
    constexpr double hottest = 150;
    constexpr int mostTrips = 64;
    std::vector<ThermalZones::Trip> trips;
    for (int number = 0; number < mostTrips; ++number) {
        const fs::path prefix = zone / ("trip_point_" + std::to_string(number));
        const std::string type = valueIn(prefix.native() + "_type");
        if (type.empty())
            break;
        const auto kind = kindOf(type);
        const auto temperature = degreesIn(prefix.native() + "_temp");
        if (kind && temperature && *temperature > 0 && *temperature <= hottest)
            trips.push_back(
                {*kind, *temperature, degreesIn(prefix.native() + "_hyst").value_or(0)});
    }
    return trips;
}

std::optional<ThermalZones::Zone> zoneOf(const fs::path& folder) {
    constexpr double coldest = -40;
    constexpr double hottest = 150;
    if (!isOfMachine(valueIn(folder / "type")) || valueIn(folder / "mode") == "disabled")
        return std::nullopt;
    const auto temperature = degreesIn(folder / "temp");
    if (!temperature || *temperature < coldest || *temperature > hottest)
        return std::nullopt;
    return ThermalZones::Zone{folder.filename().native(), *temperature, tripsOf(folder)};
}

bool slowsDown(const fs::path& coolingDevice) {
    // Some devices rest at −1.
    return isOfProcessor(valueIn(coolingDevice / "type"))
           && numberIn(coolingDevice / "cur_state").value_or(0) > 0;
}

} // namespace

ThermalZones ThermalZones::read(const fs::path& sys) {
    ThermalZones reading;
    for (const auto& folder : foldersIn(sys / "class/thermal", "thermal_zone"))
        if (auto zone = zoneOf(folder))
            reading.zones.push_back(*std::move(zone));
    const auto devices = foldersIn(sys / "class/thermal", "cooling_device");
    reading.isSlowedDown = std::ranges::any_of(devices, slowsDown);
    for (const auto& processor : foldersIn(sys / "devices/system/cpu", "cpu"))
        reading.throttled +=
            numberIn(processor / "thermal_throttle/package_throttle_total_time_ms").value_or(0);
    return reading;
}

} // namespace tidemark
