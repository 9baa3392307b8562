#include "core/timeline/EventBuilder.h"

#include "core/base/Arithmetic.h"
#include "core/base/Text.h"
#include "core/system/TrashFolder.h"
#include "core/timeline/DiffEngine.h"
#include "core/timeline/EventDisplay.h"
#include "core/timeline/StorageBreakdown.h"

#include <algorithm>

namespace tidemark::EventBuilder {

namespace {

/// Seconds. If two snapshots are further apart, a new background item is not attributed to the
/// installation of its application.
constexpr double foldingInterval = 3600;
/// How many children are considered for the wording of a folder's event.
constexpr std::int64_t describedChildren = 8;
/// How many children are named when the contents changed but not the size.
constexpr std::size_t namedChildren = 2;

constexpr std::string_view dot = " · ";
constexpr std::string_view arrow = " → ";

std::string joined(std::initializer_list<std::string_view> parts) {
    std::string text;
    for (const auto part : parts)
        text += part;
    return text;
}

using MeasuredSize = OptionalShared<StorageMeasurementRecord>;

/// The first record of a report that `matches`.
template <class Matches>
MeasuredSize findSize(const std::optional<StorageMeasurementReport>& report, Matches matches) {
    if (report)
        for (const auto& record : report->records)
            if (matches(*record))
                return MeasuredSize(record);
    return {};
}

MeasuredSize sizeOf(const Application& app, const std::optional<StorageMeasurementReport>& report) {
    return findSize(report, [&](const StorageMeasurementRecord& record) {
        return record.item->path == app.path && record.item->identifier == app.bundleID;
    });
}

/// The last size of a removed application. It is looked up by the item that was measured, since
/// something else may be at its path now.
MeasuredSize lastSizeOf(const Application& app,
                        const std::optional<StorageMeasurementReport>& report) {
    return findSize(report, [&](const StorageMeasurementRecord& record) {
        return record.item->path == app.path && record.measuredItem
               && record.measuredItem->identifier == app.bundleID && record.bytes;
    });
}

std::string change(const StorageContribution& part) {
    return part.name + " " + signedBytes(part.delta());
}

/// Fills in one event from its change; sets the title only where `displayTitle` needs it. Returns
/// false when the change makes no event.
class Wording {
public:
    Wording(const Snapshot& from, const Snapshot& to, Event& event)
        : from(from), to(to), event(event) {}

    bool operator()(const change::ApplicationInstalled& installed) const {
        const Application& app = *installed.value;
        describe(app, "plus.app", app.version);
        return true;
    }

    bool operator()(const change::ApplicationRemoved& removed) const {
        const Application& app = *removed.value;
        describe(app, "minus.circle", "Previously " + app.version);
        event.removedApplicationSize = lastSizeOf(app, from.applicationStorage);
        if (event.removedApplicationSize)
            event.subtitle +=
                " · Last measured size: " + byteString(*event.removedApplicationSize->bytes);
        return true;
    }

    bool operator()(const change::ApplicationUpdated& updated) const {
        const Application& before = *updated.before;
        const Application& after = *updated.after;
        describe(after, "arrow.triangle.2.circlepath",
                 before.version == after.version
                     ? joined({"Build ", before.build, arrow, after.build})
                     : joined({before.version, arrow, after.version}));
        return true;
    }

    bool operator()(const change::BackgroundAdded& added) const {
        describe(*added.value);
        if (const auto* owner = ownerOf(*added.value))
            event.title = newBackgroundItemTitle(owner->name);
        return true;
    }

    bool operator()(const change::BackgroundRemoved& removed) const {
        describe(*removed.value);
        event.importance = Importance::routine;
        return true;
    }

    bool operator()(const change::BackgroundChanged& changed) const {
        describe(*changed.after);
        return true;
    }

    bool operator()(const change::OperatingSystemChanged& changed) const {
        event.category = EventCategory::system;
        event.symbol = "desktopcomputer";
        event.subtitle = joined({changed.before.label(), arrow, changed.after.label()});
        return true;
    }

    bool operator()(const change::FolderSizeChanged& changed) const {
        const FolderSize& before = *changed.before;
        const FolderSize& after = *changed.after;
        event.category = EventCategory::storage;
        event.path = after.path;
        event.symbol = TrashFolder::is(after.path) ? "trash" : "folder";
        // The sizes belong to the times of their measurement, which may be long before the capture.
        event.intervalStart = before.measuredAt.value_or(from.timestamp);
        event.timestamp = after.measuredAt.value_or(to.timestamp);
        event.importance = after.bytes < before.bytes ? Importance::routine : Importance::prominent;
        describeSize(before, after);
        return true;
    }

    bool operator()(const change::FreeDiskSpaceChanged& space) const {
        event.category = EventCategory::storage;
        event.symbol = "internaldrive";
        // Less free space is prominent, more is routine.
        event.importance = space.before < space.after ? Importance::routine : Importance::prominent;
        if (const auto& volume = to.volumeContext ? to.volumeContext : from.volumeContext)
            event.volumeContext.emplace(VolumeContext(*volume));
        event.subtitle = displaySubtitle(event);
        return true;
    }

    bool operator()(const change::TrashBecameEmpty& emptied) const {
        event.category = EventCategory::storage;
        event.symbol = "trash";
        event.path = emptied.path;
        event.subtitle = "Previously " + std::to_string(emptied.previousItemCount)
                         + (emptied.previousItemCount == 1 ? " item" : " items")
                         + " · Previous size unavailable";
        return true;
    }

    bool operator()(const change::MetadataChanged& changed) const {
        const auto& item = changed.after ? changed.after : changed.before;
        // The system deletes old diagnostic reports, so only new ones make an event.
        if (!item || (item->kind == ObservedMetadata::Kind::diagnostic && !changed.after))
            return false;
        event.path = item->path;
        switch (item->kind) {
        case ObservedMetadata::Kind::homebrew:
            event.category = EventCategory::applications;
            event.symbol = "shippingbox";
            event.title = item->name + verb(changed, " Installed");
            event.subtitle = joined({"Homebrew", dot, changed.before ? changed.before->value : "",
                                     changed.before ? arrow : "",
                                     changed.after ? changed.after->value : "Not present"});
            break;
        case ObservedMetadata::Kind::configuration:
            event.category = EventCategory::system;
            event.symbol = "doc.text";
            event.title = item->name + verb(changed, " Created");
            event.subtitle = "Selected configuration file · Content fingerprint changed";
            break;
        case ObservedMetadata::Kind::diagnostic:
            event.category = EventCategory::system;
            event.symbol = "doc.text.magnifyingglass";
            event.title = "New Diagnostic Report";
            event.subtitle = item->name;
            break;
        }
        return true;
    }

private:
    static std::string verb(const change::MetadataChanged& changed, const char* appeared) {
        if (!changed.after)
            return " Removed";
        return changed.before ? " Changed" : appeared;
    }

    void describe(const Application& app, const char* symbol, std::string subtitle) const {
        event.category = EventCategory::applications;
        event.symbol = symbol;
        event.subtitle = std::move(subtitle);
        event.path = app.path;
        event.identifier = app.bundleID;
        event.appID = app.bundleID;
        event.applicationSizeBefore = sizeOf(app, from.applicationStorage);
        event.applicationSizeAfter = sizeOf(app, to.applicationStorage);
    }

    void describe(const BackgroundItem& item) const {
        event.category = EventCategory::background;
        event.symbol = "gearshape.2";
        event.subtitle = joined({rawValue(item.kind), dot, item.identifier});
        event.path = item.path;
        event.identifier = item.identifier;
        event.appID = item.associatedAppID;
    }

    void describeSize(const FolderSize& before, const FolderSize& after) const {
        const std::int64_t delta = saturatingDifference(after.bytes, before.bytes);
        const StorageBreakdown breakdown(before, after, describedChildren);
        const auto& parts = breakdown.contributions;
        event.subtitle = signedBytes(delta);
        // The parts are sorted, the largest first.
        if (!parts.empty())
            event.subtitle += joined({dot, change(parts.front())});
        if (DiffEngine::isContentsChange(before, after)) {
            event.importance = Importance::prominent;
            event.subtitle.clear();
            for (std::size_t i = 0; i < std::min(parts.size(), namedChildren); ++i)
                event.subtitle += joined({i == 0 ? "" : dot, change(parts[i])});
            event.subtitle += " · Net " + signedBytes(delta);
        }
        if (TrashFolder::is(after.path) && after.itemCount == 0
            && before.itemCount.value_or(0) >= 1) {
            event.importance = Importance::prominent;
            event.subtitle = "Previously " + std::to_string(*before.itemCount) + " items · "
                             + byteString(before.bytes) + " · Observed empty";
        }
    }

    /// The application that a background item belongs to, in the new snapshot or else in the old
    /// one.
    const Application* ownerOf(const BackgroundItem& item) const {
        if (item.associatedAppID)
            for (const Snapshot* snapshot : {&to, &from})
                for (const auto& app : *snapshot->applications)
                    if (app->bundleID == *item.associatedAppID)
                        return &*app;
        return nullptr;
    }

    const Snapshot& from;
    const Snapshot& to;
    Event& event;
};

/// The background item of `event`, if it is new and its program is inside an application; else
/// null.
const BackgroundItem* installedItem(const Event& event) {
    if (event.category != EventCategory::background || event.changes.empty())
        return nullptr;
    const auto* added = std::get_if<change::BackgroundAdded>(&event.changes.front());
    return added && added->value->association == BackgroundItem::insideBundle
                   && added->value->program
               ? &*added->value
               : nullptr;
}

/// True when the `installedItem` of `other` belongs to the application of `event`.
bool isInstalledWith(const Event& event, const Event& other) {
    const BackgroundItem* item = installedItem(other);
    return item && event.path && event.appID == other.appID && isBelow(*item->program, *event.path);
}

/// Merges the events of background items that came with an application into the event of the
/// application, so that one installation is one entry. If several applications match, the first one
/// gets the item.
void foldBackgroundItems(std::vector<Event>& events) {
    std::vector<Event*> installed;
    for (Event& event : events)
        if (installedItem(event))
            installed.push_back(&event);
    for (Event& event : events) {
        if (event.category != EventCategory::applications)
            continue;
        for (Event* other : installed) {
            if (!isInstalledWith(event, *other))
                continue;
            std::ranges::move(other->changes, std::back_inserter(event.changes));
            other->changes.clear();
        }
    }
}

} // namespace

std::vector<Event> build(const Snapshot& from, const Snapshot& to) {
    const std::string prefix = from.id.text() + "-" + to.id.text() + "-";
    std::vector<Event> events;
    std::size_t number = 0;
    for (Change& found : DiffEngine::compare(from, to)) {
        Event event;
        event.id = prefix + std::to_string(number++);
        event.timestamp = to.timestamp;
        event.intervalStart = from.timestamp;
        event.symbol = "app";
        event.changes.push_back(std::move(found));
        if (std::visit(Wording(from, to, event), event.changes.front()))
            events.push_back(std::move(event));
    }
    if (to.timestamp - from.timestamp <= foldingInterval)
        foldBackgroundItems(events);
    std::erase_if(events, [](const Event& event) { return event.changes.empty(); });
    for (Event& event : events)
        event.title = displayTitle(event);
    return events;
}

} // namespace tidemark::EventBuilder
