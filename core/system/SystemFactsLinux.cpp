#include "core/base/Files.h"
#include "core/base/Hex.h"
#include "core/base/Text.h"
#include "core/system/MountTable.h"
#include "core/system/OsRelease.h"
#include "core/system/SystemFacts.h"

#include <array>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/sysmacros.h>
#include <sys/utsname.h>

namespace tidemark::SystemFacts {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t systemFileLimit = 1 << 22;

/// The content of a file of a machine; empty when it can't be read.
std::string systemFile(const MachineFiles& machine, const fs::path& path) {
    try {
        return machine.read(path, systemFileLimit);
    } catch (const FileError&) {
        return {};
    }
}

/// The content of a system file; empty when it can't be read.
std::string systemFile(const fs::path& path) {
    try {
        return readFile(path, systemFileLimit);
    } catch (const FileError&) {
        return {};
    }
}

std::int64_t bytesOf(fsblkcnt_t blocks, unsigned long blockSize) {
    return static_cast<std::int64_t>(blocks * blockSize);
}

std::optional<MountEntry> mountOf(const fs::path& path) {
    struct stat status{};
    std::error_code error;
    const fs::path canonical = fs::canonical(path, error);
    if (error || ::stat(canonical.c_str(), &status) != 0)
        return std::nullopt;
    const std::string device =
        std::to_string(major(status.st_dev)) + ":" + std::to_string(minor(status.st_dev));
    return tidemark::mountOf(parseMountTable(systemFile("/proc/self/mountinfo")),
                             canonical.native(), device);
}

/// The name without the escapes that udev writes for some characters, such as "\x20" for a space.
std::string unescapedLinkName(std::string_view name) {
    const auto value = [](char digit) {
        return digit >= '0' && digit <= '9'   ? digit - '0'
               : digit >= 'a' && digit <= 'f' ? digit - 'a' + 10
                                              : -1;
    };
    std::string text;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (name.substr(i).starts_with("\\x") && i + 3 < name.size() && value(name[i + 2]) >= 0
            && value(name[i + 3]) >= 0) {
            text += static_cast<char>(value(name[i + 2]) * 16 + value(name[i + 3]));
            i += 3;
        } else {
            text += name[i];
        }
    }
    return textFromBytes(text);
}

/// The name of udev's link to a device in one of the folders below /dev/disk, such as "by-uuid".
std::optional<std::string> linkTo(const std::string& device, const char* folder) {
    std::error_code error;
    const fs::path sought = fs::canonical(device, error);
    if (error)
        return std::nullopt;
    const fs::path links = fs::path("/dev/disk") / folder;
    for (fs::directory_iterator link(links, error), end; !error && link != end;
         link.increment(error)) {
        std::error_code unreadable;
        if (fs::canonical(link->path(), unreadable) == sought && !unreadable)
            return unescapedLinkName(link->path().filename().native());
    }
    return std::nullopt;
}

/// Asks the kernel by FS_IOC_GETFSUUID (Linux 6.9), for when udev has no link, as in a container.
/// The request is defined here because the headers may be older.
std::optional<std::string> fileSystemUuid(const fs::path& path) {
    struct Answer {
        std::uint8_t length;
        std::array<std::uint8_t, 16> uuid;
    };
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    Answer answer{};
    if (!file || ::ioctl(file.get(), _IOR(0x15, 0, Answer), &answer) != 0
        || answer.length != answer.uuid.size() || answer.uuid == decltype(answer.uuid){})
        return std::nullopt;
    std::string text;
    for (std::size_t i = 0; i < answer.uuid.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10)
            text += '-';
        appendHex(text, answer.uuid[i]);
    }
    return text;
}

/// Whether a block device is built in, from its place in sysfs. For a device made of others, such
/// as an encrypted one, the place of its first part counts.
std::optional<bool> isInternal(fs::path device) {
    std::error_code error;
    for (int depth = 0; depth < 8; ++depth) {
        device = fs::canonical(device, error);
        if (error)
            return std::nullopt;
        const fs::directory_iterator parts(device / "slaves", error);
        if (error || parts == fs::directory_iterator())
            break;
        device = parts->path();
    }
    if (device.native().find("/usb") != std::string::npos)
        return false;
    // A partition has no file "removable", but the folder above, which is its disk, has one.
    for (const fs::path& disk : {device, device.parent_path()})
        if (const std::string removable = systemFile(disk / "removable"); !removable.empty())
            return !removable.starts_with('1');
    return std::nullopt;
}

std::optional<bool> isInternal(const MountEntry& mount) {
    struct stat status{};
    // The source is the device even if the file system has a device number of its own.
    if (::stat(mount.source.c_str(), &status) == 0 && S_ISBLK(status.st_mode))
        return isInternal(fs::path("/sys/dev/block")
                          / (std::to_string(major(status.st_rdev)) + ":"
                             + std::to_string(minor(status.st_rdev))));
    return isInternal(fs::path("/sys/dev/block") / mount.device);
}

} // namespace

std::optional<OperatingSystemObservation> readOperatingSystem(const MachineFiles& machine) {
    if (!machine.isElsewhere())
        return collectOperatingSystem();
    for (const char* path : {"/etc/os-release", "/usr/lib/os-release"})
        if (auto version = versionOf(parseOsRelease(systemFile(machine, path))))
            return OperatingSystemObservation{.version = *std::move(version), .build = {}};
    return std::nullopt;
}

OperatingSystemObservation collectOperatingSystem() {
    OperatingSystemObservation system;
    const auto etc = versionOf(parseOsRelease(systemFile("/etc/os-release")));
    const auto usr = etc ? etc : versionOf(parseOsRelease(systemFile("/usr/lib/os-release")));
    system.version = usr.value_or("Linux");
    utsname kernel{};
    if (::uname(&kernel) == 0)
        system.build = textFromBytes(kernel.release);
    return system;
}

VolumeSpace volumeSpace(const fs::path& path) {
    VolumeSpace space;
    struct statvfs status{};
    if (::statvfs(path.c_str(), &status) == 0)
        space.freeBytes = bytesOf(status.f_bavail, status.f_frsize);
    if (const auto mount = mountOf(path))
        space.volumeID = linkTo(mount->source, "by-uuid");
    if (!space.volumeID)
        space.volumeID = fileSystemUuid(path);
    return space;
}

std::optional<bool> isMountRoot(const fs::path& path) {
    struct statx status{};
    // Also true for bind mounts, which comparing the device number with that of the parent would
    // miss.
    if (::statx(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT, 0, &status) != 0
        || (status.stx_attributes_mask & STATX_ATTR_MOUNT_ROOT) == 0)
        return std::nullopt;
    return (status.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
}

std::optional<VolumeContext> readVolumeContext(const fs::path& path) {
    struct statvfs status{};
    if (::statvfs(path.c_str(), &status) != 0)
        return std::nullopt;
    VolumeContext context;
    context.name = textFromBytes(lastPathComponent(path.native()));
    context.capacity = bytesOf(status.f_blocks, status.f_frsize);
    context.readOnly = (status.f_flag & ST_RDONLY) != 0;
    const auto mount = mountOf(path);
    if (!mount)
        return context;
    if (auto label = linkTo(mount->source, "by-label"))
        context.name = std::move(*label);
    context.fileSystem = textFromBytes(mount->type);
    context.local = !isNetworkFileSystem(mount->type);
    context.internalDevice = isInternal(*mount);
    context.readOnly = mount->readOnly || *context.readOnly;
    return context;
}

} // namespace tidemark::SystemFacts
