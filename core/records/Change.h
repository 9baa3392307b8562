#pragma once

#include "core/base/Shared.h"
#include "core/records/Application.h"
#include "core/records/BackgroundItem.h"
#include "core/records/FolderSize.h"
#include "core/records/MetadataReport.h"
#include "core/records/OperatingSystemObservation.h"

#include <variant>

namespace tidemark {

/// The cases of `Change`. `tag` is the single key of the stored object; a payload without a label
/// is stored under "_0".
namespace change {

template <class T>
struct BeforeAfter {
    T before{};
    T after{};

    bool operator==(const BeforeAfter&) const = default;
    static constexpr auto fields() {
        return std::tuple{Field{"before", &BeforeAfter::before},
                          Field{"after", &BeforeAfter::after}};
    }
};

template <class T>
struct Single {
    T value{};

    bool operator==(const Single&) const = default;
    static constexpr auto fields() { return std::tuple{Field{"_0", &Single::value}}; }
};

struct MetadataChanged : BeforeAfter<OptionalShared<ObservedMetadata>> {
    static constexpr std::string_view tag = "metadataChanged";
};
struct OperatingSystemChanged : BeforeAfter<OperatingSystemObservation> {
    static constexpr std::string_view tag = "operatingSystemChanged";
};
struct ApplicationInstalled : Single<Shared<Application>> {
    static constexpr std::string_view tag = "applicationInstalled";
};
struct ApplicationRemoved : Single<Shared<Application>> {
    static constexpr std::string_view tag = "applicationRemoved";
};
struct ApplicationUpdated : BeforeAfter<Shared<Application>> {
    static constexpr std::string_view tag = "applicationUpdated";
};
struct BackgroundAdded : Single<Shared<BackgroundItem>> {
    static constexpr std::string_view tag = "backgroundAdded";
};
struct BackgroundRemoved : Single<Shared<BackgroundItem>> {
    static constexpr std::string_view tag = "backgroundRemoved";
};
struct BackgroundChanged : BeforeAfter<Shared<BackgroundItem>> {
    static constexpr std::string_view tag = "backgroundChanged";
};
struct FolderSizeChanged : BeforeAfter<Shared<FolderSize>> {
    static constexpr std::string_view tag = "folderSizeChanged";
};
/// Free bytes of one volume.
struct FreeDiskSpaceChanged : BeforeAfter<std::int64_t> {
    static constexpr std::string_view tag = "freeDiskSpaceChanged";
};
struct TrashBecameEmpty {
    static constexpr std::string_view tag = "trashBecameEmpty";

    std::string path;
    std::int64_t previousItemCount = 0;

    bool operator==(const TrashBecameEmpty&) const = default;
    static constexpr auto fields() {
        return std::tuple{Field{"path", &TrashBecameEmpty::path, Private},
                          Field{"previousItemCount", &TrashBecameEmpty::previousItemCount}};
    }
};

} // namespace change

/// One difference between two snapshots.
using Change =
    std::variant<change::MetadataChanged, change::OperatingSystemChanged,
                 change::ApplicationInstalled, change::ApplicationRemoved,
                 change::ApplicationUpdated, change::BackgroundAdded, change::BackgroundRemoved,
                 change::BackgroundChanged, change::FolderSizeChanged, change::FreeDiskSpaceChanged,
                 change::TrashBecameEmpty>;

} // namespace tidemark
