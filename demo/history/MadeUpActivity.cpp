#include "demo/history/MadeUpActivity.h"

#include "core/base/Calendar.h"
#include "demo/history/Units.h"

#include <algorithm>
#include <random>

namespace tidemark::demo {

namespace {

using Kind = SystemActivity::Kind;

constexpr int daysOfMemory = 28;

WiFiContext network(const char* name, std::int64_t channel, std::int64_t signal) {
    return {.networkName = name,
            .band = "5 GHz",
            .channel = channel,
            .security = "WPA3 Personal",
            .signalDBM = signal,
            .linkRateMbps = 866.7};
}

BatteryObservation battery(std::int64_t percentage, bool isPlugged) {
    return {.externalPower = isPlugged,
            .percentage = percentage,
            .charging = isPlugged,
            .fullyCharged = percentage == 100};
}

/// The activity of a laptop that is carried to work and back, one day after the other.
class Diary {
public:
    explicit Diary(Date now) : end(now) {}

    std::vector<Shared<SystemActivity>> write(int days) {
        const Date today = Calendar().startOfDay(end);
        for (int back = days; back >= 0; --back)
            writeDay(today + -back * day, back);
        std::ranges::stable_sort(records, {}, &SystemActivity::timestamp);
        std::erase_if(records, [&](const auto& each) { return each.timestamp > end; });
        return {std::move_iterator(records.begin()), std::move_iterator(records.end())};
    }

private:
    SystemActivity& add(Kind kind, Date at) {
        return records.emplace_back(SystemActivity::observed(kind, at));
    }

    void writeDay(Date morning, int back) {
        const double late = static_cast<double>(random() % 40) * minute;
        const Date woke = morning + 8.6 * hour + (back == 0 ? 5 * minute : late);
        auto& wake = add(Kind::woke, woke);
        wake.powerObservation = battery(92, false);
        wake.observedSession =
            ObservedSession{morning + 39 * minute, woke, battery(94, false), battery(92, false)};
        auto& joined = add(Kind::wifiChanged, morning + 9.2 * hour);
        joined.wifiConnected = true;
        joined.wifiContext.emplace(network("Library", 44, -58));
        joined.previousWiFi.emplace(network("Home", 36, -47));
        writeHeadphones(morning + 10 * hour + late);
        writePower(morning + 18.3 * hour);
        if (random() % 5 == 0)
            writeVolume(morning + 13 * hour);
        if (random() % 6 == 0)
            writeDisplay(morning + 11.2 * hour + late);
        if (random() % 30 == 0)
            writeHeat(morning + 16.1 * hour);
        add(Kind::sleepRequested, morning + day + 39 * minute).powerObservation =
            battery(94, false);
    }

    void writeHeadphones(Date at) {
        for (const bool isConnected : {true, false}) {
            auto& record = add(Kind::bluetoothChanged, at + (isConnected ? 0 : 2.2 * hour));
            BluetoothConnectionChange change{.deviceClass = "Audio / video accessory",
                                             .session = {},
                                             .deviceName = "Studio Headphones",
                                             .connected = isConnected};
            if (!isConnected)
                change.session = ObservedSession{at, at + 2.2 * hour, {}, {}};
            record.bluetoothChange.emplace(std::move(change));
        }
    }

    void writePower(Date at) {
        auto& record = add(Kind::batteryChanged, at);
        record.batteryActivity.emplace({.kind = BatteryActivity::Kind::powerConnected,
                                        .before = battery(34, false),
                                        .session = {},
                                        .observation = battery(34, true)});
        auto& full = add(Kind::batteryChanged, at + 1.7 * hour);
        full.batteryActivity.emplace(
            {.kind = BatteryActivity::Kind::fullyCharged,
             .before = battery(99, true),
             .session = ObservedSession{at, at + 1.7 * hour, battery(34, true), battery(100, true)},
             .observation = battery(100, true)});
    }

    void writeVolume(Date at) {
        for (const bool isMounted : {true, false}) {
            auto& record = add(Kind::volumeChanged, at + (isMounted ? 0 : 50 * minute));
            record.environmentActivity.emplace({.deviceName = "HOLIDAY",
                                                .path = "/media/ada/HOLIDAY",
                                                .connected = isMounted,
                                                .volume = VolumeContext{.name = "HOLIDAY",
                                                                        .capacity = 64'000'000'000,
                                                                        .fileSystem = "exfat",
                                                                        .local = true,
                                                                        .internalDevice = false,
                                                                        .readOnly = false},
                                                .display = {},
                                                .previousDisplay = {},
                                                .previousState = {},
                                                .elevatedSince = {},
                                                .state = {}});
        }
    }

    void writeDisplay(Date at) {
        for (const bool isConnected : {true, false}) {
            auto& record = add(Kind::displayChanged, at + (isConnected ? 0 : 4 * hour));
            EnvironmentActivity seen;
            seen.deviceName = "Desk Display";
            seen.connected = isConnected;
            seen.display = DisplayContext{.pixelWidth = 3840,
                                          .pixelHeight = 2160,
                                          .logicalWidth = 1920,
                                          .logicalHeight = 1080,
                                          .scale = 2,
                                          .refreshRate = 60,
                                          .builtIn = false};
            record.environmentActivity.emplace(std::move(seen));
        }
    }

    void writeHeat(Date at) {
        for (const bool isHot : {true, false}) {
            auto& record = add(Kind::thermalChanged, at + (isHot ? 0 : 12 * minute));
            EnvironmentActivity seen;
            seen.deviceName = "Computer";
            seen.previousState = isHot ? "nominal" : "serious";
            seen.state = isHot ? "serious" : "nominal";
            if (!isHot)
                seen.elevatedSince = at;
            record.environmentActivity.emplace(std::move(seen));
        }
    }

    const Date end;
    std::minstd_rand random{7};
    std::vector<SystemActivity> records;
};

constexpr const char* documents[] = {
    "Documents/Thesis/Chapter 3.odt", "Documents/Budget.ods",
    "Projects/site/index.html",       "Documents/Letters/To the landlord.odt",
    "Projects/docs/Design notes.md",  "Pictures/2026/Harbour at dusk.jpg",
    "Documents/Recipes.txt",          "Projects/game-assets/terrain.blend"};
struct MadeUpDownload {
    const char* name;
    std::int64_t bytes;
    const char* origin;
};
constexpr MadeUpDownload downloads[] = {
    {"debian-12.8.0-amd64-netinst.iso", 661'000'000, "https://cdimage.example.org/"},
    {"lecture-07.mp4", 1'200'000'000, "https://lectures.example.edu/week-7"},
    {"tax-2025.pdf", 3'100'000, "https://forms.example.org/"},
    {"train-ticket.pdf", 210'000, "https://tickets.example.net/"}};
constexpr const char* applications[] = {"Draw", "Letters", "Web", "Terminal", "Photos", "Studio"};
constexpr const char* clips[] = {
    "git log --oneline --graph --decorate",
    "Meet at the library entrance at 14:30, bring the draft.",
    "https://docs.example.org/guide/getting-started",
    "The quick brown fox jumps over the lazy dog.\nSecond line of the same clip.",
    "SELECT name, bytes FROM folders ORDER BY bytes DESC;",
    "IBAN of the landlord: see letter of 3 March"};

MemoryRecord file(MemoryRecord::Kind kind, Date at, const std::string& below, std::int64_t bytes) {
    const std::string path = std::string("/home/ada/") + below;
    auto record =
        MemoryRecord::make(kind, at, below.substr(below.rfind('/') + 1), path, {}, {}, at);
    record.id = MemoryRecord::fileID(kind, path, at);
    record.bytes = bytes;
    return record;
}

} // namespace

std::vector<Shared<SystemActivity>> madeUpActivity(Date now, int days) {
    return Diary(now).write(days);
}

std::vector<MemoryRecord> madeUpMemory(Date now) {
    std::minstd_rand random{11};
    std::vector<MemoryRecord> records;
    const Date today = Calendar().startOfDay(now);
    for (int back = daysOfMemory; back >= 0; --back) {
        const Date morning = today + (-back * day + 9.3 * hour);
        for (int i = 0; i < 3; ++i) {
            const Date at =
                morning + static_cast<double>(i * 100 + static_cast<int>(random() % 60)) * minute;
            const auto kind = random() % 2 == 0 ? MemoryRecord::Kind::fileOpened
                                                : MemoryRecord::Kind::fileModified;
            records.push_back(file(kind, at, documents[random() % std::size(documents)],
                                   static_cast<std::int64_t>(20'000 + random() % 4'000'000)));
            const std::string name = applications[random() % std::size(applications)];
            records.push_back(MemoryRecord::make(
                MemoryRecord::Kind::appLaunched, at + -4 * minute, name + " Launched",
                "/usr/share/applications/org.example." + name + ".desktop", name, {}, at));
        }
        if (back % 4 == 0) {
            const auto& [name, bytes, origin] =
                downloads[static_cast<std::size_t>(back / 4) % std::size(downloads)];
            auto record = file(MemoryRecord::Kind::downloaded, morning + 3.1 * hour,
                               "Downloads/" + std::string(name), bytes);
            record.sourceURL = origin;
            records.push_back(std::move(record));
        }
    }
    for (std::size_t i = 0; i < std::size(clips); ++i) {
        const Date at = now + -(0.4 + 2.3 * static_cast<double>(i)) * hour;
        const std::string text = clips[i];
        auto clip = MemoryRecord::make(MemoryRecord::Kind::clipboard, at,
                                       text.substr(0, text.find('\n')), {}, "Letters", {}, at);
        clip.contentType = "Text";
        clip.text = text;
        clip.bytes = static_cast<std::int64_t>(text.size());
        clip.pinned = i == 2;
        records.push_back(std::move(clip));
    }
    std::erase_if(records, [&](const auto& each) { return each.timestamp > now; });
    return records;
}

} // namespace tidemark::demo
