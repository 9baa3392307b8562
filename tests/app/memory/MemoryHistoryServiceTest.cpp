#include "app/memory/MemoryHistoryService.h"

#include "app/base/Background.h"
#include "tests/app/support/Await.h"
#include "tests/app/support/ManualAppClock.h"
#include "tests/app/support/MemoryPreferences.h"
#include "tests/support/TemporaryFolder.h"

#include <cmath>
#include <future>

#include <gtest/gtest.h>

using namespace tidemark;
namespace fs = std::filesystem;
using Kind = MemoryRecord::Kind;

namespace {

constexpr double day = 86'400;

struct LoggedCollector final : MemoryCollector {
    void start(MemoryHistoryService&) override { log += "start "; }
    void stop() override { log += "stop "; }
    std::string taken() { return std::exchange(log, {}); }

    std::string log;
};

/// A service with a real folder and a manual clock.
struct MemoryHistory : testing::Test {
    MemoryHistory() { create(); }

    /// Creates the service without loading it.
    void create() {
        service.reset();
        service.emplace(
            MemoryHistoryService::Setup{.url = url,
                                        .preferences = preferences,
                                        .workspaceCenter = workspace,
                                        .clock = clock,
                                        .collectors = {&collector},
                                        .collectionAllowed = [this] { return allowed; }});
        collector.taken();
    }
    void load() { test::await(service->load()); }
    void finishWriting() { test::await(service->writer()); }
    /// Destroys the service, which waits for the last write, and reads the document.
    MemoryArchive stored() {
        service.reset();
        return MemoryHistoryStore(url).load();
    }

    MemoryRecord clip(const std::string& text, double age = 0) {
        auto record = MemoryRecord::make(Kind::clipboard, clock.now() + -age, "Clipboard");
        record.text = text;
        return record;
    }
    MemoryRecord application(const std::string& title) {
        return MemoryRecord::make(Kind::appLaunched, clock.now(), title);
    }
    static std::string titles(const MemoryArchive& archive) {
        std::string all;
        for (const auto& record : archive.records)
            all += record->text.value_or(record->title) + (record->pinned ? "! " : " ");
        return all;
    }
    std::string titles() { return titles(service->archive()); }
    /// Replaces the document by a folder, so that it can't be written.
    void blockDocument() {
        finishWriting();
        fs::remove(url);
        fs::create_directory(url);
    }

    const test::TemporaryFolder folder;
    const fs::path url = folder / "data/memory-history.json";
    test::ManualAppClock clock;
    test::MemoryPreferences preferences;
    NotificationCenter workspace;
    LoggedCollector collector;
    bool allowed = true;
    std::optional<MemoryHistoryService> service;
};

} // namespace

TEST_F(MemoryHistory, DestructorWaitsForTheLastWrite) {
    service->update({clip("too early")});
    load();
    EXPECT_EQ(titles(), "");
    for (const auto* title : {"a", "b", "c", "d"}) {
        clock.advance(1);
        service->update({application(title)});
    }
    EXPECT_EQ(titles(), "d c b a ");
    service->update({clip("shown alone")}, false);
    EXPECT_EQ(titles(stored()), "d c b a ") << "written before the destructor returns";
}

TEST_F(MemoryHistory, OtherBackgroundWorkDoesNotDelayIt) {
    std::promise<void> hanging;
    const auto end = hanging.get_future().share();
    for (int i = 0; i < 16; ++i)
        detail::startOnPool([end] { end.wait(); });
    load();
    service->update({application("a")});
    finishWriting();
    EXPECT_EQ(titles(stored()), "a ");
}

TEST_F(MemoryHistory, WritesOnlyChanges) {
    load();
    service->update({application("a")});
    finishWriting();
    const auto written = fs::last_write_time(url);
    fs::last_write_time(url, written - std::chrono::hours(1));
    service->update({});
    service->update({*service->archive().records[0]});
    finishWriting();
    EXPECT_EQ(fs::last_write_time(url), written - std::chrono::hours(1));
    service->update({application("b")});
    finishWriting();
    EXPECT_GE(fs::last_write_time(url), written);
}

TEST_F(MemoryHistory, RefusesAnUnreadableDocumentAndTriesAgain) {
    folder.write("data/memory-history.json", "damaged");
    EXPECT_THROW(load(), Error);
    EXPECT_FALSE(service->isLoaded());
    service->start();
    service->update({application("a")});
    EXPECT_THROW(service->clearClipboard(), Error);
    finishWriting();
    EXPECT_EQ(test::contents(url), "damaged");
    EXPECT_EQ(collector.taken(), "");

    fs::remove(url);
    load();
    service->update({application("a")});
    EXPECT_EQ(titles(stored()), "a ");
}

TEST_F(MemoryHistory, AppliesTheAgeLimitsAtOnce) {
    load();
    service->update({clip("old", 6 * day), clip("new"), clip("pinned", 5 * day)});
    service->togglePin(service->clips()[1]->id);
    finishWriting();
    clock.advance(2 * day);
    create();
    load();
    EXPECT_EQ(titles(), "new pinned! ");
    service->setClipboardDays(1);
    test::settle();
    EXPECT_EQ(service->clipboardDays(), 1);
    EXPECT_EQ(titles(), "pinned! ");
    EXPECT_EQ(preferences.integer("memoryClipboardDays"), 1);
    EXPECT_EQ(titles(stored()), "pinned! ");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder / "data/memory-payloads"), {}), 1)
        << "the contents of removed clips are removed";
}

TEST_F(MemoryHistory, PinsAndClearsOnlyClips) {
    load();
    service->update({clip("a"), application("editor")});
    const auto id = service->clips().at(0)->id;
    service->togglePin(id);
    EXPECT_EQ(titles(), "a! editor ");
    service->togglePin(id);
    EXPECT_EQ(titles(), "a editor ");
    service->togglePin(service->archive().records[1]->id);
    service->togglePin("unknown");
    EXPECT_EQ(titles(), "a editor ");
    service->togglePin(id);
    service->clearClipboard();
    EXPECT_EQ(titles(), "editor ");
    EXPECT_EQ(titles(stored()), "editor ");
    EXPECT_EQ(test::namesIn(folder / "data/memory-payloads"), "");
}

TEST_F(MemoryHistory, RecordsNothingWhileNotAllowed) {
    load();
    service->update({clip("old", 6 * day)});
    allowed = false;
    clock.advance(2 * day);
    service->update({application("secret")});
    EXPECT_EQ(titles(), "") << "the limits still apply";
    service->start();
    EXPECT_EQ(collector.taken(), "stop ");
    EXPECT_FALSE(service->active());
}

TEST_F(MemoryHistory, LeavesOutRecordsThatCannotBeStored) {
    load();
    std::vector<MemoryRecord> records(5, application("odd"));
    records[0].timestamp = records[1].observedAt = Date::distantPast();
    records[2].lastOpened = Date::distantFuture();
    records[3].duration = std::nan("");
    records[4].title = "editor";
    for (std::size_t i = 0; i < records.size(); ++i)
        records[i].id = std::to_string(i);
    service->update(records);
    finishWriting();
    EXPECT_EQ(service->failure(), std::nullopt);
    EXPECT_EQ(titles(stored()), "editor ");
}

TEST_F(MemoryHistory, StopsPermanentlyAfterAFailedSave) {
    load();
    service->start();
    collector.taken();
    service->update({clip("secret", day)});
    blockDocument();
    int changes = 0;
    QObject::connect(&*service, &Observable::changed, [&] { ++changes; });
    service->update({application("lost")});
    finishWriting();
    EXPECT_EQ(service->failure(), "New activity history could not be saved. Collection stopped to "
                                  "protect the existing file.");
    EXPECT_EQ(changes, 2) << "for the archive and for the failure";
    EXPECT_EQ(collector.taken(), "stop ");
    EXPECT_FALSE(service->isRunning());

    service->update({application("later")});
    service->start();
    workspace.post(notification::willSleep);
    workspace.post(notification::didWake);
    EXPECT_EQ(titles(), "lost secret ");
    EXPECT_THROW(service->togglePin(service->clips()[0]->id), Error);
    EXPECT_THROW(service->clearClipboard(), Error);
    EXPECT_EQ(titles(), "lost secret ") << "unchanged, because the change could not be saved";
    EXPECT_EQ(collector.taken().find("start"), std::string::npos);
    EXPECT_EQ(test::namesIn(folder / "data"), "memory-history.json memory-payloads");
}

TEST_F(MemoryHistory, IsSuspendedDuringSleepAndInactiveSessions) {
    service->start();
    EXPECT_EQ(collector.taken(), "") << "nothing starts before load";
    load();
    service->start();
    service->start();
    EXPECT_EQ(collector.taken(), "stop start ");
    EXPECT_TRUE(service->active());
    const auto generation = service->generation();

    for (const auto begin : {notification::willSleep, notification::screensDidSleep,
                             notification::sessionDidResignActive})
        workspace.post(begin);
    EXPECT_FALSE(service->active());
    EXPECT_NE(service->generation(), generation);
    collector.taken();
    workspace.post(notification::screensDidWake);
    workspace.post(notification::didWake);
    EXPECT_EQ(collector.taken(), "");
    workspace.post(notification::sessionDidBecomeActive);
    EXPECT_EQ(collector.taken(), "stop start ");
    workspace.post(notification::willSleep);
    workspace.post(notification::sleepAbandoned);
    EXPECT_EQ(collector.taken(), "stop stop start ");

    preferences.set("memoryApps", false);
    test::settle();
    EXPECT_EQ(collector.taken(), "stop start ") << "restarted for the new settings";

    service->stop();
    workspace.post(notification::didWake);
    EXPECT_EQ(collector.taken(), "stop ") << "notifications are ignored after stop";
    service->start();
    EXPECT_EQ(collector.taken(), "stop start ");
}
