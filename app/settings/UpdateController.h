#pragma once

#include "app/base/Published.h"

#include <functional>
#include <optional>
#include <string>

namespace tidemark {

/// Updates of the program by a framework of the system. Most builds have none: then nothing is
/// started, no server is contacted, and `available` stays false. Main thread only.
class UpdateController : public Observable {
    Q_OBJECT

public:
    /// The functions of the framework. When its state changes, `refresh` has to be called.
    struct Framework {
        /// Starts its scheduled checks. Throws `Error`.
        std::function<void()> start;
        std::function<void()> checkForUpdates;
        std::function<bool()> canCheck;
        std::function<bool()> automaticChecks;
        std::function<void(bool)> setAutomaticChecks;
        std::function<bool()> automaticDownloads;
        std::function<void(bool)> setAutomaticDownloads;
    };
    /// This build of the program.
    struct Bundle {
        std::string identifier;
        /// The value of `publicKeyName` in the bundle's property list, if it has one.
        std::optional<std::string> publicKey;
    };

    /// The only build that updates itself, and only if it has a key to verify updates.
    static constexpr std::string_view updatingBuild = "app.tidemark.beta";
    static constexpr std::string_view publicKeyName = "SUPublicEDKey";

    /// `captureBusy` returns true while the program must not be replaced.
    UpdateController(Bundle bundle, Framework framework, std::function<bool()> captureBusy);

    /// True when this build has an updater.
    Published<bool> available{this};
    /// True when the framework has been started.
    Published<bool> connected{this};
    /// True when the user can start a check now.
    Published<bool> canCheck{this};
    Published<bool> automaticChecks{this};
    Published<bool> automaticDownloads{this};
    Published<std::optional<std::string>> error{this};

    /// Starts the framework; sets `error` if that fails. Does nothing in a build without an updater
    /// and after a start that succeeded.
    void start();
    /// Reads the state of the framework, if it has been started.
    void refresh();
    void checkForUpdates();
    void setAutomaticChecks(bool on);
    void setAutomaticDownloads(bool on);

    /// Called when the framework is about to restart the program. True when that must wait;
    /// `captureEnded` then calls `relaunch` when nothing is busy any more.
    bool postponeRelaunch(std::function<void()> relaunch);
    void captureEnded();

private:
    const Bundle bundle;
    const Framework framework;
    const std::function<bool()> captureBusy;
    std::function<void()> postponed;
};

} // namespace tidemark
