#pragma once

#include "app/base/AppClock.h"
#include "app/base/TaskScope.h"
#include "platform/linux/ApplicationLaunches.h"
#include "platform/linux/ApplicationUnit.h"
#include "platform/linux/BusService.h"
#include "platform/linux/DesktopApplications.h"

#include <filesystem>
#include <map>
#include <optional>
#include <vector>

namespace tidemark {

/// Follows applications by the systemd units in which desktops start them. The user's service
/// manager reports these units (org.freedesktop.systemd1,
/// https://www.freedesktop.org/wiki/Software/systemd/dbus). The name of a unit and the desktop
/// entries say which application it contains. What a terminal starts, and what desktops start
/// without a unit, is left to `WindowApplications`. Main thread only.
class UnitApplications final : public QObject, public ApplicationLaunches::Source {
public:
    static constexpr std::string_view firstWord = "unit ";

    struct Setup {
        /// The bus of the session; used from the first start on.
        std::function<MessageBus()> bus = &MessageBus::session;
        AppClock& clock = AppClock::system();
        /// The folders with desktop entries. Called on any thread.
        std::function<std::vector<std::filesystem::path>()> folders = &desktopApplications::folders;
    };

    explicit UnitApplications(Setup setup);
    ~UnitApplications() override;

    void start(ApplicationLaunches& launches) override;
    void stop() override;

    /// True when changes are followed, and the units that exist and their applications are known.
    bool isFollowing() const;

private:
    struct Unit {
        QString path;
        ApplicationUnit application;
        /// True for a unit that existed when following began, and for one that the session started:
        /// its application counts as running and not as launched.
        bool isAssumed = false;
        bool isActive = false;
        /// Its state was read.
        bool isKnown = false;
        /// Distinguishes a unit from an earlier one of the same name.
        std::uint64_t number = 0;
        BusService::Subscription changes{};
    };

    void follow();
    void forget();
    void list();
    void addListed(const QDBusMessage& reply);
    void add(const QString& name, const QString& path, bool isListed);
    void readState(const QString& name);
    void setState(const QString& name, const QString& state);
    void remove(const QString& name);
    QCoro::Task<void> identify(QString name, Date moment, double now);
    void close(const QString& name);

    const Setup uses;
    ApplicationLaunches* launches = nullptr;
    std::optional<BusService> manager;
    std::vector<BusService::Subscription> subscriptions;
    std::map<QString, Unit> units;
    std::uint64_t lastNumber = 0;
    bool hasList = false;
    TaskScope tasks;
};

} // namespace tidemark
