#include "demo/history/MadeUpHistory.h"

#include "core/base/Calendar.h"
#include "demo/history/MadeUpActivity.h"
#include "demo/history/Units.h"

#include <array>
#include <functional>
#include <random>

namespace tidemark::demo {

namespace {

constexpr double interval = 30 * minute;
/// How many days before the last one have a capture every half hour; earlier days have captures
/// only around changes.
constexpr int daysOfAllCaptures = 2;

constexpr std::array<const char*, 8> installable{"Compass", "Easel", "Fountain", "Gallery",
                                                 "Harbour", "Loom",  "Orchard",  "Quill"};

/// Writes the journal of the past, moment by moment.
class Author {
public:
    explicit Author(Date now) : today(Calendar().startOfDay(now)) {}

    void tellHalfAYear(MadeUpHistory& history) {
        for (int back = MadeUpHistory::days; back > daysOfAllCaptures; --back)
            tellDay(history, back);
        tellLastDays(history);
    }

private:
    void tellDay(MadeUpHistory& history, int back) {
        const Date morning = today + -back * day;
        const int changes = 1 + static_cast<int>(random() % 2);
        for (int i = 0; i < changes; ++i) {
            const double at =
                (9.5 + static_cast<double>(i * 5 + static_cast<int>(random() % 4))) * hour;
            history.journal.append(Shared(history.machine.captured(morning + (at - interval))),
                                   true);
            change(history.machine, back);
            history.journal.append(Shared(history.machine.captured(morning + at)), true);
        }
        if (back == 80 || back == 10 || back == 40)
            history.journal.baselines.push_back(
                Baseline::named(back == 80   ? "Fresh install"
                                : back == 40 ? "Before moving the photo library to the new disk"
                                             : "Before the upgrade",
                                history.journal.snapshots.back()));
    }

    void change(MadeUpMachine& machine, int back) {
        if (back == 9)
            machine.updateSystem("Example Linux 12.8");
        switch (random() % 8) {
        case 0:
            return install(machine);
        case 1:
            machine.grow("Projects", random() % 2 == 0 ? "target" : "node_modules", sizeOf(8));
            return;
        case 2:
            machine.grow("Pictures", "2026", sizeOf(5));
            return;
        case 3:
            machine.throwAway(40, 2 * gigabyte);
            machine.grow("Downloads", "installers", random() % 3 == 0 ? -2 * gigabyte : sizeOf(2));
            return;
        case 4:
            if (random() % 2 == 0)
                machine.emptyTrash();
            [[fallthrough]];
        default:
            update(machine);
        }
    }

    std::int64_t sizeOf(unsigned most) {
        const auto bytes = static_cast<std::int64_t>(1 + random() % most) * gigabyte
                           + static_cast<std::int64_t>(random() % 97) * 10'000'000;
        // What grows is also cleaned up now and then.
        return random() % 3 == 0 ? -bytes : bytes;
    }

    void update(MadeUpMachine& machine) {
        for (unsigned i = 0; i < 1 + random() % 3; ++i)
            machine.updateApplication(
                machine.applicationName(random() % machine.applicationCount()));
    }

    void install(MadeUpMachine& machine) {
        const char* name = installable[nextInstalled++ % installable.size()];
        const bool isNew = nextInstalled <= installable.size();
        if (!isNew && random() % 2 == 0)
            return machine.updateApplication("Draw");
        machine.remove(name);
        machine.install(name, "1." + std::to_string(random() % 9));
        if (isNew && random() % 3 == 0)
            machine.addService(name, "sync");
    }

    void tellLastDays(MadeUpHistory& history) {
        struct Moment {
            double at;
            std::function<void(MadeUpMachine&)> change;
        };
        // Hours before the start of the last day are negative. The user went to bed at half past
        // midnight, and the machine slept until nine.
        const std::vector<Moment> moments{
            {-31.5, [](auto& m) { m.updateApplication("Web"); }},
            {-27, [](auto& m) { m.grow("Music", "Recordings", 3'400'000'000); }},
            {-12, [](auto& m) { m.throwAway(31, 900'000'000); }},
            {-6, [](auto& m) { m.emptyTrash(); }},
            {-5.5,
             [](auto& m) {
                 m.updateApplication("Photos");
                 m.updateApplication("Letters");
             }},
            {-2.5, [](auto& m) { m.changeFreeSpace(-12'400'000'000); }},
            {10.5, [](auto& m) { m.install("Easel Studio", "2.1"); }},
            {12.5, [](auto& m) { m.grow("Downloads", "installers", -1'800'000'000); }},
            {14, [](auto& m) { m.updateApplication("Weather"); }},
            {14.5,
             [](auto& m) {
                 m.updateApplication("Draw");
                 m.addService("Draw", "sync");
                 m.grow("Projects", "target", 6'100'000'000);
                 m.grow("Projects", "docs", -80'000'000);
                 m.grow("Projects", "game-assets", 1'270'000'000);
             }},
        };
        std::size_t next = 0;
        const int firstHalfHour = 2 * (-24 * daysOfAllCaptures + 8);
        for (int halfHour = firstHalfHour; halfHour <= 29; ++halfHour) {
            const double at = 0.5 * halfHour;
            const double ofDay = at < 0 ? at + 48 : at + 24;
            const double clock = ofDay - 24 * static_cast<int>(ofDay / 24);
            if (clock > 0.5 && clock < 9)
                continue;
            for (; next < moments.size() && moments[next].at <= at; ++next)
                moments[next].change(history.machine);
            history.journal.append(Shared(history.machine.captured(today + at * hour, interval)),
                                   true);
        }
    }

    const Date today;
    std::minstd_rand random{42};
    std::size_t nextInstalled = 0;
};

std::vector<InstallationRecord> installations(Date now) {
    std::vector<InstallationRecord> records;
    for (const auto& [name, version, daysAgo] :
         std::initializer_list<std::tuple<const char*, const char*, double>>{
             {"Scanner Drivers", "1.2.3", 3.2}, {"Example Fonts", "", 5.1}})
        records.push_back({name, version, now + -daysAgo * day,
                           std::string(InstallationRecord::otherSource), now + -2 * day});
    return records;
}

} // namespace

Date MadeUpHistory::endOfDay(Date date) {
    return Calendar().startOfDay(date) + (14 * hour + 42 * minute);
}

MadeUpHistory MadeUpHistory::endingAt(Date now) {
    MadeUpHistory history;
    Author(now).tellHalfAYear(history);
    history.journal.importInstallations(installations(now));
    history.journal.initialHistoryImportCompletedAt = now + -2 * day;
    history.journal.lastChecked = history.journal.snapshots.back()->timestamp;
    history.activity = madeUpActivity(now, days);
    history.memory = madeUpMemory(now);
    return history;
}

} // namespace tidemark::demo
