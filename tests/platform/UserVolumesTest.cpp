#include "platform/linux/UserVolumes.h"

#include "platform/linux/MountTableWatch.h"
#include "tests/app/support/Await.h"
#include "tests/support/Contains.h"
#include "tests/support/TemporaryFolder.h"

#include <QProcess>
#include <algorithm>

#include <gtest/gtest.h>

using namespace tidemark;
using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

TEST(UserVolumes, AreThoseThatAUserMounted) {
    const char* table = "22 1 254:0 / / rw - ext4 /dev/root rw\n"
                        "23 22 0:5 / /dev/shm rw - tmpfs shm rw\n"
                        "24 22 7:1 / /snap/core/1 ro - squashfs /dev/loop1 ro\n"
                        "25 22 0:30 / /var/lib/docker/overlay2/x/merged rw - overlay overlay rw\n"
                        "26 22 8:1 / /media/me/Film\\040Disk rw - vfat /dev/sda1 rw\n"
                        "27 22 8:2 / /run/media/me/usb rw - ext4 /dev/sdb1 rw\n"
                        "28 22 8:3 / /run/media/other/usb rw - ext4 /dev/sdc1 rw\n"
                        "29 22 8:4 / /media/other/usb rw - ext4 /dev/sdd1 rw\n"
                        "30 22 8:5 / /mnt/data rw - xfs /dev/sde1 rw\n"
                        "31 22 8:5 / /mnt/data/deeper rw - xfs /dev/sde1 rw\n"
                        "32 22 254:0 /srv/www /home/me/www rw - ext4 /dev/root rw\n"
                        "33 22 0:50 /@photos /home/me/photos rw - btrfs /dev/sdf1 rw\n"
                        "34 22 0:51 / /home/me/.vault rw - fuse.cryfs cryfs rw\n"
                        "35 22 0:52 / /net/files rw - nfs4 host:/files rw\n"
                        "36 22 0:53 / /var/lib/shared rw - nfs4 host:/shared rw\n"
                        "37 22 0:54 / /run/user/1000/gvfs rw - fuse.gvfsd-fuse gvfsd-fuse rw\n"
                        "38 22 0:55 / /media/auto rw - autofs systemd-1 rw\n"
                        "39 22 8:6 / /media/hidden rw - ext4 /dev/sdg1 rw\n"
                        "40 22 8:7 / /opt/shown rw - ext4 /dev/sdh1 rw\n"
                        "41 22 8:8 / /media/twice rw - ext4 /dev/sdi1 rw\n"
                        "42 22 0:56 / /media/twice rw - tmpfs none rw\n";
    const auto options = userVolumes::parseUserOptions(
        "ID=39 SRC=/dev/sdg1 TARGET=/media/hidden ROOT=/ OPTS=user,x-gvfs-hide\n"
        "SRC=/dev/sdh1 TARGET=/opt/shown OPTS=x-gvfs-show\n"
        "nonsense\n");
    const userVolumes::User user{.home = "/home/me",
                                 .name = "me",
                                 .canEnter = [](const fs::path& f) { return f != "/media/other"; }};
    const std::vector<fs::path> expected{"/home/me/photos", "/media/me/Film Disk",
                                         "/mnt/data",       "/net/files",
                                         "/opt/shown",      "/run/media/me/usb"};
    EXPECT_EQ(userVolumes::among(parseMountTable(table), options, user), expected);
}

/// Real mounts, in a namespace where an ordinary user may mount.
TEST(MountTableWatch, ReportsMountsOfVolumesOnly) {
    const test::TemporaryFolder folder;
    QProcess machine;
    machine.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    machine.start(u"/usr/bin/unshare"_s,
                  {u"--user"_s, u"--map-root-user"_s, u"--mount"_s, u"sh"_s});
    const auto carryOut = [&](const std::string& command) {
        machine.write((command + "; echo $?\n").c_str());
        while (!machine.canReadLine())
            if (!machine.waitForReadyRead())
                return false;
        return machine.readLine() == "0\n";
    };
    const std::string disk = (folder / "disk").native();
    const std::string other = (folder / "other").native();
    const std::string mountOther = "mount -t tmpfs none " + other;
    // This mount is a volume because of its option: the file system of a disk can't be mounted in
    // the namespace.
    const std::string mountDisk = "mount -t tmpfs -o x-gvfs-show none " + disk;
    if (!carryOut("mkdir -p /run/mount " + disk + " " + other
                  + " && mount -t tmpfs none /run/mount && " + mountOther))
        GTEST_SKIP() << "this user may not mount, not even in a namespace of its own";

    const std::string process = "/proc/" + std::to_string(machine.processId());
    const userVolumes::Tables tables{process + "/mountinfo", process + "/root/run/mount/utab"};
    int changes = 0;
    MountTableWatch watch(tables, [&] { ++changes; });
    test::until([&] { return watch.isFollowing(); });
    const std::string mountOthers = "for i in 1 2 3 4 5 6 7 8 9; do " + mountOther + "; done; ";
    for (const auto& [command, isMounted] :
         {std::pair{mountDisk, true}, std::pair{"umount -l " + disk, false}}) {
        ASSERT_TRUE(carryOut(mountOthers + command));
        const int before = changes;
        test::until([&] { return changes > before; });
        const auto volumes = userVolumes::read(tables).value();
        EXPECT_EQ(std::ranges::find(volumes, fs::path(disk)) != volumes.end(), isMounted);
        EXPECT_EQ(changes, before + 1);
    }
    machine.closeWriteChannel();
    machine.waitForFinished();
}
