#include "app/preferences/PreferenceKeys.h"
#include "app/settings/LoginLaunchController.h"
#include "app/settings/UpdateController.h"
#include "app/settings/ViewSettings.h"
#include "core/base/Error.h"
#include "tests/app/support/Await.h"
#include "tests/app/support/MemoryPreferences.h"

#include <vector>

#include <gtest/gtest.h>

namespace tidemark {
namespace {

using test::await;
using test::MemoryPreferences;

TEST(ViewSettings, StoresTheTextSizeWithinItsRange) {
    const std::tuple<std::int64_t, std::int64_t, std::int64_t> cases[] = {
        {13, -1, 13}, {26, 1, 26}, {20, -3, 17}};
    for (const auto& [stored, step, shown] : cases) {
        MemoryPreferences preferences;
        preferences.set("listingTextSize", stored);
        ViewSettings settings(preferences);
        settings.changeListingTextSize(step);
        EXPECT_EQ(settings.listingTextSize(), shown);
        EXPECT_EQ(read(preferences, preferenceKeys::listingTextSize), shown);
        settings.resetListingTextSize();
        EXPECT_EQ(read(preferences, preferenceKeys::listingTextSize), 13);
    }
}

using ServiceStatus = LoginLaunchController::ServiceStatus;

/// The login item of a system that can require approval and can fail.
struct FakeLoginItem final : LoginItem {
    ServiceStatus present = ServiceStatus::notRegistered;
    ServiceStatus afterRegistering = ServiceStatus::enabled;
    const char* failure = nullptr;

    ServiceStatus status() const override { return present; }
    void add() override { change(afterRegistering); }
    QCoro::Task<void> remove() override {
        change(ServiceStatus::notRegistered);
        co_return;
    }
    void change(ServiceStatus to) {
        if (failure)
            throw Error(failure);
        present = to;
    }
};

TEST(LoginLaunchController, ReportsTheStatusOfTheSystem) {
    auto made = std::make_unique<FakeLoginItem>();
    FakeLoginItem& items = *made;
    LoginLaunchController login(std::move(made));
    EXPECT_FALSE(login.enabled());

    items.afterRegistering = ServiceStatus::requiresApproval;
    await(login.setEnabled(true));
    EXPECT_EQ(*login.status, ServiceStatus::requiresApproval);
    EXPECT_TRUE(login.enabled());

    items.failure = "The item is managed by somebody else.";
    await(login.setEnabled(false));
    EXPECT_EQ(*login.error, items.failure);
    EXPECT_TRUE(login.enabled());
    EXPECT_FALSE(*login.busy);

    items.failure = nullptr;
    await(login.setEnabled(false));
    EXPECT_EQ(*login.error, std::nullopt);
    EXPECT_FALSE(login.enabled());
}

struct Updates {
    int starts = 0;
    int checks = 0;
    bool automatic = false;
    bool busy = false;

    UpdateController controller(std::string identifier, std::optional<std::string> key) {
        return UpdateController({std::move(identifier), std::move(key)},
                                {.start = [this] { ++starts; },
                                 .checkForUpdates = [this] { ++checks; },
                                 .canCheck = [] { return true; },
                                 .automaticChecks = [this] { return automatic; },
                                 .setAutomaticChecks = [this](bool on) { automatic = on; },
                                 .automaticDownloads = [] { return false; },
                                 .setAutomaticDownloads = [](bool) {}},
                                [this] { return busy; });
    }
};

TEST(UpdateController, StartsOnlyInTheUpdatingBuild) {
    const std::vector<std::tuple<std::string, std::optional<std::string>, bool>> cases{
        {"app.tidemark.beta", "key", true},
        {"app.tidemark.beta", std::nullopt, false},
        {"app.tidemark.mac", "key", false},
        {"app.tidemark.beta.x", "key", false},
    };
    for (const auto& [identifier, key, starts] : cases) {
        Updates framework;
        auto updates = framework.controller(identifier, key);
        updates.start();
        updates.start();
        updates.setAutomaticChecks(true);
        updates.checkForUpdates();
        EXPECT_EQ(*updates.available, starts) << identifier;
        EXPECT_EQ(*updates.connected, starts) << identifier;
        EXPECT_EQ(framework.starts, starts) << identifier;
        EXPECT_EQ(framework.checks, starts) << identifier;
        EXPECT_EQ(framework.automatic, starts) << identifier;
    }
}

TEST(UpdateController, RelaunchWaitsForTheCapture) {
    Updates framework{.busy = true};
    auto updates = framework.controller("app.tidemark.beta", "key");
    int relaunches = 0;
    EXPECT_TRUE(updates.postponeRelaunch([&] { ++relaunches; }));
    updates.captureEnded();
    EXPECT_EQ(relaunches, 0);
    framework.busy = false;
    updates.captureEnded();
    updates.captureEnded();
    EXPECT_EQ(relaunches, 1);
    EXPECT_FALSE(updates.postponeRelaunch([&] { ++relaunches; }));
}

} // namespace
} // namespace tidemark
