#include "core/base/JsonDecoder.h"
#include "core/journal/Journal.h"
#include "tests/support/Observations.h"
#include "tests/support/RecordFiller.h"
#include "tests/support/SharedRecords.h"

#include <sstream>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <rapidcheck/gtest.h>

using namespace tidemark;
using Json = nlohmann::ordered_json;

namespace {

/// The codec of one record type. Not a template, so that the checks are compiled once and not for
/// each record.
struct Codec {
    /// The stored form of a record whose members all have a value.
    std::string whole;
    /// Reads a record and writes it again. Throws `json::DecodingError`.
    std::string (*rewritten)(std::string_view document);
};

template <class Record>
Codec codecOf() {
    return {json::encoded(test::fullSample<Record>()), [](std::string_view document) {
                return json::encoded(json::decode<Record>(document));
            }};
}

std::string failureOf(const Codec& codec, const Json& document) {
    try {
        codec.rewritten(document.dump());
        return {};
    } catch (const json::DecodingError& error) {
        return error.what();
    }
}

/// One value of each JSON type.
const Json samples[] = {nullptr, true, 7, 0.25, "other", Json::array(), Json::object()};

/// True when a field with the value `original` also accepts the type of `other`.
bool interchangeable(const Json& original, const Json& other) {
    if (original.is_number_float())
        return other.is_number();
    if (original.is_number_integer())
        return other.is_number_integer();
    return original.type() == other.type();
}

/// Checks the record's stored form: its keys in the order of `shape`, where "?" marks keys that may
/// be missing. Then leaves out each key, sets it to null and to a value of every other type.
void expectShape(const Codec& codec, const std::string& shape) {
    SCOPED_TRACE(shape);
    const Json whole = Json::parse(codec.whole);
    std::string keys;
    std::istringstream words(shape);
    for (std::string key; words >> key; keys += key + " ") {
        SCOPED_TRACE(key);
        const bool optional = key.ends_with('?');
        if (optional)
            key.pop_back();
        ASSERT_TRUE(whole.contains(key));

        Json without = whole;
        without.erase(key);
        EXPECT_EQ(failureOf(codec, without),
                  optional ? "" : "the required key \"" + key + "\" is missing");
        for (const Json& sample : samples) {
            if (interchangeable(whole[key], sample))
                continue;
            Json wrong = whole;
            wrong[key] = sample;
            const std::string failure = failureOf(codec, wrong);
            if (optional && sample.is_null()) {
                EXPECT_EQ(failure, "");
                EXPECT_EQ(codec.rewritten(wrong.dump()), without.dump());
            } else {
                EXPECT_EQ(failure.rfind(key + ": expected ", 0), 0U) << sample << failure;
            }
        }
    }
    std::string stored;
    for (const auto& [key, value] : whole.items())
        stored += key + " ";
    std::erase(keys, '?');
    EXPECT_EQ(stored, keys);
}

template <class Record>
void expectShape(const std::string& shape) {
    expectShape(codecOf<Record>(), shape);
}

/// The stored texts of an enumeration, in declared order. Checks that each value reads back.
template <class E>
std::string rawTexts() {
    std::string list;
    for (const auto& entry : json::rawValues<E>) {
        list += (list.empty() ? "" : "|") + std::string(entry.text);
        EXPECT_EQ(json::decode<E>(json::encoded(entry.value)), entry.value);
    }
    return list;
}

template <class Record>
void expectIdentity(const Record& record) {
    RC_ASSERT(json::decode<Record>(json::encoded(record)) == record);
}

} // namespace

TEST(StoredForm, OfObservations) {
    expectShape<Application>("bundleID name version build path modified?");
    expectShape<BackgroundItem>("identifier path kind program? safeSettings? "
                                "definitionFingerprints? associatedAppID? association?");
    expectShape<FolderSize>("path name bytes breakdown directFileSizes? allocatedBytes? itemCount? "
                            "rollingMeasurement? measuredAt?");
    expectShape<Coverage>("applicationRoots backgroundRoots issues notes? excludedPaths?");
    expectShape<VolumeContext>("name capacity? fileSystem? local? internalDevice? readOnly?");
    expectShape<OperatingSystemObservation>("version build?");
    expectShape<ScanTiming>("name seconds complete");
    expectShape<ObservedMetadata>("kind path name bytes? reportType? inferredApplication? value");
    expectShape<MetadataReport>("scope items complete issue?");
    expectShape<StorageMeasurementItem>("path name identifier version build modified?");
    expectShape<StorageMeasurementRecord>(
        "item breakdown? breakdownComplete? allocatedBytes? lastAttemptDuration? visitedEntries? "
        "bytes? measuredAt? measuredItem? attemptedAt? attempts issue?");
    expectShape<StorageMeasurementReport>("records observedAt");
    expectShape<FolderStorageReport>("path name directFileBytes children sampledAt itemCount? "
                                     "directAllocatedBytes? directFileSizes?");
    expectShape<Snapshot>(
        "id timestamp applications backgroundItems folders volumeContext? freeBytes? volumeID? "
        "coverage folderStorage? applicationStorage? expectedCaptureInterval? operatingSystem? "
        "captureDuration? additionalReports? scanTimings?");
    expectShape<Baseline>("id name snapshot");
}

TEST(StoredForm, OfTheTimeline) {
    expectShape<Event>(
        "id timestamp intervalStart title subtitle category importance changes path? identifier? "
        "appID? symbol applicationSizeBefore? applicationSizeAfter? volumeContext? "
        "removedApplicationSize? installationRecord? systemActivity? observationGap? memory?");
    expectShape<Journal>(
        "schemaVersion snapshots events baselines lastChecked? importedInstallations? "
        "initialHistoryImportCompletedAt? eventsPrunedThrough?");
    expectShape<InstallationRecord>("name version recordedAt packageSource importedAt");
    expectShape<ObservationGap>("start end isOngoing");
    expectShape<change::MetadataChanged>("before? after?");
    expectShape<change::OperatingSystemChanged>("before after");
    expectShape<change::ApplicationInstalled>("_0");
    expectShape<change::ApplicationRemoved>("_0");
    expectShape<change::ApplicationUpdated>("before after");
    expectShape<change::BackgroundAdded>("_0");
    expectShape<change::BackgroundRemoved>("_0");
    expectShape<change::BackgroundChanged>("before after");
    expectShape<change::FolderSizeChanged>("before after");
    expectShape<change::FreeDiskSpaceChanged>("before after");
    expectShape<change::TrashBecameEmpty>("path previousItemCount");
}

TEST(StoredForm, OfLiveActivityAndMemory) {
    expectShape<SystemActivity>(
        "id timestamp kind powerObservation? observedSession? wifiContext? previousWiFi? "
        "environmentActivity? lowPowerModeEnabled? batteryActivity? bluetoothPoweredOn? "
        "wifiConnected? networkChange? bluetoothChange?");
    expectShape<ObservedSession>("startedAt endedAt initialBattery? finalBattery?");
    expectShape<BatteryObservation>("externalPower percentage? charging? fullyCharged?");
    expectShape<BatteryActivity>("kind before? session? observation");
    expectShape<NetworkConnectionState>("availability expensive? constrained? interfaces");
    expectShape<NetworkConnectionChange>("before after");
    expectShape<BluetoothConnectionChange>("deviceClass? session? deviceName connected");
    expectShape<WiFiContext>("networkName? band? channel? security? signalDBM? linkRateMbps?");
    expectShape<EnvironmentActivity>("deviceName path? connected? volume? display? "
                                     "previousDisplay? previousState? elevatedSince? state?");
    expectShape<DisplayContext>(
        "pixelWidth pixelHeight logicalWidth logicalHeight scale refreshRate? builtIn");
    expectShape<MemoryRecord>("id kind timestamp title path? appName? appID? bytes? sourceURL? "
                              "duration? contentType? text? payload? payloadStored? textStored? "
                              "pasteboardType? pinned lastOpened? observedAt");
}

TEST(StoredForm, OfEnumerations) {
    EXPECT_EQ(rawTexts<BackgroundItem::Kind>(), "LaunchAgent|LaunchDaemon");
    EXPECT_EQ(rawTexts<ObservedMetadata::Kind>(), "homebrew|configuration|diagnostic");
    EXPECT_EQ(rawTexts<EventCategory>(), "Applications|Background items|Storage|Mac Activity|"
                                         "Networking|Recent Files|Downloads|Clipboard");
    EXPECT_EQ(rawTexts<Importance>(), "prominent|routine");
    EXPECT_EQ(rawTexts<SystemActivity::Kind>(),
              "sleepRequested|woke|powerOffRequested|volumeChanged|displayChanged|thermalChanged|"
              "networkChanged|bluetoothChanged|wifiChanged|bluetoothPowerChanged|batteryChanged|"
              "lowPowerModeChanged");
    EXPECT_EQ(rawTexts<BatteryActivity::Kind>(),
              "powerConnected|switchedToBattery|fullyCharged|low");
    EXPECT_EQ(rawTexts<NetworkConnectionState::Availability>(),
              "Available|Unavailable|Connection required");
    EXPECT_EQ(rawTexts<NetworkConnectionState::Interface>(),
              "Wi-Fi|Ethernet|Cellular|Other network");
    EXPECT_EQ(rawTexts<MemoryRecord::Kind>(),
              "fileOpened|fileModified|fileCreated|downloaded|appLaunched|appClosed|appUsage|"
              "clipboard");
}

TEST(StoredForm, NamesEachCaseOfAChange) {
    std::string tags;
    const auto add = [&]<class... Cases>(std::type_identity<std::variant<Cases...>>) {
        ((tags += Json::parse(json::encoded(Change(Cases{}))).begin().key() + " "), ...);
    };
    add(std::type_identity<Change>{});
    EXPECT_EQ(tags, "metadataChanged operatingSystemChanged applicationInstalled "
                    "applicationRemoved applicationUpdated backgroundAdded backgroundRemoved "
                    "backgroundChanged folderSizeChanged freeDiskSpaceChanged trashBecameEmpty ");
}

RC_GTEST_PROP(StoredForm, OfASnapshotReadsBackEqual, ()) {
    expectIdentity(test::drawn<Snapshot>());
}

RC_GTEST_PROP(StoredForm, OfAnEventReadsBackEqual, ()) {
    expectIdentity(test::drawn<Event>());
}

namespace {

/// A folder that is equal in all observations except for its date.
FolderSize recurringFolder(int observation) {
    FolderSize size = test::folder("/same", 9, {{"x", 9}});
    size.directFileSizes.emplace({{"file", 9}});
    size.measuredAt = Date{1.0 * observation};
    return size;
}

StorageMeasurementRecord recurringRecord(int observation) {
    StorageMeasurementRecord record;
    record.item.emplace(StorageMeasurementItem::application(test::application("A")));
    record.measuredItem.emplace(StorageMeasurementItem(*record.item));
    record.breakdown.emplace({{"x", 9}});
    record.measuredAt = Date{1.0 * observation};
    return record;
}

} // namespace

TEST(StoredForm, LeavesOutAListThatIsTheSameAsInTheSnapshotBefore) {
    Journal journal;
    for (unsigned number = 1; number <= 5; ++number) {
        Snapshot snapshot = test::snapshot(number);
        snapshot.applications.emplace(test::shared(test::application(number < 4 ? "A" : "B")));
        journal.append(Shared(std::move(snapshot)), false);
    }
    journal.baselines.push_back(Baseline::named("kept", journal.snapshots[1]));
    auto stored = nlohmann::json::parse(json::encoded(journal));
    std::string present;
    for (const auto& snapshot : stored["snapshots"])
        present += snapshot.contains("applications") ? 'a' : '-';
    EXPECT_EQ(present, "a--a-");
    EXPECT_TRUE(stored["baselines"][0]["snapshot"].contains("applications"));
    const auto read = json::decode<Journal>(stored.dump());
    EXPECT_EQ(read, journal);
    EXPECT_TRUE(read.snapshots[0]->applications.sameObject(read.snapshots[2]->applications));

    // A missing list is an error in the first snapshot, which has none before it, and in the
    // snapshots of baselines, which are not in the sequence.
    for (const char* place : {"/snapshots/0/applications", "/baselines/0/snapshot/applications"}) {
        auto lacking = stored;
        const nlohmann::json::json_pointer at(place);
        lacking[at.parent_pointer()].erase(at.back());
        EXPECT_THROW(json::decode<Journal>(lacking.dump()), json::DecodingError) << place;
    }
}

TEST(StoredForm, SharesEqualPartsOfADocument) {
    Journal journal;
    for (int i = 0; i < 2; ++i) {
        Snapshot snapshot;
        snapshot.applications.emplace(test::shared(test::application("A"), test::application("B")));
        snapshot.folders = test::shared(test::folder("/a", 9, {{"x", i}}), recurringFolder(i));
        snapshot.applicationStorage = {test::shared(recurringRecord(i)), Date{1.0 * i}};
        snapshot.coverage.excludedPaths.emplace({"/x"});
        journal.snapshots.emplace_back(std::move(snapshot));
    }
    const auto read = json::decode<Journal>(json::encoded(journal));
    const Snapshot& first = *read.snapshots[0];
    const Snapshot& second = *read.snapshots[1];
    EXPECT_TRUE((*first.applications)[1].sameObject((*second.applications)[1]));
    EXPECT_FALSE((*first.applications)[0].sameObject((*second.applications)[1]));
    EXPECT_FALSE(first.folders[0].sameObject(second.folders[0]));
    // Records that differ share their equal parts.
    const FolderSize& size = *first.folders[1];
    const FolderSize& laterSize = *second.folders[1];
    EXPECT_NE(size, laterSize);
    EXPECT_TRUE(size.breakdown.sameObject(laterSize.breakdown));
    EXPECT_EQ(size.directFileSizes.object(), laterSize.directFileSizes.object());
    const auto& record = *first.applicationStorage->records[0];
    const auto& laterRecord = *second.applicationStorage->records[0];
    EXPECT_TRUE(record.item.sameObject(laterRecord.item));
    EXPECT_EQ(record.item.object(), record.measuredItem.object());
    EXPECT_EQ(record.breakdown.object(), laterRecord.breakdown.object());
    EXPECT_EQ(first.coverage.excludedPaths.object(), second.coverage.excludedPaths.object());
}
