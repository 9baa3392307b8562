#pragma once

#include "app/base/Published.h"

#include <functional>
#include <optional>
#include <string>

namespace tidemark {

/// Updates of the program through the framework of the system it runs on. Most builds have none:
/// then nothing is started, nothing is asked of any server, and `available` stays false. Main
/// thread only.
class UpdateController : public Observable {
    Q_OBJECT

public:
    /// The framework. What changes in it is told through `refresh`.
    struct Framework {
        /// Begins its scheduled checks. Throws `Error`.
        std::function<void()> start;
        std::function<void()> checkForUpdates;
        std::function<bool()> canCheck;
        std::function<bool()> automaticChecks;
        std::function<void(bool)> setAutomaticChecks;
        std::function<bool()> automaticDownloads;
        std::function<void(bool)> setAutomaticDownloads;
    };
    /// The build that this is.
    struct Bundle {
        std::string identifier;
        /// The text under `publicKeyName` in the bundle's information, if it has one.
        std::optional<std::string> publicKey;
    };

    /// The only build that updates itself, and only when it can verify what it is given.
    static constexpr std::string_view updatingBuild = "app.tidemark.beta";
    static constexpr std::string_view publicKeyName = "SUPublicEDKey";

    /// `captureIsBusy` holds while the program must not be replaced.
    UpdateController(Bundle running, Framework used, std::function<bool()> captureIsBusy);

    /// This build has an updater.
    Published<bool> available{this};
    /// The framework has been started.
    Published<bool> connected{this};
    /// A check may be asked for now.
    Published<bool> canCheck{this};
    Published<bool> automaticChecks{this};
    Published<bool> automaticDownloads{this};
    Published<std::optional<std::string>> error{this};

    /// Does nothing in a build without updater, or a second time.
    void start();
    /// Takes over what the framework says of itself.
    void refresh();
    void checkForUpdates();
    void setAutomaticChecks(bool on);
    void setAutomaticDownloads(bool on);

    /// The framework wants to start the program anew. True when that must wait: `relaunch` is then
    /// called by `captureEnded`, once nothing is busy any more.
    bool postponeRelaunch(std::function<void()> relaunch);
    void captureEnded();

private:
    const Bundle bundle;
    const Framework framework;
    const std::function<bool()> captureBusy;
    std::function<void()> postponed;
};

} // namespace tidemark
