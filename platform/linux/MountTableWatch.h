#pragma once

#include "app/base/TaskScope.h"
#include "app/ports/VolumeSource.h"
#include "core/base/FileDescriptor.h"
#include "platform/linux/ReadDelay.h"
#include "platform/linux/UserVolumes.h"

#include <QSocketNotifier>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

namespace tidemark {

/// Follows the mounted volumes in the kernel's mount table. poll(2) reports an exceptional
/// condition on its file after each change (proc_pid_mountinfo(5)). Main thread only.
///
/// Containers and packages mount and unmount often. So the table is read after such a change, in
/// the background, and the observer is called only if the list of volumes differs.
class MountTableWatch final : public VolumeSource {
public:
    MountTableWatch(userVolumes::Tables tables, std::function<void()> didChange);

    /// True once a first reading of the table has ended, even a failed one; changes before that are
    /// not reported.
    bool isFollowing() const { return last.has_value(); }

private:
    using Volumes = std::optional<std::vector<std::filesystem::path>>;

    QCoro::Task<void> read();

    const userVolumes::Tables tables;
    const std::function<void()> didChange;
    FileDescriptor file;
    std::unique_ptr<QSocketNotifier> notifier;
    /// Absent before the first reading has ended; holds no list when the last reading failed.
    std::optional<Volumes> last;
    bool isReading = false;
    bool isOutdated = false;
    ReadDelay delay;
    TaskScope tasks;
};

} // namespace tidemark
