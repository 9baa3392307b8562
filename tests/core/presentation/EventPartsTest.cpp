#include "core/presentation/EventParts.h"

#include "core/presentation/EventRow.h"

#include <gtest/gtest.h>

using namespace tidemark;

namespace {

/// The parts one after the other, those that are words (not names) in brackets.
std::string markedParts(const eventParts::Parts& parts) {
    std::string text;
    for (const auto& part : parts)
        text += part.kind == eventParts::Part::Kind::words ? "[" + part.text + "]" : part.text;
    return text;
}

Event changedEvent(Change change) {
    Event event;
    event.changes.push_back(std::move(change));
    return event;
}

Event metadataEvent(ObservedMetadata::Kind kind) {
    change::MetadataChanged changed;
    ObservedMetadata item;
    item.kind = kind;
    changed.after.emplace(std::move(item));
    return changedEvent(changed);
}

Event rememberedEvent(MemoryRecord::Kind kind, std::optional<std::string> contentType = {}) {
    auto record = MemoryRecord::make(kind, {}, "");
    record.contentType = std::move(contentType);
    Event event;
    event.memory.emplace(std::move(record));
    return event;
}

Event observedActivity(SystemActivity::Kind kind, const char* network = nullptr) {
    auto activity = SystemActivity::observed(kind, {});
    if (network) {
        WiFiContext joined;
        joined.networkName = network;
        activity.wifiContext.emplace(std::move(joined));
    }
    Event event;
    event.systemActivity.emplace(std::move(activity));
    return event;
}

} // namespace

TEST(EventParts, KeepNamesApartFromWords) {
    using enum MemoryRecord::Kind;
    using Activity = SystemActivity::Kind;
    const Event folder = changedEvent(change::FolderSizeChanged{});
    const Event formula = metadataEvent(ObservedMetadata::Kind::homebrew);
    Event volume;
    VolumeContext named;
    named.name = "Serious · old";
    volume.volumeContext.emplace(std::move(named));
    const struct {
        Event event;
        const char* subtitle;
        const char* marked;
    } cases[] = {
        {folder, "+1.5 GB · Net +1.5 GB", "[+1.5 GB] · Net [+1.5 GB]"},
        {folder, "−2 KB · a · old +1.5 GB", "[−2 KB] · a · old [+1.5 GB]"},
        {folder, "a +1.5 GB · Files in folder −1 byte · Net +Zero KB",
         "a [+1.5 GB] · [Files in folder] [−1 byte] · [Net +Zero KB]"},
        {folder, "Net +1 GB · a −1 GB · Net +100 MB", "Net [+1 GB] · a [−1 GB] · [Net +100 MB]"},
        {folder, "Previously 3 items · 1.5 GB · Observed empty",
         "[Previously 3 items] · [1.5 GB] · [Observed empty]"},
        {volume, "Serious · old · 5 KB remaining", "Serious · old · [5 KB remaining]"},
        {changedEvent(change::ApplicationInstalled{}), "Open", "Open"},
        {changedEvent(change::ApplicationInstalled{}), "Unknown version", "[Unknown version]"},
        {changedEvent(change::ApplicationUpdated{}), "Unknown version → 2 MB",
         "[Unknown version] → 2 MB"},
        {changedEvent(change::ApplicationRemoved{}), "Previously 1 · Last measured size: 2 KB",
         "[Previously 1] · [Last measured size: 2 KB]"},
        {changedEvent(change::BackgroundAdded{}), "LaunchAgent · a · Open",
         "[User service] · a · Open"},
        {formula, "Homebrew · 1 → Not present", "Homebrew · 1 → [Not present]"},
        {metadataEvent(ObservedMetadata::Kind::diagnostic), "Open · 1", "Open · 1"},
        {rememberedEvent(fileOpened), "Last used · /a · b", "[Last used] · /a · b"},
        {rememberedEvent(clipboard, "Image"), "Image · Open · a", "[Image] · Open · a"},
        {rememberedEvent(clipboard), "Mac Woke Up", "Mac Woke Up"},
        {observedActivity(Activity::wifiChanged, "b"), "Mac Woke Up → b", "Mac Woke Up → b"},
        {observedActivity(Activity::thermalChanged), "Fair → Serious", "[Fair] → [Serious]"},
        {observedActivity(Activity::displayChanged), "5 pixels · 5\npoints",
         "[5 pixels] · [5\uFFFDpoints]"},
        {{}, "", ""},
    };
    for (auto [event, subtitle, marked] : cases) {
        event.subtitle = subtitle;
        EXPECT_EQ(markedParts(eventParts::subtitle(event)), marked) << subtitle;
    }
}

TEST(EventParts, TreatTheTitleOfAFileAsAName) {
    using enum MemoryRecord::Kind;
    Event file = rememberedEvent(fileOpened);
    Event application = rememberedEvent(appLaunched);
    Event gap;
    file.title = gap.title = "Mac Woke Up";
    application.title = "a Launched";
    EXPECT_EQ(markedParts(eventParts::title(file)), "Mac Woke Up");
    EXPECT_EQ(markedParts(eventParts::title(application)), "[a Launched]");
    EXPECT_EQ(markedParts(eventParts::title(gap)), "[Computer Woke Up]");
    EXPECT_EQ(EventRow::of(file, Calendar("UTC")).title, "Mac Woke Up");
}
